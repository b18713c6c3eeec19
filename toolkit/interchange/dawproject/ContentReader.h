#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/interchange/dawproject/Leaf.h"
#include "toolkit/interchange/dawproject/TimeFrame.h"

namespace toolkit::interchange::dawproject {

/// Takes what a clip of the document comes down to; `clip` is the outermost element. `track` is the
/// id of the track that it is on, empty if none is said.
using LeafSink = std::function<void(const pugi::xml_node& clip, std::string_view track,
                                    std::vector<Leaf> leaves)>;

/// Takes a lane of a track.
/// @param target  the element "Target"
using LaneSink =
    std::function<void(const pugi::xml_node& target, const std::vector<ReadPoint>& points)>;

/// Flattens the lanes of an arrangement. Nesting, references and repetitions are bounded.
class ContentReader {
public:
    ContentReader(const ProjectDocument& document, std::uint32_t sampleRate, LeafSink leaves,
                  LaneSink lanes)
        : document_(document),
          sampleRate_(sampleRate),
          leafSink_(std::move(leaves)),
          laneSink_(std::move(lanes)) {}

    /// @param timeline  an element "Lanes" or another timeline, outside of clips
    /// @throws Failure
    void Read(const pugi::xml_node& timeline, const TimeFrame& frame) {
        Visit(timeline, {.frame = frame});
    }

private:
    /// Where an element is.
    struct Place {
        TimeFrame frame;
        Window window{};  ///< what is heard of the element, in the frame's time
        double stretch = 1;
        std::string_view track{};
        std::string_view name{};
        double hue = -1;
        bool isMuted = false;
        bool isInClip = false;
        int depth = 0;
    };

    /// How a clip plays its content.
    struct Play {
        pugi::xml_node clip{};
        pugi::xml_node content{};
        Window window{};       ///< of the clip, in the time of its parent
        double playStart = 0;  ///< in the time of the content
        double scale = 1;      ///< units of the parent for each of the content
        TimeUnit unit = TimeUnit::Beats;
        std::optional<Window> loop{};  ///< in the time of the content
    };

    void Visit(const pugi::xml_node& timeline, Place place);
    void VisitLanes(const pugi::xml_node& lanes, const Place& place);
    void VisitClips(const pugi::xml_node& clips, const Place& place);
    void VisitWarps(const pugi::xml_node& warps, const Place& place);
    void VisitMedia(const pugi::xml_node& media, LeafKind kind, const Place& place);
    void VisitNotes(const pugi::xml_node& notes, const Place& place);
    void ReadTrackLane(const pugi::xml_node& points, const Place& place);

    void ReadClip(const pugi::xml_node& clip, Place place);
    std::optional<Play> PlayOf(const pugi::xml_node& clip, const Place& place);
    pugi::xml_node ContentOf(const pugi::xml_node& clip);
    void ReadLoop(Play& play, const Place& place);
    void ReadContent(const Play& play, const Place& place);
    bool ReadWholeLoop(const Play& play, const Place& place);
    void ReadTurns(const Play& play, const Place& place);
    void ReadTurn(const Play& play, const Place& place, double outer, const Window& turn);
    void ApplyFades(const Play& play, const Place& place, std::size_t first);
    std::int64_t FadeOf(const Play& play, const Place& place, const char* attribute, double at,
                        double direction);

    void ApplyEnvelope(const pugi::xml_node& points, const Place& place, std::size_t first);
    std::vector<ReadPoint> PointsAt(const pugi::xml_node& points, const TimeFrame& frame);

    void AddLeaf(Leaf leaf, const Place& place);
    std::int64_t SampleAt(const pugi::xml_node& element, const Place& place, double time) const;
    void CountStep(const pugi::xml_node& element);
    void Lose(const pugi::xml_node& element, std::string_view what, std::string_view value = {});

    const ProjectDocument& document_;
    std::uint32_t sampleRate_;
    LeafSink leafSink_;
    LaneSink laneSink_;
    std::vector<Leaf> leaves_;  // of the outermost clip
    std::size_t steps_ = 0;
};

}  // namespace toolkit::interchange::dawproject
