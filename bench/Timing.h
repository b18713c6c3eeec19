#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "bench/Contender.h"

namespace bench {

/// The time of one run: medians over the rounds.
struct Timing {
    double wallMs = 0;
    double userMs = 0;     ///< processor time outside the system
    double wallRatio = 0;  ///< to the first contender in the same round
    double userRatio = 0;
};

struct Timings {
    std::map<std::string, Timing> byName{};
    std::size_t rounds = 0;
    std::size_t runsOfRound = 0;  ///< of each contender
};

/// Runs all contenders in turn, round by round. Each round starts with another contender. The first
/// round warms up and does not count. Short runs are repeated within a round until they last long
/// enough to be measured.
/// @throws std::runtime_error if a contender fails
Timings TimeInTurn(const Contenders& contenders, std::size_t rounds);

/// 0 if there are no values; of an even number of values, the mean of the middle two.
double Median(std::vector<double> values);

}  // namespace bench
