#pragma once

#include <cstdint>
#include <vector>

#include <orvo/Interchange.h>
#include <orvo/Model.h>

namespace toolkit::interchange {

/// The nearest sample, or the last one that can be counted. No number is 0.
std::int64_t ToSamples(double samples);

/// How many times longer a clip lasts than what it plays: 1 unless it is stretched.
double StretchOf(const orvo::AudioClip& clip, orvo::StretchMeaning meaning);

/// A stretch of media that plays once. Equal to the clip, but for looped ones.
struct Piece {
    std::int64_t start = 0;     ///< on the timeline
    std::int64_t duration = 0;  ///< on the timeline
    std::int64_t sourceIn = 0;  ///< in the file, at the session's rate and unstretched

    friend bool operator==(const Piece&, const Piece&) = default;
};

/// The pieces of a clip, which plays its file again from the start where it ends if it is looped.
/// @param fileLength  of the file at the session's rate; 0 if unknown: the clip is one piece
/// @param limit       the most pieces; the last one then reaches to the clip's end
std::vector<Piece> PiecesOf(const orvo::AudioClip& clip, double stretch, std::int64_t fileLength,
                            std::size_t limit = 10'000);

}  // namespace toolkit::interchange
