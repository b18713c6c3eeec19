#pragma once

namespace cli {

/// The exit status of the tool.
enum class ExitCode : int {
    Good = 0,
    Failure = 1,  ///< a problem was found, or something failed
    Usage = 2,    ///< the command line is invalid
};

}  // namespace cli
