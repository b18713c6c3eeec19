#include "toolkit/interchange/otio/Flatten.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

namespace toolkit::interchange::otio {
namespace {

using orvo::Fidelity;

bool IsTrack(const Node& node) {
    return node.Schema() == "Track" || node.Schema() == "Sequence";
}

bool IsGap(const Node& node) {
    return node.Schema() == "Gap" || node.Schema() == "Filler";
}

bool IsTransition(const Node& node) {
    return node.Schema() == "Transition";
}

bool IsCollection(const Node& node) {
    return node.Schema() == "SerializableCollection" || node.Schema() == "SerializeableCollection";
}

/// In samples, so that positions can still be added.
constexpr long double kLongest = 1LL << 60;

/// What of the timeline shows.
struct Window {
    long double begin = -std::numeric_limits<long double>::infinity();
    long double end = std::numeric_limits<long double>::infinity();

    Window Within(long double from, long double to) const {
        return {.begin = std::max(begin, from), .end = std::min(end, to)};
    }
};

/// Where the parts of a composition go.
struct Sink {
    std::size_t track = 0;
    Window window{};
    bool isEnabled = true;
};

class Flattening {
public:
    Flattening(const Rate& samples, const Import& job) : samples_(samples), job_(job) {}

    FoundTimeline Run(const Node& top) {
        if (top.Schema() == "Timeline") {
            found_.timeline = top;
            const std::optional<Node> stack = top.Object("tracks");
            if (!stack) {
                top.Refuse("the timeline has no tracks");
            }
            PlaceTop(*stack);
        } else {
            job_.reporter.Add(Fidelity::Guessed, top.Place(),
                              "it is no timeline, and taken as the whole of one");
            PlaceTop(top);
        }
        return std::move(found_);
    }

private:
    void PlaceTop(const Node& top) {
        if (top.Schema() != "Stack") {
            PlaceOnNewTrack(top, 0, Window(), true);
            return;
        }
        const TimeRange content{.duration = LongestOf(top)};
        const TimeRange range = TrimmedRange(top, content);
        const bool isTrimmed = top.Find("source_range") != nullptr;
        const Window window = isTrimmed ? Window().Within(0, range.duration) : Window();
        TakeMarkers(top, 0, range.start);
        const std::vector<Node> children = top.Objects("children");
        for (std::size_t i = 0; i < children.size(); ++i) {
            constexpr double kShare = 0.5;
            job_.Progress(kShare * static_cast<double>(i) / static_cast<double>(children.size()));
            PlaceOnNewTrack(children[i], -range.start, window, top.Flag("enabled"));
        }
        ReportEffects(top);
    }

    void PlaceOnNewTrack(const Node& item, long double at, const Window& window, bool isEnabled) {
        FoundTrack track;
        if (IsTrack(item)) {
            track = {.node = item,
                     .name = item.Text("name"),
                     .isVideo = IsVideo(item),
                     .isEnabled = isEnabled && item.Flag("enabled")};
        }
        found_.tracks.push_back(std::move(track));
        // A track that is disabled is muted, and its clips stay as they are.
        Place(item, at, {.track = found_.tracks.size() - 1, .window = window}, true);
    }

    bool IsVideo(const Node& track) {
        const std::string kind = track.Text("kind");
        if (kind != "Video" && kind != "Audio") {
            job_.reporter.Add(Fidelity::Guessed, track.Place(), "its kind is taken for audio",
                              kind);
        }
        return kind == "Video";
    }

    /// @param at     where the item's range begins
    /// @param isTop  the item's own state is that of the track
    void Place(const Node& item, long double at, const Sink& sink, bool isTop = false) {
        if (item.Schema() == "Clip") {
            PlaceClip(item, at, sink, {}, {});
        } else if (IsTrack(item)) {
            PlaceTrack(item, at, Inside(item, sink, isTop));
        } else if (item.Schema() == "Stack") {
            PlaceStack(item, at, Inside(item, sink, false));
        } else if (IsGap(item)) {
            TakeMarkers(item, at, RangeOfItem(item).start);
        } else {
            job_.reporter.Add(Fidelity::Lost, item.Place(), "nothing is known of such an object",
                              item.Schema());
        }
    }

    static Sink Inside(const Node& item, Sink sink, bool isTop) {
        sink.isEnabled = sink.isEnabled && (isTop || item.Flag("enabled"));
        return sink;
    }

    void PlaceStack(const Node& stack, long double at, const Sink& sink) {
        const TimeRange range = RangeOfItem(stack);
        TakeMarkers(stack, at, range.start);
        ReportEffects(stack);
        const std::vector<Node> layers = stack.Objects("children");
        for (std::size_t i = 0; i < layers.size(); ++i) {
            Sink layer = sink;
            layer.window = sink.window.Within(at, at + range.duration);
            layer.track = TrackOfLayer(sink.track, i, layers[i]);
            Place(layers[i], at - range.start, layer);
        }
    }

    /// The track itself for its first layer, and further ones for the others.
    std::size_t TrackOfLayer(std::size_t track, std::size_t layer, const Node& item) {
        const bool wasVideo = found_.tracks[track].isVideo;
        const bool isVideo = IsTrack(item) ? IsVideo(item) : wasVideo;
        if (layer == 0 && isVideo == wasVideo) {
            return track;
        }
        const auto [known, isNew] =
            layers_.try_emplace({track, layer, isVideo}, found_.tracks.size());
        if (isNew) {
            job_.reporter.Add(Fidelity::Moved, item.Place(),
                              "a layer of a nested composition is on a track of its own");
            const FoundTrack& owner = found_.tracks[track];
            FoundTrack added{.name = fmt::format("{} / {}", owner.name, layer + 1),
                             .isVideo = isVideo,
                             .isEnabled = owner.isEnabled};
            found_.tracks.push_back(std::move(added));
        }
        return known->second;
    }

    void PlaceTrack(const Node& track, long double at, Sink sink) {
        const std::vector<Node> children = track.Objects("children");
        std::vector<TimeRange> ranges;
        TimeRange content;
        for (const Node& child : children) {
            ranges.push_back(IsTransition(child) ? TimeRange() : RangeOfItem(child));
            content.duration += ranges.back().duration;
        }
        const TimeRange range = TrimmedRange(track, content);
        if (range.start != 0 || range.duration != content.duration) {
            sink.window = sink.window.Within(at, at + range.duration);
        }
        TakeMarkers(track, at, range.start);
        ReportEffects(track);
        long double cursor = at - range.start;
        std::optional<std::size_t> clipBefore;  // of the child before the last transition
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (IsTransition(children[i])) {
                CheckTransition(children, i);
                continue;
            }
            const bool follows = i > 0 && IsTransition(children[i - 1]);
            if (children[i].Schema() == "Clip") {
                const FoundEdge head = follows ? EdgeAt(children, i, -1) : FoundEdge();
                const bool isPair = head.isCrossfade && clipBefore;
                clipBefore = PlaceClip(children[i], cursor, sink, head, EdgeAt(children, i, 1),
                                       isPair ? clipBefore : std::nullopt);
            } else {
                Place(children[i], cursor, sink);
                clipBefore.reset();
            }
            cursor += ranges[i].duration;
            if (cursor > kLongest) {
                track.Refuse("the track is too long");
            }
        }
    }

    void CheckTransition(const std::vector<Node>& children, std::size_t at) {
        const auto isClip = [&](std::size_t i) {
            return i < children.size() && children[i].Schema() == "Clip";
        };
        if (!(at > 0 && isClip(at - 1)) && !isClip(at + 1)) {
            job_.reporter.Add(Fidelity::Lost, children[at].Place(), "the transition is at no clip");
        }
    }

    /// The transition before (-1) or behind (1) a clip, if there is one.
    FoundEdge EdgeAt(const std::vector<Node>& children, std::size_t clip, int side) {
        const std::size_t at = clip + static_cast<std::size_t>(side);
        if (at >= children.size() || !IsTransition(children[at])) {
            return {};
        }
        const std::size_t other = at + static_cast<std::size_t>(side);
        const bool isCrossfade = other < children.size() && children[other].Schema() == "Clip";
        const long double in = OffsetOf(children[at], "in_offset");
        const long double out = OffsetOf(children[at], "out_offset");
        return {.isCrossfade = isCrossfade,
                .reach = side < 0 ? in : out,
                .inside = side < 0 ? out : in};
    }

    long double OffsetOf(const Node& transition, std::string_view key) {
        const std::optional<Node> time = transition.Object(key);
        const long double offset = time ? SamplesOf(*time, samples_).value_or(0) : 0;
        if (offset < 0) {
            time->Refuse("the offset is negative");
        }
        return offset;
    }

    std::optional<std::size_t> PlaceClip(const Node& node, long double at, const Sink& sink,
                                         FoundEdge head, FoundEdge tail,
                                         std::optional<std::size_t> crossfadesWith = {}) {
        const TimeRange range = RangeOfItem(node);
        TakeMarkers(node, at, range.start);
        FoundClip clip{.node = node, .begin = at, .end = at + range.duration};
        clip.head = head;
        clip.tail = tail;
        clip.isEnabled = sink.isEnabled && node.Flag("enabled");
        clip.crossfadesWith = crossfadesWith;
        TakeEffects(node, clip);
        const long double mediaStart = TakeMedia(node, clip);
        clip.sourceIn = Rounded(range.start - mediaStart);
        if (!Trim(clip, sink.window)) {
            return std::nullopt;
        }
        std::vector<FoundClip>& clips = found_.tracks[sink.track].clips;
        clips.push_back(std::move(clip));
        return clips.size() - 1;
    }

    /// Cuts off what the window does not show. Returns whether anything is left.
    static bool Trim(FoundClip& clip, const Window& window) {
        if (clip.begin - clip.head.reach < window.begin) {
            const long double begin = std::max(clip.begin, window.begin);
            clip.sourceIn += Rounded((begin - clip.begin) * clip.scalar);
            clip.begin = begin;
            clip.head = {};
            clip.crossfadesWith.reset();
        }
        if (clip.end + clip.tail.reach > window.end) {
            clip.end = std::min(clip.end, window.end);
            clip.tail = {};
        }
        const bool isPoint = clip.begin == clip.end && clip.begin >= window.begin;
        return clip.begin < clip.end || (isPoint && clip.end <= window.end);
    }

    void TakeEffects(const Node& node, FoundClip& clip) {
        for (const Node& effect : node.Objects("effects")) {
            const bool isWarp = effect.Schema() == "LinearTimeWarp";
            const double scalar = isWarp ? effect.Number("time_scalar").value_or(1) : 1;
            if (isWarp && scalar > 0) {
                clip.scalar *= scalar;
            } else if (isWarp || effect.Schema() == "FreezeFrame") {
                clip.isOffline = true;
                job_.reporter.Add(Fidelity::Lost, effect.Place(),
                                  "a session plays nothing backwards and freezes nothing; the clip "
                                  "is offline",
                                  fmt::format("{}", scalar));
            } else {
                ReportEffect(effect);
            }
        }
        constexpr double kMostSpeed = 1e6;
        if (!(clip.scalar <= kMostSpeed && clip.scalar >= 1 / kMostSpeed)) {
            node.Refuse("its speed is beyond all measure");
        }
    }

    void ReportEffects(const Node& node) {
        for (const Node& effect : node.Objects("effects")) {
            ReportEffect(effect);
        }
    }

    void ReportEffect(const Node& effect) {
        job_.reporter.Add(Fidelity::Lost, effect.Place(), "the effect has no place",
                          effect.Text("effect_name"));
    }

    /// Takes the clip's URL, and returns where its media begin.
    long double TakeMedia(const Node& node, FoundClip& clip) {
        const std::optional<Node> media = MediaOf(node);
        if (!media || media->Schema() == "MissingReference") {
            return 0;
        }
        if (media->Schema() == "ExternalReference") {
            clip.url = media->Text("target_url");
        } else {
            clip.isOffline = true;
            job_.reporter.Add(Fidelity::Lost, media->Place(),
                              "no file, so that the clip is offline", media->Schema());
        }
        const std::optional<TimeRange> available = RangeOf(*media, "available_range", samples_);
        return available ? available->start : 0;
    }

    static std::optional<Node> MediaOf(const Node& clip) {
        if (std::optional<Node> only = clip.Object("media_reference")) {
            return only;
        }
        const std::optional<Node> all = clip.Object("media_references");
        const std::string key = clip.Text("active_media_reference_key");
        return all ? all->Object(key.empty() ? "DEFAULT_MEDIA" : key) : std::nullopt;
    }

    // Ranges

    TimeRange RangeOfItem(const Node& item) {
        if (IsTransition(item)) {
            return {};
        }
        if (IsTrack(item)) {
            return TrimmedRange(item, {.duration = SumOf(item)});
        }
        if (item.Schema() == "Stack") {
            return TrimmedRange(item, {.duration = LongestOf(item)});
        }
        if (const std::optional<TimeRange> range = RangeOf(item, "source_range", samples_)) {
            return *range;
        }
        const std::optional<Node> media = MediaOf(item);
        const std::optional<TimeRange> available =
            media ? RangeOf(*media, "available_range", samples_) : std::nullopt;
        const bool isKnown = item.Schema() == "Clip" || IsGap(item);
        if (!available && !isKnown) {
            return {};
        }
        if (!available) {
            item.Refuse("it has neither a source_range nor media with an available_range");
        }
        return *available;
    }

    long double SumOf(const Node& track) {
        long double sum = 0;
        for (const Node& child : track.Objects("children")) {
            sum += RangeOfItem(child).duration;
        }
        return sum;
    }

    long double LongestOf(const Node& stack) {
        long double longest = 0;
        for (const Node& child : stack.Objects("children")) {
            longest = std::max(longest, RangeOfItem(child).duration);
        }
        return longest;
    }

    /// The range that a composition shows of itself. One that is wholly outside comes from programs
    /// that store the timecode there.
    TimeRange TrimmedRange(const Node& item, const TimeRange& content) {
        const std::optional<TimeRange> range = RangeOf(item, "source_range", samples_);
        if (!range || range->start >= content.duration || range->start + range->duration <= 0) {
            return content;
        }
        return *range;
    }

    void TakeMarkers(const Node& owner, long double at, long double rangeStart) {
        for (const Node& marker : owner.Objects("markers")) {
            const std::optional<TimeRange> range = RangeOf(marker, "marked_range", samples_);
            if (!range) {
                job_.reporter.Add(Fidelity::Lost, marker.Place(), "the marker has no range",
                                  marker.Text("name"));
                continue;
            }
            found_.markers.push_back({.node = marker,
                                      .start = at + range->start - rangeStart,
                                      .duration = range->duration});
        }
    }

    Rate samples_;
    const Import& job_;
    FoundTimeline found_;
    std::map<std::tuple<std::size_t, std::size_t, bool>, std::size_t> layers_;
};

}  // namespace

Node FindTop(const Node& root, Reporter& reporter) {
    const std::string_view schema = root.Schema();
    if (schema == "Timeline" || schema == "Stack" || schema == "Clip" || IsTrack(root)) {
        return root;
    }
    if (!IsCollection(root)) {
        root.Refuse("it is no timeline of OpenTimelineIO");
    }
    const std::vector<Node> children = root.Objects("children");
    const auto first = std::ranges::find_if(
        children, [](const Node& child) { return child.Schema() == "Timeline"; });
    if (first == children.end()) {
        root.Refuse("the collection has no timeline");
    }
    for (const Node& child : children) {
        if (&child != &*first) {
            reporter.Add(Fidelity::Lost, child.Place(), "only the first timeline is read",
                         child.Text("name"));
        }
    }
    return *first;
}

FoundTimeline Flatten(const Node& top, const Rate& samples, const Import& job) {
    return Flattening(samples, job).Run(top);
}

}  // namespace toolkit::interchange::otio
