#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "bench/Contender.h"

namespace bench {

/// Medians over the rounds, of one run.
struct Timing {
    double wallMs = 0;
    double userMs = 0;     ///< processor time outside the system
    double wallRatio = 0;  ///< to the first contender's run in the same round
    double userRatio = 0;
};

struct Timings {
    std::map<std::string, Timing> byName{};
    std::size_t rounds = 0;
    std::size_t runsOfRound = 0;  ///< of each contender
};

/// Runs all contenders in turn, round by round, each round beginning with another one. A first
/// round warms up and does not count. Each runs as often in a round as it takes to make a short run
/// long enough to be measured.
/// @throws std::runtime_error if one cannot do the work
Timings TimeInTurn(const Contenders& contenders, std::size_t rounds);

/// 0 for none. Of an even number the mean of the two in the middle.
double Median(std::vector<double> values);

}  // namespace bench
