#pragma once

#include <tuple>

#include "reference_host/model/Session.h"

/// Every struct of the model as a JSON object: a row for each key, which serves both directions.
/// docs/json.md says what the keys mean.
namespace refhost {

template <class Struct, class Member>
struct Row {
    const char* key;
    Member Struct::*member;
};

/// For each struct: its name for people and its rows.
template <class Struct>
struct Schema;

template <>
struct Schema<model::FormatVersion> {
    using T = model::FormatVersion;
    static constexpr char kName[] = "FormatVersion";
    static constexpr std::tuple kRows{Row{"major", &T::major}, Row{"minor", &T::minor}};
};

template <>
struct Schema<model::File> {
    using T = model::File;
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
struct Schema<model::AudioPort> {
    using T = model::AudioPort;
    static constexpr char kName[] = "AudioPort";
    static constexpr std::tuple kRows{Row{"id", &T::id}, Row{"name", &T::name}};
};

template <>
struct Schema<model::AudioDevice> {
    using T = model::AudioDevice;
    static constexpr char kName[] = "AudioDevice";
    static constexpr std::tuple kRows{
        Row{"inputDeviceId", &T::inputDeviceId},
        Row{"outputDeviceId", &T::outputDeviceId},
        Row{"inputPorts", &T::inputPorts},
        Row{"outputPorts", &T::outputPorts},
    };
};

template <>
struct Schema<model::Session> {
    using T = model::Session;
    static constexpr char kName[] = "Session";
    static constexpr std::tuple kRows{
        Row{"formatVersion", &T::formatVersion},
        Row{"sampleRate", &T::sampleRate},
        Row{"channelCount", &T::channelCount},
        Row{"duration", &T::duration},
        Row{"bitDepth", &T::bitDepth},
        Row{"formatDescription", &T::formatDescription},
        Row{"versionDependentValue", &T::versionDependentValue},
        Row{"files", &T::files},
        Row{"audioDevice", &T::audioDevice},
    };
};

}  // namespace refhost
