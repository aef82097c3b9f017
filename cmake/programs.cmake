# The Windows programs: Kestrelix.exe, the end-to-end target program, and the
# end-to-end tests that drive them under Wine on a private display.
enable_language(RC)

file(GLOB KX_GUI_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/gui/*.cpp)
add_executable(Kestrelix WIN32 ${KX_GUI_SOURCES} ${CMAKE_SOURCE_DIR}/src/gui/res/kestrelix.rc)
target_link_libraries(Kestrelix PRIVATE kx_core)
target_compile_options(Kestrelix PRIVATE ${KX_WARNINGS})
target_link_options(Kestrelix PRIVATE -municode)

add_executable(kx_target WIN32 ${CMAKE_SOURCE_DIR}/tests/e2e/target/kx_target.cpp)
target_compile_options(kx_target PRIVATE ${KX_WARNINGS})
target_link_options(kx_target PRIVATE -municode)
