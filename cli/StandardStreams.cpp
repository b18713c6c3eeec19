#include "cli/StandardStreams.h"

#include <cerrno>
#include <cstdio>

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

void Print(std::string_view text) {
    CheckOutput(outputFailure == 0 &&
                std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void FlushOutput() {
    CheckOutput(std::fflush(stdout) == 0 && std::ferror(stdout) == 0);
}

}  // namespace cli
