#pragma once

#include <algorithm>

#include <orvo/AudioClip.h>
#include "host/AudioClips.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/ClipStretch.h"
#include "reference_host/nodes/Components.h"
#include "reference_host/nodes/EffectsRacks.h"
#include "reference_host/nodes/Fades.h"
#include "reference_host/nodes/KeyIndex.h"
#include "reference_host/nodes/Properties.h"

namespace refhost {

class EditAudioClip final : public Face<tses::IEditAudioClip, orvo::AudioClip> {
public:
    using Face::Face;

    void SetFileID(kelcore::uint32 fileId) override { Value().fileId = fileId; }
    void SetSourceInPoint(kelcore::int64 sample) override { Value().sourceInPoint = sample; }
    void SetDuration(kelcore::int64 samples) override { Value().duration = samples; }
    void SetStartPoint(kelcore::int64 sample) override { Value().startPoint = sample; }
    void SetHue(double hue) override { Value().hue = hue; }
    void SetLooped(bool looped) override { Value().looped = looped; }
    void SetName(const kelcore::char16* name) override { Value().name = kelcore::UTF16to8(name); }
    void SetOffline(bool offline) override { Value().offline = offline; }
    void SetSelected(bool selected) override { Value().selected = selected; }
    void SetZOrder(kelcore::int32 order) override { Value().zOrder = order; }
    void SetChannelSource(kelcore::uint32 channel, kelcore::int32 source) override {
        Value().channelSources[channel] = source;
    }
    void SetLockedInTime(bool locked) override { Value().lockedInTime = locked; }
    tses::IEditClipFade* GetFadeIn() override { return Made<FadeNode, &orvo::AudioClip::fadeIn>(); }
    tses::IEditClipFade* GetFadeOut() override {
        return Made<FadeNode, &orvo::AudioClip::fadeOut>();
    }
    tses::IEditClipStretch* GetClipStretch() override {
        return Made<StretchNode, &orvo::AudioClip::stretch>();
    }
    void SetClipAutoCrossfade(bool automatic) override { Value().autoCrossfade = automatic; }
    void SetCrossFadeHeadClipID(kelcore::int32 clipId) override {
        Value().crossFadeHeadClipId = clipId;
    }
    void SetCrossFadeTailClipID(kelcore::int32 clipId) override {
        Value().crossFadeTailClipId = clipId;
    }
    void AddTake(kelcore::int64 sourceInPoint) override { Value().takes.push_back(sourceInPoint); }
    tses::IEditComponent* GetClipGainComponent() override {
        return Made<ComponentNode, &orvo::AudioClip::gain>();
    }
    tses::IEditComponent* GetClipMuteComponent() override {
        return Made<ComponentNode, &orvo::AudioClip::mute>();
    }
    tses::IEditComponent* GetClipPanComponent() override {
        return Made<ComponentNode, &orvo::AudioClip::pan>();
    }
    tses::IEditEffectsRack* GetEffectsRack() override {
        return Made<RackNode, &orvo::AudioClip::effectsRack>();
    }
    void SetEditParameter(kelcore::uint32 slotIndex, kelcore::uint32 parameterIndex) override {
        Value().editParameters.push_back({slotIndex, parameterIndex});
    }
    tses::IEditClipProperties* GetProperties() override {
        return Made<ClipPropertiesNode, &orvo::AudioClip::properties>();
    }
};

class QueryAudioClip final : public Face<tses::IQueryAudioClip, orvo::AudioClip> {
public:
    using Face::Face;

    kelcore::uint32 GetID() override { return Value().id; }
    kelcore::uint32 GetFileID() override { return Value().fileId; }
    kelcore::int64 GetSourceInPoint() override { return Value().sourceInPoint; }
    kelcore::int64 GetDuration() override { return Value().duration; }
    kelcore::int64 GetStartPoint() override { return Value().startPoint; }
    double GetHue() override { return Value().hue; }
    bool GetLooped() override { return Value().looped; }
    tses::IHostString* GetName() override { return GiveOut(Value().name); }
    bool GetOffline() override { return Value().offline; }
    bool GetSelected() override { return Value().selected; }
    kelcore::int32 GetZOrder() override { return Value().zOrder; }
    bool GetLockedInTime() override { return Value().lockedInTime; }
    tses::IQueryClipFade* GetFadeIn() override {
        return Found<FadeNode, &orvo::AudioClip::fadeIn>();
    }
    tses::IQueryClipFade* GetFadeOut() override {
        return Found<FadeNode, &orvo::AudioClip::fadeOut>();
    }
    tses::IQueryClipStretch* GetClipStretch() override {
        return Found<StretchNode, &orvo::AudioClip::stretch>();
    }
    kelcore::int32 GetCrossFadeHeadClipID() override { return Value().crossFadeHeadClipId; }
    kelcore::int32 GetCrossFadeTailClipID() override { return Value().crossFadeTailClipId; }
    bool GetClipAutoCrossfade() override { return Value().autoCrossfade; }
    kelcore::int64 GetTakeSourceInPoint(kelcore::uint32 index) override {
        return Value().takes.at(index);
    }
    kelcore::uint32 GetTakeCount() override { return CountOf(Value().takes); }
    kelcore::uint32 GetEditParameterCount() override { return CountOf(Value().editParameters); }
    void GetEditParameter(kelcore::uint32 index, kelcore::uint32& slotIndex,
                          kelcore::uint32& parameterIndex) override {
        const orvo::EditParameter& parameter = Value().editParameters.at(index);
        slotIndex = parameter.slotIndex;
        parameterIndex = parameter.parameterIndex;
    }
    tses::IQueryEffectsRack* GetEffectsRack() override {
        return Found<RackNode, &orvo::AudioClip::effectsRack>();
    }
    tses::IQueryComponent* GetClipGainComponent() override {
        return Found<ComponentNode, &orvo::AudioClip::gain>();
    }
    tses::IQueryComponent* GetClipMuteComponent() override {
        return Found<ComponentNode, &orvo::AudioClip::mute>();
    }
    tses::IQueryComponent* GetClipPanComponent() override {
        return Found<ComponentNode, &orvo::AudioClip::pan>();
    }
    tses::IQueryClipProperties* GetProperties() override {
        return Found<ClipPropertiesNode, &orvo::AudioClip::properties>();
    }
    kelcore::uint32 GetChannelCount() override {
        const auto& sources = Value().channelSources;
        // A count that includes the highest channel of all would not fit into 32 bits.
        return sources.empty() ? 0 : std::min(sources.rbegin()->first, orvo::kNoId - 1) + 1;
    }
    kelcore::int32 GetChannelSource(kelcore::uint32 channel) override {
        const auto& sources = Value().channelSources;
        const auto found = sources.find(channel);
        return found == sources.end() ? static_cast<kelcore::int32>(channel) : found->second;
    }
};

using AudioClipNode = TwoFacedNode<orvo::AudioClip, EditAudioClip, QueryAudioClip>;

}  // namespace refhost
