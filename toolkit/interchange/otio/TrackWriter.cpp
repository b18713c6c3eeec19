#include "toolkit/interchange/otio/TrackWriter.h"

#include <type_traits>

#include "toolkit/interchange/otio/Edges.h"

namespace toolkit::interchange::otio {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::MidiClip;
using orvo::VideoClip;
using orvo::VideoTrack;

const std::vector<std::string_view>& SaidOf(const AudioTrack&) {
    static const auto kKeys = KeysOf(&AudioTrack::name);
    return kKeys;
}

const std::vector<std::string_view>& SaidOf(const VideoTrack&) {
    static const auto kKeys = KeysOf(&VideoTrack::name);
    return kKeys;
}

std::string_view KindOf(const AudioTrack&) {
    return "Audio";
}

std::string_view KindOf(const VideoTrack&) {
    return "Video";
}

}  // namespace

void TrackWriter::Write(const VideoTrack& track, std::size_t position) {
    TrackPlan plan =
        PlanOf(track, ModelPath() / &orvo::Session::videoTracks / position, units_, job_);
    VideoTrack rest = track;
    rest.clips = std::move(plan.videoClips);
    WriteLanes(track, rest, plan, position, true);
}

void TrackWriter::Write(const AudioTrack& track, std::size_t position) {
    TrackPlan plan =
        PlanOf(track, ModelPath() / &orvo::Session::audioTracks / position, units_, job_);
    AudioTrack rest = track;
    rest.clips = std::move(plan.audioClips);
    rest.midiClips = std::move(plan.midiClips);
    WriteLanes(track, rest, plan, position, !IsMuted(track.mute));
}

template <class Track>
void TrackWriter::WriteLanes(const Track& track, const Track& rest, const TrackPlan& plan,
                             std::size_t position, bool isEnabled) {
    for (std::size_t lane = 0; lane < plan.lanes.size(); ++lane) {
        objects_.Item();
        objects_.Begin("Track.1");
        WriteOwn(rest, plan, lane, position);
        objects_.Name(lane == 0 ? track.name : fmt::format("{} ({})", track.name, lane + 1));
        objects_.Text("kind", KindOf(track));
        objects_.Null("source_range");
        objects_.EmptyList("effects");
        objects_.EmptyList("markers");
        objects_.Flag("enabled", isEnabled);
        WriteChildren(plan, plan.lanes[lane]);
        objects_.End();
    }
}

template <class Track>
void TrackWriter::WriteOwn(const Track& rest, const TrackPlan& plan, std::size_t lane,
                           std::size_t position) {
    if (!job_.options.ownData) {
        objects_.NoMetadata();
        return;
    }
    objects_.BeginOwn();
    objects_.Integer("trackId", rest.id);
    objects_.Integer("lane", static_cast<std::int64_t>(lane) + 1);
    if (lane == 0) {
        objects_.Integer("position", static_cast<std::int64_t>(position));
        out_.Key("track");
        EncodeRest(out_, rest, SaidOf(rest));
    }
    if (!plan.isInOrder) {
        // Where each clip of the lane stands in the session's list.
        out_.Key("order");
        out_.BeginList();
        for (const LaneClip& clip : plan.lanes[lane]) {
            out_.Item();
            orvo::json::Encode(out_, clip.clip);
        }
        out_.EndList();
    }
    objects_.EndOwn();
}

std::vector<TrackWriter::Placed> TrackWriter::PlacesOf(const TrackPlan& plan, const Lane& lane) {
    std::vector<Placed> places;
    places.reserve(lane.size());
    for (const auto& [clip, isCrossfade] : lane) {
        const Span& span = plan.spans[clip];
        Placed placed{.clip = clip, .begin = span.start, .end = span.end};
        if (isCrossfade) {
            Placed& before = places.back();
            const std::int64_t overlap = before.end - span.start;
            const std::int64_t cut = span.start + overlap / 2;
            placed.begin = cut;
            placed.hasHeadCrossfade = true;
            placed.crossfadeIn = cut - span.start;
            placed.headOut = before.end - cut;
            before.hasTailCrossfade = true;
            before.tailIn = cut - span.start;
            before.end = cut;
        }
        places.push_back(placed);
    }
    return places;
}

void TrackWriter::WriteChildren(const TrackPlan& plan, const Lane& lane) {
    out_.Key("children");
    out_.BeginList();
    std::int64_t cursor = 0;
    bool endsWithFade = false;
    for (const Placed& placed : PlacesOf(plan, lane)) {
        const PlannedClip& clip = plan.clips[placed.clip];
        const std::int64_t length = placed.end - placed.begin;
        const Edges edges =
            EdgesOf(length, placed.hasHeadCrossfade ? std::optional(placed.headOut) : std::nullopt,
                    placed.hasTailCrossfade ? std::optional(placed.tailIn) : std::nullopt,
                    clip.fadeIn, clip.fadeOut);
        const bool isShortened = (!placed.hasHeadCrossfade && edges.head != clip.fadeIn) ||
                                 (!placed.hasTailCrossfade && edges.tail != clip.fadeOut);
        if (isShortened) {
            job_.reporter.Add(orvo::Fidelity::Approximated, plan.PlaceOf(clip),
                              "its fades overlap; the true lengths stand in the metadata");
        }
        const std::int64_t gap = placed.begin - cursor;
        if (gap > 0 || (!placed.hasHeadCrossfade && (endsWithFade || edges.head > 0))) {
            objects_.Item();
            objects_.Gap(gap);
        }
        if (placed.hasHeadCrossfade || edges.head > 0) {
            objects_.Item();
            objects_.Transition(placed.crossfadeIn, edges.head);
        }
        objects_.Item();
        WriteClip(plan, placed);
        endsWithFade = !placed.hasTailCrossfade && edges.tail > 0;
        if (endsWithFade) {
            objects_.Item();
            objects_.Transition(edges.tail, 0);
        }
        cursor = placed.end;
    }
    if (endsWithFade) {
        objects_.Item();
        objects_.Gap(0);
    }
    out_.EndList();
}

void TrackWriter::WriteClip(const TrackPlan& plan, const Placed& placed) {
    const PlannedClip& clip = plan.clips[placed.clip];
    objects_.Begin("Clip.2");
    WriteOwn(clip.clip);
    std::visit([&](const auto* typed) { objects_.Name(typed->name); }, clip.clip);
    const auto before = static_cast<long double>(placed.crossfadeIn) * clip.scalar;
    objects_.Range("source_range", clip.sourceIn + Rounded(before), placed.end - placed.begin);
    if (clip.scalar != 1) {
        out_.Key("effects");
        out_.BeginList();
        out_.Item();
        objects_.TimeWarp(clip.scalar);
        out_.EndList();
    } else {
        objects_.EmptyList("effects");
    }
    objects_.EmptyList("markers");
    objects_.Flag("enabled", clip.isEnabled);
    WriteReference(clip);
    objects_.End();
}

template <class Clip>
void TrackWriter::WriteOwn(const Clip& clip, std::string_view key) {
    static const auto kSaid =
        KeysOf(&Clip::sourceInPoint, &Clip::duration, &Clip::startPoint, &Clip::name);
    objects_.BeginOwn();
    out_.Key(key);
    EncodeRest(out_, clip, kSaid);
    objects_.EndOwn();
}

void TrackWriter::WriteOwn(const ClipPointer& clip) {
    if (!job_.options.ownData) {
        objects_.NoMetadata();
    } else if (const auto* const audio = std::get_if<const AudioClip*>(&clip)) {
        WriteOwn(**audio, "clip");
    } else if (const auto* const midi = std::get_if<const MidiClip*>(&clip)) {
        WriteOwn(**midi, "midiClip");
    } else {
        WriteOwn(*std::get<const VideoClip*>(clip), "videoClip");
    }
}

void TrackWriter::WriteReference(const PlannedClip& clip) {
    constexpr std::string_view kKey = "DEFAULT_MEDIA";
    out_.Key("media_references");
    out_.BeginObject();
    out_.Key(kKey);
    std::visit(
        [&](const auto* typed) {
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(*typed)>, MidiClip>) {
                WriteReference(orvo::kNoId);
            } else {
                WriteReference(typed->fileId);
            }
        },
        clip.clip);
    out_.EndObject();
    objects_.Text("active_media_reference_key", kKey);
}

void TrackWriter::WriteReference(std::uint32_t fileId) {
    usedFiles_.insert(fileId);
    const auto url = urls_.find(fileId);
    const bool isMissing = url == urls_.end() || url->second.empty();
    objects_.Begin(isMissing ? "MissingReference.1" : "ExternalReference.1");
    objects_.NamedWithoutMetadata("");
    if (isMissing) {
        objects_.Null("available_range");
    } else {
        const MediaFact& media = job_.media.Of(fileId);
        objects_.Range("available_range", 0, media.frames, media.sampleRate);
    }
    objects_.Null("available_image_bounds");
    if (!isMissing) {
        objects_.Text("target_url", url->second);
    }
    objects_.End();
}

}  // namespace toolkit::interchange::otio
