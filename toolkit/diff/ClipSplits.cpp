#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "toolkit/diff/ClipChanges.h"

namespace orvo::diff {
namespace {

bool HaveSameMedia(const MidiClip& part, const MidiClip& whole) {
    return part.events == whole.events;
}
template <class Clip>
bool HaveSameMedia(const Clip& part, const Clip& whole) {
    return part.fileId == whole.fileId;
}

/// The clips that a split may have made, by their tracks and where they start.
using Starts = std::multimap<std::pair<std::size_t, std::int64_t>, std::size_t>;

template <class Kind>
Starts StartsOf(const std::vector<ClipPlace>& parts, const Session& session, Kind kind) {
    Starts starts;
    for (std::size_t part = 0; part < parts.size(); ++part) {
        const auto& clip = ClipAt(session, parts[part], kind);
        starts.emplace(std::pair(parts[part].track, clip.startPoint), part);
    }
    return starts;
}

template <class Clip>
bool MakeOne(const Clip& kept, const Clip& other, const Clip& whole) {
    const bool isFirst = kept.startPoint < other.startPoint;
    return HaveSameMedia(other, whole) && HaveSameMedia(kept, whole) &&
           AreParts(RangeOf(isFirst ? kept : other), RangeOf(isFirst ? other : kept),
                    RangeOf(whole));
}

}  // namespace

template <class Kind>
Told FindSplits(Comparison& sessions, const ClipMatch& match, bool joined, Kind kind) {
    const std::vector<ClipPlace>& parts = joined ? match.removed : match.added;
    const Session& session = joined ? sessions.before : sessions.after;
    const Times& times = joined ? sessions.beforeTimes : sessions.afterTimes;
    const Starts starts = StartsOf(parts, session, kind);
    Told told{std::vector<bool>(match.same.size()), std::vector<bool>(parts.size())};
    const auto tell = [&](std::size_t pair, const auto& kept, const auto& whole,
                          std::pair<std::size_t, std::int64_t> start) {
        const auto [first, last] = starts.equal_range(start);
        for (auto part = first; part != last && !told.pairs[pair]; ++part) {
            const auto& other = ClipAt(session, parts[part->second], kind);
            if (!told.others[part->second] && MakeOne(kept, other, whole)) {
                const auto& [before, after] = match.same[pair];
                sessions.MembersOf(ClipSubject(sessions, &before, &after, kind))
                    .Say(ChangeKind::Split,
                         fmt::format(" {} at {}", joined ? "joined" : "split",
                                     times.Position(std::max(kept.startPoint, other.startPoint))));
                told.pairs[pair] = told.others[part->second] = true;
            }
        }
    };
    for (std::size_t pair = 0; pair < match.same.size() && !parts.empty(); ++pair) {
        const auto& [before, after] = match.same[pair];
        const std::size_t track = (joined ? before : after).track;
        const auto& whole =
            ClipAt(joined ? sessions.after : sessions.before, joined ? after : before, kind);
        const auto& kept = ClipAt(session, joined ? before : after, kind);
        if (whole.duration != kept.duration) {
            tell(pair, kept, whole, {track, EndOf(RangeOf(kept))});
            tell(pair, kept, whole, {track, whole.startPoint});
        }
    }
    return told;
}

template Told FindSplits(Comparison&, const ClipMatch&, bool, VideoClips);
template Told FindSplits(Comparison&, const ClipMatch&, bool, AudioClips);
template Told FindSplits(Comparison&, const ClipMatch&, bool, MidiClips);

}  // namespace orvo::diff
