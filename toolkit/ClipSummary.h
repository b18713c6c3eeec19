#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "platform/kelcore/Types.h"
#include "toolkit/SessionSummary.h"

namespace toolkit {

/// One clip of any kind on the timeline. Positions in samples.
struct ClipSummary {
    kelcore::uint32 trackId = 0;
    std::string trackName;
    kelcore::uint32 id = 0;
    std::string name;
    kelcore::int64 start = 0;
    kelcore::int64 duration = 0;
    std::optional<kelcore::uint32> fileId;        ///< empty for a MIDI clip
    std::optional<kelcore::int64> sourceInPoint;  ///< its first sample in the file
    /// What a person should know: "missing" (its media file is not there), "no media" (the session
    /// has no file of that id), "offline", "muted", "locked", "looped", "stretched", "fades" (of
    /// some length), "crossfades", "takes 3", "channel map" (one that changes something),
    /// "effects", "automation", "empty".
    std::vector<std::string> marks;
    std::string group;  ///< the groups that it belongs to, by name

    friend bool operator==(const ClipSummary&, const ClipSummary&) = default;
};

/// All clips, track by track and in the order of their starts. `media` says which files are
/// missing.
std::vector<ClipSummary> SummariseClips(const orvo::Session& session,
                                        const std::vector<MediaSummary>& media);

/// A clip group with the number of its members and of those members that do not exist.
struct GroupSummary {
    kelcore::uint32 id = 0;
    std::string name;
    std::size_t members = 0;
    std::size_t dangling = 0;

    friend bool operator==(const GroupSummary&, const GroupSummary&) = default;
};

std::vector<GroupSummary> SummariseGroups(const orvo::Session& session);

}  // namespace toolkit
