#pragma once

#include <cstddef>
#include <filesystem>

#include "tests/trust/contract/Cases.h"

namespace test {

struct Options {
    std::filesystem::path goldenFolder;  ///< contains the sessions to read and write
    std::size_t cycles = 500;
    std::size_t stride = 1;  ///< tests only every n-th of many similar cases
    std::size_t factor = 1;  ///< how much slower and larger this build is than a release
};

/// Each function runs one group of cases.
Tally RunSelectors(const Options& options);
Tally RunCycles(const Options& options);
Tally RunReloads(const Options& options);
Tally RunProcesses(const Options& options);
Tally RunNulls(const Options& options);
Tally RunThrows(const Options& options);
Tally RunCounts(const Options& options);
Tally RunTexts(const Options& options);

}  // namespace test
