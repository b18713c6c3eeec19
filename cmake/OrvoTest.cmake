# orvo_compile_as_test(TARGET): what is tested is optimised, or checked by the sanitizers; the tests
# themselves are not, so that they compile in half the time, and once for both.
function(orvo_compile_as_test target)
  set_target_properties(${target} PROPERTIES ORVO_IS_TEST ON)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR ORVO_SANITIZE)
    target_compile_options(${target} PRIVATE -O0 -g0)
  endif()
endfunction()

# orvo_add_test(NAME SOURCES... LIBRARIES... [HEADERS...]): one test program, each of its tests known to
# CTest. HEADERS are those that most of its sources take in; they are compiled once, which halves the time
# of the build.
function(orvo_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;HEADERS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  orvo_compile_as_test(${name})
  if(ARG_HEADERS)
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE ORVO_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 120)
endfunction()
