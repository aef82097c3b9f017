# The Windows programs: Kestrelix.exe, the end-to-end target program and robot, and the
# end-to-end tests that drive them under Wine on a private display.
enable_language(RC)

add_executable(Kestrelix WIN32 ${KX_GUI_WIN32_SOURCES} ${CMAKE_SOURCE_DIR}/src/gui/res/kestrelix.rc)
target_link_libraries(Kestrelix PRIVATE kx_gui)
target_compile_options(Kestrelix PRIVATE ${KX_WARNINGS})
target_link_options(Kestrelix PRIVATE -municode)

add_executable(kx_target WIN32 ${CMAKE_SOURCE_DIR}/tests/e2e/target/kx_target.cpp)
target_compile_options(kx_target PRIVATE ${KX_WARNINGS})
target_link_options(kx_target PRIVATE -municode)
target_link_libraries(kx_target PRIVATE comctl32)

# A console program that finds, reads and drives other programs' windows.
file(GLOB KX_ROBOT_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/e2e/robot/*.cpp)
add_executable(kx_robot ${KX_ROBOT_SOURCES})
target_link_libraries(kx_robot PRIVATE kx_core)
target_compile_options(kx_robot PRIVATE ${KX_WARNINGS})
target_link_options(kx_robot PRIVATE -municode)

# End-to-end tests: each script runs in its own Wine environment (virtual
# display, private prefix). They share the prefix, so they run one at a time.
file(GLOB KX_E2E_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/e2e/*_test.sh)
foreach(t ${KX_E2E_TESTS})
  get_filename_component(name ${t} NAME_WE)
  add_test(NAME win64.e2e.${name}
           COMMAND ${CMAKE_SOURCE_DIR}/scripts/wine-env bash ${t} $<TARGET_FILE_DIR:Kestrelix>
                   ${CMAKE_BINARY_DIR}/e2e)
  set_tests_properties(win64.e2e.${name} PROPERTIES RESOURCE_LOCK kx_wine_e2e TIMEOUT 300)
endforeach()

# Start-up benchmark: the watcher that times a program's first window
# (tests/bench/startup_memory.sh).
add_executable(kx_start_watch ${CMAKE_SOURCE_DIR}/tests/bench/win32/start_watch.cpp)
target_compile_options(kx_start_watch PRIVATE ${KX_WARNINGS})
target_link_options(kx_start_watch PRIVATE -municode)
target_link_libraries(kx_start_watch PRIVATE psapi)

# Wait benchmark: the program's own waits, timed from inside
# (tests/bench/wine_timing.sh prints them beside the receiver's figures).
add_executable(kx_wait_probe ${CMAKE_SOURCE_DIR}/tests/bench/win32/wait_probe.cpp)
target_link_libraries(kx_wait_probe PRIVATE kx_core)
target_compile_options(kx_wait_probe PRIVATE ${KX_WARNINGS})

# Recorder benchmark: the watcher that times each change of the editor's text
# (tests/bench/recorder.sh).
add_executable(kx_editor_watch ${CMAKE_SOURCE_DIR}/tests/bench/win32/editor_watch.cpp)
target_compile_options(kx_editor_watch PRIVATE ${KX_WARNINGS})
target_link_options(kx_editor_watch PRIVATE -municode)
