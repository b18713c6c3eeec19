#pragma once

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/Automation.h"

namespace refhost::model {

/// One setting of a component.
struct Parameter {
    std::optional<float>
        value{};  ///< in the parameter's own unit; none: there is no such parameter
    std::u16string name{};
    bool safeDuringWrite = false;  ///< may be moved by hand while its automation is written
    std::optional<AutomationLane> automation{};

    friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// Where an effect's window is, in the host's numbers.
struct EditorRect {
    kelcore::int32 left = 0;
    kelcore::int32 top = 0;
    kelcore::int32 width = 0;
    kelcore::int32 height = 0;

    friend bool operator==(const EditorRect&, const EditorRect&) = default;
};

/// An effect, or a control such as a fader, which is an effect of one or a few parameters.
struct Component {
    std::u16string guid{};
    std::u16string componentId{};
    std::u16string name{};
    std::u16string presetName{};  ///< empty: no preset was chosen
    bool powered = true;          ///< of no meaning in a rack's slot, which has its own
    bool editorVisible = false;
    EditorRect editorRect{};
    std::vector<kelcore::byte> presetChunk{};           ///< the state that the effect saved
    std::map<kelcore::uint32, Parameter> parameters{};  ///< by their index, possibly with gaps

    friend bool operator==(const Component&, const Component&) = default;
};

/// Which channel of the rack stands at an input or output of an effect.
struct ChannelRoute {
    kelcore::int32 index = 0;
    kelcore::int32 source = 0;

    friend bool operator==(const ChannelRoute&, const ChannelRoute&) = default;
};

/// A place for one effect in a rack.
struct EffectsSlot {
    kelcore::uint32 slotIndex = 0;
    bool bypassed = false;
    kelcore::uint32 sideChainChannels = 0;
    std::u16string busConfig{};
    std::vector<ChannelRoute> inputChannels{};
    std::vector<ChannelRoute> outputChannels{};
    std::optional<Component> component{};  ///< none: an empty slot

    friend bool operator==(const EffectsSlot&, const EffectsSlot&) = default;
};

/// The effects of a track or clip.
struct EffectsRack {
    bool preFader = true;
    std::optional<Component> mix{};
    std::optional<Component> input{};
    std::optional<Component> output{};
    std::vector<std::optional<EffectsSlot>> slots{};  ///< none: a host may report that; not stored

    friend bool operator==(const EffectsRack&, const EffectsRack&) = default;
};

/// A parameter that the editor shows for a track or clip, of an effect in its rack.
struct EditParameter {
    kelcore::uint32 slotIndex = 4294967295;  ///< this value means none
    kelcore::uint32 parameterIndex = 0;

    friend bool operator==(const EditParameter&, const EditParameter&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const Parameter& parameter);
std::ostream& operator<<(std::ostream& out, const EditorRect& rect);
std::ostream& operator<<(std::ostream& out, const Component& component);
std::ostream& operator<<(std::ostream& out, const ChannelRoute& route);
std::ostream& operator<<(std::ostream& out, const EffectsSlot& slot);
std::ostream& operator<<(std::ostream& out, const EffectsRack& rack);
std::ostream& operator<<(std::ostream& out, const EditParameter& parameter);

}  // namespace refhost::model
