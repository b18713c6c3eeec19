#pragma once

#include <algorithm>

#include <orvo/Effects.h>
#include "host/Effects.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/Automation.h"

namespace refhost {

class EditComponent final : public Face<tses::IEditComponent, orvo::Component> {
public:
    using Face::Face;

    void SetComponentID(const kelcore::char16* componentId) override {
        Value().componentId = kelcore::UTF16to8(componentId);
    }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetParameterValue(kelcore::uint32 index, float value) override;
    void SetParameterName(kelcore::uint32 index, const kelcore::char16* name) override;
    tses::IEditAutomationLane* GetParameterAutomation(kelcore::uint32 index) override;
    void SetPresetChunk(const kelcore::byte* data, kelcore::uint32 size) override {
        Value().presetChunk.assign(data, data + size);
    }
    void SetEditorVisible(bool visible) override { Value().editorVisible = visible; }
    void SetEditorRect(kelcore::int32 left, kelcore::int32 top, kelcore::int32 width,
                       kelcore::int32 height) override {
        Value().editorRect = {left, top, width, height};
    }
    void SetPowered(bool powered) override { Value().powered = powered; }
    void SetParameterSafeDuringWrite(kelcore::uint32 index, bool safe) override;
    void SetComponentGuid(const kelcore::char16* guid) override {
        Value().guid = kelcore::UTF16to8(guid);
    }
    void SetPresetName(const kelcore::char16* name) override {
        Value().presetName = kelcore::UTF16to8(name);
    }
};

class QueryPreset final : public Face<tses::IQueryComponentPreset, std::string> {
public:
    using Face::Face;

    tses::IHostString* GetName() override { return GiveOut(Value()); }
};

using PresetNode = QueryNode<std::string, QueryPreset>;

class QueryComponent final : public Face<tses::IQueryComponent, orvo::Component> {
public:
    using Face::Face;

    tses::IHostString* GetComponentID() override { return GiveOut(Value().componentId); }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    kelcore::uint32 GetParameterCount() override;
    bool GetParameterValue(kelcore::uint32 index, float& value) override;
    tses::IHostString* GetParameterName(kelcore::uint32 index) override;
    tses::IQueryAutomationLane* GetParameterAutomation(kelcore::uint32 index) override;
    kelcore::uint32 GetPresetChunkSize() override { return CountOf(Value().presetChunk); }
    bool GetPresetChunk(kelcore::byte* buffer) override {
        std::ranges::copy(Value().presetChunk, buffer);
        return true;
    }
    bool IsEditorVisible() override { return Value().editorVisible; }
    void GetEditorRect(kelcore::int32& left, kelcore::int32& top, kelcore::int32& width,
                       kelcore::int32& height) override {
        const orvo::EditorRect& rect = Value().editorRect;
        left = rect.left;
        top = rect.top;
        width = rect.width;
        height = rect.height;
    }
    bool IsPowered() override { return Value().powered; }
    bool IsParameterSafeDuringWrite(kelcore::uint32 index) override;
    tses::IHostString* GetComponentGuid() override { return GiveOut(Value().guid); }
    tses::IQueryComponentPreset* GetPreset() override {
        return Value().presetName.empty() ? nullptr
                                          : Found<PresetNode, &orvo::Component::presetName>();
    }

private:
    /// Null if there is no parameter with this index.
    const orvo::Parameter* Find(kelcore::uint32 index) const;
};

/// Every component: of tracks, clips, sends, racks and slots.
using ComponentNode = TwoFacedNode<orvo::Component, EditComponent, QueryComponent>;

}  // namespace refhost
