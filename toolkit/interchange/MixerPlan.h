#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// A track and where it stands in the session.
struct PlannedTrack {
    const orvo::AudioTrack* track = nullptr;
    ModelPath place{};
};

/// A send that leads to a planned track.
struct PlannedSend {
    const orvo::SendSlot* slot = nullptr;
    ModelPath place{};
    std::size_t target = 0;  ///< the number of the planned track
};

/// The tracks of a mixer for formats that have one master and no metronome.
class MixerPlan {
public:
    /// Reports a metronome and further masters as lost. A master's clips become a track of their
    /// own.
    /// @param session  must outlive the plan
    MixerPlan(const orvo::Session& session, Reporter& reporter);
    MixerPlan(const MixerPlan&) = delete;
    MixerPlan& operator=(const MixerPlan&) = delete;

    /// All but the master, in the order of the session.
    const std::vector<PlannedTrack>& Tracks() const { return tracks_; }

    /// No track if there is no master.
    const PlannedTrack& Master() const { return master_; }

    /// The number of the track that a track feeds; no value for the master.
    std::optional<std::size_t> OutputOf(const orvo::AudioTrack& track) const;

    /// The sends of a track. Reports those that lead nowhere, and those of the master, as lost.
    std::vector<PlannedSend> SendsOf(const PlannedTrack& planned, Reporter& reporter) const;

private:
    void MoveClipsOfMaster(Reporter& reporter);
    std::optional<std::size_t> NumberOf(std::int32_t trackId) const;

    std::vector<PlannedTrack> tracks_;
    PlannedTrack master_;
    orvo::AudioTrack clipsOfMaster_;
    std::unordered_map<std::uint32_t, std::size_t> numbers_;
};

}  // namespace toolkit::interchange
