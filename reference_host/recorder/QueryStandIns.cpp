// The stand-ins for the interfaces of a write, one line for each operation. Each stands after those
// of the objects that it leads to.

#include "host/AudioClips.h"
#include "host/AudioTracks.h"
#include "host/Automation.h"
#include "host/ClipGroups.h"
#include "host/ClipStretch.h"
#include "host/Effects.h"
#include "host/Fades.h"
#include "host/Files.h"
#include "host/GlobalTrackInfo.h"
#include "host/HostObject.h"
#include "host/Metronome.h"
#include "host/MidiClips.h"
#include "host/Properties.h"
#include "host/Sends.h"
#include "host/Session.h"
#include "host/TrackVisibility.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"
#include "reference_host/recorder/Recording.h"

namespace refhost {

using namespace kelcore;
using namespace tses;

template <>
class StandIn<IQueryFile> final : public Forwarder<IQueryFile> {
public:
    using Forwarder::Forwarder;

    uint32 GetId() override { return Call("GetId", &IQueryFile::GetId); }
    IHostString* GetPath() override { return Call("GetPath", &IQueryFile::GetPath); }
    IHostString* GetRecoveryId() override {
        return Call("GetRecoveryId", &IQueryFile::GetRecoveryId);
    }
    IHostString* GetMediaHandler() override {
        return Call("GetMediaHandler", &IQueryFile::GetMediaHandler);
    }
    IHostString* GetImporterPrivateSettings() override {
        return Call("GetImporterPrivateSettings", &IQueryFile::GetImporterPrivateSettings);
    }
};

template <>
class StandIn<IQueryVideoFormat> final : public Forwarder<IQueryVideoFormat> {
public:
    using Forwarder::Forwarder;

    int64 GetTimeScale() override { return Call("GetTimeScale", &IQueryVideoFormat::GetTimeScale); }
    int64 GetSampleSize() override {
        return Call("GetSampleSize", &IQueryVideoFormat::GetSampleSize);
    }
    int32 GetPixelType() override { return Call("GetPixelType", &IQueryVideoFormat::GetPixelType); }
    int32 GetHeight() override { return Call("GetHeight", &IQueryVideoFormat::GetHeight); }
    int32 GetWidth() override { return Call("GetWidth", &IQueryVideoFormat::GetWidth); }
    uint32 GetParNumerator() override {
        return Call("GetParNumerator", &IQueryVideoFormat::GetParNumerator);
    }
    uint32 GetParDenominator() override {
        return Call("GetParDenominator", &IQueryVideoFormat::GetParDenominator);
    }
    uint32 GetFieldType() override {
        return Call("GetFieldType", &IQueryVideoFormat::GetFieldType);
    }
};

template <>
class StandIn<IQueryVideoClip> final : public Forwarder<IQueryVideoClip> {
public:
    using Forwarder::Forwarder;

    uint32 GetID() override { return Call("GetID", &IQueryVideoClip::GetID); }
    uint32 GetFileID() override { return Call("GetFileID", &IQueryVideoClip::GetFileID); }
    int64 GetSourceInPoint() override {
        return Call("GetSourceInPoint", &IQueryVideoClip::GetSourceInPoint);
    }
    int64 GetDuration() override { return Call("GetDuration", &IQueryVideoClip::GetDuration); }
    int64 GetStartPoint() override {
        return Call("GetStartPoint", &IQueryVideoClip::GetStartPoint);
    }
    double GetHue() override { return Call("GetHue", &IQueryVideoClip::GetHue); }
    IHostString* GetName() override { return Call("GetName", &IQueryVideoClip::GetName); }
    bool GetOffline() override { return Call("GetOffline", &IQueryVideoClip::GetOffline); }
    bool GetSelected() override { return Call("GetSelected", &IQueryVideoClip::GetSelected); }
    int32 GetZOrder() override { return Call("GetZOrder", &IQueryVideoClip::GetZOrder); }
    bool GetLockedInTime() override {
        return Call("GetLockedInTime", &IQueryVideoClip::GetLockedInTime);
    }
    IQueryVideoFormat* GetVideoFormat() override {
        return Call("GetVideoFormat", &IQueryVideoClip::GetVideoFormat);
    }
};

template <>
class StandIn<IQueryVideoTrack> final : public Forwarder<IQueryVideoTrack> {
public:
    using Forwarder::Forwarder;

    uint32 GetId() override { return Call("GetId", &IQueryVideoTrack::GetId); }
    bool IsSelected() override { return Call("IsSelected", &IQueryVideoTrack::IsSelected); }
    double GetHue() override { return Call("GetHue", &IQueryVideoTrack::GetHue); }
    IHostString* GetName() override { return Call("GetName", &IQueryVideoTrack::GetName); }
    int32 GetHeight() override { return Call("GetHeight", &IQueryVideoTrack::GetHeight); }
    bool IsMinimized() override { return Call("IsMinimized", &IQueryVideoTrack::IsMinimized); }
    uint32 GetVideoClipCount() override {
        return Call("GetVideoClipCount", &IQueryVideoTrack::GetVideoClipCount);
    }
    IQueryVideoClip* GetVideoClip(uint32 index) override {
        return Call("GetVideoClip", &IQueryVideoTrack::GetVideoClip, index);
    }
};

template <>
class StandIn<IQueryClipFade> final : public Forwarder<IQueryClipFade> {
public:
    using Forwarder::Forwarder;

    int64 GetStartPoint() override { return Call("GetStartPoint", &IQueryClipFade::GetStartPoint); }
    int64 GetEndPoint() override { return Call("GetEndPoint", &IQueryClipFade::GetEndPoint); }
    uint32 GetType() override { return Call("GetType", &IQueryClipFade::GetType); }
    int32 GetShape() override { return Call("GetShape", &IQueryClipFade::GetShape); }
    uint32 GetCrossFadeLinkType() override {
        return Call("GetCrossFadeLinkType", &IQueryClipFade::GetCrossFadeLinkType);
    }
};

template <>
class StandIn<IQueryClipStretch> final : public Forwarder<IQueryClipStretch> {
public:
    using Forwarder::Forwarder;

    uint32 GetStretchMode() override {
        return Call("GetStretchMode", &IQueryClipStretch::GetStretchMode);
    }
    uint32 GetStretchType() override {
        return Call("GetStretchType", &IQueryClipStretch::GetStretchType);
    }
    double GetStretchRatio() override {
        return Call("GetStretchRatio", &IQueryClipStretch::GetStretchRatio);
    }
    double GetPitchAdjustment() override {
        return Call("GetPitchAdjustment", &IQueryClipStretch::GetPitchAdjustment);
    }
    uint32 GetStretchQuality() override {
        return Call("GetStretchQuality", &IQueryClipStretch::GetStretchQuality);
    }
    int32 GetTransientSensitivity() override {
        return Call("GetTransientSensitivity", &IQueryClipStretch::GetTransientSensitivity);
    }
    int32 GetAdaptiveWindowSize() override {
        return Call("GetAdaptiveWindowSize", &IQueryClipStretch::GetAdaptiveWindowSize);
    }
    bool GetPreserveFormants() override {
        return Call("GetPreserveFormants", &IQueryClipStretch::GetPreserveFormants);
    }
};

template <>
class StandIn<IQueryAutomationLane> final : public Forwarder<IQueryAutomationLane> {
public:
    using Forwarder::Forwarder;

    uint32 GetKeyframeCount() override {
        return Call("GetKeyframeCount", &IQueryAutomationLane::GetKeyframeCount);
    }
    bool GetEnableSplines() override {
        return Call("GetEnableSplines", &IQueryAutomationLane::GetEnableSplines);
    }
    void GetKeyframe(uint32 index, float& value, int64& sampleOffset, bool& hold,
                     bool& selected) override {
        Call("GetKeyframe", &IQueryAutomationLane::GetKeyframe, index, value, sampleOffset, hold,
             selected);
    }
    bool IsReadOnly() override { return Call("IsReadOnly", &IQueryAutomationLane::IsReadOnly); }
};

template <>
class StandIn<IQueryComponentPreset> final : public Forwarder<IQueryComponentPreset> {
public:
    using Forwarder::Forwarder;

    IHostString* GetName() override { return Call("GetName", &IQueryComponentPreset::GetName); }
};

template <>
class StandIn<IQueryComponent> final : public Forwarder<IQueryComponent> {
public:
    using Forwarder::Forwarder;

    IHostString* GetComponentID() override {
        return Call("GetComponentID", &IQueryComponent::GetComponentID);
    }
    IHostString* GetName() override { return Call("GetName", &IQueryComponent::GetName); }
    uint32 GetParameterCount() override {
        return Call("GetParameterCount", &IQueryComponent::GetParameterCount);
    }
    bool GetParameterValue(uint32 index, float& value) override {
        return Call("GetParameterValue", &IQueryComponent::GetParameterValue, index, value);
    }
    IHostString* GetParameterName(uint32 index) override {
        return Call("GetParameterName", &IQueryComponent::GetParameterName, index);
    }
    IQueryAutomationLane* GetParameterAutomation(uint32 index) override {
        return Call("GetParameterAutomation", &IQueryComponent::GetParameterAutomation, index);
    }
    uint32 GetPresetChunkSize() override {
        return Call("GetPresetChunkSize", &IQueryComponent::GetPresetChunkSize);
    }
    bool GetPresetChunk(byte* buffer) override {
        return Call("GetPresetChunk", &IQueryComponent::GetPresetChunk, buffer);
    }
    bool IsEditorVisible() override {
        return Call("IsEditorVisible", &IQueryComponent::IsEditorVisible);
    }
    void GetEditorRect(int32& left, int32& top, int32& width, int32& height) override {
        Call("GetEditorRect", &IQueryComponent::GetEditorRect, left, top, width, height);
    }
    bool IsPowered() override { return Call("IsPowered", &IQueryComponent::IsPowered); }
    bool IsParameterSafeDuringWrite(uint32 index) override {
        return Call("IsParameterSafeDuringWrite", &IQueryComponent::IsParameterSafeDuringWrite,
                    index);
    }
    IHostString* GetComponentGuid() override {
        return Call("GetComponentGuid", &IQueryComponent::GetComponentGuid);
    }
    IQueryComponentPreset* GetPreset() override {
        return Call("GetPreset", &IQueryComponent::GetPreset);
    }
};

template <>
class StandIn<IQueryEffectsSlot> final : public Forwarder<IQueryEffectsSlot> {
public:
    using Forwarder::Forwarder;

    bool IsBypassed() override { return Call("IsBypassed", &IQueryEffectsSlot::IsBypassed); }
    IQueryComponent* GetComponent() override {
        return Call("GetComponent", &IQueryEffectsSlot::GetComponent);
    }
    uint32 GetSideChainChannels() override {
        return Call("GetSideChainChannels", &IQueryEffectsSlot::GetSideChainChannels);
    }
    IHostString* GetBusConfig() override {
        return Call("GetBusConfig", &IQueryEffectsSlot::GetBusConfig);
    }
    uint32 GetInputChannelCount() override {
        return Call("GetInputChannelCount", &IQueryEffectsSlot::GetInputChannelCount);
    }
    void GetInputChannel(uint32 position, int32& index, int32& source) override {
        Call("GetInputChannel", &IQueryEffectsSlot::GetInputChannel, position, index, source);
    }
    uint32 GetOutputChannelCount() override {
        return Call("GetOutputChannelCount", &IQueryEffectsSlot::GetOutputChannelCount);
    }
    void GetOutputChannel(uint32 position, int32& index, int32& source) override {
        Call("GetOutputChannel", &IQueryEffectsSlot::GetOutputChannel, position, index, source);
    }
};

template <>
class StandIn<IQueryEffectsRack> final : public Forwarder<IQueryEffectsRack> {
public:
    using Forwarder::Forwarder;

    IQueryComponent* GetMixComponent() override {
        return Call("GetMixComponent", &IQueryEffectsRack::GetMixComponent);
    }
    IQueryComponent* GetInputComponent() override {
        return Call("GetInputComponent", &IQueryEffectsRack::GetInputComponent);
    }
    IQueryComponent* GetOutputComponent() override {
        return Call("GetOutputComponent", &IQueryEffectsRack::GetOutputComponent);
    }
    bool IsPreFader() override { return Call("IsPreFader", &IQueryEffectsRack::IsPreFader); }
    uint32 GetSlotCount() override {
        return Call("GetSlotCount", &IQueryEffectsRack::GetSlotCount);
    }
    uint32 GetSlotIndex(uint32 position) override {
        return Call("GetSlotIndex", &IQueryEffectsRack::GetSlotIndex, position);
    }
    IQueryEffectsSlot* GetSlot(uint32 position) override {
        return Call("GetSlot", &IQueryEffectsRack::GetSlot, position);
    }
};

template <>
class StandIn<IQueryClipProperties> final : public Forwarder<IQueryClipProperties> {
public:
    using Forwarder::Forwarder;

    IHostString* GetPropertiesText() override {
        return Call("GetPropertiesText", &IQueryClipProperties::GetPropertiesText);
    }
    bool IsEmpty() override { return Call("IsEmpty", &IQueryClipProperties::IsEmpty); }
};

template <>
class StandIn<IQueryAudioClip> final : public Forwarder<IQueryAudioClip> {
public:
    using Forwarder::Forwarder;

    uint32 GetID() override { return Call("GetID", &IQueryAudioClip::GetID); }
    uint32 GetFileID() override { return Call("GetFileID", &IQueryAudioClip::GetFileID); }
    int64 GetSourceInPoint() override {
        return Call("GetSourceInPoint", &IQueryAudioClip::GetSourceInPoint);
    }
    int64 GetDuration() override { return Call("GetDuration", &IQueryAudioClip::GetDuration); }
    int64 GetStartPoint() override {
        return Call("GetStartPoint", &IQueryAudioClip::GetStartPoint);
    }
    double GetHue() override { return Call("GetHue", &IQueryAudioClip::GetHue); }
    bool GetLooped() override { return Call("GetLooped", &IQueryAudioClip::GetLooped); }
    IHostString* GetName() override { return Call("GetName", &IQueryAudioClip::GetName); }
    bool GetOffline() override { return Call("GetOffline", &IQueryAudioClip::GetOffline); }
    bool GetSelected() override { return Call("GetSelected", &IQueryAudioClip::GetSelected); }
    int32 GetZOrder() override { return Call("GetZOrder", &IQueryAudioClip::GetZOrder); }
    bool GetLockedInTime() override {
        return Call("GetLockedInTime", &IQueryAudioClip::GetLockedInTime);
    }
    IQueryClipFade* GetFadeIn() override { return Call("GetFadeIn", &IQueryAudioClip::GetFadeIn); }
    IQueryClipFade* GetFadeOut() override {
        return Call("GetFadeOut", &IQueryAudioClip::GetFadeOut);
    }
    IQueryClipStretch* GetClipStretch() override {
        return Call("GetClipStretch", &IQueryAudioClip::GetClipStretch);
    }
    int32 GetCrossFadeHeadClipID() override {
        return Call("GetCrossFadeHeadClipID", &IQueryAudioClip::GetCrossFadeHeadClipID);
    }
    int32 GetCrossFadeTailClipID() override {
        return Call("GetCrossFadeTailClipID", &IQueryAudioClip::GetCrossFadeTailClipID);
    }
    bool GetClipAutoCrossfade() override {
        return Call("GetClipAutoCrossfade", &IQueryAudioClip::GetClipAutoCrossfade);
    }
    int64 GetTakeSourceInPoint(uint32 index) override {
        return Call("GetTakeSourceInPoint", &IQueryAudioClip::GetTakeSourceInPoint, index);
    }
    uint32 GetTakeCount() override { return Call("GetTakeCount", &IQueryAudioClip::GetTakeCount); }
    uint32 GetEditParameterCount() override {
        return Call("GetEditParameterCount", &IQueryAudioClip::GetEditParameterCount);
    }
    void GetEditParameter(uint32 index, uint32& slotIndex, uint32& parameterIndex) override {
        Call("GetEditParameter", &IQueryAudioClip::GetEditParameter, index, slotIndex,
             parameterIndex);
    }
    IQueryEffectsRack* GetEffectsRack() override {
        return Call("GetEffectsRack", &IQueryAudioClip::GetEffectsRack);
    }
    IQueryComponent* GetClipGainComponent() override {
        return Call("GetClipGainComponent", &IQueryAudioClip::GetClipGainComponent);
    }
    IQueryComponent* GetClipMuteComponent() override {
        return Call("GetClipMuteComponent", &IQueryAudioClip::GetClipMuteComponent);
    }
    IQueryComponent* GetClipPanComponent() override {
        return Call("GetClipPanComponent", &IQueryAudioClip::GetClipPanComponent);
    }
    IQueryClipProperties* GetProperties() override {
        return Call("GetProperties", &IQueryAudioClip::GetProperties);
    }
    uint32 GetChannelCount() override {
        return Call("GetChannelCount", &IQueryAudioClip::GetChannelCount);
    }
    int32 GetChannelSource(uint32 channel) override {
        return Call("GetChannelSource", &IQueryAudioClip::GetChannelSource, channel);
    }
};

template <>
class StandIn<IQueryMIDIClip> final : public Forwarder<IQueryMIDIClip> {
public:
    using Forwarder::Forwarder;

    uint32 GetID() override { return Call("GetID", &IQueryMIDIClip::GetID); }
    uint32 GetMIDIEventsSize() override {
        return Call("GetMIDIEventsSize", &IQueryMIDIClip::GetMIDIEventsSize);
    }
    bool GetMIDIEvents(byte* buffer) override {
        return Call("GetMIDIEvents", &IQueryMIDIClip::GetMIDIEvents, buffer);
    }
    int64 GetSourceInPoint() override {
        return Call("GetSourceInPoint", &IQueryMIDIClip::GetSourceInPoint);
    }
    int64 GetDuration() override { return Call("GetDuration", &IQueryMIDIClip::GetDuration); }
    int64 GetStartPoint() override { return Call("GetStartPoint", &IQueryMIDIClip::GetStartPoint); }
    double GetHue() override { return Call("GetHue", &IQueryMIDIClip::GetHue); }
    IHostString* GetName() override { return Call("GetName", &IQueryMIDIClip::GetName); }
    bool GetSelected() override { return Call("GetSelected", &IQueryMIDIClip::GetSelected); }
    bool GetLockedInTime() override {
        return Call("GetLockedInTime", &IQueryMIDIClip::GetLockedInTime);
    }
};

template <>
class StandIn<IQueryMIDIClipList> final : public Forwarder<IQueryMIDIClipList> {
public:
    using Forwarder::Forwarder;

    uint32 GetCount() override { return Call("GetCount", &IQueryMIDIClipList::GetCount); }
    IQueryMIDIClip* GetClip(uint32 index) override {
        return Call("GetClip", &IQueryMIDIClipList::GetClip, index);
    }
};

template <>
class StandIn<IQuerySendSlot> final : public Forwarder<IQuerySendSlot> {
public:
    using Forwarder::Forwarder;

    uint32 GetSlotIndex() override { return Call("GetSlotIndex", &IQuerySendSlot::GetSlotIndex); }
    int32 GetSendOutputId() override {
        return Call("GetSendOutputId", &IQuerySendSlot::GetSendOutputId);
    }
    bool IsPreFader() override { return Call("IsPreFader", &IQuerySendSlot::IsPreFader); }
    IQueryComponent* GetSendComponent() override {
        return Call("GetSendComponent", &IQuerySendSlot::GetSendComponent);
    }
    IQueryComponent* GetPanComponent() override {
        return Call("GetPanComponent", &IQuerySendSlot::GetPanComponent);
    }
    int32 GetDestCompIndex() override {
        return Call("GetDestCompIndex", &IQuerySendSlot::GetDestCompIndex);
    }
};

template <>
class StandIn<IQuerySendList> final : public Forwarder<IQuerySendList> {
public:
    using Forwarder::Forwarder;

    uint32 GetSlotCount() override { return Call("GetSlotCount", &IQuerySendList::GetSlotCount); }
    IQuerySendSlot* GetSlot(uint32 index) override {
        return Call("GetSlot", &IQuerySendList::GetSlot, index);
    }
};

template <>
class StandIn<IQueryInstrumentTrack> final : public Forwarder<IQueryInstrumentTrack> {
public:
    using Forwarder::Forwarder;

    IHostString* GetMidiIn() override {
        return Call("GetMidiIn", &IQueryInstrumentTrack::GetMidiIn);
    }
    bool IsMidiAll() override { return Call("IsMidiAll", &IQueryInstrumentTrack::IsMidiAll); }
};

template <>
struct PrivateInterface<IQueryAudioTrack> {
    using type = IQueryAudioTrackPrivate;
};

template <class Interface>
class QueryAudioTrackForwarder : public Forwarder<Interface> {
public:
    using Forwarder<Interface>::Forwarder;

    uint32 GetClipCount() override {
        return this->Call("GetClipCount", &IQueryAudioTrack::GetClipCount);
    }
    IQueryAudioClip* GetClip(uint32 index) override {
        return this->Call("GetClip", &IQueryAudioTrack::GetClip, index);
    }
    IQueryMIDIClipList* GetMIDIClipList() override {
        return this->Call("GetMIDIClipList", &IQueryAudioTrack::GetMIDIClipList);
    }
};

template <>
class StandIn<IQueryAudioTrack> final : public QueryAudioTrackForwarder<IQueryAudioTrack> {
public:
    using QueryAudioTrackForwarder::QueryAudioTrackForwarder;
};

template <>
class StandIn<IQueryAudioTrackPrivate> final
    : public QueryAudioTrackForwarder<IQueryAudioTrackPrivate> {
public:
    using QueryAudioTrackForwarder::QueryAudioTrackForwarder;

    uint32 GetId() override { return Call("GetId", &IQueryAudioTrackPrivate::GetId); }
    uint32 GetIndex() override { return Call("GetIndex", &IQueryAudioTrackPrivate::GetIndex); }
    uint32 GetKind() override { return Call("GetKind", &IQueryAudioTrackPrivate::GetKind); }
    bool IsSelected() override { return Call("IsSelected", &IQueryAudioTrackPrivate::IsSelected); }
    double GetHue() override { return Call("GetHue", &IQueryAudioTrackPrivate::GetHue); }
    IHostString* GetName() override { return Call("GetName", &IQueryAudioTrackPrivate::GetName); }
    int32 GetHeight() override { return Call("GetHeight", &IQueryAudioTrackPrivate::GetHeight); }
    bool IsMinimized() override {
        return Call("IsMinimized", &IQueryAudioTrackPrivate::IsMinimized);
    }
    bool IsPhaseInverted() override {
        return Call("IsPhaseInverted", &IQueryAudioTrackPrivate::IsPhaseInverted);
    }
    bool IsPreRendered() override {
        return Call("IsPreRendered", &IQueryAudioTrackPrivate::IsPreRendered);
    }
    bool IsSumToMono() override {
        return Call("IsSumToMono", &IQueryAudioTrackPrivate::IsSumToMono);
    }
    IHostString* GetPreRenderedFile() override {
        return Call("GetPreRenderedFile", &IQueryAudioTrackPrivate::GetPreRenderedFile);
    }
    IQueryEffectsRack* GetEffectsRack() override {
        return Call("GetEffectsRack", &IQueryAudioTrackPrivate::GetEffectsRack);
    }
    uint32 GetEditParameterCount() override {
        return Call("GetEditParameterCount", &IQueryAudioTrackPrivate::GetEditParameterCount);
    }
    void GetEditParameter(uint32 index, uint32& slotIndex, uint32& parameterIndex) override {
        Call("GetEditParameter", &IQueryAudioTrackPrivate::GetEditParameter, index, slotIndex,
             parameterIndex);
    }
    bool IsAutomationLaneOpen() override {
        return Call("IsAutomationLaneOpen", &IQueryAudioTrackPrivate::IsAutomationLaneOpen);
    }
    IQuerySendList* GetSendList() override {
        return Call("GetSendList", &IQueryAudioTrackPrivate::GetSendList);
    }
    bool IsVisible() override { return Call("IsVisible", &IQueryAudioTrackPrivate::IsVisible); }
    IQueryInstrumentTrack* GetInstrument() override {
        return Call("GetInstrument", &IQueryAudioTrackPrivate::GetInstrument);
    }
    uint32 GetAudioChannelType() override {
        return Call("GetAudioChannelType", &IQueryAudioTrackPrivate::GetAudioChannelType);
    }
    bool IsSolo() override { return Call("IsSolo", &IQueryAudioTrackPrivate::IsSolo); }
    bool IsRecordArmed() override {
        return Call("IsRecordArmed", &IQueryAudioTrackPrivate::IsRecordArmed);
    }
    bool IsMonitoring() override {
        return Call("IsMonitoring", &IQueryAudioTrackPrivate::IsMonitoring);
    }
    bool IsSoloSafe() override { return Call("IsSoloSafe", &IQueryAudioTrackPrivate::IsSoloSafe); }
    int32 GetOutputTrackId() override {
        return Call("GetOutputTrackId", &IQueryAudioTrackPrivate::GetOutputTrackId);
    }
    int32 GetInputId() override { return Call("GetInputId", &IQueryAudioTrackPrivate::GetInputId); }
    int32 GetHardwareOutputId() override {
        return Call("GetHardwareOutputId", &IQueryAudioTrackPrivate::GetHardwareOutputId);
    }
    IQueryComponent* GetFaderComponent() override {
        return Call("GetFaderComponent", &IQueryAudioTrackPrivate::GetFaderComponent);
    }
    IQueryComponent* GetMuteComponent() override {
        return Call("GetMuteComponent", &IQueryAudioTrackPrivate::GetMuteComponent);
    }
    IQueryComponent* GetPanComponent() override {
        return Call("GetPanComponent", &IQueryAudioTrackPrivate::GetPanComponent);
    }
    IQueryComponent* GetEQComponent() override {
        return Call("GetEQComponent", &IQueryAudioTrackPrivate::GetEQComponent);
    }
    int32 GetAutomationMode() override {
        return Call("GetAutomationMode", &IQueryAudioTrackPrivate::GetAutomationMode);
    }
};

template <>
class StandIn<IQueryTrackVisibilityPreset> final : public Forwarder<IQueryTrackVisibilityPreset> {
public:
    using Forwarder::Forwarder;

    uint32 GetId() override { return Call("GetId", &IQueryTrackVisibilityPreset::GetId); }
    IHostString* GetName() override {
        return Call("GetName", &IQueryTrackVisibilityPreset::GetName);
    }
    uint32 GetTrackCount() override {
        return Call("GetTrackCount", &IQueryTrackVisibilityPreset::GetTrackCount);
    }
    void GetTrack(uint32 index, uint32& trackId, float& height, bool& minimized) override {
        Call("GetTrack", &IQueryTrackVisibilityPreset::GetTrack, index, trackId, height, minimized);
    }
};

template <>
class StandIn<IQueryClipGroup> final : public Forwarder<IQueryClipGroup> {
public:
    using Forwarder::Forwarder;

    uint32 GetItemCount() override { return Call("GetItemCount", &IQueryClipGroup::GetItemCount); }
    void GetItem(uint32 index, uint32& trackId, uint32& clipId) override {
        Call("GetItem", &IQueryClipGroup::GetItem, index, trackId, clipId);
    }
    IHostString* GetName() override { return Call("GetName", &IQueryClipGroup::GetName); }
    double GetHue() override { return Call("GetHue", &IQueryClipGroup::GetHue); }
    uint32 GetID() override { return Call("GetID", &IQueryClipGroup::GetID); }
};

template <>
class StandIn<IQueryGlobalTrackInfo> final : public Forwarder<IQueryGlobalTrackInfo> {
public:
    using Forwarder::Forwarder;

    bool GetTimeSigVisible() override {
        return Call("GetTimeSigVisible", &IQueryGlobalTrackInfo::GetTimeSigVisible);
    }
    bool GetKeySigVisible() override {
        return Call("GetKeySigVisible", &IQueryGlobalTrackInfo::GetKeySigVisible);
    }
    bool GetTempoVisible() override {
        return Call("GetTempoVisible", &IQueryGlobalTrackInfo::GetTempoVisible);
    }
    uint32 GetTempoEventsSize() override {
        return Call("GetTempoEventsSize", &IQueryGlobalTrackInfo::GetTempoEventsSize);
    }
    bool GetTempoEvents(byte* buffer) override {
        return Call("GetTempoEvents", &IQueryGlobalTrackInfo::GetTempoEvents, buffer);
    }
    uint32 GetTimeSignatureEventsSize() override {
        return Call("GetTimeSignatureEventsSize",
                    &IQueryGlobalTrackInfo::GetTimeSignatureEventsSize);
    }
    bool GetTimeSignatureEvents(byte* buffer) override {
        return Call("GetTimeSignatureEvents", &IQueryGlobalTrackInfo::GetTimeSignatureEvents,
                    buffer);
    }
    uint32 GetKeySignatureEventsSize() override {
        return Call("GetKeySignatureEventsSize", &IQueryGlobalTrackInfo::GetKeySignatureEventsSize);
    }
    bool GetKeySignatureEvents(byte* buffer) override {
        return Call("GetKeySignatureEvents", &IQueryGlobalTrackInfo::GetKeySignatureEvents, buffer);
    }
};

template <>
struct PrivateInterface<IQueryMetronomeInfo> {
    using type = IQueryMetronomeInfoPrivate;
};

template <class Interface>
class QueryMetronomeInfoForwarder : public Forwarder<Interface> {
public:
    using Forwarder<Interface>::Forwarder;

    bool IsEnabled() override { return this->Call("IsEnabled", &IQueryMetronomeInfo::IsEnabled); }
    uint32 GetSoundSet() override {
        return this->Call("GetSoundSet", &IQueryMetronomeInfo::GetSoundSet);
    }
    uint32 GetPatternLength() override {
        return this->Call("GetPatternLength", &IQueryMetronomeInfo::GetPatternLength);
    }
    uint32 GetPatternBeat(uint32 index) override {
        return this->Call("GetPatternBeat", &IQueryMetronomeInfo::GetPatternBeat, index);
    }
    IQueryAudioTrack* GetMetronomeTrack() override {
        return this->Call("GetMetronomeTrack", &IQueryMetronomeInfo::GetMetronomeTrack);
    }
};

template <>
class StandIn<IQueryMetronomeInfo> final : public QueryMetronomeInfoForwarder<IQueryMetronomeInfo> {
public:
    using QueryMetronomeInfoForwarder::QueryMetronomeInfoForwarder;
};

template <>
class StandIn<IQueryMetronomeInfoPrivate> final
    : public QueryMetronomeInfoForwarder<IQueryMetronomeInfoPrivate> {
public:
    using QueryMetronomeInfoForwarder::QueryMetronomeInfoForwarder;

    IQueryGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Call("GetGlobalTrackInfo", &IQueryMetronomeInfoPrivate::GetGlobalTrackInfo);
    }
};

template <>
class StandIn<IQueryProperties> final : public Forwarder<IQueryProperties> {
public:
    using Forwarder::Forwarder;

    uint32 GetCount() override { return Call("GetCount", &IQueryProperties::GetCount); }
    IHostString* GetKey(uint32 index) override {
        return Call("GetKey", &IQueryProperties::GetKey, index);
    }
    IHostString* GetValue(const char16* key) override {
        return Call("GetValue", &IQueryProperties::GetValue, key);
    }
};

template <>
class StandIn<IQuerySession> final : public Forwarder<IQuerySession> {
public:
    using Forwarder::Forwarder;

    void UnusedSlot3() override { Call("UnusedSlot3", &IQuerySession::UnusedSlot3); }
    IHostObject* GetContext() override { return Call("GetContext", &IQuerySession::GetContext); }
    void GetFormatVersion(int32* major, int32* minor) override {
        Call("GetFormatVersion", &IQuerySession::GetFormatVersion, major, minor);
    }
    void SetProgress(uint32 done, uint32 total, uint32 reserved, uint32 flag) override {
        Call("SetProgress", &IQuerySession::SetProgress, done, total, reserved, flag);
    }
    uint32 GetSampleRate() override { return Call("GetSampleRate", &IQuerySession::GetSampleRate); }
    int32 GetChannelCount() override {
        return Call("GetChannelCount", &IQuerySession::GetChannelCount);
    }
    int64 GetDuration() override { return Call("GetDuration", &IQuerySession::GetDuration); }
    uint32 GetBitDepth() override { return Call("GetBitDepth", &IQuerySession::GetBitDepth); }
    uint32 GetFileCount() override { return Call("GetFileCount", &IQuerySession::GetFileCount); }
    IQueryFile* GetFile(uint32 index) override {
        return Call("GetFile", &IQuerySession::GetFile, index);
    }
    uint32 GetVideoTrackCount() override {
        return Call("GetVideoTrackCount", &IQuerySession::GetVideoTrackCount);
    }
    IQueryVideoTrack* GetVideoTrack(uint32 index) override {
        return Call("GetVideoTrack", &IQuerySession::GetVideoTrack, index);
    }
    uint32 GetAudioTrackCount() override {
        return Call("GetAudioTrackCount", &IQuerySession::GetAudioTrackCount);
    }
    IQueryAudioTrack* GetAudioTrack(uint32 index) override {
        return Call("GetAudioTrack", &IQuerySession::GetAudioTrack, index);
    }
    uint32 GetTrackVisibilityPresetCount() override {
        return Call("GetTrackVisibilityPresetCount", &IQuerySession::GetTrackVisibilityPresetCount);
    }
    IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(uint32 index) override {
        return Call("GetTrackVisibilityPreset", &IQuerySession::GetTrackVisibilityPreset, index);
    }
    IHostString* GetInputDeviceId() override {
        return Call("GetInputDeviceId", &IQuerySession::GetInputDeviceId);
    }
    uint32 GetInputPortCount() override {
        return Call("GetInputPortCount", &IQuerySession::GetInputPortCount);
    }
    int32 GetInputPortId(uint32 index) override {
        return Call("GetInputPortId", &IQuerySession::GetInputPortId, index);
    }
    IHostString* GetInputPortName(uint32 index) override {
        return Call("GetInputPortName", &IQuerySession::GetInputPortName, index);
    }
    IHostString* GetOutputDeviceId() override {
        return Call("GetOutputDeviceId", &IQuerySession::GetOutputDeviceId);
    }
    uint32 GetOutputPortCount() override {
        return Call("GetOutputPortCount", &IQuerySession::GetOutputPortCount);
    }
    int32 GetOutputPortId(uint32 index) override {
        return Call("GetOutputPortId", &IQuerySession::GetOutputPortId, index);
    }
    IHostString* GetOutputPortName(uint32 index) override {
        return Call("GetOutputPortName", &IQuerySession::GetOutputPortName, index);
    }
    uint32 GetClipGroupCount() override {
        return Call("GetClipGroupCount", &IQuerySession::GetClipGroupCount);
    }
    IQueryClipGroup* GetClipGroup(uint32 index) override {
        return Call("GetClipGroup", &IQuerySession::GetClipGroup, index);
    }
    IQueryMetronomeInfo* GetMetronomeInfo() override {
        return Call("GetMetronomeInfo", &IQuerySession::GetMetronomeInfo);
    }
    void GetSelection(int64& start, int64& duration) override {
        Call("GetSelection", &IQuerySession::GetSelection, start, duration);
    }
    void GetCtiPosition(int64& position) override {
        Call("GetCtiPosition", &IQuerySession::GetCtiPosition, position);
    }
    void GetViewState(int64& horizontalViewStart, int64& horizontalViewDuration,
                      int32& trackControlsWidth, int32& verticalScrollOffset) override {
        Call("GetViewState", &IQuerySession::GetViewState, horizontalViewStart,
             horizontalViewDuration, trackControlsWidth, verticalScrollOffset);
    }
    void GetTimeFormat(int32& format, int32& frameRate, bool& ntsc, bool& dropFrame,
                       int32& customFrameRate) override {
        Call("GetTimeFormat", &IQuerySession::GetTimeFormat, format, frameRate, ntsc, dropFrame,
             customFrameRate);
    }
    void GetPanMode(bool& logarithmic, double& panPower) override {
        Call("GetPanMode", &IQuerySession::GetPanMode, logarithmic, panPower);
    }
    bool IsLinkedToDefaultTimeSettings() override {
        return Call("IsLinkedToDefaultTimeSettings", &IQuerySession::IsLinkedToDefaultTimeSettings);
    }
    void GetMusicalTime(double& beatsPerMinute, int32& beatsPerBar, int32& noteLength,
                        int32& subdivisions) override {
        Call("GetMusicalTime", &IQuerySession::GetMusicalTime, beatsPerMinute, beatsPerBar,
             noteLength, subdivisions);
    }
    IQueryProperties* GetProperties() override {
        return Call("GetProperties", &IQuerySession::GetProperties);
    }
    IHostString* GetXmpMetadata() override {
        return Call("GetXmpMetadata", &IQuerySession::GetXmpMetadata);
    }
    void GetSmpteStart(int64& start) override {
        Call("GetSmpteStart", &IQuerySession::GetSmpteStart, start);
    }
    bool IsPlayOverlappingClips() override {
        return Call("IsPlayOverlappingClips", &IQuerySession::IsPlayOverlappingClips);
    }
};

IQuerySession& StandInForSession(Recording& recording, IQuerySession& session) {
    return *recording.StandInFor(&session);
}

}  // namespace refhost
