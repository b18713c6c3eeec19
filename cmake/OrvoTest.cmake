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
  orvo_add_shards(${name} ${name} ${ARG_SHARDS})
endfunction()

# orvo_repeat_streamed(NAME SHARDS [VARIABLES...]): runs the tests of a program again, with streamed documents and
# those variables of the environment.
function(orvo_repeat_streamed name shards)
  orvo_add_shards(${name}.streamed ${name} ${shards} "ORVO_DOCUMENT=streamed" ${ARGN})
endfunction()

# orvo_repeat_test_streamed(NAME COMMAND...): runs a test of another program again, with streamed documents.
# The sanitizers add little to what the first run has shown them.
function(orvo_repeat_test_streamed name)
  if(ORVO_SANITIZE)
    return()
  endif()
  get_test_property(${name} TIMEOUT timeout)
  add_test(NAME ${name}.streamed COMMAND ${ARGN})
  set_tests_properties(${name}.streamed PROPERTIES
    TIMEOUT ${timeout} SKIP_RETURN_CODE 77 ENVIRONMENT "ORVO_DOCUMENT=streamed")
endfunction()

function(orvo_add_shards name program shards)
  foreach(shard RANGE 1 ${shards})
    math(EXPR index "${shard} - 1")
    add_test(NAME ${name}.${shard} COMMAND ${program} --gtest_brief=1)
    set_tests_properties(${name}.${shard} PROPERTIES
      TIMEOUT 600
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shards};GTEST_SHARD_INDEX=${index};${ARGN}")
  endforeach()
endfunction()
