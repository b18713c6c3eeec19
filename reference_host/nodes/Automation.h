#pragma once

#include "host/Automation.h"
#include <orvo/Automation.h>
#include "reference_host/Node.h"

namespace refhost {

class EditLane final : public Face<tses::IEditAutomationLane, orvo::AutomationLane> {
public:
    using Face::Face;

    void SetEnableSplines(bool enable) override { Value().enableSplines = enable; }
    void AddKeyframe(float value, kelcore::int64 sampleOffset, bool hold, bool selected) override {
        Value().keyframes.push_back(
            {value, sampleOffset, static_cast<orvo::KeyframeType>(hold), selected});
    }
    void SetReadOnly(bool readOnly) override { Value().readOnly = readOnly; }
};

class QueryLane final : public Face<tses::IQueryAutomationLane, orvo::AutomationLane> {
public:
    using Face::Face;

    kelcore::uint32 GetKeyframeCount() override { return CountOf(Value().keyframes); }
    bool GetEnableSplines() override { return Value().enableSplines; }
    void GetKeyframe(kelcore::uint32 index, float& value, kelcore::int64& sampleOffset, bool& hold,
                     bool& selected) override {
        const orvo::Keyframe& keyframe = Value().keyframes.at(index);
        value = keyframe.value;
        sampleOffset = keyframe.sampleOffset;
        hold = keyframe.type == orvo::KeyframeType::Hold;
        selected = keyframe.selected;
    }
    bool IsReadOnly() override { return Value().readOnly; }
};

using LaneNode = TwoFacedNode<orvo::AutomationLane, EditLane, QueryLane>;

}  // namespace refhost
