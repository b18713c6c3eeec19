#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A program to run to its end.
struct Command {
    std::vector<std::string> arguments;  ///< the first one is the program, looked up in PATH
    std::string input = {};              ///< its standard input
    std::string folder = {};             ///< its working directory; empty: that of the test
    std::vector<std::pair<std::string, std::string>> environment =
        {};  ///< set beside the test's own
    std::chrono::seconds timeout{60};
    bool terminalErrors = false;         ///< standard error is a terminal
    unsigned short terminalColumns = 0;  ///< of that terminal; 0: it does not say
};

struct Outcome {
    int exitCode = -1;  ///< -1: killed, by a signal or because the time was up
    bool timedOut = false;
    std::string output;
    std::string errors;
};

/// Runs it. Throws when the system cannot.
Outcome Run(const Command& command);

}  // namespace test
