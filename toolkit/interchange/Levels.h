#pragma once

#include <cstddef>

#include <orvo/Interchange.h>

namespace toolkit::interchange {

/// The level that stands for silence in a session, in dB. A session file holds no infinity.
inline constexpr double kSilence = -144;

/// The factor of a fader, gain or send.
double ToAmplitude(double level, orvo::LevelUnit unit);

/// The level of a factor, never infinite.
double FromAmplitude(double amplitude, orvo::LevelUnit unit);

/// Between two levels on one linear segment, how many straight pieces of amplitude follow the curve
/// within 0.1 dB. 1 if the levels are amplitudes.
std::size_t PiecesBetween(double level, double next, orvo::LevelUnit unit);

/// A pan from -1 (left) to 1 as 0 to 1, and back.
double ToNormalizedPan(double pan);
double FromNormalizedPan(double pan);

}  // namespace toolkit::interchange
