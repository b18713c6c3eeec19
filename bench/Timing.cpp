#include "bench/Timing.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <stdexcept>

namespace bench {
namespace {

/// Shorter times are too close to the resolution of the clock of processor time.
constexpr double kShortestRoundMs = 60;
constexpr double kMostRuns = 2000;

struct Sample {
    double wallMs = 0;
    double userMs = 0;
};

double UserMs() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) * 1e3 +
           static_cast<double>(usage.ru_utime.tv_usec) / 1e3;
}

double WallMs() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

/// The mean over several runs.
Sample Take(const Contender& contender, std::size_t runs) {
    Sample sum;
    for (std::size_t i = 0; i < runs; ++i) {
        contender.prepare();
        const Sample before = {WallMs(), UserMs()};
        const bool done = contender.run();
        const Sample after = {WallMs(), UserMs()};
        contender.finish();
        if (!done) {
            throw std::runtime_error(contender.name + " could not do the work");
        }
        sum.wallMs += after.wallMs - before.wallMs;
        sum.userMs += after.userMs - before.userMs;
    }
    const auto count = static_cast<double>(runs);
    return {sum.wallMs / count, sum.userMs / count};
}

/// One sample of each contender, in the contenders' order; measures the `first` one first.
std::vector<Sample> TakeRound(const Contenders& contenders, std::size_t first, std::size_t runs) {
    std::vector<Sample> samples(contenders.size());
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        const std::size_t at = (first + i) % contenders.size();
        samples[at] = Take(contenders[at], runs);
    }
    return samples;
}

std::size_t RunsForRound(double runMs) {
    const double runs = std::ceil(kShortestRoundMs / std::max(runMs, 0.001));
    return static_cast<std::size_t>(std::clamp(runs, 1.0, kMostRuns));
}

using Rounds = std::vector<std::vector<Sample>>;

template <class Measure>
double MedianOver(const Rounds& rounds, Measure measure) {
    std::vector<double> values;
    for (const std::vector<Sample>& round : rounds) {
        values.push_back(measure(round));
    }
    return Median(std::move(values));
}

double Ratio(double value, double floor) {
    return floor > 0 ? value / floor : 0;
}

Timing Summarise(const Rounds& rounds, std::size_t at) {
    return {MedianOver(rounds, [&](const auto& round) { return round[at].wallMs; }),
            MedianOver(rounds, [&](const auto& round) { return round[at].userMs; }),
            MedianOver(rounds,
                       [&](const auto& round) { return Ratio(round[at].wallMs, round[0].wallMs); }),
            MedianOver(rounds, [&](const auto& round) {
                return Ratio(round[at].userMs, round[0].userMs);
            })};
}

}  // namespace

void RunOnce(const Contender& contender) {
    Take(contender, 1);
}

Timings TimeInTurn(const Contenders& contenders, std::size_t rounds) {
    Timings timings;
    timings.rounds = rounds;
    timings.runsOfRound = RunsForRound(TakeRound(contenders, 0, 1).front().wallMs);
    Rounds samples;
    for (std::size_t i = 0; i < rounds; ++i) {
        samples.push_back(TakeRound(contenders, i, timings.runsOfRound));
    }
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        timings.byName[contenders[i].name] = Summarise(samples, i);
    }
    return timings;
}

double Median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace bench
