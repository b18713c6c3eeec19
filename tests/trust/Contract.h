#pragma once

#include <cstddef>
#include <filesystem>

#include "tests/trust/Cases.h"

namespace test {

struct Options {
    std::filesystem::path goldenFolder;  ///< with the sessions that are read and written
    std::size_t cycles = 500;
    std::size_t stride = 1;  ///< of many like cases, each that many-th is tried
    std::size_t factor = 1;  ///< how much slower and larger than a release everything is
};

/// Each is one group of cases.
Tally RunSelectors(const Options& options);
Tally RunCycles(const Options& options);
Tally RunReloads(const Options& options);
Tally RunProcesses(const Options& options);
Tally RunNulls(const Options& options);
Tally RunThrows(const Options& options);
Tally RunCounts(const Options& options);
Tally RunTexts(const Options& options);

}  // namespace test
