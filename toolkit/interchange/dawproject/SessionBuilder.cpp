#include "toolkit/interchange/dawproject/SessionBuilder.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Overlaps.h"

namespace toolkit::interchange::dawproject {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::TrackKind;

std::optional<orvo::Component> ControlOf(const std::optional<Envelope>& envelope) {
    if (!envelope || envelope->points.empty()) {
        return std::nullopt;
    }
    orvo::Component control;
    orvo::Parameter& parameter = control.parameters[0];
    parameter.value = envelope->scale.ValueOf(envelope->points.front().value);
    if (envelope->points.size() > 1) {
        parameter.automation = AutomationOf(envelope->points, envelope->scale);
    }
    return control;
}

template <class Clip>
Clip ClipOf(const Leaf& leaf, std::uint32_t id) {
    Clip clip;
    clip.id = id;
    clip.sourceInPoint = leaf.sourceIn;
    clip.duration = leaf.end - leaf.start;
    clip.startPoint = leaf.start;
    clip.hue = leaf.hue;
    clip.name = leaf.name;
    return clip;
}

template <class Clips>
std::int64_t EndOf(const Clips& clips) {
    std::int64_t end = 0;
    for (const auto& clip : clips) {
        end = std::max(end, clip.startPoint + clip.duration);
    }
    return end;
}

}  // namespace

void SessionBuilder::Add(const pugi::xml_node& clip, std::string_view track,
                         const std::vector<Leaf>& leaves) {
    const auto place = structure_.tracks.find(std::string(track));
    if (place == structure_.tracks.end()) {
        document_.Report(Fidelity::Lost, clip, "the clip is on no track", track);
        return;
    }
    const auto [isVideo, number] = place->second;
    orvo::ClipGroup group;
    for (const Leaf& leaf : leaves) {
        const bool isPicture = leaf.kind == LeafKind::Video;
        if (isPicture) {
            AddToVideoTrack(isVideo ? session_.videoTracks[number] : besideAudio_[number], leaf);
        } else {
            AudioTrack& target = isVideo ? besideVideo_[number] : session_.audioTracks[number];
            group.items.push_back({.trackId = target.id, .clipId = AddToAudioTrack(target, leaf)});
        }
    }
    if (group.items.size() > 1) {
        group.id = static_cast<std::uint32_t>(session_.clipGroups.size() + 1);
        group.name = clip.attribute("name").value();
        session_.clipGroups.push_back(std::move(group));
    }
}

std::uint32_t SessionBuilder::AddToAudioTrack(AudioTrack& track, const Leaf& leaf) {
    if (leaf.kind == LeafKind::Notes) {
        track.midiClips.push_back(MidiClipOf(leaf));
        return track.midiClips.back().id;
    }
    track.clips.push_back(AudioClipOf(leaf));
    return track.clips.back().id;
}

std::uint32_t SessionBuilder::AddToVideoTrack(orvo::VideoTrack& track, const Leaf& leaf) {
    track.clips.push_back(VideoClipOf(leaf));
    return track.clips.back().id;
}

AudioClip SessionBuilder::AudioClipOf(const Leaf& leaf) {
    constexpr double kTolerance = 1e-5;
    auto clip = ClipOf<AudioClip>(leaf, nextClipId_++);
    clip.fileId = media_.FileIdOf(leaf.element);
    clip.offline = media_.IsOffline(clip.fileId);
    clip.looped = leaf.loops;
    if (leaf.fadeIn > 0) {
        clip.fadeIn = MakeFadeIn(leaf.fadeIn);
    }
    if (leaf.fadeOut > 0) {
        clip.fadeOut = MakeFadeOut(leaf.fadeOut, clip.duration);
    }
    if (std::abs(leaf.stretch - 1) >= kTolerance) {
        const bool isOutput = document_.Job().options.conventions.stretchRatio ==
                              orvo::StretchMeaning::TimelineBySource;
        clip.stretch =
            orvo::ClipStretch{.stretchMode = orvo::StretchMode::Realtime,
                              .stretchRatio = isOutput ? leaf.stretch : 1 / leaf.stretch};
    }
    clip.gain = ControlOf(leaf.gain);
    clip.pan = ControlOf(leaf.pan);
    if (leaf.isMuted) {
        clip.mute.emplace().parameters[0].value = 1.0F;
    }
    if (leaf.isCrossfade) {
        crossfadeIds_.push_back(clip.id);
    }
    return clip;
}

orvo::VideoClip SessionBuilder::VideoClipOf(const Leaf& leaf) {
    auto clip = ClipOf<orvo::VideoClip>(leaf, nextClipId_++);
    clip.fileId = media_.FileIdOf(leaf.element);
    clip.offline = media_.IsOffline(clip.fileId);
    if (leaf.isMuted) {
        document_.Report(Fidelity::Lost, leaf.element, "a video clip cannot be off", leaf.name);
    }
    return clip;
}

orvo::MidiClip SessionBuilder::MidiClipOf(const Leaf& leaf) {
    if (leaf.isMuted) {
        document_.Report(Fidelity::Lost, leaf.element, "a clip of notes cannot be off", leaf.name);
    }
    return ClipOf<orvo::MidiClip>(leaf, nextClipId_++);
}

// At the end

void SessionBuilder::Finish() {
    const std::size_t tracks = session_.audioTracks.size();
    for (std::size_t i = 0; i < tracks; ++i) {
        Settle(i);
    }
    AddNewTracks();
    for (AudioTrack& track : session_.audioTracks) {
        LinkCrossfades(track);
        session_.duration =
            std::max({session_.duration, EndOf(track.clips), EndOf(track.midiClips)});
    }
    for (const orvo::VideoTrack& track : session_.videoTracks) {
        session_.duration = std::max(session_.duration, EndOf(track.clips));
    }
}

void SessionBuilder::Settle(std::size_t number) {
    AudioTrack& track = session_.audioTracks[number];
    if (track.kind == TrackKind::Audio && track.clips.empty() && !track.midiClips.empty()) {
        track.kind = TrackKind::Instrument;
        track.instrument.emplace();
    } else if (track.kind == TrackKind::Instrument && track.midiClips.empty() &&
               !track.clips.empty()) {
        track.kind = TrackKind::Audio;
        track.instrument.reset();
    }
    const bool holdsSound = track.kind != TrackKind::Instrument && track.kind != TrackKind::Master;
    if (!holdsSound && !track.clips.empty()) {
        AudioTrack beside = NewTrackBeside(number, TrackKind::Audio, " (audio)");
        beside.clips = std::exchange(track.clips, {});
        newTracks_.push_back(std::move(beside));
    }
    if (track.kind != TrackKind::Instrument && !track.midiClips.empty()) {
        AudioTrack beside = NewTrackBeside(number, TrackKind::Instrument, " (notes)");
        beside.instrument.emplace();
        beside.midiClips = std::exchange(track.midiClips, {});
        newTracks_.push_back(std::move(beside));
    }
}

AudioTrack SessionBuilder::NewTrackBeside(std::size_t number, TrackKind kind,
                                          std::string_view suffix) {
    const AudioTrack& track = session_.audioTracks[number];
    document_.Report(Fidelity::Moved, document_.Root().child("Structure"),
                     "clips that the track cannot hold are on a new one", track.name);
    return {.kind = kind,
            .name = track.name + std::string(suffix),
            .hue = track.hue,
            .audioChannelType = track.audioChannelType,
            .outputTrackId = track.kind == TrackKind::Master ? static_cast<std::int32_t>(track.id)
                                                             : track.outputTrackId};
}

void SessionBuilder::AddNewTracks() {
    const auto nextIndex = [this] {
        return static_cast<std::uint32_t>(session_.audioTracks.size() +
                                          session_.videoTracks.size());
    };
    for (auto& [number, track] : besideAudio_) {
        track.id = static_cast<std::uint32_t>(session_.videoTracks.size() + 1);
        track.index = nextIndex();
        track.name = session_.audioTracks[number].name;
        session_.videoTracks.push_back(std::move(track));
    }
    for (auto& [number, track] : besideVideo_) {
        track.name = session_.videoTracks[number].name;
        if (track.clips.empty()) {
            track.kind = TrackKind::Instrument;
            track.instrument.emplace();
        } else if (!track.midiClips.empty()) {
            document_.Report(Fidelity::Lost, document_.Root().child("Structure"),
                             "notes on a video track have no place", track.name);
            track.midiClips.clear();
        }
        newTracks_.push_back(std::move(track));
    }
    std::unordered_map<std::uint32_t, std::uint32_t> trackOfMoved;
    for (AudioTrack& track : newTracks_) {
        track.id = static_cast<std::uint32_t>(session_.audioTracks.size() + 1);
        track.index = nextIndex();
        for (const AudioClip& clip : track.clips) {
            trackOfMoved[clip.id] = track.id;
        }
        for (const orvo::MidiClip& clip : track.midiClips) {
            trackOfMoved[clip.id] = track.id;
        }
        session_.audioTracks.push_back(std::move(track));
    }
    // A group names its clips with their tracks.
    for (orvo::ClipGroup& group : session_.clipGroups) {
        for (orvo::ClipGroupItem& item : group.items) {
            const auto moved = trackOfMoved.find(item.clipId);
            item.trackId = moved != trackOfMoved.end() ? moved->second : item.trackId;
        }
    }
}

void SessionBuilder::LinkCrossfades(AudioTrack& track) const {
    for (const Overlap& overlap : OverlapsOf(track.clips)) {
        AudioClip& first = track.clips[overlap.first];
        AudioClip& second = track.clips[overlap.second];
        const bool isStaggered =
            first.startPoint < second.startPoint &&
            first.startPoint + first.duration < second.startPoint + second.duration;
        const bool isSaid = std::ranges::binary_search(crossfadeIds_, second.id);
        if (isStaggered && (isSaid || (first.fadeOut && second.fadeIn))) {
            first.crossFadeTailClipId = static_cast<std::int32_t>(second.id);
            second.crossFadeHeadClipId = static_cast<std::int32_t>(first.id);
        }
    }
}

}  // namespace toolkit::interchange::dawproject
