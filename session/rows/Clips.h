#pragma once

#include <orvo/AudioClip.h>
#include <orvo/MidiClip.h>
#include <orvo/VideoTrack.h>
#include "session/Row.h"

/// The rows of clips.
namespace orvo {

template <>
struct Schema<Fade> {
    using T = Fade;
    static constexpr char kName[] = "Fade";
    static constexpr std::tuple kRows{
        Row{"startPoint", &T::startPoint},
        Row{"endPoint", &T::endPoint},
        Row{"type", &T::type},
        Row{"shape", &T::shape},
        Row{"crossFadeLinkType", &T::crossFadeLinkType},
    };
};

template <>
struct Schema<ClipStretch> {
    using T = ClipStretch;
    static constexpr char kName[] = "ClipStretch";
    static constexpr std::tuple kRows{
        Row{"stretchMode", &T::stretchMode},
        Row{"stretchType", &T::stretchType},
        Row{"stretchRatio", &T::stretchRatio},
        Row{"pitchAdjustment", &T::pitchAdjustment},
        Row{"stretchQuality", &T::stretchQuality},
        Row{"transientSensitivity", &T::transientSensitivity},
        Row{"adaptiveWindowSize", &T::adaptiveWindowSize},
        Row{"preserveFormants", &T::preserveFormants},
    };
};

template <>
struct Schema<AudioClip> {
    using T = AudioClip;
    static constexpr char kName[] = "AudioClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"fileId", &T::fileId},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"looped", &T::looped},
        Row{"offline", &T::offline},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"zOrder", &T::zOrder},
        Row{"autoCrossfade", &T::autoCrossfade},
        Row{"crossFadeHeadClipId", &T::crossFadeHeadClipId},
        Row{"crossFadeTailClipId", &T::crossFadeTailClipId},
        Row{"fadeIn", &T::fadeIn},
        Row{"fadeOut", &T::fadeOut},
        Row{"stretch", &T::stretch},
        Row{"takes", &T::takes},
        Row{"gain", &T::gain},
        Row{"mute", &T::mute},
        Row{"pan", &T::pan},
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters},
        Row{"properties", &T::properties},
        Row{"channelSources", &T::channelSources},
    };
};

template <>
struct Schema<MidiClip> {
    using T = MidiClip;
    static constexpr char kName[] = "MidiClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"events", &T::events},
    };
};

template <>
struct Schema<VideoFormat> {
    using T = VideoFormat;
    static constexpr char kName[] = "VideoFormat";
    static constexpr std::tuple kRows{
        Row{"timeScale", &T::timeScale},
        Row{"sampleSize", &T::sampleSize},
        Row{"pixelType", &T::pixelType},
        Row{"width", &T::width},
        Row{"height", &T::height},
        Row{"parNumerator", &T::parNumerator},
        Row{"parDenominator", &T::parDenominator},
        Row{"fieldType", &T::fieldType},
    };
};

template <>
struct Schema<VideoClip> {
    using T = VideoClip;
    static constexpr char kName[] = "VideoClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id},
        Row{"fileId", &T::fileId},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint},
        Row{"hue", &T::hue},
        Row{"name", &T::name},
        Row{"offline", &T::offline},
        Row{"selected", &T::selected},
        Row{"lockedInTime", &T::lockedInTime},
        Row{"zOrder", &T::zOrder},
        Row{"format", &T::format},
    };
};

}  // namespace orvo
