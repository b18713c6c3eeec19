#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "toolkit/diff/ClipChanges.h"

namespace orvo::diff {
namespace {

bool HaveSameMedia(const MidiClip& one, const MidiClip& other) {
    return one.events == other.events;
}
template <class Clip>
bool HaveSameMedia(const Clip& one, const Clip& other) {
    return one.fileId == other.fileId;
}

}  // namespace

template <class Kind>
Told FindSplits(Comparison& sessions, const ClipMatch& match, bool joined, Kind kind) {
    const std::vector<ClipPlace>& parts = joined ? match.removed : match.added;
    const Session& session = joined ? sessions.before : sessions.after;
    Told told{std::vector<bool>(match.same.size()), std::vector<bool>(parts.size())};
    if (parts.empty()) {
        return told;
    }
    for (std::size_t pair = 0; pair < match.same.size(); ++pair) {
        const auto& [before, after] = match.same[pair];
        const auto& whole =
            ClipAt(joined ? sessions.after : sessions.before, joined ? after : before, kind);
        const auto& kept = ClipAt(session, joined ? before : after, kind);
        if (whole.duration == kept.duration) {
            continue;
        }
        for (std::size_t part = 0; part < parts.size(); ++part) {
            const auto& other = ClipAt(session, parts[part], kind);
            const bool isFirst = kept.startPoint < other.startPoint;
            if (!told.others[part] && parts[part].track == (joined ? before : after).track &&
                HaveSameMedia(other, whole) && HaveSameMedia(kept, whole) &&
                AreParts(RangeOf(isFirst ? kept : other), RangeOf(isFirst ? other : kept),
                         RangeOf(whole))) {
                const Times& times = joined ? sessions.beforeTimes : sessions.afterTimes;
                sessions.MembersOf(ClipSubject(sessions, &before, &after, kind))
                    .Say(ChangeKind::Split,
                         fmt::format(" {} at {}", joined ? "joined" : "split",
                                     times.Position(std::max(kept.startPoint, other.startPoint))));
                told.pairs[pair] = told.others[part] = true;
                break;
            }
        }
    }
    return told;
}

template Told FindSplits(Comparison&, const ClipMatch&, bool, VideoClips);
template Told FindSplits(Comparison&, const ClipMatch&, bool, AudioClips);
template Told FindSplits(Comparison&, const ClipMatch&, bool, MidiClips);

}  // namespace orvo::diff
