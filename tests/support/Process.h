#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// A program to run, and its surroundings.
struct Command {
    std::vector<std::string> arguments;  ///< the first one is the program, looked up in PATH
    std::string input = {};              ///< standard input
    std::string folder = {};             ///< the working directory; if empty, that of the test
    std::vector<std::pair<std::string, std::string>> environment =
        {};  ///< added to the environment of the test
    std::chrono::seconds timeout{60};
    bool terminalErrors = false;         ///< standard error is a terminal
    unsigned short terminalColumns = 0;  ///< its width; 0 if it does not report one
};

struct Outcome {
    int exitCode = -1;  ///< -1 if killed by a signal or a timeout
    bool timedOut = false;
    std::string output;
    std::string errors;
};

/// Runs it to its end. Throws if the system cannot start it.
Outcome Run(const Command& command);

}  // namespace test
