#pragma once

#include <orvo/Effects.h>
#include <orvo/Sends.h>
#include "session/Row.h"

/// The rows of effects, automation and sends.
namespace orvo {

template <>
struct Schema<Keyframe> {
    using T = Keyframe;
    static constexpr char kName[] = "Keyframe";
    static constexpr std::tuple kRows{
        Row{"value", &T::value},
        Row{"sampleOffset", &T::sampleOffset},
        Row{"hold", &T::hold},
        Row{"selected", &T::selected},
    };
};

template <>
struct Schema<AutomationLane> {
    using T = AutomationLane;
    static constexpr char kName[] = "AutomationLane";
    static constexpr std::tuple kRows{
        Row{"enableSplines", &T::enableSplines},
        Row{"readOnly", &T::readOnly},
        Row{"keyframes", &T::keyframes},
    };
};

template <>
struct Schema<Parameter> {
    using T = Parameter;
    static constexpr char kName[] = "Parameter";
    static constexpr std::tuple kRows{
        Row{"value", &T::value},
        Row{"name", &T::name},
        Row{"safeDuringWrite", &T::safeDuringWrite},
        Row{"automation", &T::automation},
    };
};

template <>
struct Schema<EditorRect> {
    using T = EditorRect;
    static constexpr char kName[] = "EditorRect";
    static constexpr std::tuple kRows{
        Row{"left", &T::left},
        Row{"top", &T::top},
        Row{"width", &T::width},
        Row{"height", &T::height},
    };
};

template <>
struct Schema<Component> {
    using T = Component;
    static constexpr char kName[] = "Component";
    static constexpr std::tuple kRows{
        Row{"guid", &T::guid},
        Row{"componentId", &T::componentId},
        Row{"name", &T::name},
        Row{"presetName", &T::presetName},
        Row{"powered", &T::powered},
        Row{"editorVisible", &T::editorVisible},
        Row{"editorRect", &T::editorRect},
        Row{"presetChunk", &T::presetChunk},
        Row{"parameters", &T::parameters},
    };
};

template <>
struct Schema<ChannelRoute> {
    using T = ChannelRoute;
    static constexpr char kName[] = "ChannelRoute";
    static constexpr std::tuple kRows{
        Row{"index", &T::index},
        Row{"source", &T::source},
    };
};

template <>
struct Schema<EffectsSlot> {
    using T = EffectsSlot;
    static constexpr char kName[] = "EffectsSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},
        Row{"bypassed", &T::bypassed},
        Row{"sideChainChannels", &T::sideChainChannels},
        Row{"busConfig", &T::busConfig},
        Row{"inputChannels", &T::inputChannels},
        Row{"outputChannels", &T::outputChannels},
        Row{"component", &T::component},
    };
};

template <>
struct Schema<EffectsRack> {
    using T = EffectsRack;
    static constexpr char kName[] = "EffectsRack";
    static constexpr std::tuple kRows{
        Row{"preFader", &T::preFader}, Row{"mix", &T::mix},     Row{"input", &T::input},
        Row{"output", &T::output},     Row{"slots", &T::slots},
    };
};

template <>
struct Schema<EditParameter> {
    using T = EditParameter;
    static constexpr char kName[] = "EditParameter";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},
        Row{"parameterIndex", &T::parameterIndex},
    };
};

template <>
struct Schema<SendSlot> {
    using T = SendSlot;
    static constexpr char kName[] = "SendSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex},         Row{"sendOutputId", &T::sendOutputId},
        Row{"preFader", &T::preFader},           Row{"destCompIndex", &T::destCompIndex},
        Row{"sendComponent", &T::sendComponent}, Row{"panComponent", &T::panComponent},
    };
};

template <>
struct Schema<SendList> {
    using T = SendList;
    static constexpr char kName[] = "SendList";
    static constexpr std::tuple kRows{
        Row{"slots", &T::slots},
    };
};

}  // namespace orvo
