# Options for every target: C++20, warnings as errors, optional sanitizers, output in bin/ and lib/.

option(ORVO_BUILD_TESTS "Build the tests and the fuzzers" ON)
option(ORVO_COVERAGE "Count how often each line and branch runs (needs clang)" OFF)
set(ORVO_SANITIZE "" CACHE STRING "Sanitizers for the code under test, as for -fsanitize")
set(ORVO_CODE_FLAGS "" CACHE STRING "List of optimisation and debug flags for the code under test")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
# Programs find their libraries next to them, whether built or installed. Given two paths, CMake would pad the
# one in the build tree with empty entries, and an empty entry means the working directory.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

find_program(ORVO_CCACHE ccache)
if(ORVO_CCACHE)
  # Also cache what is compiled with precompiled headers, and share objects that two presets compile alike.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    env "CCACHE_SLOPPINESS=pch_defines,time_macros" "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
    "${ORVO_CCACHE}")
endif()

add_compile_options(
  -Wall -Wextra -Wpedantic -Werror
  -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-qual -Wold-style-cast -Wextra-semi -Wundef)

# orvo_add_code_options(OPTIONS...): compiles everything except tests with these options.
function(orvo_add_code_options)
  add_compile_options("$<$<NOT:$<BOOL:$<TARGET_PROPERTY:ORVO_IS_TEST>>>:${ARGV}>")
endfunction()

orvo_add_code_options(${ORVO_CODE_FLAGS})
if(ORVO_SANITIZE)
  orvo_add_code_options("-fsanitize=${ORVO_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${ORVO_SANITIZE}")
  # The sanitizers' checks make GCC's flow analysis report false positives. The other builds keep this
  # warning.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    orvo_add_code_options(-Wno-maybe-uninitialized)
  endif()
endif()

if(ORVO_COVERAGE)
  # The counters live in the mapped profile itself (%c), one profile per program and library (%m). Counts
  # survive if the process is killed, calls _exit or unloads a library.
  add_compile_options(
    "-fprofile-instr-generate=${CMAKE_BINARY_DIR}/profiles/%c%m.profraw" -fcoverage-mapping
    "SHELL:-mllvm -runtime-counter-relocation")
  add_link_options(-fprofile-instr-generate)
endif()
