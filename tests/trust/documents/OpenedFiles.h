#pragma once

#include <string>
#include <vector>

namespace test {

/// Records what this process and its libraries open or connect to. A program that links this
/// intercepts the system library's functions.
void RecordOpened(bool on);

/// The paths in order, with "socket" for each socket.
std::vector<std::string> Opened();

}  // namespace test
