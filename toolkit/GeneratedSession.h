#pragma once

#include <orvo/Model.h>
#include "format/Limits.h"
#include "platform/kelcore/Types.h"

namespace toolkit {

/// The size of a generated session.
struct GeneratedSize {
    kelcore::uint32 tracks = 16;     ///< of all kinds together, the master among them; at least 1
    kelcore::uint32 clips = 52;      ///< on each track except busses and the master
    kelcore::uint32 slots = 3;       ///< effects in the rack of each audio-side track
    kelcore::uint32 keyframes = 64;  ///< in each lane: of every fader and of every effect
};

/// The most tracks, clips, effects and keyframes that a session of this size can have.
kelcore::uint64 CountItems(const GeneratedSize& size);

/// The most that `CountItems` may return. The other half of a session file's room is for the lists
/// that it does not count.
inline constexpr kelcore::uint64 kMostGeneratedItems = tses::limits::kItems / 2;

/// A session as an editor might have it. The last track is the master; the others are audio tracks,
/// a few instruments and busses, and, from eight tracks on, a video track in front. Clips follow
/// each other, some of them faded, stretched or looped. Effects have parameters and saved states,
/// and tracks feed the busses. The media files exist on no machine.
///
/// The same size and seed give the same session everywhere.
orvo::Session GenerateSession(const GeneratedSize& size, kelcore::uint64 seed);

}  // namespace toolkit
