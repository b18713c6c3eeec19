#pragma once

#include <cstdint>
#include <vector>

#include <orvo/Layout.h>

namespace toolkit {

/// The lanes with keyframes of a track: fader, mute, pan, equaliser, sends, rack.
std::vector<orvo::LayoutLane> LanesOf(const orvo::AudioTrack& track);

/// Those of a clip: gain, mute, pan, rack.
/// @param start  of the clip, from which its automation counts
std::vector<orvo::LayoutLane> LanesOf(const orvo::AudioClip& clip, std::int64_t start);

}  // namespace toolkit
