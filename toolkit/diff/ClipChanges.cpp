#include "toolkit/diff/ClipChanges.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvo::diff {
namespace {

bool Contains(const std::vector<std::size_t>& list, std::size_t index) {
    return std::binary_search(list.begin(), list.end(), index);
}

std::map<std::size_t, std::size_t> Partners(const ListMatch& match) {
    return {match.same.begin(), match.same.end()};
}

template <class Clip>
void SayClip(Comparison& sessions, const Subject& subject, ChangeKind kind, const char* verb,
             const Clip& clip, const Times& times) {
    sessions.report.Say(subject, {kind,
                                  std::string(" ") + verb,
                                  fmt::format(" at {}, {} long", times.Position(clip.startPoint),
                                              times.Length(clip.duration)),
                                  {}});
}

void CompareMedia(const Comparison& sessions, const Members& members, std::uint32_t before,
                  std::uint32_t after) {
    if (before != after) {
        const std::string one = MediaOf(before, sessions.beforeIndex);
        const std::string other = MediaOf(after, sessions.afterIndex);
        members.Say(ChangeKind::Changed, fmt::format(": media from {} to {}", one, other));
    }
}

void CompareClip(const Comparison&, const Members& members, const MidiClip& before,
                 const MidiClip& after) {
    Rename(members, before.name, after.name);
    members.Rest("", before, after, &MidiClip::id, &MidiClip::startPoint, &MidiClip::duration,
                 &MidiClip::sourceInPoint, &MidiClip::name);
}

void CompareClip(const Comparison& sessions, const Members& members, const VideoClip& before,
                 const VideoClip& after) {
    Rename(members, before.name, after.name);
    CompareMedia(sessions, members, before.fileId, after.fileId);
    members.Rest("", before, after, &VideoClip::id, &VideoClip::fileId, &VideoClip::startPoint,
                 &VideoClip::duration, &VideoClip::sourceInPoint, &VideoClip::name);
}

void CompareClip(const Comparison& sessions, const Members& members, const AudioClip& before,
                 const AudioClip& after) {
    Rename(members, before.name, after.name);
    CompareMedia(sessions, members, before.fileId, after.fileId);
    CompareFades(sessions, members, before, after);
    members.Rest("", before, after, &AudioClip::id, &AudioClip::fileId, &AudioClip::startPoint,
                 &AudioClip::duration, &AudioClip::sourceInPoint, &AudioClip::name,
                 &AudioClip::fadeIn, &AudioClip::fadeOut, &AudioClip::crossFadeHeadClipId,
                 &AudioClip::crossFadeTailClipId);
}

/// The order in which a track stores its clips.
template <class Kind>
void CompareClipOrder(Comparison& sessions, const ClipMatch& match, Kind) {
    const std::map<std::size_t, std::size_t> partners = Partners(Kind::Tracks(sessions.match));
    std::map<std::size_t, std::vector<std::pair<std::size_t, std::size_t>>> byTrack;
    for (const auto& [before, after] : match.same) {
        const auto partner = partners.find(before.track);
        if (partner != partners.end() && partner->second == after.track) {
            byTrack[before.track].emplace_back(before.clip, after.clip);
        }
    }
    for (auto& [track, clips] : byTrack) {
        std::sort(clips.begin(), clips.end());
        const bool isOrdered =
            std::is_sorted(clips.begin(), clips.end(),
                           [](const auto& a, const auto& b) { return a.second < b.second; });
        if (!isOrdered) {
            sessions
                .MembersOf(SubjectOf(Kind::Track(sessions.before, track),
                                     Kind::TrackPlace(sessions.before, track),
                                     Kind::TrackPlace(sessions.after, partners.at(track))))
                .Say(ChangeKind::Moved, ": clips stored in another order");
        }
    }
}

template <class Kind>
void CompareClipsOf(Comparison& sessions, const ClipMatch& match, Kind kind) {
    const Told splits = FindSplits(sessions, match, false, kind);
    const Told joins = FindSplits(sessions, match, true, kind);
    for (std::size_t i = 0; i < match.removed.size(); ++i) {
        const ClipPlace& place = match.removed[i];
        if (!joins.others[i] && !Contains(Kind::Tracks(sessions.match).removed, place.track)) {
            const auto& clip = ClipAt(sessions.before, place, kind);
            SayClip(sessions, ClipSubject(sessions, &place, nullptr, kind), ChangeKind::Removed,
                    "removed", clip, sessions.beforeTimes);
        }
    }
    for (std::size_t i = 0; i < match.added.size(); ++i) {
        const ClipPlace& place = match.added[i];
        if (!splits.others[i] && !Contains(Kind::Tracks(sessions.match).added, place.track)) {
            const auto& clip = ClipAt(sessions.after, place, kind);
            SayClip(sessions, ClipSubject(sessions, nullptr, &place, kind), ChangeKind::Added,
                    "added", clip, sessions.afterTimes);
        }
    }
    const std::map<std::size_t, std::size_t> partners = Partners(Kind::Tracks(sessions.match));
    for (std::size_t i = 0; i < match.same.size(); ++i) {
        const auto& [before, after] = match.same[i];
        const auto& one = ClipAt(sessions.before, before, kind);
        const auto& other = ClipAt(sessions.after, after, kind);
        const auto partner = partners.find(before.track);
        const bool isOnItsTrack = partner != partners.end() && partner->second == after.track;
        if (isOnItsTrack && one == other) {
            continue;
        }
        const Subject subject = ClipSubject(sessions, &before, &after, kind);
        ComparePosition(sessions, subject, RangeOf(one), RangeOf(other),
                        isOnItsTrack ? "" : NameOf(Kind::Track(sessions.after, after.track)),
                        splits.pairs[i] || joins.pairs[i]);
        CompareClip(sessions, sessions.MembersOf(subject), one, other);
    }
    CompareClipOrder(sessions, match, kind);
}

}  // namespace

void CompareClips(Comparison& sessions) {
    CompareClipsOf(sessions, sessions.match.videoClips, kVideo);
    CompareClipsOf(sessions, sessions.match.audioClips, kAudio);
    CompareClipsOf(sessions, sessions.match.midiClips, kMidi);
}

}  // namespace orvo::diff
