# How our programs are declared: one call for each, sources by name.
#
#   tq_test(name sources...)   test program of a family, one ctest entry; linked with the test build
#   tq_bench(name sources...)  benchmark program; linked with the plain static build
#   tq_fuzz(name sources...)   fuzz target; its seeds are the files of fuzz/corpus/<name>
#
# GoogleTest comes from the sources that Debian installs, so that cross builds get it compiled for
# their own system; nothing is fetched.
set(TQUTIL_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")

function(tq_add_googletest)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  add_subdirectory(${TQUTIL_GOOGLETEST_DIR} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endfunction()

function(tq_test name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tq_options tqutil_test_build gtest_main)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

function(tq_bench name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/bench)
  target_link_libraries(${name} PRIVATE tq_options tqutil_bench_build benchmark::benchmark_main)
endfunction()

function(tq_fuzz name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz)
  target_link_libraries(${name} PRIVATE tq_options tqutil_test_build)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
