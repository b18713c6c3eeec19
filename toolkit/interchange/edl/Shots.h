#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/edl/FrameClock.h"

namespace toolkit::interchange {

/// A stretch of media in a list. Times are in frames.
struct Shot {
    std::int64_t recordIn = 0;
    std::int64_t recordOut = 0;
    std::int64_t sourceIn = 0;
    double speed = 1;           ///< frames of the source a frame of the list
    std::int64_t dissolve = 0;  ///< with the shot before it, which ends so much after this begins
    std::int64_t fadeIn = 0;
    std::int64_t fadeOut = 0;
    std::uint32_t fileId = orvo::kNoId;
    bool isSecondChannel = false;  ///< plays the second channel of its file only
    std::size_t clip = 0;          ///< the number of its clip in the track
    bool beginsClip = true;        ///< false for the later rounds of a loop
    const std::string* name = nullptr;

    std::int64_t Length() const { return recordOut - recordIn; }
    std::int64_t SourceAt(std::int64_t record) const;
};

/// Shots of which none covers another, in order of time.
using ShotList = std::vector<Shot>;

/// The longest dissolve, which has three digits.
inline constexpr std::int64_t kLongestDissolve = 999;

/// The clips of a track, at `place`, as lists. Clips that overlap without a crossfade go to
/// different lists. Reports what was rounded or is lost of each clip.
std::vector<ShotList> ShotsOf(const orvo::AudioTrack& track, const ModelPath& place,
                              const FrameClock& clock, const Export& job);
std::vector<ShotList> ShotsOf(const orvo::VideoTrack& track, const ModelPath& place,
                              const FrameClock& clock, const Export& job);

}  // namespace toolkit::interchange
