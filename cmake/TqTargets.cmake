# How our programs are declared: one call for each, sources by name.
#
#   tq_test(name sources...)        tests of a family: one program, one ctest entry; linked with
#                                   the test build
#   tq_bench(name sources...)       benchmarks; linked with the plain static build
#   tq_fuzz(name_fuzz sources...)   fuzz target; its seeds are the files of fuzz/corpus/<name>
#
# tq_add_cli11() makes tq_cli11, the header-only command-line parser, for tools.
#
# GoogleTest comes from the sources that Debian installs, so that cross builds get it compiled for
# their own system; nothing is fetched.
set(TQUTIL_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Sources of GoogleTest")

function(tq_add_googletest)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  add_subdirectory(${TQUTIL_GOOGLETEST_DIR} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endfunction()

# The headers are the same for every system, but the rest of /usr/include is not: a cross compiler
# must see this one folder and nothing beside it.
set(TQUTIL_CLI11_DIR /usr/include/CLI CACHE PATH "Headers of CLI11")

function(tq_add_cli11)
  if(NOT EXISTS ${TQUTIL_CLI11_DIR}/CLI.hpp)
    message(FATAL_ERROR "no CLI/CLI.hpp in ${TQUTIL_CLI11_DIR}: install libcli11-dev")
  endif()
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/cli11)
  file(CREATE_LINK ${TQUTIL_CLI11_DIR} ${PROJECT_BINARY_DIR}/cli11/CLI SYMBOLIC)
  add_library(tq_cli11 INTERFACE)
  target_include_directories(tq_cli11 SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/cli11)
endfunction()

function(tq_test name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tq_options tqutil_test_build gtest_main)
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

# In ctest a benchmark runs each of its cases once or nearly so; for figures run the program itself.
function(tq_bench name)
  add_executable(${name} ${ARGN})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/bench ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tq_options tqutil_bench_build benchmark::benchmark_main)
  add_test(NAME ${name} COMMAND ${name} --benchmark_min_time=0.01)
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 RUN_SERIAL ON)
endfunction()

# In ctest a target runs for a few seconds. Inputs that it finds stay in the build folder.
function(tq_fuzz name)
  add_executable(${name} ${ARGN} ${PROJECT_SOURCE_DIR}/fuzz/target.cpp)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE tq_options tqutil_test_build)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  string(REGEX REPLACE "_fuzz$" "" seeds ${name})
  set(found ${CMAKE_CURRENT_BINARY_DIR}/found/${seeds})
  file(MAKE_DIRECTORY ${found})
  add_test(NAME ${name} COMMAND ${name} -max_total_time=5 -artifact_prefix=${found}-
    ${found} ${PROJECT_SOURCE_DIR}/fuzz/corpus/${seeds})
  set_tests_properties(${name} PROPERTIES TIMEOUT 120)
endfunction()
