#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace test {

/// Memory that runs out on command. A program that links this gets all of its memory through it,
/// its libraries' included. For one thread.
namespace memory {

enum class Failure {
    None,
    Once,    ///< one allocation fails
    Onwards  ///< that one and all that follow
};

/// From now on allocations are counted, and the one with the number `at`, counted from 0, fails.
void Begin(Failure failure, std::size_t at);

/// Ends that, and returns how many allocations there were.
std::size_t End();

/// How many blocks are in use now.
std::ptrdiff_t BlocksInUse();

/// Remembers where each block is allocated that is allocated while allocations are counted.
void RememberPlaces();

/// Where those were allocated that are still in use, a place a block: the names of the calling
/// functions and their libraries, innermost first. Ends the remembering.
std::vector<std::vector<std::string>> PlacesOfBlocksInUse();

}  // namespace memory
}  // namespace test
