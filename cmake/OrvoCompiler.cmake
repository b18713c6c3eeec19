# How the project's own targets are compiled and installed. Nothing here reaches the targets of a project that contains this one.

option(ORVO_BUILD_TOOL "Build the command-line tool" ${PROJECT_IS_TOP_LEVEL})
option(ORVO_BUILD_TESTS "Build the tool, the tests, the fuzzers and the benchmark" OFF)
option(ORVO_BUILD_VIEW "Test the page of orvo view, and offer the target that builds it (needs npm)" OFF)
option(ORVO_INSTALL "Install the plug-in, the library and the tool" ${PROJECT_IS_TOP_LEVEL})
option(ORVO_WARNINGS_AS_ERRORS "Stop at the first warning" OFF)
option(ORVO_COVERAGE "Count how often each line and branch runs (needs clang)" OFF)
option(ORVO_BATCHES "Compile the tests several sources at a time" OFF)
set(ORVO_SANITIZE "" CACHE STRING "Sanitizers for the code under test, as for -fsanitize")
set(ORVO_CODE_FLAGS "" CACHE STRING "List of optimisation and debug flags for the code under test")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The build tree has the folders of the installed tree, so that one relative path serves both: programs and
# libraries find the libraries beside them.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
file(RELATIVE_PATH ORVO_LIBRARIES_OF_PROGRAMS "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
# Given two paths, CMake would pad the one in the build tree with empty entries, and an empty entry means the
# working directory.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/${ORVO_LIBRARIES_OF_PROGRAMS}")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

find_program(ORVO_CCACHE ccache)
if(ORVO_CCACHE AND PROJECT_IS_TOP_LEVEL)
  # Also cache what is compiled with precompiled headers, and share objects that two presets compile alike.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    env "CCACHE_SLOPPINESS=pch_defines,time_macros" "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
    "${ORVO_CCACHE}")
endif()

# What code and tests share. Every include names its folder from the top ("format/Names.h"), so that a reader,
# and the test of the include rules, sees where it leads.
function(orvo_compile target)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/include")
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic $<$<BOOL:${ORVO_WARNINGS_AS_ERRORS}>:-Werror>
    -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wold-style-cast -Wextra-semi -Wundef)
  if(ORVO_SANITIZE)
    target_link_options(${target} PRIVATE "-fsanitize=${ORVO_SANITIZE}")
  endif()
  if(ORVO_COVERAGE)
    # The counters live in the mapped profile itself (%c), one profile per program and library (%m). Counts
    # survive if the process is killed, calls _exit or unloads a library.
    target_compile_options(${target} PRIVATE
      "-fprofile-instr-generate=${PROJECT_BINARY_DIR}/profiles/%c%m.profraw" -fcoverage-mapping
      "SHELL:-mllvm -runtime-counter-relocation")
    target_link_options(${target} PRIVATE -fprofile-instr-generate)
  endif()
endfunction()

# orvo_compile_as_code(TARGET): compiles with the flags and sanitizers for the code under test.
function(orvo_compile_as_code target)
  orvo_compile(${target})
  target_compile_options(${target} PRIVATE ${ORVO_CODE_FLAGS})
  if(ORVO_SANITIZE)
    target_compile_options(${target} PRIVATE
      "-fsanitize=${ORVO_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # The sanitizers' checks make GCC's flow analysis report false positives. The other builds keep this
    # warning.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
  endif()
endfunction()

# orvo_sanitize_values(TARGETS...): with sanitizers, compiles without the checks of pointers, in three quarters of the
# time. For code that handles values: what its pointers lead to is never raw memory, and the address sanitizer notices
# if they lead nowhere.
function(orvo_sanitize_values)
  if(ORVO_SANITIZE)
    foreach(target ${ARGV})
      target_compile_options(${target} PRIVATE -fno-sanitize=alignment,null,object-size,pointer-overflow,vptr)
    endforeach()
  endif()
endfunction()

# orvo_sanitize_light_work(TARGETS...): as orvo_sanitize_values, for code that does no heavy work: without optimisation
# too, which with sanitizers takes as long again.
function(orvo_sanitize_light_work)
  orvo_sanitize_values(${ARGV})
  if(ORVO_SANITIZE)
    foreach(target ${ARGV})
      target_compile_options(${target} PRIVATE -O0)
    endforeach()
  endif()
endfunction()

# orvo_sanitize_in_batches(TARGETS...): with sanitizers and ORVO_BATCHES, compiles several sources at a time, in half
# the time. A call could then prefer the function of another source; what the code means is tested without sanitizers.
function(orvo_sanitize_in_batches)
  if(ORVO_SANITIZE AND ORVO_BATCHES)
    set_target_properties(${ARGV} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  endif()
endfunction()

# orvo_keep_unloadable(TARGET): compiles code that the plug-in contains, which a host must be able to unload. The
# loader never unloads a library with GNU unique symbols.
function(orvo_keep_unloadable target)
  target_compile_options(${target} PRIVATE -fvisibility=hidden $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
endfunction()

# orvo_install(...): as install(...), unless ORVO_INSTALL is off.
function(orvo_install)
  if(ORVO_INSTALL)
    install(${ARGV})
  endif()
endfunction()

# orvo_compile_as_test(TARGET): compiles without optimisation and sanitizers, which the code under test needs but
# neither its tests do nor programs that only the build runs. They then compile in half the time, and once for all
# presets.
#
# With ORVO_BATCHES, the compiler sees sixteen sources at a time, so that it instantiates once what they share. Never the
# code under test, except with sanitizers: the sources of a batch share their unnamed namespaces, and a call may then
# prefer the function of another source.
function(orvo_compile_as_test target)
  orvo_compile(${target})
  if(ORVO_BATCHES)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
  endif()
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR ORVO_SANITIZE)
    target_compile_options(${target} PRIVATE -O0 -g0)
  endif()
endfunction()
