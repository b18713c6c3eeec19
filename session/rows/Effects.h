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
        Row{"value", &T::value, "in the parameter's unit"},
        Row{"sampleOffset", &T::sampleOffset, "on the timeline of the lane's owner"},
        Row{"type", &T::type, "`hold`: the value stays until the next keyframe"}.Was("hold"),
        Row{"select", &T::selected}.Was("selected"),
    };
};

template <>
struct Schema<AutomationLane> {
    using T = AutomationLane;
    static constexpr char kName[] = "AutomationLane";
    static constexpr std::tuple kRows{
        Row{"enableSplines", &T::enableSplines,
            "whether curves run smoothly through the keyframes"},
        Row{"readOnly", &T::readOnly},
        Row{"keyframes", &T::keyframes, "without any, the lane is not stored"},
    };
};

template <>
struct Schema<Parameter> {
    using T = Parameter;
    static constexpr char kName[] = "Parameter";
    static constexpr std::tuple kRows{
        Row{"parameterValue", &T::value, "in its own unit; without one it is not stored"}.Was(
            "value"),
        Row{"name", &T::name},
        Row{"safeDuringWrite", &T::safeDuringWrite,
            "whether it may be moved by hand while its automation is written"},
        Row{"parameterKeyframes", &T::automation}.Was("automation"),
    };
};

template <>
struct Schema<EditorRect> {
    using T = EditorRect;
    static constexpr char kName[] = "EditorRect";
    static constexpr std::tuple kRows{
        Row{"editorLeft", &T::left, "the host's number, like the next three"}.Was("left"),
        Row{"editorTop", &T::top}.Was("top"),
        Row{"editorWidth", &T::width, "with a width or height of 0 it is not stored"}.Was("width"),
        Row{"editorHeight", &T::height}.Was("height"),
    };
};

template <>
struct Schema<Component> {
    using T = Component;
    static constexpr char kName[] = "Component";
    static constexpr std::tuple kRows{
        Row{"componentGuid", &T::guid, "which effect it is, in a form that lasts"}.Was("guid"),
        Row{"componentID", &T::componentId, "which effect it is"}.Was("componentId"),
        Row{"name", &T::name},
        Row{"presetName", &T::presetName, "the preset that was chosen; empty: none"},
        Row{"powered", &T::powered,
            "whether it is on; an effect in a slot has its power at the slot"},
        Row{"editorVisible", &T::editorVisible, "whether its window is open"},
        Row{"editorRect", &T::editorRect, "where its window is"},
        Row{"presetChunkData", &T::presetChunk,
            "the state that the effect saved; stored for effects in slots only"}
            .Was("presetChunk"),
        Row{"parameters", &T::parameters, "by the parameters' indices; there may be gaps"},
    };
};

template <>
struct Schema<ChannelRoute> {
    using T = ChannelRoute;
    static constexpr char kName[] = "ChannelRoute";
    static constexpr std::tuple kRows{
        Row{"index", &T::index, "an input or output of the effect"},
        Row{"sourceIndex", &T::source, "the channel of the rack that is connected to it"}.Was(
            "source"),
    };
};

template <>
struct Schema<EffectsSlot> {
    using T = EffectsSlot;
    static constexpr char kName[] = "EffectsSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex, "its place in the rack"},
        Row{"bypassed", &T::bypassed, "whether the signal bypasses the effect"},
        Row{"sideChainChannels", &T::sideChainChannels, "0 is not stored"},
        Row{"busConfig", &T::busConfig, "the layout of the effect's busses, as the host gave it"},
        Row{"inputChannels", &T::inputChannels},
        Row{"outputChannels", &T::outputChannels},
        Row{"component", &T::component, "the effect; `null`: an empty slot"},
    };
};

template <>
struct Schema<EffectsRack> {
    using T = EffectsRack;
    static constexpr char kName[] = "EffectsRack";
    static constexpr std::tuple kRows{
        Row{"preFader", &T::preFader, "whether it lies before the fader"},
        Row{"rackMix", &T::mix, "how much of the effects is heard"}.Was("mix"),
        Row{"rackInput", &T::input, "the gain before the effects"}.Was("input"),
        Row{"rackOutput", &T::output, "the gain after the effects"}.Was("output"),
        Row{"slots", &T::slots, "a slot that is `null` is not stored, which is no loss"},
    };
};

template <>
struct Schema<EditParameter> {
    using T = EditParameter;
    static constexpr char kName[] = "EditParameter";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex,
            "the effect's slot; an entry with the default is not stored"},
        Row{"parameterIndex", &T::parameterIndex},
    };
};

template <>
struct Schema<SendSlot> {
    using T = SendSlot;
    static constexpr char kName[] = "SendSlot";
    static constexpr std::tuple kRows{
        Row{"slotIndex", &T::slotIndex, "its place among the track's sends"},
        Row{"sendOutputID", &T::sendOutputId, "the track that is fed; -1: none"}.Was(
            "sendOutputId"),
        Row{"preFader", &T::preFader, "whether the signal is taken before the fader"},
        Row{"destCompIndex", &T::destCompIndex,
            "the component of the destination that is fed; negative: not stored"},
        Row{"sendComponent", &T::sendComponent, "the control of the send's level"},
        Row{"sendPan", &T::panComponent}.Was("panComponent"),
    };
};

template <>
struct Schema<SendList> {
    using T = SendList;
    static constexpr char kName[] = "SendList";
    static constexpr std::tuple kRows{
        Row{"sendSlots", &T::slots, "a slot that is `null` is not stored, which is no loss"}.Was(
            "slots"),
    };
};

}  // namespace orvo
