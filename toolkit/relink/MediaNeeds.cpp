#include "toolkit/relink/MediaNeeds.h"

#include <algorithm>
#include <cmath>

#include <orvo/Lookup.h>

namespace toolkit {
namespace {

/// A stretched clip needs another length than its own, and a loop only its beginning.
double LengthNeededBy(const orvo::AudioClip& clip) {
    if (clip.stretch && clip.stretch->stretchMode != orvo::StretchMode::Off) {
        return 0;
    }
    return static_cast<double>(clip.sourceInPoint) +
           (clip.looped ? 0 : static_cast<double>(clip.duration));
}

std::uint32_t ChannelsNeededBy(const orvo::AudioClip& clip) {
    std::uint32_t channels = 0;
    for (const auto& [channel, source] : clip.channelSources) {
        channels =
            source < 0 ? channels : std::max(channels, static_cast<std::uint32_t>(source) + 1);
    }
    return channels;
}

}  // namespace

std::unordered_map<std::uint32_t, MediaNeeds> FindMediaNeeds(const orvo::Session& session) {
    std::unordered_map<std::uint32_t, MediaNeeds> needs;
    orvo::ForEachAudioTrack(session, [&](const orvo::AudioTrack& track) {
        for (const orvo::AudioClip& clip : track.clips) {
            MediaNeeds& needed = needs[clip.fileId];
            needed.sampleRate = session.sampleRate;
            needed.length =
                session.sampleRate == 0 ? 0 : std::max(needed.length, LengthNeededBy(clip));
            needed.channels = std::max(needed.channels, ChannelsNeededBy(clip));
        }
    });
    return needs;
}

bool Fulfils(const MediaProperties& properties, const MediaNeeds& needs) {
    if (properties.channels < needs.channels) {
        return false;
    }
    if (needs.length <= 0 || properties.sampleRate == 0) {
        return needs.length <= 0;
    }
    return std::ceil(static_cast<double>(properties.frames) * needs.sampleRate /
                     properties.sampleRate) >= needs.length;
}

}  // namespace toolkit
