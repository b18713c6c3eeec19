#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Automation.h>
#include <orvo/Ids.h>

namespace orvo {

/// One setting of a component.
struct Parameter {
    std::optional<float> value{};  ///< in the parameter's own unit; null: no such parameter
    std::string name{};
    bool safeDuringWrite = false;  ///< may be moved by hand while its automation is written
    std::optional<AutomationLane> automation{};

    friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// Where an effect's window is, in the host's numbers.
struct EditorRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const EditorRect&, const EditorRect&) = default;
};

/// An effect, or a control such as a fader, which is an effect of one or a few parameters.
struct Component {
    std::string guid{};
    std::string componentId{};
    std::string name{};
    std::string presetName{};  ///< empty: no preset was chosen
    bool powered = true;       ///< ignored in a rack's slot, where `bypassed` counts
    bool editorVisible = false;
    EditorRect editorRect{};
    std::vector<std::uint8_t> presetChunk{};          ///< the state that the effect saved
    std::map<std::uint32_t, Parameter> parameters{};  ///< by their index, possibly with gaps

    friend bool operator==(const Component&, const Component&) = default;
};

/// Which channel of the rack stands at an input or output of an effect.
struct ChannelRoute {
    std::int32_t index = 0;
    std::int32_t source = 0;

    friend bool operator==(const ChannelRoute&, const ChannelRoute&) = default;
};

/// A place for one effect in a rack.
struct EffectsSlot {
    std::uint32_t slotIndex = 0;
    bool bypassed = false;
    std::uint32_t sideChainChannels = 0;
    std::string busConfig{};
    std::vector<ChannelRoute> inputChannels{};
    std::vector<ChannelRoute> outputChannels{};
    std::optional<Component> component{};  ///< null: an empty slot

    friend bool operator==(const EffectsSlot&, const EffectsSlot&) = default;
};

/// The effects of a track or clip.
struct EffectsRack {
    bool preFader = true;
    std::optional<Component> mix{};
    std::optional<Component> input{};
    std::optional<Component> output{};
    /// A null is a slot that the host reported as null. It is not stored.
    std::vector<std::optional<EffectsSlot>> slots{};

    friend bool operator==(const EffectsRack&, const EffectsRack&) = default;
};

/// A parameter that the editor shows for a track or clip, of an effect in its rack.
struct EditParameter {
    std::uint32_t slotIndex = kNoId;
    std::uint32_t parameterIndex = 0;

    friend bool operator==(const EditParameter&, const EditParameter&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const Parameter& parameter);
ORVO_API std::ostream& operator<<(std::ostream& out, const EditorRect& rect);
ORVO_API std::ostream& operator<<(std::ostream& out, const Component& component);
ORVO_API std::ostream& operator<<(std::ostream& out, const ChannelRoute& route);
ORVO_API std::ostream& operator<<(std::ostream& out, const EffectsSlot& slot);
ORVO_API std::ostream& operator<<(std::ostream& out, const EffectsRack& rack);
ORVO_API std::ostream& operator<<(std::ostream& out, const EditParameter& parameter);

}  // namespace orvo
