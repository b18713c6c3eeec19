#pragma once

namespace cli {

/// The exit status of the tool.
enum class ExitCode : int {
    Good = 0,
    Failure = 1,  ///< a problem was found, or something failed
    Usage = 2,    ///< the command line is invalid

    // Of verbs that compare, as of other tools that do.
    Different = 1,
    Trouble = 2,  ///< a file could not be read, or something failed
};

}  // namespace cli
