#pragma once

#include <orvo/AudioTrack.h>
#include <orvo/ClipGroup.h>
#include <orvo/TrackVisibility.h>
#include <orvo/VideoTrack.h>
#include "session/Row.h"

/// The rows of tracks and of what refers to them.
namespace orvo {

template <>
struct Schema<InstrumentTrack> {
    using T = InstrumentTrack;
    static constexpr char kName[] = "InstrumentTrack";
    static constexpr std::tuple kRows{
        Row{"midiIn", &T::midiIn},
        Row{"midiAll", &T::midiAll},
    };
};

template <>
struct Schema<AudioTrack> {
    using T = AudioTrack;
    static constexpr char kName[] = "AudioTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"index", &T::index},
        Row{"kind", &T::kind},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"height", &T::height},
        Row{"selected", &T::selected},
        Row{"minimized", &T::minimized},
        Row{"visible", &T::visible},
        Row{"automationLaneOpen", &T::automationLaneOpen},
        Row{"phaseInverted", &T::phaseInverted},
        Row{"preRendered", &T::preRendered},
        Row{"preRenderedFile", &T::preRenderedFile},
        Row{"sumToMono", &T::sumToMono},
        Row{"audioChannelType", &T::audioChannelType},
        Row{"solo", &T::solo},
        Row{"recordArmed", &T::recordArmed},
        Row{"monitoring", &T::monitoring},
        Row{"soloSafe", &T::soloSafe},
        Row{"outputTrackId", &T::outputTrackId},
        Row{"inputId", &T::inputId},
        Row{"hardwareOutputId", &T::hardwareOutputId},
        Row{"automationMode", &T::automationMode},
        Row{"instrument", &T::instrument},
        Row{"fader", &T::fader},
        Row{"mute", &T::mute},
        Row{"pan", &T::pan},
        Row{"eq", &T::eq},
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters},
        Row{"sendList", &T::sendList},
        Row{"clips", &T::clips},
        Row{"midiClips", &T::midiClips},
        Row{"clipsOnly", &T::clipsOnly},
    };
};

template <>
struct Schema<VideoTrack> {
    using T = VideoTrack;
    static constexpr char kName[] = "VideoTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"index", &T::index},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"height", &T::height},
        Row{"selected", &T::selected},
        Row{"minimized", &T::minimized},
        Row{"clips", &T::clips},
    };
};

template <>
struct Schema<TrackVisibility> {
    using T = TrackVisibility;
    static constexpr char kName[] = "TrackVisibility";
    static constexpr std::tuple kRows{
        Row{"trackId", &T::trackId},
        Row{"height", &T::height},
        Row{"minimized", &T::minimized},
    };
};

template <>
struct Schema<TrackVisibilityPreset> {
    using T = TrackVisibilityPreset;
    static constexpr char kName[] = "TrackVisibilityPreset";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"tracks", &T::tracks},
    };
};

template <>
struct Schema<ClipGroupItem> {
    using T = ClipGroupItem;
    static constexpr char kName[] = "ClipGroupItem";
    static constexpr std::tuple kRows{
        Row{"trackId", &T::trackId},
        Row{"clipId", &T::clipId},
    };
};

template <>
struct Schema<ClipGroup> {
    using T = ClipGroup;
    static constexpr char kName[] = "ClipGroup";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"hue", &T::hue},
        Row{"items", &T::items},
    };
};

}  // namespace orvo
