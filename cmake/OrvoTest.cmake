# orvo_compile_as_test(TARGET): compiles without optimisation and sanitizers, which the code under test needs
# but the tests do not. Tests then compile in half the time, and once for all presets.
function(orvo_compile_as_test target)
  orvo_compile(${target})
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR ORVO_SANITIZE)
    target_compile_options(${target} PRIVATE -O0 -g0)
  endif()
endfunction()

# orvo_add_test(NAME SOURCES... LIBRARIES... [HEADERS...] [SHARDS N]): adds a test program. CTest splits its
# tests among N processes (default 1); a process for each test would mostly measure process start-up. To run a
# single test: bin/NAME --gtest_filter=TEST. HEADERS are precompiled, which halves the build time if most
# sources include them.
function(orvo_add_test name)
  cmake_parse_arguments(ARG "" "SHARDS" "SOURCES;LIBRARIES;HEADERS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  orvo_compile_as_test(${name})
  if(ARG_HEADERS)
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  if(NOT ARG_SHARDS)
    set(ARG_SHARDS 1)
  endif()
  foreach(shard RANGE 1 ${ARG_SHARDS})
    math(EXPR index "${shard} - 1")
    add_test(NAME ${name}.${shard} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name}.${shard} PROPERTIES
      TIMEOUT 600
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${index}")
  endforeach()
endfunction()
