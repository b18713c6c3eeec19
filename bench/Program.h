#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs a program to its end and returns its standard output.
/// @param arguments  the first one is the program's path
/// @throws std::runtime_error if it cannot be run or fails
std::string OutputOfProgram(const std::vector<std::string>& arguments);

/// The path of this program, and of another program in the same folder.
std::string OwnPath();
std::string NeighbourPath(const std::string& name);

}  // namespace bench
