#include "toolkit/interchange/Levels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace toolkit::interchange {

double ToAmplitude(double level, orvo::LevelUnit unit) {
    if (unit == orvo::LevelUnit::Amplitude) {
        return level;
    }
    return level > kSilence ? std::pow(10, level / 20) : 0;
}

double FromAmplitude(double amplitude, orvo::LevelUnit unit) {
    if (unit == orvo::LevelUnit::Amplitude) {
        return amplitude;
    }
    return amplitude > 0 ? std::max(kSilence, 20 * std::log10(amplitude)) : kSilence;
}

std::size_t PiecesBetween(double level, double next, orvo::LevelUnit unit) {
    constexpr double kStep = 2.5;
    // What was in steps before is not divided again because it was rounded.
    constexpr double kSlack = 0.05;
    if (unit == orvo::LevelUnit::Amplitude) {
        return 1;
    }
    // Below silence all levels are the same.
    const double rise = std::abs(std::max(next, kSilence) - std::max(level, kSilence));
    return rise > kStep + kSlack ? static_cast<std::size_t>(std::ceil((rise - kSlack) / kStep)) : 1;
}

double ToNormalizedPan(double pan) {
    return (pan + 1) / 2;
}

double FromNormalizedPan(double pan) {
    return 2 * pan - 1;
}

}  // namespace toolkit::interchange
