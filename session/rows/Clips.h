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
        Row{"startPoint", &T::startPoint, "where it begins"},
        Row{"endPoint", &T::endPoint, "where it ends"},
        Row{"type", &T::type,
            "the family of the curve; a file stores a number without a word as `cosine`"},
        Row{"shape", &T::shape, "the curve within its family"},
        Row{"crossFadeLinkType", &T::crossFadeLinkType,
            "how the sides of a crossfade are edited; a file stores a number without a word as "
            "`linkedAsymmetric`"},
    };
};

template <>
struct Schema<ClipStretch> {
    using T = ClipStretch;
    static constexpr char kName[] = "ClipStretch";
    static constexpr std::tuple kRows{
        Row{"stretchMode", &T::stretchMode,
            "`realtime`: during playback; a file stores a number without a word as `rendered`"},
        Row{"stretchType", &T::stretchType, "a file stores a number without a word as `varispeed`"},
        Row{"stretchRatio", &T::stretchRatio},
        Row{"pitchAdjustment", &T::pitchAdjustment, "in the host's unit"},
        Row{"stretchQuality", &T::stretchQuality, "a file stores a number without a word as `low`"},
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
        Row{"id", &T::id, "unique among the session's clips"},
        Row{"fileID", &T::fileId, "the file that is played"}.Was("fileId"),
        Row{"sourceInPoint", &T::sourceInPoint, "the region's first sample in the file"},
        Row{"duration", &T::duration, "the region's length"},
        Row{"startPoint", &T::startPoint, "where the region starts on the timeline"},
        Row{"hue", &T::hue, "the colour's hue, the host's number"},
        Row{"name", &T::name},
        Row{"looped", &T::looped, "whether the region repeats"},
        Row{"offline", &T::offline, "whether the media is offline"},
        Row{"select", &T::selected}.Was("selected"),
        Row{"lockedInTime", &T::lockedInTime, "whether it may not be moved in time"},
        Row{"zOrder", &T::zOrder, "the order among clips that overlap, the host's number"},
        Row{"clipAutoCrossfade", &T::autoCrossfade,
            "whether the host makes crossfades where it overlaps others"}
            .Was("autoCrossfade"),
        Row{"crossFadeHeadClipID", &T::crossFadeHeadClipId,
            "the clip that it crossfades with at its start; -1: none"}
            .Was("crossFadeHeadClipId"),
        Row{"crossFadeTailClipID", &T::crossFadeTailClipId,
            "the clip that it crossfades with at its end; -1: none"}
            .Was("crossFadeTailClipId"),
        Row{"fadeIn", &T::fadeIn},
        Row{"fadeOut", &T::fadeOut},
        Row{"clipStretch", &T::stretch}.Was("stretch"),
        Row{"takes", &T::takes, "the first sample of each take in the file"},
        Row{"clipGain", &T::gain}.Was("gain"),
        Row{"clipMute", &T::mute}.Was("mute"),
        Row{"clipPan", &T::pan}.Was("pan"),
        Row{"effectsRack", &T::effectsRack},
        Row{"editParameters", &T::editParameters, "the parameters that the editor shows"},
        Row{"properties", &T::properties, "what the host keeps with the clip; empty is not stored"},
        Row{"channelMap", &T::channelSources,
            "for a channel of the clip, the channel of the file that feeds it; one left out below "
            "the highest is fed by the channel of its own number"}
            .Was("channelSources"),
    };
};

template <>
struct Schema<MidiClip> {
    using T = MidiClip;
    static constexpr char kName[] = "MidiClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "unique among the session's clips"},
        Row{"sourceInPoint", &T::sourceInPoint},
        Row{"duration", &T::duration},
        Row{"startPoint", &T::startPoint, "where it starts on the timeline"},
        Row{"hue", &T::hue, "the colour's hue, the host's number"},
        Row{"name", &T::name},
        Row{"select", &T::selected}.Was("selected"),
        Row{"lockedInTime", &T::lockedInTime, "whether it may not be moved in time"},
        Row{"midiEvents", &T::events, "in the host's own layout"}.Was("events"),
    };
};

template <>
struct Schema<VideoFormat> {
    using T = VideoFormat;
    static constexpr char kName[] = "VideoFormat";
    static constexpr std::tuple kRows{
        Row{"timeScale", &T::timeScale, "units in a second"},
        Row{"sampleSize", &T::sampleSize, "units in a frame"},
        Row{"pixelType", &T::pixelType, "the host's code"},
        Row{"width", &T::width, "of the frame, in pixels"},
        Row{"height", &T::height, "of the frame, in pixels"},
        Row{"parNumerator", &T::parNumerator, "of the pixel aspect ratio"},
        Row{"parDenominator", &T::parDenominator, "of the pixel aspect ratio"},
        Row{"fieldType", &T::fieldType, "the host's code"},
    };
};

template <>
struct Schema<VideoClip> {
    using T = VideoClip;
    static constexpr char kName[] = "VideoClip";
    static constexpr std::tuple kRows{
        Row{"id", &T::id, "unique among the session's clips"},
        Row{"fileID", &T::fileId, "the file that is shown"}.Was("fileId"),
        Row{"sourceInPoint", &T::sourceInPoint, "the region's first sample in the file"},
        Row{"duration", &T::duration, "the region's length"},
        Row{"startPoint", &T::startPoint, "where the region starts on the timeline"},
        Row{"hue", &T::hue, "the colour's hue, the host's number"},
        Row{"name", &T::name},
        Row{"offline", &T::offline, "whether the media is offline"},
        Row{"select", &T::selected}.Was("selected"),
        Row{"lockedInTime", &T::lockedInTime, "whether it may not be moved in time"},
        Row{"zOrder", &T::zOrder, "the order among clips that overlap, the host's number"},
        Row{"videoFormat", &T::format}.Was("format"),
    };
};

}  // namespace orvo
