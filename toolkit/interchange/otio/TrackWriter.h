#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "session/json/JsonWriter.h"
#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/otio/Metadata.h"
#include "toolkit/interchange/otio/Objects.h"
#include "toolkit/interchange/otio/TrackPlan.h"

namespace toolkit::interchange::otio {

/// The URL of each file, by its id.
using Urls = std::map<std::uint32_t, std::string>;

/// Writes the tracks of a session, each with its lanes.
class TrackWriter {
public:
    /// All must outlive this object.
    TrackWriter(const Export& job, const Units& units, const Urls& urls,
                orvo::json::JsonWriter& out)
        : job_(job), units_(units), urls_(urls), out_(out), objects_(out, units.counts) {}

    /// @param position  in the session's list
    void Write(const orvo::VideoTrack& track, std::size_t position);
    void Write(const orvo::AudioTrack& track, std::size_t position);

    /// The files that a clip of those tracks plays.
    const std::set<std::uint32_t>& UsedFiles() const { return usedFiles_; }

private:
    /// Where a clip stands on its lane.
    struct Placed {
        std::size_t clip = 0;
        std::int64_t begin = 0;  ///< of the item, between the cuts of crossfades
        std::int64_t end = 0;
        std::int64_t crossfadeIn = 0;  ///< before the item's begin
        bool hasHeadCrossfade = false;
        bool hasTailCrossfade = false;
        std::int64_t headOut = 0;  ///< how far the crossfade at the begin reaches into the item
        std::int64_t tailIn = 0;   ///< how far that at the end does
    };

    template <class Track>
    void WriteLanes(const Track& track, const Track& rest, const TrackPlan& plan,
                    std::size_t position, bool isEnabled);
    template <class Track>
    void WriteOwn(const Track& rest, const TrackPlan& plan, std::size_t lane, std::size_t position);
    static std::vector<Placed> PlacesOf(const TrackPlan& plan, const Lane& lane);
    void WriteChildren(const TrackPlan& plan, const Lane& lane);
    void WriteClip(const TrackPlan& plan, const Placed& placed);
    template <class Clip>
    void WriteOwn(const Clip& clip, std::string_view key);
    void WriteOwn(const ClipPointer& clip);
    void WriteReference(const PlannedClip& clip);
    void WriteReference(std::uint32_t fileId);

    const Export& job_;
    const Units& units_;
    const Urls& urls_;
    orvo::json::JsonWriter& out_;
    Objects objects_;
    std::set<std::uint32_t> usedFiles_;
};

}  // namespace toolkit::interchange::otio
