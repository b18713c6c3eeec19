#include "toolkit/interchange/dawproject/ContentReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/interchange/HueColour.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::Fidelity;

// More than any project has, and little enough to be refused soon.
constexpr std::size_t kMostSteps = 10'000'000;
constexpr std::size_t kMostLeavesOfClip = 100'000;

/// Relative to the values, what rounding may change.
constexpr double kEpsilon = 1e-9;

/// An element that holds content.
bool IsTimeline(const pugi::xml_node& element) {
    constexpr std::string_view kTimelines[] = {"Lanes",   "Clips",   "Warps",  "Audio",
                                               "Video",   "Notes",   "Points", "ClipSlot",
                                               "markers", "Timeline"};
    return std::ranges::find(kTimelines, element.name()) != std::ranges::end(kTimelines);
}

bool IsEnvelope(const pugi::xml_node& element) {
    return IsNamed(element, "Points") && !element.child("Target").attribute("expression").empty();
}

/// Whether it is one sound file, perhaps with warps and envelopes.
bool IsPlainSound(pugi::xml_node content) {
    while (IsNamed(content, "Lanes") || IsNamed(content, "Warps")) {
        const auto children = content.children();
        const auto isContent = [](const pugi::xml_node& child) {
            return IsTimeline(child) && !IsEnvelope(child);
        };
        if (std::count_if(children.begin(), children.end(), isContent) != 1) {
            return false;
        }
        content = *std::find_if(children.begin(), children.end(), isContent);
    }
    return IsNamed(content, "Audio");
}

Window Intersection(const Window& one, const Window& other) {
    return {.start = std::max(one.start, other.start), .end = std::min(one.end, other.end)};
}

struct Warp {
    double time = 0;
    double content = 0;
};

/// The warps in order, without those on a straight line between their neighbours.
std::vector<Warp> Essential(std::vector<Warp> warps) {
    std::ranges::stable_sort(warps, {}, &Warp::content);
    std::vector<Warp> essential;
    for (const Warp& warp : warps) {
        if (!essential.empty() &&
            (warp.content <= essential.back().content || warp.time <= essential.back().time)) {
            continue;
        }
        while (essential.size() >= 2) {
            const Warp& a = essential[essential.size() - 2];
            const Warp& b = essential.back();
            const double slope = (b.time - a.time) / (b.content - a.content);
            const double next = (warp.time - b.time) / (warp.content - b.content);
            if (std::abs(next - slope) > kEpsilon * slope) {
                break;
            }
            essential.pop_back();
        }
        essential.push_back(warp);
    }
    return essential;
}

}  // namespace

// Timelines

void ContentReader::Visit(const pugi::xml_node& timeline, Place place) {
    CountStep(timeline);
    if (++place.depth > kDeepest) {
        document_.Refuse(timeline, "content is nested too deeply, or refers to itself");
    }
    place.frame =
        place.frame.In(TimeUnitOf(timeline, "timeUnit", place.frame.Unit()), place.window);
    if (const pugi::xml_attribute track = timeline.attribute("track")) {
        place.track = track.value();
    }
    const std::string_view name = timeline.name();
    if (name == "Lanes") {
        VisitLanes(timeline, place);
    } else if (name == "Clips") {
        VisitClips(timeline, place);
    } else if (name == "Warps") {
        VisitWarps(timeline, place);
    } else if (name == "Audio") {
        VisitMedia(timeline, LeafKind::Audio, place);
    } else if (name == "Video") {
        VisitMedia(timeline, LeafKind::Video, place);
    } else if (name == "Notes") {
        VisitNotes(timeline, place);
    } else if (name == "Points") {
        ReadTrackLane(timeline, place);
    } else {
        Lose(timeline, "a session has nothing of this kind", name);
    }
}

void ContentReader::VisitLanes(const pugi::xml_node& lanes, const Place& place) {
    const std::size_t first = leaves_.size();
    for (const pugi::xml_node& child : lanes.children()) {
        if (IsTimeline(child) && !(place.isInClip && IsEnvelope(child))) {
            Visit(child, place);
        }
    }
    for (const pugi::xml_node& child : lanes.children("Points")) {
        if (place.isInClip && IsEnvelope(child)) {
            ApplyEnvelope(child, place, first);
        }
    }
}

void ContentReader::VisitClips(const pugi::xml_node& clips, const Place& place) {
    for (const pugi::xml_node& clip : clips.children("Clip")) {
        ReadClip(clip, place);
        if (!place.isInClip && !leaves_.empty()) {
            leafSink_(clip, place.track, std::exchange(leaves_, {}));
        }
    }
}

void ContentReader::VisitWarps(const pugi::xml_node& warps, const Place& place) {
    std::vector<Warp> points;
    for (const pugi::xml_node& warp : warps.children("Warp")) {
        points.push_back({.time = document_.Number(warp, "time").value_or(0),
                          .content = document_.Number(warp, "contentTime").value_or(0)});
    }
    points = Essential(std::move(points));
    const TimeUnit unit = TimeUnitOf(warps, "contentTimeUnit", place.frame.Unit());
    const pugi::xml_node content = warps.find_child(IsTimeline);
    const double secondsAUnit = place.frame.SecondsAUnit(place.window.start);
    const double secondsOfContent = unit == TimeUnit::Seconds ? 1 : secondsAUnit;
    if (points.size() < 2) {
        Lose(warps, "fewer than two warps say no stretch");
        const Warp point = points.empty() ? Warp() : points.front();
        points = {
            point,
            {.time = point.time + secondsOfContent / secondsAUnit, .content = point.content + 1}};
    }
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const Warp& begin = points[i];
        const Warp& end = points[i + 1];
        // The first and the last one go on for ever.
        Window piece;
        piece.start = i == 0 ? piece.start : begin.time;
        piece.end = i + 2 == points.size() ? piece.end : end.time;
        piece = Intersection(piece, place.window);
        if (piece.IsEmpty()) {
            continue;
        }
        const double scale = (end.time - begin.time) / (end.content - begin.content);
        Place inner = place;
        inner.frame = place.frame.Inside(begin.time, begin.content, scale, unit);
        inner.window = {.start = begin.content + (piece.start - begin.time) / scale,
                        .end = begin.content + (piece.end - begin.time) / scale};
        inner.stretch = place.stretch * scale * secondsAUnit / secondsOfContent;
        Visit(content, inner);
    }
}

void ContentReader::VisitMedia(const pugi::xml_node& media, LeafKind kind, const Place& place) {
    // Media count in seconds and last as long as they do, whatever the tempo is.
    const double secondsAUnit = place.frame.SecondsAUnit(place.window.start);
    const double duration =
        document_.Number(media, "duration").value_or(std::numeric_limits<double>::infinity());
    const double sample = place.stretch / sampleRate_;
    Window window = place.window;
    window.start = std::max(window.start, 0.0);
    // What is less than a sample too long was rounded.
    if (duration > 0 && (window.end * secondsAUnit - duration) * place.stretch > sample) {
        window.end = duration / secondsAUnit;
    }
    if (!std::isfinite(window.end)) {
        Lose(media, "it has no end");
        return;
    }
    Leaf leaf = {.kind = kind, .element = media};
    leaf.start = SampleAt(media, place, window.start);
    leaf.end = SampleAt(media, place, window.end);
    leaf.sourceIn = document_.Samples(media, window.start * secondsAUnit, sampleRate_);
    leaf.stretch = place.stretch;
    if (leaf.end > leaf.start) {
        if (place.stretch != 1 && !place.frame.IsEvenOver(window)) {
            document_.Report(Fidelity::Approximated, media,
                             "the clip follows a changing tempo, and now plays evenly");
        }
        AddLeaf(std::move(leaf), place);
    } else if (place.window.start * secondsAUnit >= duration) {
        Lose(media, "the clip begins after the end of its media", place.name);
    }
}

void ContentReader::VisitNotes(const pugi::xml_node& notes, const Place& place) {
    const auto children = notes.children("Note");
    document_.Job().reporter.CountLost(
        "notes", static_cast<std::size_t>(std::distance(children.begin(), children.end())));
    if (!std::isfinite(place.window.start) || !std::isfinite(place.window.end)) {
        Lose(notes, "notes without a clip have no place");
        return;
    }
    Leaf leaf = {.kind = LeafKind::Notes, .element = notes};
    leaf.start = SampleAt(notes, place, place.window.start);
    leaf.end = SampleAt(notes, place, place.window.end);
    leaf.sourceIn = document_.Samples(
        notes, place.window.start * place.frame.SecondsAUnit(place.window.start), sampleRate_);
    AddLeaf(std::move(leaf), place);
}

void ContentReader::ReadTrackLane(const pugi::xml_node& points, const Place& place) {
    const pugi::xml_node target = points.child("Target");
    if (place.isInClip) {
        Lose(points, "automation in a clip has no place");
    } else if (!target.attribute("parameter")) {
        Lose(points, "automation of notes has no place", target.attribute("expression").value());
    } else {
        laneSink_(target, PointsAt(points, place.frame));
    }
}

// Clips

void ContentReader::ReadClip(const pugi::xml_node& clip, Place place) {
    CountStep(clip);
    const std::optional<Play> play = PlayOf(clip, place);
    if (!play) {
        return;
    }
    const pugi::xml_attribute name = clip.attribute("name");
    const auto colour = Rgb::FromHex(clip.attribute("color").value());
    place.name = !name.empty() ? std::string_view(name.value()) : place.name;
    place.hue = colour ? HueOf(*colour) : place.hue;
    place.isMuted |= !IsTrue(clip, "enable", true);
    place.isInClip = true;
    const std::size_t first = leaves_.size();
    ReadContent(*play, place);
    ApplyFades(*play, place, first);
}

std::optional<ContentReader::Play> ContentReader::PlayOf(const pugi::xml_node& clip,
                                                         const Place& place) {
    const auto time = document_.Number(clip, "time");
    Play play = {.clip = clip, .content = ContentOf(clip)};
    if (!time || !play.content) {
        Lose(clip, time ? "the clip has no content" : "the clip has no time",
             clip.attribute("name").value());
        return std::nullopt;
    }
    play.unit = TimeUnitOf(clip, "contentTimeUnit", place.frame.Unit());
    const double secondsAUnit = place.frame.SecondsAUnit(*time);
    // A beat lasts as long as where the clip begins.
    Window start = {.start = *time};
    const TimeFrame beats = place.frame.In(TimeUnit::Beats, start);
    const double secondsABeat = beats.SecondsAUnit(start.start);
    play.scale = (play.unit == TimeUnit::Seconds ? 1 : secondsABeat) / secondsAUnit;
    play.playStart = document_.Number(clip, "playStart").value_or(0);
    const auto stop = document_.Number(clip, "playStop");
    const auto duration = document_.Number(clip, "duration");
    play.window.start = *time;
    if (duration) {
        play.window.end = *time + *duration;
    } else if (stop) {
        play.window.end = *time + (*stop - play.playStart) * play.scale;
    }
    // A crossfade begins before the clip.
    const double fadeIn = document_.Number(clip, "fadeInTime").value_or(0);
    if (fadeIn < 0) {
        const double lead =
            fadeIn *
            (TimeUnitOf(clip, "fadeTimeUnit", place.frame.Unit()) == TimeUnit::Seconds
                 ? 1
                 : secondsABeat) /
            secondsAUnit;
        play.window.start += lead;
        play.playStart += lead / play.scale;
    }
    ReadLoop(play, place);
    if (!play.loop && stop && *stop > play.playStart) {
        play.window.end =
            std::min(play.window.end, play.window.start + (*stop - play.playStart) * play.scale);
    }
    if (play.window.IsEmpty()) {
        Lose(clip, "the clip has no length", clip.attribute("name").value());
        return std::nullopt;
    }
    const Window heard = Intersection(play.window, place.window);
    play.playStart += (heard.start - play.window.start) / play.scale;
    play.window = heard;
    return heard.IsEmpty() ? std::nullopt : std::optional(play);
}

pugi::xml_node ContentReader::ContentOf(const pugi::xml_node& clip) {
    const pugi::xml_node own = clip.find_child(IsTimeline);
    const pugi::xml_attribute reference = clip.attribute("reference");
    if (!own.empty() || reference.empty()) {
        return own;
    }
    const pugi::xml_node referred = document_.Find(reference.value());
    return IsTimeline(referred) ? referred : pugi::xml_node();
}

/// A parent that cuts off the start of a looping clip begins with what would play there.
void ContentReader::ReadLoop(Play& play, const Place& place) {
    const auto end = document_.Number(play.clip, "loopEnd");
    if (!end) {
        return;
    }
    const Window loop = {.start = document_.Number(play.clip, "loopStart").value_or(0),
                         .end = *end};
    if (loop.IsEmpty() || play.playStart >= loop.end) {
        return;
    }
    play.loop = loop;
    if (place.window.start > play.window.start) {
        play.playStart += (place.window.start - play.window.start) / play.scale;
        if (play.playStart >= loop.end) {
            play.playStart =
                loop.start + std::fmod(play.playStart - loop.end, loop.end - loop.start);
        }
        play.window.start = place.window.start;
    }
}

void ContentReader::ReadContent(const Play& play, const Place& place) {
    if (!play.loop) {
        ReadTurn(play, place, play.window.start,
                 {.start = play.playStart,
                  .end = play.playStart + (play.window.end - play.window.start) / play.scale});
    } else if (!ReadWholeLoop(play, place)) {
        ReadTurns(play, place);
    }
}

/// A loop of a whole file is a looped clip.
bool ContentReader::ReadWholeLoop(const Play& play, const Place& place) {
    if (!IsPlainSound(play.content)) {
        return false;
    }
    const std::size_t first = leaves_.size();
    ReadTurn(play, place, play.window.start, {.start = play.playStart, .end = play.loop->end});
    const double tolerance = 2.0 / sampleRate_;
    if (leaves_.size() == first + 1) {
        Leaf& leaf = leaves_[first];
        const double duration = document_.Number(leaf.element, "duration").value_or(0);
        const double secondsAUnit = place.frame.SecondsAUnit(play.window.start) * play.scale;
        const double loopSeconds = (play.loop->end - play.loop->start) * secondsAUnit;
        const double skipped = (play.playStart - play.loop->start) * secondsAUnit / leaf.stretch;
        const double sourceIn = static_cast<double>(leaf.sourceIn) / sampleRate_;
        if (std::abs(loopSeconds - duration * leaf.stretch) <= tolerance * leaf.stretch &&
            std::abs(sourceIn - skipped) <= tolerance && std::isfinite(play.window.end)) {
            leaf.loops = true;
            leaf.end = SampleAt(play.clip, place, play.window.end);
            return true;
        }
    }
    leaves_.resize(first);
    return false;
}

void ContentReader::ReadTurns(const Play& play, const Place& place) {
    if (!std::isfinite(play.window.end)) {
        Lose(play.clip, "the loop has no end");
        return;
    }
    double outer = play.window.start;
    Window turn = {.start = play.playStart, .end = play.loop->end};
    // Boundaries are counted, not added up, so that they do not drift.
    const double origin = outer + (play.loop->end - play.playStart) * play.scale;
    const double length = (play.loop->end - play.loop->start) * play.scale;
    for (std::size_t number = 0; outer < play.window.end; ++number) {
        if (leaves_.size() > kMostLeavesOfClip) {
            document_.Refuse(play.clip, "the clip repeats its content too often");
        }
        CountStep(play.clip);
        Window heard = turn;
        heard.end = std::min(turn.end, turn.start + (play.window.end - outer) / play.scale);
        ReadTurn(play, place, outer, heard);
        outer = origin + static_cast<double>(number) * length;
        turn.start = play.loop->start;
    }
}

/// @param outer  where the turn begins, in the time of the clip's parent
/// @param turn   what plays, in the time of the content
void ContentReader::ReadTurn(const Play& play, const Place& place, double outer,
                             const Window& turn) {
    Place inner = place;
    inner.frame = place.frame.Inside(outer, turn.start, play.scale, play.unit);
    inner.window = turn;
    if (!turn.IsEmpty()) {
        Visit(play.content, inner);
    }
}

void ContentReader::ApplyFades(const Play& play, const Place& place, std::size_t first) {
    if (leaves_.size() == first) {
        return;
    }
    const std::int64_t start = SampleAt(play.clip, place, play.window.start);
    std::int64_t end = 0;
    if (std::isfinite(play.window.end)) {
        end = SampleAt(play.clip, place, play.window.end);
    } else {
        for (std::size_t i = first; i < leaves_.size(); ++i) {
            end = std::max(end, leaves_[i].end);
        }
    }
    const std::int64_t in = FadeOf(play, place, "fadeInTime", play.window.start, 1);
    const std::int64_t out = FadeOf(play, place, "fadeOutTime", play.window.end, -1);
    const bool isCrossfade = document_.Number(play.clip, "fadeInTime").value_or(0) < 0;
    bool isUsed = in == 0 && out == 0;
    for (std::size_t i = first; i < leaves_.size(); ++i) {
        Leaf& leaf = leaves_[i];
        if (in > 0 && std::abs(leaf.start - start) <= 1) {
            leaf.fadeIn = std::min(in, leaf.end - leaf.start);
            leaf.isCrossfade = isCrossfade;
            isUsed = true;
        }
        if (out > 0 && std::abs(leaf.end - end) <= 1) {
            leaf.fadeOut = std::min(out, leaf.end - leaf.start);
            isUsed = true;
        }
    }
    if (!isUsed) {
        Lose(play.clip, "the fade lies where nothing sounds");
    }
}

/// @param at         the clip's edge
/// @param direction  from there into the clip
std::int64_t ContentReader::FadeOf(const Play& play, const Place& place, const char* attribute,
                                   double at, double direction) {
    const double length = std::abs(document_.Number(play.clip, attribute).value_or(0));
    if (length == 0) {
        return 0;
    }
    const TimeUnit unit = TimeUnitOf(play.clip, "fadeTimeUnit", place.frame.Unit());
    if (unit == TimeUnit::Seconds || !std::isfinite(at)) {
        return document_.Samples(play.clip, length, sampleRate_);
    }
    Window edge = {.start = at, .end = at};
    const TimeFrame beats = place.frame.In(TimeUnit::Beats, edge);
    const double seconds =
        beats.AbsoluteSeconds(edge.start + direction * length) - beats.AbsoluteSeconds(edge.start);
    return document_.Samples(play.clip, std::abs(seconds), sampleRate_);
}

// Envelopes

void ContentReader::ApplyEnvelope(const pugi::xml_node& points, const Place& place,
                                  std::size_t first) {
    const std::string_view expression = points.child("Target").attribute("expression").value();
    const bool isGain = expression == "gain";
    if (!isGain && expression != "pan") {
        Lose(points, "a clip has no such expression", expression);
        return;
    }
    Window window = place.window;
    const TimeFrame frame =
        place.frame.In(TimeUnitOf(points, "timeUnit", place.frame.Unit()), window);
    const std::vector<ReadPoint> read = PointsAt(points, frame);
    if (read.empty()) {
        return;
    }
    const ValueScale scale = ScaleOf(document_, points, isGain ? ValueKind::Level : ValueKind::Pan);
    for (std::size_t i = first; i < leaves_.size(); ++i) {
        Leaf& leaf = leaves_[i];
        std::vector<ReadPoint> own = read;
        for (ReadPoint& point : own) {
            point.offset -= leaf.start;
        }
        auto& envelope = isGain ? leaf.gain : leaf.pan;
        if (envelope) {
            Lose(points, "one of two nested expressions has no place", expression);
        }
        envelope = Envelope{
            .points = own.size() == 1 ? std::move(own) : Within(own, leaf.end - leaf.start),
            .scale = scale};
    }
}

std::vector<ReadPoint> ContentReader::PointsAt(const pugi::xml_node& points,
                                               const TimeFrame& frame) {
    return ReadPoints(document_, points, [&](const pugi::xml_node& point, double time) {
        CountStep(point);
        return document_.Samples(point, frame.AbsoluteSeconds(time), sampleRate_);
    });
}

// Help

void ContentReader::AddLeaf(Leaf leaf, const Place& place) {
    leaf.name = place.name;
    leaf.hue = place.hue;
    leaf.isMuted = place.isMuted;
    leaves_.push_back(std::move(leaf));
    if (!place.isInClip) {
        leafSink_(leaves_.back().element, place.track, std::exchange(leaves_, {}));
    }
}

std::int64_t ContentReader::SampleAt(const pugi::xml_node& element, const Place& place,
                                     double time) const {
    return document_.Samples(element, place.frame.AbsoluteSeconds(time), sampleRate_);
}

void ContentReader::CountStep(const pugi::xml_node& element) {
    constexpr std::size_t kStepsPerProgress = 1024;
    if (++steps_ % kStepsPerProgress == 0) {
        document_.Job().Progress(0.5);
    }
    if (steps_ > kMostSteps) {
        document_.Refuse(element, "the content repeats too often");
    }
}

void ContentReader::Lose(const pugi::xml_node& element, std::string_view what,
                         std::string_view value) {
    document_.Report(Fidelity::Lost, element, what, value);
}

}  // namespace toolkit::interchange::dawproject
