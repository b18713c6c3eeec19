#pragma once

#include <orvo/Session.h>
#include "session/Row.h"

/// The rows of the session itself, its files and its devices.
namespace orvo {

template <>
struct Schema<File> {
    using T = File;
    static constexpr char kName[] = "File";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "what clips refer to"},
        Row{"path", &T::path,
            "the full path, or one of the other forms that the rules name; it need not exist"},
        Row{"mediaHandlerID", &T::mediaHandler,
            "the identifier of the handler that imported the file"}
            .Was("mediaHandler"),
        Row{"recoveryID", &T::recoveryId, "the id that crash recovery uses for the file"}.Was(
            "recoveryId"),
        Row{"importerPrivateSettings", &T::importerPrivateSettings, "what the importer wants back"},
    };
};

template <>
struct Schema<AudioPort> {
    using T = AudioPort;
    static constexpr char kName[] = "AudioPort";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "what tracks give as their input or hardware output"},
        Row{"name", &T::name, "for people"},
    };
};

template <>
struct Schema<AudioDevice> {
    using T = AudioDevice;
    static constexpr char kName[] = "AudioDevice";
    static constexpr std::tuple kRows{
        Row{"inputID", &T::inputDeviceId, "the host's identifier of the device for input"}.Was(
            "inputDeviceId"),
        Row{"outputID", &T::outputDeviceId, "that of the device for output"}.Was("outputDeviceId"),
        Row{"inputPorts", &T::inputPorts, "the named inputs"},
        Row{"outputPorts", &T::outputPorts, "the named outputs"},
    };
};

template <>
struct Schema<FormatVersion> {
    using T = FormatVersion;
    static constexpr char kName[] = "FormatVersion";
    static constexpr std::tuple kRows{
        Row{"major", &T::major, "before the point"},
        Row{"minor", &T::minor, "after the point"},
    };
};

template <>
struct Schema<Session> {
    using T = Session;
    static constexpr char kName[] = "Session";
    static constexpr std::tuple kRows{
        Row{"formatVersion", &T::formatVersion,
            "the version that a save writes into the session file; a read does not set it"},
        Row{"sampleRate", &T::sampleRate, "samples per second"},
        Row{"audioChannelType", &T::audioChannelType,
            "a file stores `notSaid` and numbers without a word as `stereo`"}
            .Was("channelCount"),
        Row{"duration", &T::duration, "the session's length"},
        Row{"bitDepth", &T::bitDepth, "bits per sample"},
        Row{"formatDescription", &T::formatDescription,
            "which application version wrote the file, as a sentence; set by a read, never "
            "written"},
        Row{"versionDependentValue", &T::versionDependentValue,
            "the position that a read ends with: that of the current-time indicator for the oldest "
            "files, the selection's start for others; never written"},
        Row{"videoTracks", &T::videoTracks},
        Row{"audioTracks", &T::audioTracks, "all tracks of the audio side but the metronome's"},
        Row{"trackVisibilityPresets", &T::trackVisibilityPresets,
            "named choices of visible tracks"},
        Row{"clipGroups", &T::clipGroups, "clips that are edited as one"},
        Row{"metronome", &T::metronome},
        Row{"ctiPosition", &T::ctiPosition, "the position of the current-time indicator"},
        Row{"smpteStart", &T::smpteStart, "the timecode of the first sample, in the host's unit"},
        Row{"selectionState", &T::selection, "the selected time range"}.Was("selection"),
        Row{"viewState", &T::viewState, "the visible part of the timeline"},
        Row{"timeFormatState", &T::timeFormat, "how times are shown"}.Was("timeFormat"),
        Row{"musicalTime", &T::musicalTime, "the grid of bars and beats"},
        Row{"mixingOptionState", &T::mixingOptions}.Was("mixingOptions"),
        Row{"properties", &T::properties, "texts that the host keeps with the session"},
        Row{"xmpMetadata", &T::xmpMetadata, "the XMP packet; empty: none"},
        Row{"files", &T::files, "the media that clips refer to"},
        Row{"audioDevice", &T::audioDevice, "the audio device and its ports"},
    };
};

}  // namespace orvo
