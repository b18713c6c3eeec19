#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/otio/Document.h"

namespace toolkit::interchange::otio {

/// A transition at an end of a clip, in samples.
struct FoundEdge {
    bool isCrossfade = false;
    long double reach = 0;   ///< how far the clip sounds beyond its item
    long double inside = 0;  ///< how far the transition reaches into the item
};

/// A clip with its place on the timeline, in samples.
struct FoundClip {
    Node node;
    long double begin = 0;  ///< of the item, as far as windows show it
    long double end = 0;
    FoundEdge head{};
    FoundEdge tail{};
    /// Of the item's begin in the media, which begin at 0.
    std::int64_t sourceIn = 0;
    double scalar = 1;
    bool isEnabled = true;
    bool isOffline = false;
    std::string url{};  ///< empty: no media
    /// The clip of the track before it that it crossfades with, by its place.
    std::optional<std::size_t> crossfadesWith{};

    std::int64_t Start() const { return Rounded(begin - head.reach); }
    std::int64_t End() const { return Rounded(end + tail.reach); }
};

struct FoundTrack {
    std::optional<Node> node{};  ///< none for what was not a track, and for further layers
    std::string name{};
    bool isVideo = false;
    bool isEnabled = true;
    std::vector<FoundClip> clips{};
};

struct FoundMarker {
    Node node;
    long double start = 0;
    long double duration = 0;
};

/// A timeline without nested compositions.
struct FoundTimeline {
    std::optional<Node> timeline{};  ///< none if the document is none
    std::deque<FoundTrack> tracks{};
    std::vector<FoundMarker> markers{};
};

/// The timeline of a document, or its stack, track or clip; the first one of a collection.
/// @throws Failure  if there is none
Node FindTop(const Node& root, Reporter& reporter);

/// Places all clips of a document. Nested compositions become further tracks.
/// @param samples  the unit of time
/// @throws Failure, Cancelled
FoundTimeline Flatten(const Node& top, const Rate& samples, const Import& job);

}  // namespace toolkit::interchange::otio
