#pragma once

#include "host/HostObject.h"

namespace tses {

struct IEditAutomationLane;
struct IQueryAutomationLane;

/// An effect, or a control such as a fader, which is an effect of one or a few parameters. From the
/// operations named Get...Component. Parameters are known by their index.
struct IEditComponent : IHostObject {
    /// Which effect it is. May be empty.
    virtual void SetComponentID(const kelcore::char16* componentId) = 0;
    /// The component's name.
    virtual void SetName(const kelcore::char16* name) = 0;
    /// The value of a parameter. In the parameter's own unit.
    virtual void SetParameterValue(kelcore::uint32 index, float value) = 0;
    /// The name of a parameter. Follows its value; may be empty.
    virtual void SetParameterName(kelcore::uint32 index, const kelcore::char16* name) = 0;
    /// The automation of a parameter. Null: what the file says about the parameter's automation is
    /// dropped.
    virtual IEditAutomationLane* GetParameterAutomation(kelcore::uint32 index) = 0;
    /// The state that the effect saved, in its own layout. Called only with at least one byte.
    virtual void SetPresetChunk(const kelcore::byte* data, kelcore::uint32 size) = 0;
    /// Whether the effect's window is open.
    virtual void SetEditorVisible(bool visible) = 0;
    /// Where the effect's window is, in the host's numbers. All are 0 if the file does not say.
    virtual void SetEditorRect(kelcore::int32 left, kelcore::int32 top, kelcore::int32 width,
                               kelcore::int32 height) = 0;
    /// Whether the effect is on. Not called if the file does not say, except for a track's EQ with
    /// parameters, which is on if its last value is 0.5 or more, as in old files. An effect in a
    /// rack's slot is switched at the slot.
    virtual void SetPowered(bool powered) = 0;
    /// Whether the parameter may be moved by hand while its automation is being written. Called
    /// only with true.
    virtual void SetParameterSafeDuringWrite(kelcore::uint32 index, bool safe) = 0;
    /// Which effect it is, in a form that lasts. May be empty.
    virtual void SetComponentGuid(const kelcore::char16* guid) = 0;
    /// The preset that was chosen. Empty if there is none.
    virtual void SetPresetName(const kelcore::char16* name) = 0;

protected:
    ~IEditComponent() = default;
};

/// A place for one effect in a rack. From `IEditEffectsRack::AddSlot`.
struct IEditEffectsSlot : IHostObject {
    /// The slot's place in the rack, from 0. 4294967295 if the file does not say.
    virtual void SetSlotIndex(kelcore::uint32 slotIndex) = 0;
    /// Whether the signal passes by the effect.
    virtual void SetBypassed(bool bypassed) = 0;
    /// The effect.
    virtual IEditComponent* GetComponent() = 0;
    virtual void UnusedSlot6() = 0;
    virtual void UnusedSlot7() = 0;
    /// How many channels the side chain has. Not called if the file does not say.
    virtual void SetSideChainChannels(kelcore::uint32 channels) = 0;
    /// One more entry of the input map: which channel of the rack (`source`) feeds this input of
    /// the effect.
    virtual void AddInputChannel(kelcore::int32 index, kelcore::int32 source) = 0;
    /// One more entry of the output map. As `AddInputChannel`.
    virtual void AddOutputChannel(kelcore::int32 index, kelcore::int32 source) = 0;
    /// The layout of the effect's busses, as the host gave it. Called only when it is more than
    /// white space.
    virtual void SetBusConfig(const kelcore::char16* configuration) = 0;

protected:
    ~IEditEffectsSlot() = default;
};

/// The effects of a track or clip. From `GetEffectsRack` of the track or clip.
struct IEditEffectsRack : IHostObject {
    /// The control of how much of the effects is heard.
    virtual IEditComponent* GetMixComponent() = 0;
    /// The control of the gain before the effects.
    virtual IEditComponent* GetInputComponent() = 0;
    /// The control of the gain after the effects.
    virtual IEditComponent* GetOutputComponent() = 0;
    /// Whether the rack lies before the fader. True if the file does not say.
    virtual void SetPreFader(bool preFader) = 0;
    /// A new slot, after the existing ones.
    virtual IEditEffectsSlot* AddSlot() = 0;

protected:
    ~IEditEffectsRack() = default;
};

/// A preset that was chosen for a component. From `IQueryComponent::GetPreset`.
struct IQueryComponentPreset : IHostObject {
    /// The preset's name. Null or empty: not stored.
    virtual IHostString* GetName() = 0;

protected:
    ~IQueryComponentPreset() = default;
};

/// An effect or control. From the operations named Get...Component. Units are those of
/// `IEditComponent`; a null text counts as empty.
struct IQueryComponent : IHostObject {
    /// Which effect it is.
    virtual IHostString* GetComponentID() = 0;
    /// The component's name.
    virtual IHostString* GetName() = 0;
    /// How many indices of parameters there are: one more than the highest.
    virtual kelcore::uint32 GetParameterCount() = 0;
    /// The value of a parameter. False: there is no parameter of this index, and it is skipped.
    virtual bool GetParameterValue(kelcore::uint32 index, float& value) = 0;
    /// The name of a parameter. Empty: not stored.
    virtual IHostString* GetParameterName(kelcore::uint32 index) = 0;
    /// The automation of a parameter. Null, or a lane without keyframes: not stored.
    virtual IQueryAutomationLane* GetParameterAutomation(kelcore::uint32 index) = 0;
    /// The size of the effect's saved state in bytes. 0: not stored. More than 1 GiB: the save
    /// fails. Asked only of effects in slots.
    virtual kelcore::uint32 GetPresetChunkSize() = 0;
    /// Fills a buffer of exactly that size with the saved state. False: not stored.
    virtual bool GetPresetChunk(kelcore::byte* buffer) = 0;
    /// Whether the effect's window is open.
    virtual bool IsEditorVisible() = 0;
    /// Where the effect's window is, in the host's numbers. The outputs are 0 before the call. A
    /// width or height of 0: not stored.
    virtual void GetEditorRect(kelcore::int32& left, kelcore::int32& top, kelcore::int32& width,
                               kelcore::int32& height) = 0;
    /// Whether the effect is on. Not asked of effects in slots.
    virtual bool IsPowered() = 0;
    /// Whether the parameter may be moved by hand while its automation is being written.
    virtual bool IsParameterSafeDuringWrite(kelcore::uint32 index) = 0;
    /// Which effect it is, in a form that lasts.
    virtual IHostString* GetComponentGuid() = 0;
    /// The preset that was chosen. Null if none was chosen.
    virtual IQueryComponentPreset* GetPreset() = 0;

protected:
    ~IQueryComponent() = default;
};

/// A place for one effect in a rack. From `IQueryEffectsRack::GetSlot`. Channel maps are as in
/// `IEditEffectsSlot`; a count of 0 stores no map, and outputs are 0 before each call.
struct IQueryEffectsSlot : IHostObject {
    /// Whether the signal passes by the effect.
    virtual bool IsBypassed() = 0;
    /// The effect. Null: the slot is stored empty.
    virtual IQueryComponent* GetComponent() = 0;
    /// How many channels the side chain has. 0: not stored.
    virtual kelcore::uint32 GetSideChainChannels() = 0;
    /// The layout of the effect's busses. Null or empty: not stored.
    virtual IHostString* GetBusConfig() = 0;
    /// How many entries the input map has. More than 1024: the save fails.
    virtual kelcore::uint32 GetInputChannelCount() = 0;
    /// An entry of the input map.
    virtual void GetInputChannel(kelcore::uint32 position, kelcore::int32& index,
                                 kelcore::int32& source) = 0;
    /// How many entries the output map has. More than 1024: the save fails.
    virtual kelcore::uint32 GetOutputChannelCount() = 0;
    /// An entry of the output map.
    virtual void GetOutputChannel(kelcore::uint32 position, kelcore::int32& index,
                                  kelcore::int32& source) = 0;

protected:
    ~IQueryEffectsSlot() = default;
};

/// The effects of a track or clip. From `GetEffectsRack` of the track or clip.
struct IQueryEffectsRack : IHostObject {
    /// The control of how much of the effects is heard. Null: not stored. The same holds for the
    /// next two operations.
    virtual IQueryComponent* GetMixComponent() = 0;
    /// The control of the gain before the effects.
    virtual IQueryComponent* GetInputComponent() = 0;
    /// The control of the gain after the effects.
    virtual IQueryComponent* GetOutputComponent() = 0;
    /// Whether the rack lies before the fader.
    virtual bool IsPreFader() = 0;
    /// How many slots there are.
    virtual kelcore::uint32 GetSlotCount() = 0;
    /// The index of the slot at a position of the list. It need not be the position.
    virtual kelcore::uint32 GetSlotIndex(kelcore::uint32 position) = 0;
    /// The slot at a position of the list. Null: skipped.
    virtual IQueryEffectsSlot* GetSlot(kelcore::uint32 position) = 0;

protected:
    ~IQueryEffectsRack() = default;
};

}  // namespace tses
