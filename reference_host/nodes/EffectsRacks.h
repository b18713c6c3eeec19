#pragma once

#include "host/Effects.h"
#include "reference_host/Node.h"
#include "reference_host/model/Effects.h"
#include "reference_host/nodes/Components.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditSlot final : public Face<tses::IEditEffectsSlot, model::EffectsSlot> {
public:
    using Face::Face;

    void SetSlotIndex(kelcore::uint32 slotIndex) override { Value().slotIndex = slotIndex; }
    void SetBypassed(bool bypassed) override { Value().bypassed = bypassed; }
    tses::IEditComponent* GetComponent() override {
        return Made<ComponentNode, &model::EffectsSlot::component>();
    }
    void UnusedSlot6() override {}
    void UnusedSlot7() override {}
    void SetSideChainChannels(kelcore::uint32 channels) override {
        Value().sideChainChannels = channels;
    }
    void AddInputChannel(kelcore::int32 index, kelcore::int32 source) override {
        Value().inputChannels.push_back({index, source});
    }
    void AddOutputChannel(kelcore::int32 index, kelcore::int32 source) override {
        Value().outputChannels.push_back({index, source});
    }
    void SetBusConfig(const kelcore::char16* configuration) override {
        Value().busConfig = configuration;
    }
};

class QuerySlot final : public Face<tses::IQueryEffectsSlot, model::EffectsSlot> {
public:
    using Face::Face;

    bool IsBypassed() override { return Value().bypassed; }
    tses::IQueryComponent* GetComponent() override {
        return Found<ComponentNode, &model::EffectsSlot::component>();
    }
    kelcore::uint32 GetSideChainChannels() override { return Value().sideChainChannels; }
    tses::IHostString* GetBusConfig() override { return GiveOut(Value().busConfig); }
    kelcore::uint32 GetInputChannelCount() override { return CountOf(Value().inputChannels); }
    void GetInputChannel(kelcore::uint32 position, kelcore::int32& index,
                         kelcore::int32& source) override {
        Tell(Value().inputChannels.at(position), index, source);
    }
    kelcore::uint32 GetOutputChannelCount() override { return CountOf(Value().outputChannels); }
    void GetOutputChannel(kelcore::uint32 position, kelcore::int32& index,
                          kelcore::int32& source) override {
        Tell(Value().outputChannels.at(position), index, source);
    }

private:
    static void Tell(const model::ChannelRoute& route, kelcore::int32& index,
                     kelcore::int32& source) {
        index = route.index;
        source = route.source;
    }
};

using SlotNode = TwoFacedNode<model::EffectsSlot, EditSlot, QuerySlot>;

class EditRack final : public Face<tses::IEditEffectsRack, model::EffectsRack> {
public:
    using Face::Face;

    tses::IEditComponent* GetMixComponent() override {
        return Made<ComponentNode, &model::EffectsRack::mix>();
    }
    tses::IEditComponent* GetInputComponent() override {
        return Made<ComponentNode, &model::EffectsRack::input>();
    }
    tses::IEditComponent* GetOutputComponent() override {
        return Made<ComponentNode, &model::EffectsRack::output>();
    }
    void SetPreFader(bool preFader) override { Value().preFader = preFader; }
    tses::IEditEffectsSlot* AddSlot() override {
        return Appended<SlotNode, &model::EffectsRack::slots>();
    }
};

class QueryRack final : public Face<tses::IQueryEffectsRack, model::EffectsRack> {
public:
    using Face::Face;

    tses::IQueryComponent* GetMixComponent() override {
        return Found<ComponentNode, &model::EffectsRack::mix>();
    }
    tses::IQueryComponent* GetInputComponent() override {
        return Found<ComponentNode, &model::EffectsRack::input>();
    }
    tses::IQueryComponent* GetOutputComponent() override {
        return Found<ComponentNode, &model::EffectsRack::output>();
    }
    bool IsPreFader() override { return Value().preFader; }
    kelcore::uint32 GetSlotCount() override { return CountOf(Value().slots); }
    kelcore::uint32 GetSlotIndex(kelcore::uint32 position) override {
        const auto& slot = Value().slots.at(position);
        return slot ? slot->slotIndex : kNoId;
    }
    tses::IQueryEffectsSlot* GetSlot(kelcore::uint32 position) override {
        return FoundAt<SlotNode, &model::EffectsRack::slots>(position);
    }
};

using RackNode = TwoFacedNode<model::EffectsRack, EditRack, QueryRack>;

}  // namespace refhost
