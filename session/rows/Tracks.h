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
        Row{"midiIn", &T::midiIn, "the MIDI input by name; empty: none"},
        Row{"midiAll", &T::midiAll, "whether all MIDI inputs are heard"},
    };
};

template <>
struct Schema<AudioTrack> {
    using T = AudioTrack;
    static constexpr char kName[] = "AudioTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "unique among the tracks of all kinds"},
        Row{"index", &T::index, "its place in the list of tracks"},
        Row{"kind", &T::kind, "a file stores a number without a word as `audio`"},
        Row{"name", &T::name},
        Row{"trackHue", &T::hue, "the colour's hue, the host's number"}.Was("hue"),
        Row{"trackHeight", &T::height, "the host's number"}.Was("height"),
        Row{"select", &T::selected}.Was("selected"),
        Row{"trackMinimized", &T::minimized}.Was("minimized"),
        Row{"visible", &T::visible},
        Row{"automationLaneOpenState", &T::automationLaneOpen,
            "whether its automation lanes are unfolded"}
            .Was("automationLaneOpen"),
        Row{"phaseInverted", &T::phaseInverted},
        Row{"preRendered", &T::preRendered,
            "whether the pre-rendered file is played in place of clips and effects"},
        Row{"preRenderedFile", &T::preRenderedFile, "the full path of that file"},
        Row{"sumtomono", &T::sumToMono}.Was("sumToMono"),
        Row{"audioChannelType", &T::audioChannelType,
            "a file stores neither `notSaid` nor a number without a word"},
        Row{"solo", &T::solo},
        Row{"recordArmed", &T::recordArmed},
        Row{"monitoring", &T::monitoring},
        Row{"soloSafe", &T::soloSafe, "whether it is heard while another track is solo"},
        Row{"outputTrackID", &T::outputTrackId,
            "the track that it feeds; above 0 it is stored in place of the hardware output"}
            .Was("outputTrackId"),
        Row{"inputID", &T::inputId, "the id of an input port; -1: none"}.Was("inputId"),
        Row{"hardwareOutputID", &T::hardwareOutputId, "the id of an output port; -1: none"}.Was(
            "hardwareOutputId"),
        Row{"automationMode", &T::automationMode, "the host's code"},
        Row{"instrument", &T::instrument, "what only instrument tracks have"},
        Row{"trackFader", &T::fader, "the control of the level"}.Was("fader"),
        Row{"trackMute", &T::mute}.Was("mute"),
        Row{"trackPan", &T::pan}.Was("pan"),
        Row{"trackEQ", &T::eq, "the equaliser"}.Was("eq"),
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters, "the parameters that the editor shows"},
        Row{"sendList", &T::sendList},
        Row{"audioClips", &T::clips, "not stored for a master or instrument track"}.Was("clips"),
        Row{"midiClips", &T::midiClips, "stored for an instrument track only"},
        Row{"clipsOnly", &T::clipsOnly,
            "whether the host shows nothing of the track but its clips; such a track is not "
            "stored"},
    };
};

template <>
struct Schema<VideoTrack> {
    using T = VideoTrack;
    static constexpr char kName[] = "VideoTrack";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "unique among the tracks of all kinds"},
        Row{"index", &T::index, "its place in the list of tracks; set by a read, never written"},
        Row{"name", &T::name},
        Row{"trackHue", &T::hue, "the colour's hue, the host's number"}.Was("hue"),
        Row{"trackHeight", &T::height, "the host's number"}.Was("height"),
        Row{"select", &T::selected}.Was("selected"),
        Row{"trackMinimized", &T::minimized}.Was("minimized"),
        Row{"videoClips", &T::clips}.Was("clips"),
    };
};

template <>
struct Schema<TrackVisibility> {
    using T = TrackVisibility;
    static constexpr char kName[] = "TrackVisibility";
    static constexpr std::tuple kRows{
        Row{"trackID", &T::trackId, "a visible track"}.Was("trackId"),
        Row{"trackHeight", &T::height, "the host's number"}.Was("height"),
        Row{"trackMinimized", &T::minimized}.Was("minimized"),
    };
};

template <>
struct Schema<TrackVisibilityPreset> {
    using T = TrackVisibilityPreset;
    static constexpr char kName[] = "TrackVisibilityPreset";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"trackVisibilities", &T::tracks}.Was("tracks"),
    };
};

template <>
struct Schema<ClipGroupItem> {
    using T = ClipGroupItem;
    static constexpr char kName[] = "ClipGroupItem";
    static constexpr std::tuple kRows{
        Row{"trackID", &T::trackId}.Was("trackId"),
        Row{"clipID", &T::clipId}.Was("clipId"),
    };
};

template <>
struct Schema<ClipGroup> {
    using T = ClipGroup;
    static constexpr char kName[] = "ClipGroup";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
        Row{"hue", &T::hue, "the colour's hue, the host's number"},
        Row{"items", &T::items},
    };
};

}  // namespace orvo
