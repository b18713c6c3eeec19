#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/diff/ClipKinds.h"
#include "toolkit/diff/Comparison.h"
#include "toolkit/diff/Names.h"
#include "toolkit/diff/Order.h"

namespace orvo::diff {
namespace {

std::string CountOf(std::size_t clips) {
    return clips == 0 ? "" : fmt::format(" with {} clip{}", clips, clips == 1 ? "" : "s");
}

std::string Contents(const VideoTrack& track) {
    return CountOf(track.clips.size());
}
std::string Contents(const AudioTrack& track) {
    return CountOf(track.clips.size() + track.midiClips.size());
}

/// The tracks of the list, in the order in which they are shown.
template <class Kind>
std::vector<std::size_t> ShownOrder(const Session& session, std::size_t count, Kind) {
    std::vector<std::size_t> order(count);
    for (std::size_t i = 0; i < count; ++i) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return Kind::Track(session, a).index < Kind::Track(session, b).index;
    });
    return order;
}

/// Says which tracks moved among the others.
template <class Kind>
bool CompareTrackOrder(Comparison& sessions, Kind kind, std::size_t beforeCount,
                       std::size_t afterCount) {
    const std::vector<std::size_t> shownBefore = ShownOrder(sessions.before, beforeCount, kind);
    const std::vector<std::size_t> shownAfter = ShownOrder(sessions.after, afterCount, kind);
    std::vector<std::size_t> rank(afterCount);
    for (std::size_t i = 0; i < afterCount; ++i) {
        rank[shownAfter[i]] = i;
    }
    std::map<std::size_t, std::size_t> partner;
    for (const auto& [i, j] : Kind::Tracks(sessions.match).same) {
        partner.emplace(i, j);
    }
    std::vector<std::size_t> sequence;
    std::map<std::size_t, std::size_t> beforeOf;  // a rank to the index before
    for (const std::size_t i : shownBefore) {
        if (const auto found = partner.find(i); found != partner.end()) {
            sequence.push_back(rank[found->second]);
            beforeOf.emplace(rank[found->second], i);
        }
    }
    const std::vector<bool> keeps = KeepsOrder(sequence);
    std::vector<bool> stays(afterCount, true);
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        stays[sequence[i]] = keeps[i];
    }
    std::string behind;
    for (std::size_t i = 0; i < afterCount; ++i) {
        const auto& track = Kind::Track(sessions.after, shownAfter[i]);
        if (stays[i]) {
            behind = NameOf(track);
            continue;
        }
        const std::size_t old = beforeOf.at(i);
        sessions.report.Say(
            SubjectOf(Kind::Track(sessions.before, old), Kind::TrackPlace(sessions.before, old),
                      Kind::TrackPlace(sessions.after, shownAfter[i])),
            {ChangeKind::Moved,
             behind.empty() ? " moved to the top" : " moved behind " + behind,
             {},
             {}});
    }
    const bool hasMoved = std::find(keeps.begin(), keeps.end(), false) != keeps.end();
    if (!hasMoved) {
        CompareOrder(sessions, Kind::Tracks(sessions.match), "tracks stored");
    }
    return hasMoved;
}

void CompareTrack(const Comparison&, const Members& members, const VideoTrack& before,
                  const VideoTrack& after) {
    members.Rest("", before, after, &VideoTrack::name, &VideoTrack::clips, &VideoTrack::index);
}

void CompareTrack(const Comparison& sessions, const Members& members, const AudioTrack& before,
                  const AudioTrack& after) {
    CompareRouting(sessions, members, before, after);
    members.Rest("", before, after, &AudioTrack::id, &AudioTrack::name, &AudioTrack::index,
                 &AudioTrack::clips, &AudioTrack::midiClips, &AudioTrack::outputTrackId,
                 &AudioTrack::hardwareOutputId, &AudioTrack::inputId, &AudioTrack::sendList);
}

template <class Kind>
void CompareTracksOf(Comparison& sessions, Kind kind, std::size_t beforeCount,
                     std::size_t afterCount) {
    const ListMatch& match = Kind::Tracks(sessions.match);
    for (const std::size_t i : match.removed) {
        const auto& track = Kind::Track(sessions.before, i);
        sessions.report.Say(SubjectOf(track, Kind::TrackPlace(sessions.before, i), std::nullopt),
                            {ChangeKind::Removed, " removed", Contents(track), {}});
    }
    for (const std::size_t i : match.added) {
        const auto& track = Kind::Track(sessions.after, i);
        sessions.report.Say(SubjectOf(track, std::nullopt, Kind::TrackPlace(sessions.after, i)),
                            {ChangeKind::Added, " added", Contents(track), {}});
    }
    const bool hasNewOrder = CompareTrackOrder(sessions, kind, beforeCount, afterCount);
    const bool indicesFollow = hasNewOrder || !sessions.match.videoTracks.removed.empty() ||
                               !sessions.match.videoTracks.added.empty() ||
                               !sessions.match.audioTracks.removed.empty() ||
                               !sessions.match.audioTracks.added.empty();
    for (const auto& [i, j] : match.same) {
        const auto& before = Kind::Track(sessions.before, i);
        const auto& after = Kind::Track(sessions.after, j);
        const Members members = sessions.MembersOf(SubjectOf(
            before, Kind::TrackPlace(sessions.before, i), Kind::TrackPlace(sessions.after, j)));
        Rename(members, before.name, after.name);
        if (!indicesFollow && before.index != after.index) {
            members.FromTo("index", std::to_string(before.index), std::to_string(after.index));
        }
        CompareTrack(sessions, members, before, after);
    }
}

}  // namespace

void CompareTracks(Comparison& sessions) {
    CompareTracksOf(sessions, kVideo, sessions.before.videoTracks.size(),
                    sessions.after.videoTracks.size());
    CompareTracksOf(sessions, kAudio, sessions.before.audioTracks.size(),
                    sessions.after.audioTracks.size());
}

}  // namespace orvo::diff
