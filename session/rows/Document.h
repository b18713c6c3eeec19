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
        Row{"id", &T::id},
        Row{"path", &T::path},
        Row{"mediaHandler", &T::mediaHandler},
        Row{"recoveryId", &T::recoveryId},
        Row{"importerPrivateSettings", &T::importerPrivateSettings},
    };
};

template <>
struct Schema<AudioPort> {
    using T = AudioPort;
    static constexpr char kName[] = "AudioPort";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"name", &T::name},
    };
};

template <>
struct Schema<AudioDevice> {
    using T = AudioDevice;
    static constexpr char kName[] = "AudioDevice";
    static constexpr std::tuple kRows{
        Row{"inputDeviceId", &T::inputDeviceId},
        Row{"outputDeviceId", &T::outputDeviceId},
        Row{"inputPorts", &T::inputPorts},
        Row{"outputPorts", &T::outputPorts},
    };
};

template <>
struct Schema<FormatVersion> {
    using T = FormatVersion;
    static constexpr char kName[] = "FormatVersion";
    static constexpr std::tuple kRows{
        Row{"major", &T::major},
        Row{"minor", &T::minor},
    };
};

template <>
struct Schema<Session> {
    using T = Session;
    static constexpr char kName[] = "Session";
    static constexpr std::tuple kRows{
        Row{"formatVersion", &T::formatVersion},
        Row{"sampleRate", &T::sampleRate},
        Row{"channelCount", &T::channelCount},
        Row{"duration", &T::duration},
        Row{"bitDepth", &T::bitDepth},
        Row{"formatDescription", &T::formatDescription},
        Row{"versionDependentValue", &T::versionDependentValue},
        Row{"videoTracks", &T::videoTracks},
        Row{"audioTracks", &T::audioTracks},
        Row{"trackVisibilityPresets", &T::trackVisibilityPresets},
        Row{"clipGroups", &T::clipGroups},
        Row{"metronome", &T::metronome},
        Row{"ctiPosition", &T::ctiPosition},
        Row{"smpteStart", &T::smpteStart},
        Row{"selection", &T::selection},
        Row{"viewState", &T::viewState},
        Row{"timeFormat", &T::timeFormat},
        Row{"musicalTime", &T::musicalTime},
        Row{"mixingOptions", &T::mixingOptions},
        Row{"properties", &T::properties},
        Row{"xmpMetadata", &T::xmpMetadata},
        Row{"files", &T::files},
        Row{"audioDevice", &T::audioDevice},
    };
};

}  // namespace orvo
