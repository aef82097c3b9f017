# Windows-only programs built on the core and its Win32 ports.
if(EXISTS ${CMAKE_SOURCE_DIR}/cmake/programs.cmake)
  include(cmake/programs.cmake)
endif()
