#pragma once

namespace cli {

/// What the tool ends with.
enum class ExitCode : int {
    Good = 0,
    Failure = 1,  ///< something was found wrong, or could not be done
    Usage = 2,    ///< the command line makes no sense
};

}  // namespace cli
