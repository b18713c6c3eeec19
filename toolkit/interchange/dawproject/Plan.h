#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Lanes.h"

namespace toolkit::interchange::dawproject {

/// A lane that stands beside the clips of its track.
struct TrackLane {
    std::string parameter;  ///< the id of what it moves
    std::string_view unit{};
    bool isSwitch = false;  ///< its values are on and off
    std::vector<LanePoint> points{};
};

/// A track to write. One of the two pointers is null.
struct PlannedTrack {
    const orvo::AudioTrack* audio = nullptr;
    const orvo::VideoTrack* video = nullptr;
    ModelPath place{};
    std::string id{};
    std::vector<TrackLane> lanes{};  ///< as the structure finds them

    std::string ChannelId() const { return id + "ch"; }
};

/// The tracks of a session in the order in which they are written, video tracks first among those
/// of the same index.
class Plan {
public:
    explicit Plan(const orvo::Session& session);

    std::vector<PlannedTrack>& Tracks() { return tracks_; }

    /// The first audio track with an id; null if there is none.
    const PlannedTrack* Find(std::int32_t trackId) const;

    /// The first master; null if there is none.
    const PlannedTrack* Master() const { return master_; }

    /// Where the output of a track leads: to its track, else to the master; null: nowhere.
    const PlannedTrack* DestinationOf(const PlannedTrack& track) const;

    /// Whether sends feed the bus, and no output does.
    bool IsFedBySendsOnly(const PlannedTrack& bus) const;

private:
    struct Feeds {
        bool outputs = false;
        bool sends = false;
    };

    std::vector<PlannedTrack> tracks_;
    std::unordered_map<std::int64_t, const PlannedTrack*> byId_;
    std::unordered_map<const PlannedTrack*, Feeds> feeds_;
    const PlannedTrack* master_ = nullptr;
};

}  // namespace toolkit::interchange::dawproject
