#pragma once

#include "host/ClipGroups.h"
#include <orvo/ClipGroup.h>
#include "reference_host/Node.h"

namespace refhost {

class EditClipGroup final : public Face<tses::IEditClipGroup, orvo::ClipGroup> {
public:
    using Face::Face;

    void AddItem(kelcore::uint32 trackId, kelcore::uint32 clipId) override {
        Value().items.push_back({trackId, clipId});
    }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
};

class QueryClipGroup final : public Face<tses::IQueryClipGroup, orvo::ClipGroup> {
public:
    using Face::Face;

    kelcore::uint32 GetItemCount() override { return CountOf(Value().items); }
    void GetItem(kelcore::uint32 index, kelcore::uint32& trackId,
                 kelcore::uint32& clipId) override {
        const orvo::ClipGroupItem& item = Value().items.at(index);
        trackId = item.trackId;
        clipId = item.clipId;
    }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    double GetHue() override { return Value().hue; }
    kelcore::uint32 GetID() override { return Value().id; }
};

using ClipGroupNode = TwoFacedNode<orvo::ClipGroup, EditClipGroup, QueryClipGroup>;

}  // namespace refhost
