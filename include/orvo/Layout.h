#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// A session as a picture before any pixel: rows, boxes, curves and the ruler. Who draws it chooses
/// scale, fonts and colours:
///
///     orvo::Layout layout = orvo::MakeLayout(session);
///     for (const orvo::LayoutRow& row : layout.rows) { ... }
///
/// Horizontal places are positions on the timeline in samples. Vertical places in a box or lane run
/// from 0 at its bottom to 1 at its top. A layout owns what it holds and keeps nothing of the
/// session.
///
/// What the format leaves to the application is drawn so: a hue is an angle in degrees, and a
/// negative one is no colour, nor is the default of the model, which a clip or group has whose file
/// stores none (red is 360 there); a clip without a colour takes that of its track; levels are in
/// dB; pans run from -1 at the left to 1 at the right; a fade counts from its end of the clip, and
/// its `shape` is ignored; a stretch ratio is the length on the timeline by the length in the
/// media; automation of a clip counts from its start.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

struct LayoutOptions {
    std::optional<std::int64_t> from{};  ///< the first sample; none: where the session begins
    std::optional<std::int64_t> to{};    ///< the first sample beyond; none: where it ends
    std::string tracks =
        "*";            ///< tracks whose name fits; `*`, `?`, `[...]` as in a shell, any case
    bool lanes = true;  ///< lanes of automation below their tracks
};

enum class RowKind { Video, Audio, Bus, Master, Metronome, Instrument };
enum class BoxKind { Video, Audio, Midi };

/// What became of a thing between two sessions.
enum class LayoutChange {
    Same,
    Added,
    Removed,
    Moved,    ///< in time or to another track, or trimmed or split
    Changed,  ///< in any other way
    Former    ///< where it was before it moved
};

/// A fade's rise from 0 to 1 at equal distances, at least two levels.
using Curve = std::vector<float>;

struct LayoutFade {
    std::int64_t length = 0;  ///< from its end of the box; at most the box, more than 0
    std::size_t curve = 0;    ///< in `Layout::curves`; a fade at the end runs it backwards
};

/// How a keyframe leads to the next one.
enum class LaneSegment { Linear, Hold, Spline };

struct LayoutKeyframe {
    std::int64_t position = 0;
    double value = 0;  ///< in the parameter's unit
    double level = 0;  ///< from 0 to 1
    LaneSegment segment = LaneSegment::Linear;
};

/// Automation of a parameter.
struct LayoutLane {
    std::string name{};                       ///< such as "Volume" or "Reverb: Decay"
    double low = 0;                           ///< the value at the bottom
    double high = 1;                          ///< the value at the top
    std::vector<LayoutKeyframe> keyframes{};  ///< in the order of time, one a position
};

/// A clip.
struct LayoutBox {
    BoxKind kind = BoxKind::Audio;
    std::uint32_t id = 0;
    std::size_t index = 0;  ///< in the list of clips of its kind that its track has
    std::string name{};
    std::int64_t start = 0;
    std::int64_t end = 0;                ///< the first sample beyond; not before `start`
    std::optional<double> hue{};         ///< from 0 to below 360; none: that of its row
    std::optional<std::size_t> media{};  ///< in `Layout::media`
    std::int64_t sourceStart = 0;        ///< in the media, in samples of the session's rate
    double speed = 1;                    ///< samples of the media to one of the timeline
    bool looped = false;
    bool stretched = false;
    bool muted = false;
    bool offline = false;
    bool locked = false;
    bool selected = false;
    std::vector<std::int64_t> takes{};  ///< where each begins in the media, like `sourceStart`
    std::size_t effects = 0;            ///< in its rack
    std::optional<LayoutFade> fadeIn{};
    std::optional<LayoutFade> fadeOut{};
    std::optional<std::size_t> crossfadesInto{};  ///< the box of the same row that it fades into
    std::optional<std::size_t> group{};           ///< in `Layout::groups`
    std::vector<LayoutLane> lanes{};
    std::optional<LayoutChange> change{};  ///< none: not compared
};

/// A track.
struct LayoutRow {
    RowKind kind = RowKind::Audio;
    std::uint32_t id = 0;
    std::string path{};  ///< of the track in the session's JSON, such as "/audioTracks/0"
    std::string name{};
    ChannelType channels = ChannelType::NotSaid;
    std::string output{};         ///< the track or port that it feeds, by name; empty: nowhere
    std::optional<double> hue{};  ///< from 0 to below 360; none: no colour
    bool muted = false;
    bool solo = false;
    bool armed = false;
    bool hidden = false;
    bool selected = false;
    std::size_t effects = 0;  ///< in its rack
    std::size_t sends = 0;
    std::vector<LayoutBox> boxes{};  ///< within the range; what covers others comes later
    std::vector<LayoutLane> lanes{};
    std::optional<LayoutChange> change{};  ///< of the track itself; none: not compared
};

struct LayoutMedia {
    std::uint32_t id = 0;
    std::string path{};
    bool found = false;
};

struct LayoutGroup {
    std::uint32_t id = 0;
    std::string name{};
    std::optional<double> hue{};
};

/// A change between two sessions.
struct LayoutNote {
    std::string sentence{};
    std::optional<std::size_t> row{};  ///< of the first thing that changed; none: no track's
    std::optional<std::size_t> box{};  ///< in `LayoutRow::boxes`; none: the track itself
};

struct Layout {
    std::uint32_t sampleRate = 0;
    ChannelType channels = ChannelType::NotSaid;
    std::uint32_t bitDepth = 0;
    TimeFormat timeFormat{};
    MusicalTime musicalTime{};
    std::int64_t from = 0;  ///< the range
    std::int64_t to = 0;    ///< after `from`
    std::int64_t cursor = 0;
    Selection selection{};          ///< empty if its duration is not above 0
    std::int64_t end = 0;           ///< of the session: where its duration and all its clips end
    std::vector<LayoutRow> rows{};  ///< from top to bottom
    std::vector<LayoutMedia> media{};
    std::vector<LayoutGroup> groups{};
    std::vector<Curve> curves{};
    std::vector<LayoutNote> notes{};  ///< what changed, if sessions were compared
};

/// Looks up which media files exist.
ORVO_API Layout MakeLayout(const Session& session, const LayoutOptions& options = {});

/// Two sessions in one layout: the second one, with what changed marked, what the first one has
/// besides, and the sentences of `FindChanges` as notes. What became of clips is marked on their
/// boxes, what became of tracks on their rows.
ORVO_API Layout MakeChangeLayout(const Session& before, const Session& after,
                                 const LayoutOptions& options = {});

/// A position of the layout's timeline as the session shows times.
ORVO_API std::string PositionLabel(const Layout& layout, std::int64_t position);

/// A mark on the ruler.
struct RulerTick {
    std::int64_t position = 0;
    std::string label{};  ///< empty: a small mark between two labels

    friend bool operator==(const RulerTick&, const RulerTick&) = default;
};

/// Marks at round times within the range, in the form in which the session shows times.
/// @param room  samples that a label needs; what is less than a 400th of the range counts as that
ORVO_API std::vector<RulerTick> RulerTicks(const Layout& layout, std::int64_t room);

}  // namespace orvo
