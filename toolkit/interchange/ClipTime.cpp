#include "toolkit/interchange/ClipTime.h"

#include <algorithm>
#include <cmath>

#include "toolkit/Saturating.h"

namespace toolkit::interchange {

std::int64_t ToSamples(double samples) {
    // The largest double below the largest 64-bit number.
    constexpr double kMost = 9223372036854774784.0;
    return std::isnan(samples) ? 0 : std::llround(std::clamp(samples, -kMost, kMost));
}

double StretchOf(const orvo::AudioClip& clip, orvo::StretchMeaning meaning) {
    // A ratio that differs less is a rounding error of programs that count in 32 bits.
    constexpr double kTolerance = 1e-5;
    if (!clip.stretch || clip.stretch->stretchMode == orvo::StretchMode::Off) {
        return 1;
    }
    const double ratio = clip.stretch->stretchRatio;
    if (!(ratio > 0) || !std::isfinite(ratio) || std::abs(ratio - 1) < kTolerance) {
        return 1;
    }
    return meaning == orvo::StretchMeaning::TimelineBySource ? ratio : 1 / ratio;
}

std::vector<Piece> PiecesOf(const orvo::AudioClip& clip, double stretch, std::int64_t fileLength,
                            std::size_t limit) {
    const Piece whole = {
        .start = clip.startPoint, .duration = clip.duration, .sourceIn = clip.sourceInPoint};
    if (!clip.looped || fileLength <= 0 || clip.sourceInPoint < 0) {
        return {whole};
    }
    std::vector<Piece> pieces;
    std::int64_t sourceIn = clip.sourceInPoint % fileLength;
    // The boundaries are rounded, not the lengths, so that they do not drift.
    double played = 0;
    std::int64_t begin = 0;
    while (begin < clip.duration && pieces.size() < limit) {
        played += static_cast<double>(fileLength - sourceIn) * stretch;
        const bool isLast = pieces.size() + 1 == limit;
        const std::int64_t end = isLast || played >= static_cast<double>(clip.duration)
                                     ? clip.duration
                                     : ToSamples(played);
        if (end > begin) {
            pieces.push_back({.start = SaturatingSum(clip.startPoint, begin),
                              .duration = end - begin,
                              .sourceIn = sourceIn});
        }
        begin = end;
        sourceIn = 0;
    }
    return pieces.empty() ? std::vector{whole} : pieces;
}

}  // namespace toolkit::interchange
