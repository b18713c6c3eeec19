#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace test {

/// Something to try that may break the process.
struct Case {
    std::string name;
    /// Runs in a process of its own; returns what is wrong, a line each.
    std::function<std::vector<std::string>()> run;
    unsigned longestSeconds = 60;  ///< what takes longer hangs
};

/// Of many like cases each that many-th.
std::vector<Case> EachNth(const std::vector<Case>& cases, std::size_t stride);

struct Tally {
    std::size_t cases = 0;
    std::size_t problems = 0;
};

/// Runs each in a child of this process as it is now, and prints what is wrong: what the case says,
/// a child that a signal ends, and one that hangs.
Tally RunCases(const std::vector<Case>& cases);

/// The seconds that this process has computed so far.
double ComputedSeconds();

/// The most memory that this process has had at once, and what it has now.
long PeakKibibytes();
long ResidentKibibytes();

/// How many descriptors this process has open.
std::ptrdiff_t OpenFiles();

}  // namespace test
