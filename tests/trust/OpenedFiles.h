#pragma once

#include <string>
#include <vector>

namespace test {

/// What this process, its libraries included, opens or connects to while it is recorded. A program
/// that links this is asked in place of the system's library.
void RecordOpened(bool on);

/// The paths, and "socket" for each socket, in order.
std::vector<std::string> Opened();

}  // namespace test
