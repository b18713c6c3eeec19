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
        Row{"timeSigVisible", &T::timeSigVisible},
        Row{"keySigVisible", &T::keySigVisible},
        Row{"tempoVisible", &T::tempoVisible},
        Row{"tempoEvents", &T::tempoEvents},
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
        Row{"soundSet", &T::soundSet},
        Row{"pattern", &T::pattern},
        Row{"track", &T::track},
        Row{"globalTrackInfo", &T::globalTrackInfo},
    };
};

template <>
struct Schema<Selection> {
    using T = Selection;
    static constexpr char kName[] = "Selection";
    static constexpr std::tuple kRows{
        Row{"start", &T::start},
        Row{"duration", &T::duration},
    };
};

template <>
struct Schema<ViewState> {
    using T = ViewState;
    static constexpr char kName[] = "ViewState";
    static constexpr std::tuple kRows{
        Row{"horizontalViewStart", &T::horizontalViewStart},
        Row{"horizontalViewDuration", &T::horizontalViewDuration},
        Row{"trackControlsWidth", &T::trackControlsWidth},
        Row{"verticalScrollOffset", &T::verticalScrollOffset},
    };
};

template <>
struct Schema<TimeFormat> {
    using T = TimeFormat;
    static constexpr char kName[] = "TimeFormat";
    static constexpr std::tuple kRows{
        Row{"format", &T::format},
        Row{"frameRate", &T::frameRate},
        Row{"ntsc", &T::ntsc},
        Row{"dropFrame", &T::dropFrame},
        Row{"customFrameRate", &T::customFrameRate},
        Row{"linkedToDefaults", &T::linkedToDefaults},
    };
};

template <>
struct Schema<MusicalTime> {
    using T = MusicalTime;
    static constexpr char kName[] = "MusicalTime";
    static constexpr std::tuple kRows{
        Row{"beatsPerMinute", &T::beatsPerMinute},
        Row{"beatsPerBar", &T::beatsPerBar},
        Row{"noteLength", &T::noteLength},
        Row{"subdivisions", &T::subdivisions},
    };
};

template <>
struct Schema<MixingOptions> {
    using T = MixingOptions;
    static constexpr char kName[] = "MixingOptions";
    static constexpr std::tuple kRows{
        Row{"panLogarithmic", &T::panLogarithmic},
        Row{"panPower", &T::panPower},
        Row{"playOverlappingClips", &T::playOverlappingClips},
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
