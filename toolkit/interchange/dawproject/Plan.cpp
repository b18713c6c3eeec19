#include "toolkit/interchange/dawproject/Plan.h"

#include <fmt/format.h>

#include <algorithm>

namespace toolkit::interchange::dawproject {
namespace {

std::uint32_t IndexOf(const PlannedTrack& track) {
    return track.audio != nullptr ? track.audio->index : track.video->index;
}

std::vector<PlannedTrack> TracksInOrder(const orvo::Session& session) {
    std::vector<PlannedTrack> tracks;
    for (std::size_t i = 0; i < session.videoTracks.size(); ++i) {
        tracks.push_back({.video = &session.videoTracks[i],
                          .place = ModelPath() / &orvo::Session::videoTracks / i});
    }
    for (std::size_t i = 0; i < session.audioTracks.size(); ++i) {
        tracks.push_back({.audio = &session.audioTracks[i],
                          .place = ModelPath() / &orvo::Session::audioTracks / i});
    }
    std::ranges::stable_sort(tracks, {}, IndexOf);
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        tracks[i].id = fmt::format("t{}", i + 1);
    }
    return tracks;
}

}  // namespace

Plan::Plan(const orvo::Session& session) : tracks_(TracksInOrder(session)) {
    for (const PlannedTrack& track : tracks_) {
        if (track.audio == nullptr) {
            continue;
        }
        byId_.emplace(track.audio->id, &track);
        if (master_ == nullptr && track.audio->kind == orvo::TrackKind::Master) {
            master_ = &track;
        }
    }
    for (const PlannedTrack& track : tracks_) {
        if (const PlannedTrack* const target = DestinationOf(track)) {
            feeds_[target].outputs = true;
        }
        if (track.audio == nullptr || !track.audio->sendList) {
            continue;
        }
        for (const auto& slot : track.audio->sendList->slots) {
            if (const PlannedTrack* const target = slot ? Find(slot->sendOutputId) : nullptr) {
                feeds_[target].sends = true;
            }
        }
    }
}

const PlannedTrack* Plan::Find(std::int32_t trackId) const {
    const auto found = trackId < 0 ? byId_.end() : byId_.find(trackId);
    return found != byId_.end() ? found->second : nullptr;
}

const PlannedTrack* Plan::DestinationOf(const PlannedTrack& track) const {
    if (track.audio == nullptr || track.audio->kind == orvo::TrackKind::Master) {
        return nullptr;
    }
    const PlannedTrack* const target =
        track.audio->outputTrackId > 0 ? Find(track.audio->outputTrackId) : nullptr;
    return target != nullptr ? target : master_;
}

bool Plan::IsFedBySendsOnly(const PlannedTrack& bus) const {
    const auto found = feeds_.find(&bus);
    return found != feeds_.end() && found->second.sends && !found->second.outputs;
}

}  // namespace toolkit::interchange::dawproject
