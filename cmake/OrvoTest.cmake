# orvo_add_test(NAME SOURCES... LIBRARIES...): one test program, each of its tests known to CTest.
function(orvo_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    ORVO_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
    ORVO_BUILD_DIR="${PROJECT_BINARY_DIR}")
  if(TARGET OrvoNative)
    target_compile_definitions(${name} PRIVATE ORVO_PLUGIN_PATH="$<TARGET_FILE:OrvoNative>")
  endif()
  if(TARGET orvo)
    target_compile_definitions(${name} PRIVATE ORVO_TOOL_PATH="$<TARGET_FILE:orvo>")
  endif()
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 120)
endfunction()
