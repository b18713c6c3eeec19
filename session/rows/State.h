#pragma once

#include <orvo/EditorState.h>
#include <orvo/Metronome.h>
#include "session/Row.h"

/// The rows of the metronome and of what the editor keeps.
namespace orvo {

template <>
struct Schema<GlobalTrackInfo> {
    using T = GlobalTrackInfo;
    static constexpr char kName[] = "GlobalTrackInfo";
    static constexpr std::tuple kRows{
        Row{"timeSigVisible", &T::timeSigVisible, "whether the ruler of time signatures is shown"},
        Row{"keySigVisible", &T::keySigVisible, "whether the ruler of key signatures is shown"},
        Row{"tempoVisible", &T::tempoVisible, "whether the ruler of tempi is shown"},
        Row{"tempoEvents", &T::tempoEvents, "in the host's own layout, like the next two"},
        Row{"timeSignatureEvents", &T::timeSignatureEvents},
        Row{"keySignatureEvents", &T::keySignatureEvents},
    };
};

template <>
struct Schema<Metronome> {
    using T = Metronome;
    static constexpr char kName[] = "Metronome";
    static constexpr std::tuple kRows{
        Row{"enabled", &T::enabled},
        Row{"soundSet", &T::soundSet, "a file does not store a number without a word"},
        Row{"pattern", &T::pattern,
            "the beats of a bar; a file does not store a number without a word"},
        Row{"metronomeTrack", &T::track,
            "the track that the metronome plays on; one read from a file has the id 4294967295"}
            .Was("track"),
        Row{"globalTrackInfo", &T::globalTrackInfo, "the musical timeline"},
    };
};

template <>
struct Schema<Selection> {
    using T = Selection;
    static constexpr char kName[] = "Selection";
    static constexpr std::tuple kRows{
        Row{"selectionStart", &T::start}.Was("start"),
        Row{"selectionDuration", &T::duration}.Was("duration"),
    };
};

template <>
struct Schema<ViewState> {
    using T = ViewState;
    static constexpr char kName[] = "ViewState";
    static constexpr std::tuple kRows{
        Row{"horizontalViewStart", &T::horizontalViewStart, "the first visible sample"},
        Row{"horizontalViewDuration", &T::horizontalViewDuration},
        Row{"trackControlsWidth", &T::trackControlsWidth, "the host's number"},
        Row{"verticalScrollOffset", &T::verticalScrollOffset, "the host's number"},
    };
};

template <>
struct Schema<TimeFormat> {
    using T = TimeFormat;
    static constexpr char kName[] = "TimeFormat";
    static constexpr std::tuple kRows{
        Row{"timeFormat", &T::format,
            "a file gives a number without a word back as `timeFormatDecimal`"}
            .Was("format"),
        Row{"timeCodeFrameRate", &T::frameRate, "frames per second"}.Was("frameRate"),
        Row{"timeCodeNTSC", &T::ntsc}.Was("ntsc"),
        Row{"timeCodeDropFrame", &T::dropFrame}.Was("dropFrame"),
        Row{"customFrameRate", &T::customFrameRate, "the host's own"},
        Row{"linkToDefaultTimeSettings", &T::linkedToDefaults,
            "whether it follows the application's preferences"}
            .Was("linkedToDefaults"),
    };
};

template <>
struct Schema<MusicalTime> {
    using T = MusicalTime;
    static constexpr char kName[] = "MusicalTime";
    static constexpr std::tuple kRows{
        Row{"beatsPerMinute", &T::beatsPerMinute},
        Row{"beatsPerBar", &T::beatsPerBar},
        Row{"noteLength", &T::noteLength, "the beat's note, the host's number"},
        Row{"subdivisions", &T::subdivisions, "of a beat"},
    };
};

template <>
struct Schema<MixingOptions> {
    using T = MixingOptions;
    static constexpr char kName[] = "MixingOptions";
    static constexpr std::tuple kRows{
        Row{"defaultPanModeLogarithmic", &T::panLogarithmic,
            "whether the default pan law is the logarithmic one"}
            .Was("panLogarithmic"),
        Row{"panPower", &T::panPower, "the power of the default pan law, the host's number"},
        Row{"playOverlappingClips", &T::playOverlappingClips, "whether overlapping clips play"},
    };
};

template <>
struct Schema<Property> {
    using T = Property;
    static constexpr char kName[] = "Property";
    static constexpr std::tuple kRows{
        Row{"key", &T::key},
        Row{"value", &T::value},
    };
};

}  // namespace orvo
