# Windows-only programs built on the core and its Win32 ports.
if(EXISTS ${CMAKE_SOURCE_DIR}/cmake/programs.cmake)
  include(cmake/programs.cmake)
endif()

# The downloadable archive, made by scripts/package from this build's programs.
add_test(NAME win64.package COMMAND python3 ${CMAKE_SOURCE_DIR}/tests/package/package_check.py
                                    ${CMAKE_SOURCE_DIR})
set_tests_properties(win64.package PROPERTIES TIMEOUT 600)
