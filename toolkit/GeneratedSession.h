#pragma once

#include <orvo/Model.h>
#include "platform/kelcore/Types.h"

namespace toolkit {

/// How much there is to be in a generated session.
struct GeneratedSize {
    kelcore::uint32 tracks = 16;     ///< of all kinds together, the master among them; at least 1
    kelcore::uint32 clips = 52;      ///< on each track that has clips: all but busses and master
    kelcore::uint32 slots = 3;       ///< effects in the rack of each track of the audio side
    kelcore::uint32 keyframes = 64;  ///< in each lane: of every fader and of every effect
};

/// How many tracks, clips, effects and keyframes come of that, at most.
kelcore::uint64 CountItems(const GeneratedSize& size);

/// The most that `CountItems` may give: a session file holds lists of that length together.
inline constexpr kelcore::uint64 kMostGeneratedItems = 8 * 1024 * 1024;

/// A session as one might be in the editor: the last track is the master, others are audio tracks,
/// a few instruments and busses, and a video track in front if there are eight tracks or more.
/// Clips follow each other, some of them faded, stretched or looped; effects have parameters and
/// saved states; tracks feed the busses. The media exist on no machine.
///
/// The same size and seed give the same session everywhere.
orvo::Session GenerateSession(const GeneratedSize& size, kelcore::uint64 seed);

}  // namespace toolkit
