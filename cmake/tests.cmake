# Unit tests: one GoogleTest binary of everything under tests/ except the
# end-to-end, fuzz and benchmark folders. The Windows build's binary runs
# under Wine through the cross-compiling emulator.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

file(GLOB_RECURSE KX_TEST_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/*.cpp)
list(FILTER KX_TEST_SOURCES EXCLUDE REGEX "/tests/(e2e|fuzz|bench)/")
list(FILTER KX_TEST_SOURCES EXCLUDE REGEX "/win32/")
add_executable(kx_tests ${KX_TEST_SOURCES})
# kx_beast: the DevTools tests stand in for a browser with Boost.Beast servers.
target_link_libraries(kx_tests PRIVATE kx_gui kx_sim kx_beast GTest::gtest_main GTest::gmock)
target_include_directories(kx_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
target_compile_options(kx_tests PRIVATE ${KX_WARNINGS})
target_compile_definitions(kx_tests PRIVATE KX_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")

if(CMAKE_CROSSCOMPILING)
  # On a virtual display of its own, so that the window tests always run; a
  # prefix of its own, so that its shutdown never touches another test's.
  add_test(NAME win64.unit
           COMMAND env KX_WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix-unit
                   ${CMAKE_SOURCE_DIR}/scripts/wine-env wine $<TARGET_FILE:kx_tests> --gtest_brief=1)
else()
  include(GoogleTest)
  gtest_discover_tests(kx_tests DISCOVERY_TIMEOUT 60)
endif()

# Tests of the kx tool itself, by its command line.
file(GLOB KX_CLI_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/cli/*.sh)
foreach(t ${KX_CLI_TESTS})
  get_filename_component(name ${t} NAME_WE)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME win64.cli.${name} COMMAND bash ${t} ${CMAKE_SOURCE_DIR}/scripts/wine-run $<TARGET_FILE:kx>)
  else()
    add_test(NAME cli.${name} COMMAND bash ${t} "" $<TARGET_FILE:kx>)
  endif()
endforeach()

# kx page against a real headless Chromium (the browser from scripts/setup):
# a display is not needed. The Windows kx.exe runs under Wine and reaches the
# same browser on the loopback address.
file(GLOB KX_BROWSER_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/browser/*.sh)
foreach(t ${KX_BROWSER_TESTS})
  get_filename_component(name ${t} NAME_WE)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME win64.browser.${name}
             COMMAND bash ${t} ${CMAKE_SOURCE_DIR}/scripts/wine-run $<TARGET_FILE:kx>)
    set_tests_properties(win64.browser.${name} PROPERTIES LABELS browser TIMEOUT 600)
  else()
    add_test(NAME browser.${name} COMMAND bash ${t} "" $<TARGET_FILE:kx>)
    set_tests_properties(browser.${name} PROPERTIES LABELS browser TIMEOUT 300)
  endif()
endforeach()

if(KX_BENCHMARKS AND NOT CMAKE_CROSSCOMPILING)
  find_package(benchmark REQUIRED)
  file(GLOB_RECURSE KX_BENCH_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/bench/*.cpp)
  list(FILTER KX_BENCH_SOURCES EXCLUDE REGEX "/win32/")
  if(KX_BENCH_SOURCES)
    add_executable(kx_bench ${KX_BENCH_SOURCES})
    target_link_libraries(kx_bench PRIVATE kx_sim benchmark::benchmark_main)
  endif()
endif()

if(KX_FUZZ)
  set(KX_FUZZ_TEST_SECONDS 10 CACHE STRING "How long the test command runs each fuzz target")
  file(GLOB KX_FUZZ_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/fuzz/*.cpp)
  foreach(f ${KX_FUZZ_SOURCES})
    get_filename_component(name ${f} NAME_WE)
    add_executable(${name} ${f})
    target_link_libraries(${name} PRIVATE kx_sim)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    # A short run of each target over its committed corpus (tests/fuzz/corpus/
    # and the target's name without "_fuzz"); new inputs go to a scratch
    # folder, never into the repository.
    string(REGEX REPLACE "_fuzz$" "" corpus ${name})
    add_test(NAME fuzz.${corpus}
             COMMAND bash -c "d=$(mktemp -d) && trap 'rm -rf \"$d\"' EXIT && \"$0\" -max_total_time=${KX_FUZZ_TEST_SECONDS} -timeout=10 -rss_limit_mb=2048 -artifact_prefix=\"$d/\" \"$d\" \"$1\""
                     $<TARGET_FILE:${name}> ${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${corpus})
  endforeach()
endif()
