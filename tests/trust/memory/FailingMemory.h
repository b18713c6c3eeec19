#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Memory that runs out on command. A program that links this allocates all of its memory through
/// it, including memory of its libraries. Single-threaded.
namespace test::memory {

enum class Failure {
    None,
    Once,    ///< fails one allocation
    Onwards  ///< fails that one and all later ones
};

/// Starts to count allocations and fails the one with number `at`, counting from 0.
void Begin(Failure failure, std::size_t at);

/// Stops counting and returns the number of allocations.
std::size_t End();

/// The number of blocks in use.
std::ptrdiff_t BlocksInUse();

/// Starts to remember where each counted block is allocated.
void RememberPlaces();

/// Stops remembering and returns the places of the blocks that are still in use: for each block,
/// the calling functions and their libraries, innermost first.
std::vector<std::vector<std::string>> PlacesOfBlocksInUse();

}  // namespace test::memory
