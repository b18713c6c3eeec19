#include "cli/StandardStreams.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "cli/ErrorTerminal.h"

namespace cli {
namespace {

/// The code of the first write to standard output that failed; 0 for none.
int outputFailure = 0;

/// An action on standard output has ended, well or not.
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
