#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/MixerPlan.h"

namespace toolkit::interchange {

/// A channel of a media file.
struct ArdourSource {
    std::uint32_t fileId = orvo::kNoId;
    std::uint32_t channel = 0;

    bool operator<(const ArdourSource& other) const {
        return std::pair(fileId, channel) < std::pair(other.fileId, other.channel);
    }
};

/// The channels of media that regions play, each with an id.
class ArdourSources {
public:
    /// @return the number of the source, which is its id less the first one's
    std::size_t NumberOf(const ArdourSource& source);

    const std::vector<ArdourSource>& All() const { return all_; }

private:
    std::vector<ArdourSource> all_;
    std::map<ArdourSource, std::size_t> numbers_;
};

/// A clip, or a round of one that is looped, as it is played.
struct ArdourRegion {
    const orvo::AudioClip* clip = nullptr;
    std::size_t clipNumber = 0;  ///< in its track
    std::int64_t position = 0;   ///< on the timeline
    std::int64_t length = 0;
    std::int64_t start = 0;   ///< in the media
    std::int64_t offset = 0;  ///< of the region in its clip
    std::int64_t fadeIn = 0;
    std::int64_t fadeOut = 0;
    std::size_t layer = 0;
    bool isOpaque = true;
    bool beginsClip = true;              ///< false for the later rounds of a loop
    std::vector<std::size_t> sources{};  ///< for each channel of the track
};

/// How many channels a track has in Ardour.
std::uint32_t ArdourChannelsOf(const orvo::AudioTrack& track, const orvo::Session& session);

/// The regions of a track in order of time. Reports what is cut off or lost of each clip.
/// @throws Failure  if media have another rate than the session
std::vector<ArdourRegion> ArdourRegionsOf(const PlannedTrack& planned, ArdourSources& sources,
                                          const Export& job);

}  // namespace toolkit::interchange
