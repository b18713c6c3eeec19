#pragma once

#include "host/Sends.h"
#include <orvo/Sends.h>
#include "reference_host/Node.h"
#include "reference_host/nodes/Components.h"

namespace refhost {

class EditSendSlot final : public Face<tses::IEditSendSlot, orvo::SendSlot> {
public:
    using Face::Face;

    void SetSlotIndex(kelcore::uint32 slotIndex) override { Value().slotIndex = slotIndex; }
    void SetSendOutputId(kelcore::int32 trackId) override { Value().sendOutputId = trackId; }
    void SetPreFader(bool preFader) override { Value().preFader = preFader; }
    tses::IEditComponent* GetSendComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::SendSlot::sendComponent>();
    }
    tses::IEditComponent* GetPanComponent(const kelcore::char16* /*id*/) override {
        return Made<ComponentNode, &orvo::SendSlot::panComponent>();
    }
    void SetDestCompIndex(kelcore::int32 index) override { Value().destCompIndex = index; }
};

class QuerySendSlot final : public Face<tses::IQuerySendSlot, orvo::SendSlot> {
public:
    using Face::Face;

    kelcore::uint32 GetSlotIndex() override { return Value().slotIndex; }
    kelcore::int32 GetSendOutputId() override { return Value().sendOutputId; }
    bool IsPreFader() override { return Value().preFader; }
    tses::IQueryComponent* GetSendComponent() override {
        return Found<ComponentNode, &orvo::SendSlot::sendComponent>();
    }
    tses::IQueryComponent* GetPanComponent() override {
        return Found<ComponentNode, &orvo::SendSlot::panComponent>();
    }
    kelcore::int32 GetDestCompIndex() override { return Value().destCompIndex; }
};

using SendSlotNode = TwoFacedNode<orvo::SendSlot, EditSendSlot, QuerySendSlot>;

class EditSendList final : public Face<tses::IEditSendList, orvo::SendList> {
public:
    using Face::Face;

    tses::IEditSendSlot* AddSlot() override {
        return Appended<SendSlotNode, &orvo::SendList::slots>();
    }
};

class QuerySendList final : public Face<tses::IQuerySendList, orvo::SendList> {
public:
    using Face::Face;

    kelcore::uint32 GetSlotCount() override { return CountOf(Value().slots); }
    tses::IQuerySendSlot* GetSlot(kelcore::uint32 index) override {
        return FoundAt<SendSlotNode, &orvo::SendList::slots>(index);
    }
};

using SendListNode = TwoFacedNode<orvo::SendList, EditSendList, QuerySendList>;

}  // namespace refhost
