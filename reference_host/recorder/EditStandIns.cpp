// The stand-ins for the interfaces of a read, one line for each operation. Each stands after those
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
#include "host/LogTarget.h"
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
class StandIn<IHostLogTarget> final : public Forwarder<IHostLogTarget> {
public:
    using Forwarder::Forwarder;

    void UnusedSlot3() override { Call("UnusedSlot3", &IHostLogTarget::UnusedSlot3); }
    void UnusedSlot4() override { Call("UnusedSlot4", &IHostLogTarget::UnusedSlot4); }
    void UnusedSlot5() override { Call("UnusedSlot5", &IHostLogTarget::UnusedSlot5); }
    void UnusedSlot6() override { Call("UnusedSlot6", &IHostLogTarget::UnusedSlot6); }
    void UnusedSlot7() override { Call("UnusedSlot7", &IHostLogTarget::UnusedSlot7); }
    void UnusedSlot8() override { Call("UnusedSlot8", &IHostLogTarget::UnusedSlot8); }
    void LogMessage(IHostString* text) override {
        Call("LogMessage", &IHostLogTarget::LogMessage, text);
    }
};

template <>
class StandIn<IEditFile> final : public Forwarder<IEditFile> {
public:
    using Forwarder::Forwarder;

    void SetPath(const char16* path) override { Call("SetPath", &IEditFile::SetPath, path); }
    void SetRecoveryId(const char16* recoveryId) override {
        Call("SetRecoveryId", &IEditFile::SetRecoveryId, recoveryId);
    }
    void SetMediaHandler(const char16* handlerId) override {
        Call("SetMediaHandler", &IEditFile::SetMediaHandler, handlerId);
    }
    void SetImporterPrivateSettings(const char16* settings) override {
        Call("SetImporterPrivateSettings", &IEditFile::SetImporterPrivateSettings, settings);
    }
};

template <>
class StandIn<IEditVideoFormat> final : public Forwarder<IEditVideoFormat> {
public:
    using Forwarder::Forwarder;

    void SetFrameTiming(int64 timeScale, int64 sampleSize) override {
        Call("SetFrameTiming", &IEditVideoFormat::SetFrameTiming, timeScale, sampleSize);
    }
    void SetPixelType(int32 type) override {
        Call("SetPixelType", &IEditVideoFormat::SetPixelType, type);
    }
    void SetDimensions(int32 width, int32 height) override {
        Call("SetDimensions", &IEditVideoFormat::SetDimensions, width, height);
    }
    void SetPixelAspectRatio(uint32 numerator, uint32 denominator) override {
        Call("SetPixelAspectRatio", &IEditVideoFormat::SetPixelAspectRatio, numerator, denominator);
    }
    void SetFieldType(uint32 type) override {
        Call("SetFieldType", &IEditVideoFormat::SetFieldType, type);
    }
};

template <>
class StandIn<IEditVideoClip> final : public Forwarder<IEditVideoClip> {
public:
    using Forwarder::Forwarder;

    void SetFileID(uint32 fileId) override {
        Call("SetFileID", &IEditVideoClip::SetFileID, fileId);
    }
    void SetSourceInPoint(int64 sample) override {
        Call("SetSourceInPoint", &IEditVideoClip::SetSourceInPoint, sample);
    }
    void SetDuration(int64 samples) override {
        Call("SetDuration", &IEditVideoClip::SetDuration, samples);
    }
    void SetStartPoint(int64 sample) override {
        Call("SetStartPoint", &IEditVideoClip::SetStartPoint, sample);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditVideoClip::SetHue, hue); }
    void SetName(const char16* name) override { Call("SetName", &IEditVideoClip::SetName, name); }
    void SetOffline(bool offline) override {
        Call("SetOffline", &IEditVideoClip::SetOffline, offline);
    }
    void SetSelected(bool selected) override {
        Call("SetSelected", &IEditVideoClip::SetSelected, selected);
    }
    void SetZOrder(int32 order) override { Call("SetZOrder", &IEditVideoClip::SetZOrder, order); }
    void SetLockedInTime(bool locked) override {
        Call("SetLockedInTime", &IEditVideoClip::SetLockedInTime, locked);
    }
    IEditVideoFormat* GetVideoFormat() override {
        return Call("GetVideoFormat", &IEditVideoClip::GetVideoFormat);
    }
};

template <>
class StandIn<IEditVideoTrack> final : public Forwarder<IEditVideoTrack> {
public:
    using Forwarder::Forwarder;

    void SetIndex(uint32 index) override { Call("SetIndex", &IEditVideoTrack::SetIndex, index); }
    void SetSelected(bool selected) override {
        Call("SetSelected", &IEditVideoTrack::SetSelected, selected);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditVideoTrack::SetHue, hue); }
    void SetMinimized(bool minimized) override {
        Call("SetMinimized", &IEditVideoTrack::SetMinimized, minimized);
    }
    void SetName(const char16* name) override { Call("SetName", &IEditVideoTrack::SetName, name); }
    void SetHeight(int32 height) override {
        Call("SetHeight", &IEditVideoTrack::SetHeight, height);
    }
    IEditVideoClip* CreateVideoClip(uint32 id) override {
        return Call("CreateVideoClip", &IEditVideoTrack::CreateVideoClip, id);
    }
};

template <>
class StandIn<IEditClipFade> final : public Forwarder<IEditClipFade> {
public:
    using Forwarder::Forwarder;

    void SetStartPoint(int64 sample) override {
        Call("SetStartPoint", &IEditClipFade::SetStartPoint, sample);
    }
    void SetEndPoint(int64 sample) override {
        Call("SetEndPoint", &IEditClipFade::SetEndPoint, sample);
    }
    void SetType(uint32 type) override { Call("SetType", &IEditClipFade::SetType, type); }
    void SetShape(int32 shape) override { Call("SetShape", &IEditClipFade::SetShape, shape); }
    void SetCrossFadeLinkType(uint32 type) override {
        Call("SetCrossFadeLinkType", &IEditClipFade::SetCrossFadeLinkType, type);
    }
};

template <>
class StandIn<IEditClipStretch> final : public Forwarder<IEditClipStretch> {
public:
    using Forwarder::Forwarder;

    void SetStretchMode(uint32 mode) override {
        Call("SetStretchMode", &IEditClipStretch::SetStretchMode, mode);
    }
    void SetStretchType(uint32 type) override {
        Call("SetStretchType", &IEditClipStretch::SetStretchType, type);
    }
    void SetStretchRatio(double ratio) override {
        Call("SetStretchRatio", &IEditClipStretch::SetStretchRatio, ratio);
    }
    void SetPitchAdjustment(double adjustment) override {
        Call("SetPitchAdjustment", &IEditClipStretch::SetPitchAdjustment, adjustment);
    }
    void SetStretchQuality(uint32 quality) override {
        Call("SetStretchQuality", &IEditClipStretch::SetStretchQuality, quality);
    }
    void SetTransientSensitivity(int32 sensitivity) override {
        Call("SetTransientSensitivity", &IEditClipStretch::SetTransientSensitivity, sensitivity);
    }
    void SetAdaptiveWindowSize(int32 size) override {
        Call("SetAdaptiveWindowSize", &IEditClipStretch::SetAdaptiveWindowSize, size);
    }
    void SetPreserveFormants(bool preserve) override {
        Call("SetPreserveFormants", &IEditClipStretch::SetPreserveFormants, preserve);
    }
};

template <>
class StandIn<IEditAutomationLane> final : public Forwarder<IEditAutomationLane> {
public:
    using Forwarder::Forwarder;

    void SetEnableSplines(bool enable) override {
        Call("SetEnableSplines", &IEditAutomationLane::SetEnableSplines, enable);
    }
    void AddKeyframe(float value, int64 sampleOffset, bool hold, bool selected) override {
        Call("AddKeyframe", &IEditAutomationLane::AddKeyframe, value, sampleOffset, hold, selected);
    }
    void SetReadOnly(bool readOnly) override {
        Call("SetReadOnly", &IEditAutomationLane::SetReadOnly, readOnly);
    }
};

template <>
class StandIn<IEditComponent> final : public Forwarder<IEditComponent> {
public:
    using Forwarder::Forwarder;

    void SetComponentID(const char16* componentId) override {
        Call("SetComponentID", &IEditComponent::SetComponentID, componentId);
    }
    void SetName(const char16* name) override { Call("SetName", &IEditComponent::SetName, name); }
    void SetParameterValue(uint32 index, float value) override {
        Call("SetParameterValue", &IEditComponent::SetParameterValue, index, value);
    }
    void SetParameterName(uint32 index, const char16* name) override {
        Call("SetParameterName", &IEditComponent::SetParameterName, index, name);
    }
    IEditAutomationLane* GetParameterAutomation(uint32 index) override {
        return Call("GetParameterAutomation", &IEditComponent::GetParameterAutomation, index);
    }
    void SetPresetChunk(const byte* data, uint32 size) override {
        Call("SetPresetChunk", &IEditComponent::SetPresetChunk, data, size);
    }
    void SetEditorVisible(bool visible) override {
        Call("SetEditorVisible", &IEditComponent::SetEditorVisible, visible);
    }
    void SetEditorRect(int32 left, int32 top, int32 width, int32 height) override {
        Call("SetEditorRect", &IEditComponent::SetEditorRect, left, top, width, height);
    }
    void SetPowered(bool powered) override {
        Call("SetPowered", &IEditComponent::SetPowered, powered);
    }
    void SetParameterSafeDuringWrite(uint32 index, bool safe) override {
        Call("SetParameterSafeDuringWrite", &IEditComponent::SetParameterSafeDuringWrite, index,
             safe);
    }
    void SetComponentGuid(const char16* guid) override {
        Call("SetComponentGuid", &IEditComponent::SetComponentGuid, guid);
    }
    void SetPresetName(const char16* name) override {
        Call("SetPresetName", &IEditComponent::SetPresetName, name);
    }
};

template <>
class StandIn<IEditEffectsSlot> final : public Forwarder<IEditEffectsSlot> {
public:
    using Forwarder::Forwarder;

    void SetSlotIndex(uint32 slotIndex) override {
        Call("SetSlotIndex", &IEditEffectsSlot::SetSlotIndex, slotIndex);
    }
    void SetBypassed(bool bypassed) override {
        Call("SetBypassed", &IEditEffectsSlot::SetBypassed, bypassed);
    }
    IEditComponent* GetComponent() override {
        return Call("GetComponent", &IEditEffectsSlot::GetComponent);
    }
    void UnusedSlot6() override { Call("UnusedSlot6", &IEditEffectsSlot::UnusedSlot6); }
    void UnusedSlot7() override { Call("UnusedSlot7", &IEditEffectsSlot::UnusedSlot7); }
    void SetSideChainChannels(uint32 channels) override {
        Call("SetSideChainChannels", &IEditEffectsSlot::SetSideChainChannels, channels);
    }
    void AddInputChannel(int32 index, int32 source) override {
        Call("AddInputChannel", &IEditEffectsSlot::AddInputChannel, index, source);
    }
    void AddOutputChannel(int32 index, int32 source) override {
        Call("AddOutputChannel", &IEditEffectsSlot::AddOutputChannel, index, source);
    }
    void SetBusConfig(const char16* configuration) override {
        Call("SetBusConfig", &IEditEffectsSlot::SetBusConfig, configuration);
    }
};

template <>
class StandIn<IEditEffectsRack> final : public Forwarder<IEditEffectsRack> {
public:
    using Forwarder::Forwarder;

    IEditComponent* GetMixComponent() override {
        return Call("GetMixComponent", &IEditEffectsRack::GetMixComponent);
    }
    IEditComponent* GetInputComponent() override {
        return Call("GetInputComponent", &IEditEffectsRack::GetInputComponent);
    }
    IEditComponent* GetOutputComponent() override {
        return Call("GetOutputComponent", &IEditEffectsRack::GetOutputComponent);
    }
    void SetPreFader(bool preFader) override {
        Call("SetPreFader", &IEditEffectsRack::SetPreFader, preFader);
    }
    IEditEffectsSlot* AddSlot() override { return Call("AddSlot", &IEditEffectsRack::AddSlot); }
};

template <>
class StandIn<IEditClipProperties> final : public Forwarder<IEditClipProperties> {
public:
    using Forwarder::Forwarder;

    void SetProperties(const char16* text) override {
        Call("SetProperties", &IEditClipProperties::SetProperties, text);
    }
};

template <>
class StandIn<IEditAudioClip> final : public Forwarder<IEditAudioClip> {
public:
    using Forwarder::Forwarder;

    void SetFileID(uint32 fileId) override {
        Call("SetFileID", &IEditAudioClip::SetFileID, fileId);
    }
    void SetSourceInPoint(int64 sample) override {
        Call("SetSourceInPoint", &IEditAudioClip::SetSourceInPoint, sample);
    }
    void SetDuration(int64 samples) override {
        Call("SetDuration", &IEditAudioClip::SetDuration, samples);
    }
    void SetStartPoint(int64 sample) override {
        Call("SetStartPoint", &IEditAudioClip::SetStartPoint, sample);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditAudioClip::SetHue, hue); }
    void SetLooped(bool looped) override { Call("SetLooped", &IEditAudioClip::SetLooped, looped); }
    void SetName(const char16* name) override { Call("SetName", &IEditAudioClip::SetName, name); }
    void SetOffline(bool offline) override {
        Call("SetOffline", &IEditAudioClip::SetOffline, offline);
    }
    void SetSelected(bool selected) override {
        Call("SetSelected", &IEditAudioClip::SetSelected, selected);
    }
    void SetZOrder(int32 order) override { Call("SetZOrder", &IEditAudioClip::SetZOrder, order); }
    void SetChannelSource(uint32 channel, int32 source) override {
        Call("SetChannelSource", &IEditAudioClip::SetChannelSource, channel, source);
    }
    void SetLockedInTime(bool locked) override {
        Call("SetLockedInTime", &IEditAudioClip::SetLockedInTime, locked);
    }
    IEditClipFade* GetFadeIn() override { return Call("GetFadeIn", &IEditAudioClip::GetFadeIn); }
    IEditClipFade* GetFadeOut() override { return Call("GetFadeOut", &IEditAudioClip::GetFadeOut); }
    IEditClipStretch* GetClipStretch() override {
        return Call("GetClipStretch", &IEditAudioClip::GetClipStretch);
    }
    void SetClipAutoCrossfade(bool automatic) override {
        Call("SetClipAutoCrossfade", &IEditAudioClip::SetClipAutoCrossfade, automatic);
    }
    void SetCrossFadeHeadClipID(int32 clipId) override {
        Call("SetCrossFadeHeadClipID", &IEditAudioClip::SetCrossFadeHeadClipID, clipId);
    }
    void SetCrossFadeTailClipID(int32 clipId) override {
        Call("SetCrossFadeTailClipID", &IEditAudioClip::SetCrossFadeTailClipID, clipId);
    }
    void AddTake(int64 sourceInPoint) override {
        Call("AddTake", &IEditAudioClip::AddTake, sourceInPoint);
    }
    IEditComponent* GetClipGainComponent() override {
        return Call("GetClipGainComponent", &IEditAudioClip::GetClipGainComponent);
    }
    IEditComponent* GetClipMuteComponent() override {
        return Call("GetClipMuteComponent", &IEditAudioClip::GetClipMuteComponent);
    }
    IEditComponent* GetClipPanComponent() override {
        return Call("GetClipPanComponent", &IEditAudioClip::GetClipPanComponent);
    }
    IEditEffectsRack* GetEffectsRack() override {
        return Call("GetEffectsRack", &IEditAudioClip::GetEffectsRack);
    }
    void SetEditParameter(uint32 slotIndex, uint32 parameterIndex) override {
        Call("SetEditParameter", &IEditAudioClip::SetEditParameter, slotIndex, parameterIndex);
    }
    IEditClipProperties* GetProperties() override {
        return Call("GetProperties", &IEditAudioClip::GetProperties);
    }
};

template <>
class StandIn<IEditMIDIClip> final : public Forwarder<IEditMIDIClip> {
public:
    using Forwarder::Forwarder;

    void SetMIDIEvents(const byte* data, uint32 size) override {
        Call("SetMIDIEvents", &IEditMIDIClip::SetMIDIEvents, data, size);
    }
    void SetSourceInPoint(int64 sample) override {
        Call("SetSourceInPoint", &IEditMIDIClip::SetSourceInPoint, sample);
    }
    void SetDuration(int64 samples) override {
        Call("SetDuration", &IEditMIDIClip::SetDuration, samples);
    }
    void SetStartPoint(int64 sample) override {
        Call("SetStartPoint", &IEditMIDIClip::SetStartPoint, sample);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditMIDIClip::SetHue, hue); }
    void SetName(const char16* name) override { Call("SetName", &IEditMIDIClip::SetName, name); }
    void SetSelected(bool selected) override {
        Call("SetSelected", &IEditMIDIClip::SetSelected, selected);
    }
    void SetLockedInTime(bool locked) override {
        Call("SetLockedInTime", &IEditMIDIClip::SetLockedInTime, locked);
    }
};

template <>
class StandIn<IEditMIDIClipList> final : public Forwarder<IEditMIDIClipList> {
public:
    using Forwarder::Forwarder;

    IEditMIDIClip* CreateMIDIClip(uint32 id) override {
        return Call("CreateMIDIClip", &IEditMIDIClipList::CreateMIDIClip, id);
    }
};

template <>
class StandIn<IEditInstrumentTrack> final : public Forwarder<IEditInstrumentTrack> {
public:
    using Forwarder::Forwarder;

    void SetMidiIn(const char16* name) override {
        Call("SetMidiIn", &IEditInstrumentTrack::SetMidiIn, name);
    }
    void SetMidiAll(bool all) override {
        Call("SetMidiAll", &IEditInstrumentTrack::SetMidiAll, all);
    }
};

template <>
class StandIn<IEditSendSlot> final : public Forwarder<IEditSendSlot> {
public:
    using Forwarder::Forwarder;

    void SetSlotIndex(uint32 slotIndex) override {
        Call("SetSlotIndex", &IEditSendSlot::SetSlotIndex, slotIndex);
    }
    void SetSendOutputId(int32 trackId) override {
        Call("SetSendOutputId", &IEditSendSlot::SetSendOutputId, trackId);
    }
    void SetPreFader(bool preFader) override {
        Call("SetPreFader", &IEditSendSlot::SetPreFader, preFader);
    }
    IEditComponent* GetSendComponent(const char16* id) override {
        return Call("GetSendComponent", &IEditSendSlot::GetSendComponent, id);
    }
    IEditComponent* GetPanComponent(const char16* id) override {
        return Call("GetPanComponent", &IEditSendSlot::GetPanComponent, id);
    }
    void SetDestCompIndex(int32 index) override {
        Call("SetDestCompIndex", &IEditSendSlot::SetDestCompIndex, index);
    }
};

template <>
class StandIn<IEditSendList> final : public Forwarder<IEditSendList> {
public:
    using Forwarder::Forwarder;

    IEditSendSlot* AddSlot() override { return Call("AddSlot", &IEditSendList::AddSlot); }
};

template <>
struct PrivateInterface<IEditAudioTrack> {
    using type = IEditAudioTrackPrivate;
};

template <class Interface>
class EditAudioTrackForwarder : public Forwarder<Interface> {
public:
    using Forwarder<Interface>::Forwarder;

    IEditAudioClip* CreateAudioClip(uint32 id) override {
        return this->Call("CreateAudioClip", &IEditAudioTrack::CreateAudioClip, id);
    }
    IEditMIDIClipList* GetMIDIClipList() override {
        return this->Call("GetMIDIClipList", &IEditAudioTrack::GetMIDIClipList);
    }
};

template <>
class StandIn<IEditAudioTrack> final : public EditAudioTrackForwarder<IEditAudioTrack> {
public:
    using EditAudioTrackForwarder::EditAudioTrackForwarder;
};

template <>
class StandIn<IEditAudioTrackPrivate> final
    : public EditAudioTrackForwarder<IEditAudioTrackPrivate> {
public:
    using EditAudioTrackForwarder::EditAudioTrackForwarder;

    void SetIndex(uint32 index) override {
        Call("SetIndex", &IEditAudioTrackPrivate::SetIndex, index);
    }
    void SetKind(uint32 kind) override { Call("SetKind", &IEditAudioTrackPrivate::SetKind, kind); }
    void SetSelected(bool selected) override {
        Call("SetSelected", &IEditAudioTrackPrivate::SetSelected, selected);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditAudioTrackPrivate::SetHue, hue); }
    void SetMinimized(bool minimized) override {
        Call("SetMinimized", &IEditAudioTrackPrivate::SetMinimized, minimized);
    }
    void SetName(const char16* name) override {
        Call("SetName", &IEditAudioTrackPrivate::SetName, name);
    }
    void SetHeight(int32 height) override {
        Call("SetHeight", &IEditAudioTrackPrivate::SetHeight, height);
    }
    void SetPhaseInverted(bool inverted) override {
        Call("SetPhaseInverted", &IEditAudioTrackPrivate::SetPhaseInverted, inverted);
    }
    void SetPreRendered(bool preRendered) override {
        Call("SetPreRendered", &IEditAudioTrackPrivate::SetPreRendered, preRendered);
    }
    void SetSumToMono(bool sumToMono) override {
        Call("SetSumToMono", &IEditAudioTrackPrivate::SetSumToMono, sumToMono);
    }
    void SetPreRenderedFile(const char16* path) override {
        Call("SetPreRenderedFile", &IEditAudioTrackPrivate::SetPreRenderedFile, path);
    }
    void SetAutomationLaneOpenState(bool open) override {
        Call("SetAutomationLaneOpenState", &IEditAudioTrackPrivate::SetAutomationLaneOpenState,
             open);
    }
    void SetVisible(bool visible) override {
        Call("SetVisible", &IEditAudioTrackPrivate::SetVisible, visible);
    }
    IEditInstrumentTrack* GetInstrument() override {
        return Call("GetInstrument", &IEditAudioTrackPrivate::GetInstrument);
    }
    void SetAudioChannelType(uint32 type) override {
        Call("SetAudioChannelType", &IEditAudioTrackPrivate::SetAudioChannelType, type);
    }
    void SetSolo(bool solo) override { Call("SetSolo", &IEditAudioTrackPrivate::SetSolo, solo); }
    void SetRecordArmed(bool armed) override {
        Call("SetRecordArmed", &IEditAudioTrackPrivate::SetRecordArmed, armed);
    }
    void SetMonitoring(bool monitoring) override {
        Call("SetMonitoring", &IEditAudioTrackPrivate::SetMonitoring, monitoring);
    }
    void SetSoloSafe(bool soloSafe) override {
        Call("SetSoloSafe", &IEditAudioTrackPrivate::SetSoloSafe, soloSafe);
    }
    void SetOutputTrack(int32 trackId) override {
        Call("SetOutputTrack", &IEditAudioTrackPrivate::SetOutputTrack, trackId);
    }
    void SetInput(int32 portId) override {
        Call("SetInput", &IEditAudioTrackPrivate::SetInput, portId);
    }
    void SetHardwareOutput(int32 portId) override {
        Call("SetHardwareOutput", &IEditAudioTrackPrivate::SetHardwareOutput, portId);
    }
    IEditComponent* GetFaderComponent(const char16* id) override {
        return Call("GetFaderComponent", &IEditAudioTrackPrivate::GetFaderComponent, id);
    }
    IEditComponent* GetMuteComponent(const char16* id) override {
        return Call("GetMuteComponent", &IEditAudioTrackPrivate::GetMuteComponent, id);
    }
    IEditComponent* GetPanComponent(const char16* id) override {
        return Call("GetPanComponent", &IEditAudioTrackPrivate::GetPanComponent, id);
    }
    IEditComponent* GetEQComponent(const char16* id) override {
        return Call("GetEQComponent", &IEditAudioTrackPrivate::GetEQComponent, id);
    }
    void SetAutomationMode(int32 mode) override {
        Call("SetAutomationMode", &IEditAudioTrackPrivate::SetAutomationMode, mode);
    }
    IEditSendList* GetSendList() override {
        return Call("GetSendList", &IEditAudioTrackPrivate::GetSendList);
    }
    IEditEffectsRack* GetEffectsRack() override {
        return Call("GetEffectsRack", &IEditAudioTrackPrivate::GetEffectsRack);
    }
    void SetEditParameter(uint32 slotIndex, uint32 parameterIndex) override {
        Call("SetEditParameter", &IEditAudioTrackPrivate::SetEditParameter, slotIndex,
             parameterIndex);
    }
};

template <>
class StandIn<IEditGlobalTrackInfo> final : public Forwarder<IEditGlobalTrackInfo> {
public:
    using Forwarder::Forwarder;

    void SetTimeSigVisible(bool visible) override {
        Call("SetTimeSigVisible", &IEditGlobalTrackInfo::SetTimeSigVisible, visible);
    }
    void SetKeySigVisible(bool visible) override {
        Call("SetKeySigVisible", &IEditGlobalTrackInfo::SetKeySigVisible, visible);
    }
    void SetTempoVisible(bool visible) override {
        Call("SetTempoVisible", &IEditGlobalTrackInfo::SetTempoVisible, visible);
    }
    void SetTempoEvents(const byte* data, uint32 size) override {
        Call("SetTempoEvents", &IEditGlobalTrackInfo::SetTempoEvents, data, size);
    }
    void SetTimeSignatureEvents(const byte* data, uint32 size) override {
        Call("SetTimeSignatureEvents", &IEditGlobalTrackInfo::SetTimeSignatureEvents, data, size);
    }
    void SetKeySignatureEvents(const byte* data, uint32 size) override {
        Call("SetKeySignatureEvents", &IEditGlobalTrackInfo::SetKeySignatureEvents, data, size);
    }
};

template <>
struct PrivateInterface<IEditMetronomeInfo> {
    using type = IEditMetronomeInfoPrivate;
};

template <class Interface>
class EditMetronomeInfoForwarder : public Forwarder<Interface> {
public:
    using Forwarder<Interface>::Forwarder;

    void SetEnabled(bool enabled) override {
        this->Call("SetEnabled", &IEditMetronomeInfo::SetEnabled, enabled);
    }
    void SetSoundSet(uint32 soundSet) override {
        this->Call("SetSoundSet", &IEditMetronomeInfo::SetSoundSet, soundSet);
    }
    void SetPattern(const uint32* beats, uint32 count) override {
        this->Call("SetPattern", &IEditMetronomeInfo::SetPattern, beats, count);
    }
    IEditAudioTrack* GetTrack() override {
        return this->Call("GetTrack", &IEditMetronomeInfo::GetTrack);
    }
};

template <>
class StandIn<IEditMetronomeInfo> final : public EditMetronomeInfoForwarder<IEditMetronomeInfo> {
public:
    using EditMetronomeInfoForwarder::EditMetronomeInfoForwarder;
};

template <>
class StandIn<IEditMetronomeInfoPrivate> final
    : public EditMetronomeInfoForwarder<IEditMetronomeInfoPrivate> {
public:
    using EditMetronomeInfoForwarder::EditMetronomeInfoForwarder;

    IEditGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Call("GetGlobalTrackInfo", &IEditMetronomeInfoPrivate::GetGlobalTrackInfo);
    }
};

template <>
class StandIn<IEditTrackVisibilityPreset> final : public Forwarder<IEditTrackVisibilityPreset> {
public:
    using Forwarder::Forwarder;

    void SetId(uint32 id) override { Call("SetId", &IEditTrackVisibilityPreset::SetId, id); }
    void SetName(const char16* name) override {
        Call("SetName", &IEditTrackVisibilityPreset::SetName, name);
    }
    void AddTrack(uint32 trackId, float height, bool minimized) override {
        Call("AddTrack", &IEditTrackVisibilityPreset::AddTrack, trackId, height, minimized);
    }
};

template <>
class StandIn<IEditClipGroup> final : public Forwarder<IEditClipGroup> {
public:
    using Forwarder::Forwarder;

    void AddItem(uint32 trackId, uint32 clipId) override {
        Call("AddItem", &IEditClipGroup::AddItem, trackId, clipId);
    }
    void SetHue(double hue) override { Call("SetHue", &IEditClipGroup::SetHue, hue); }
    void SetName(const char16* name) override { Call("SetName", &IEditClipGroup::SetName, name); }
};

template <>
class StandIn<IEditProperties> final : public Forwarder<IEditProperties> {
public:
    using Forwarder::Forwarder;

    void SetProperty(const char16* key, const char16* value) override {
        Call("SetProperty", &IEditProperties::SetProperty, key, value);
    }
};

template <>
class StandIn<IEditSession> final : public Forwarder<IEditSession> {
public:
    using Forwarder::Forwarder;

    void UnusedSlot3() override { Call("UnusedSlot3", &IEditSession::UnusedSlot3); }
    IHostLogTarget* GetLogTarget() override {
        return Call("GetLogTarget", &IEditSession::GetLogTarget);
    }
    void SetProgress(uint32 done, uint32 total, uint32 reserved, uint32 flag) override {
        Call("SetProgress", &IEditSession::SetProgress, done, total, reserved, flag);
    }
    void SetFormatDescription(const char16* description) override {
        Call("SetFormatDescription", &IEditSession::SetFormatDescription, description);
    }
    void SetSampleRate(uint32 samplesPerSecond) override {
        Call("SetSampleRate", &IEditSession::SetSampleRate, samplesPerSecond);
    }
    void SetChannelCount(int32 channels) override {
        Call("SetChannelCount", &IEditSession::SetChannelCount, channels);
    }
    void SetDuration(int64 samples) override {
        Call("SetDuration", &IEditSession::SetDuration, samples);
    }
    void SetBitDepth(uint32 bits) override {
        Call("SetBitDepth", &IEditSession::SetBitDepth, bits);
    }
    IEditFile* GetFile(uint32 id) override { return Call("GetFile", &IEditSession::GetFile, id); }
    IEditVideoTrack* GetVideoTrack(uint32 id) override {
        return Call("GetVideoTrack", &IEditSession::GetVideoTrack, id);
    }
    IEditAudioTrack* GetAudioTrack(uint32 id) override {
        return Call("GetAudioTrack", &IEditSession::GetAudioTrack, id);
    }
    IEditMetronomeInfo* GetMetronomeInfo() override {
        return Call("GetMetronomeInfo", &IEditSession::GetMetronomeInfo);
    }
    IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override {
        return Call("CreateTrackVisibilityPreset", &IEditSession::CreateTrackVisibilityPreset);
    }
    void SetInputDeviceId(const char16* deviceId) override {
        Call("SetInputDeviceId", &IEditSession::SetInputDeviceId, deviceId);
    }
    void AddInputPort(int32 id, const char16* name) override {
        Call("AddInputPort", &IEditSession::AddInputPort, id, name);
    }
    void SetOutputDeviceId(const char16* deviceId) override {
        Call("SetOutputDeviceId", &IEditSession::SetOutputDeviceId, deviceId);
    }
    void AddOutputPort(int32 id, const char16* name) override {
        Call("AddOutputPort", &IEditSession::AddOutputPort, id, name);
    }
    IEditClipGroup* CreateClipGroup(uint32 id) override {
        return Call("CreateClipGroup", &IEditSession::CreateClipGroup, id);
    }
    void SetSelection(int64 start, int64 duration) override {
        Call("SetSelection", &IEditSession::SetSelection, start, duration);
    }
    void SetCtiPosition(int64 position) override {
        Call("SetCtiPosition", &IEditSession::SetCtiPosition, position);
    }
    void SetViewState(int64 horizontalViewStart, int64 horizontalViewDuration,
                      int32 trackControlsWidth, int32 verticalScrollOffset) override {
        Call("SetViewState", &IEditSession::SetViewState, horizontalViewStart,
             horizontalViewDuration, trackControlsWidth, verticalScrollOffset);
    }
    void SetTimeFormat(int32 format, int32 frameRate, bool ntsc, bool dropFrame,
                       int32 customFrameRate) override {
        Call("SetTimeFormat", &IEditSession::SetTimeFormat, format, frameRate, ntsc, dropFrame,
             customFrameRate);
    }
    void SetPanMode(bool logarithmic, double panPower) override {
        Call("SetPanMode", &IEditSession::SetPanMode, logarithmic, panPower);
    }
    void SetLinkToDefaultTimeSettings(bool linked) override {
        Call("SetLinkToDefaultTimeSettings", &IEditSession::SetLinkToDefaultTimeSettings, linked);
    }
    void SetMusicalTime(double beatsPerMinute, int32 beatsPerBar, int32 noteLength,
                        int32 subdivisions) override {
        Call("SetMusicalTime", &IEditSession::SetMusicalTime, beatsPerMinute, beatsPerBar,
             noteLength, subdivisions);
    }
    IEditProperties* GetProperties() override {
        return Call("GetProperties", &IEditSession::GetProperties);
    }
    void SetXmpMetadata(const char16* packet) override {
        Call("SetXmpMetadata", &IEditSession::SetXmpMetadata, packet);
    }
    void SetVersionDependentValue(int64 position) override {
        Call("SetVersionDependentValue", &IEditSession::SetVersionDependentValue, position);
    }
    void SetSmpteStart(int64 start) override {
        Call("SetSmpteStart", &IEditSession::SetSmpteStart, start);
    }
    void SetPlayOverlappingClips(bool play) override {
        Call("SetPlayOverlappingClips", &IEditSession::SetPlayOverlappingClips, play);
    }
};

IEditSession& StandInForSession(Recording& recording, IEditSession& session) {
    return *recording.StandInFor(&session);
}

}  // namespace refhost
