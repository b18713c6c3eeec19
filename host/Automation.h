#pragma once

#include "host/HostObject.h"

namespace tses {

/// The automation of one parameter. From `IEditComponent::GetParameterAutomation`.
struct IEditAutomationLane : IHostObject {
    /// Whether curves run smoothly through the keyframes. Not called if the lane's element has no
    /// attributes at all; false if it has attributes, known or not, but not this one.
    virtual void SetEnableSplines(bool enable) = 0;
    /// One more keyframe. Keyframes come in the order of the file, which need not be that of time.
    /// `value`: in the parameter's own unit. `sampleOffset`: samples on the timeline of the lane's
    /// owner. `hold`: the value stays until the next keyframe instead of moving there evenly.
    virtual void AddKeyframe(float value, kelcore::int64 sampleOffset, bool hold,
                             bool selected) = 0;
    /// Whether the lane is protected from editing. As `SetEnableSplines` if the file does not say.
    virtual void SetReadOnly(bool readOnly) = 0;

protected:
    ~IEditAutomationLane() = default;
};

/// The automation of one parameter. From `IQueryComponent::GetParameterAutomation`.
struct IQueryAutomationLane : IHostObject {
    /// How many keyframes there are. 0: the lane is not stored, whatever its flags.
    virtual kelcore::uint32 GetKeyframeCount() = 0;
    /// Whether curves run smoothly through the keyframes.
    virtual bool GetEnableSplines() = 0;
    /// A keyframe. As `IEditAutomationLane::AddKeyframe`. The outputs are 0 and false before the
    /// call.
    virtual void GetKeyframe(kelcore::uint32 index, float& value, kelcore::int64& sampleOffset,
                             bool& hold, bool& selected) = 0;
    /// Whether the lane is protected from editing.
    virtual bool IsReadOnly() = 0;

protected:
    ~IQueryAutomationLane() = default;
};

}  // namespace tses
