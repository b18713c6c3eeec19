#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/diff/ClipKinds.h"
#include "toolkit/diff/ClipRanges.h"
#include "toolkit/diff/Comparison.h"
#include "toolkit/diff/Names.h"

/// The parts of a comparison of clips.
namespace orvo::diff {

/// @param before,after  where the clip is; null: it is not there. It is in one of them at least
template <class Kind>
Subject ClipSubject(const Comparison& sessions, const ClipPlace* before, const ClipPlace* after,
                    Kind kind) {
    const Session& session = before != nullptr ? sessions.before : sessions.after;
    const ClipPlace& place = before != nullptr ? *before : *after;
    const auto placeOf = [&](const Session& owner, const ClipPlace* at) {
        return at == nullptr ? std::nullopt
                             : std::optional(Kind::TrackPlace(owner, at->track) +
                                             PlaceIn(KeyOf(Kind::kList), at->clip));
    };
    return {ChangedThing::Clip,
            "clip",
            NameOf(ClipAt(session, place, kind),
                   before != nullptr ? sessions.beforeIndex : sessions.afterIndex),
            " on " + NameOf(Kind::Track(session, place.track)),
            placeOf(sessions.before, before),
            placeOf(sessions.after, after)};
}

/// Clips whose ends are told by a sentence about a split.
struct Told {
    std::vector<bool> pairs{};   ///< as in `ClipMatch::same`
    std::vector<bool> others{};  ///< as in `ClipMatch::added` or `ClipMatch::removed`
};

/// Finds parts that came from one clip, or with `joined` clips that became one, and says so.
template <class Kind>
Told FindSplits(Comparison& sessions, const ClipMatch& match, bool joined, Kind kind);

/// Says where a clip went, and which part of its media it plays.
/// @param newTrack  the name of its track, if that is another one
/// @param isSplit   whether a sentence already tells its ends
void ComparePosition(Comparison& sessions, const Subject& subject, const ClipRange& one,
                     const ClipRange& other, const std::string& newTrack, bool isSplit);

void CompareFades(const Comparison& sessions, const Members& members, const AudioClip& before,
                  const AudioClip& after);

}  // namespace orvo::diff
