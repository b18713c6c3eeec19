#include "cli/terminal/StandardStreams.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "cli/terminal/ErrorTerminal.h"

namespace cli {
namespace {

/// The error of the first failed write to standard output; 0 if none has failed.
int outputFailure = 0;

/// Records the result of an operation on standard output.
void CheckOutput(bool good) {
    if (!good && outputFailure == 0) {
        outputFailure = errno;
    }
    if (outputFailure != 0) {
        throw OutputError(outputFailure, std::generic_category());
    }
}

}  // namespace

bool HasOutputTerminal() {
    static const bool isTerminal = ::isatty(STDOUT_FILENO) == 1;
    return isTerminal;
}

bool MayColourOutput() {
    return HasOutputTerminal() && !RefusesColours();
}

void Print(std::string_view text) {
    const auto write = [text] {
        return outputFailure == 0 &&
               std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    };
    if (HasOutputTerminal()) {
        const StatusLinePause pause;
        CheckOutput(write() && std::fflush(stdout) == 0);
    } else {
        CheckOutput(write());
    }
}

void FlushOutput() {
    CheckOutput(std::fflush(stdout) == 0 && std::ferror(stdout) == 0);
}

}  // namespace cli
