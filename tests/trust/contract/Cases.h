#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace test {

/// An experiment that may crash the process.
struct Case {
    std::string name;
    /// Runs in its own process and returns a line for each problem.
    std::function<std::vector<std::string>()> run;
    unsigned longestSeconds = 60;  ///< a longer run counts as a hang
};

/// Every `stride`-th of many similar cases.
std::vector<Case> EachNth(const std::vector<Case>& cases, std::size_t stride);

struct Tally {
    std::size_t cases = 0;
    std::size_t problems = 0;
};

/// Runs each case in a fork of this process and prints the problems: those that the case reports,
/// death by a signal, and hangs.
Tally RunCases(const std::vector<Case>& cases);

/// The processor time of this process in seconds.
double ComputedSeconds();

/// The peak and the current memory use of this process.
long PeakKibibytes();
long ResidentKibibytes();

/// The number of open descriptors of this process.
std::ptrdiff_t OpenFiles();

}  // namespace test
