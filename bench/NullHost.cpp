#include "bench/NullHost.h"

#include <utility>

#include "host/AudioClips.h"
#include "host/AudioTracks.h"
#include "host/Automation.h"
#include "host/ClipGroups.h"
#include "host/ClipStretch.h"
#include "host/Effects.h"
#include "host/Fades.h"
#include "host/Files.h"
#include "host/GlobalTrackInfo.h"
#include "host/LogTarget.h"
#include "host/Metronome.h"
#include "host/MidiClips.h"
#include "host/Properties.h"
#include "host/Sends.h"
#include "host/TrackVisibility.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"

namespace bench {
namespace {

using namespace kelcore;
using namespace tses;

constinit NullHostTally tally;

void Count() {
    ++tally.calls;
}

template <class Object>
Object* Counted(Object& object) {
    Count();
    return &object;
}

template <class Interface>
struct Null : Interface {
    void AddReference() override { ++tally.references; }
    void Release() override { --tally.references; }

protected:
    ~Null() = default;
};

/// The one object of its kind.
template <class Object>
constinit Object the;

struct NullLogTarget final : Null<IHostLogTarget> {
    void UnusedSlot3() override { Count(); }
    void UnusedSlot4() override { Count(); }
    void UnusedSlot5() override { Count(); }
    void UnusedSlot6() override { Count(); }
    void UnusedSlot7() override { Count(); }
    void UnusedSlot8() override { Count(); }
    void LogMessage(IHostString*) override {
        Count();
        ++tally.messages;
    }
};

struct NullClipFade final : Null<IEditClipFade> {
    void SetStartPoint(int64) override { Count(); }
    void SetEndPoint(int64) override { Count(); }
    void SetType(uint32) override { Count(); }
    void SetShape(int32) override { Count(); }
    void SetCrossFadeLinkType(uint32) override { Count(); }
};

struct NullClipStretch final : Null<IEditClipStretch> {
    void SetStretchMode(uint32) override { Count(); }
    void SetStretchType(uint32) override { Count(); }
    void SetStretchRatio(double) override { Count(); }
    void SetPitchAdjustment(double) override { Count(); }
    void SetStretchQuality(uint32) override { Count(); }
    void SetTransientSensitivity(int32) override { Count(); }
    void SetAdaptiveWindowSize(int32) override { Count(); }
    void SetPreserveFormants(bool) override { Count(); }
};

struct NullAutomationLane final : Null<IEditAutomationLane> {
    void SetEnableSplines(bool) override { Count(); }
    void AddKeyframe(float, int64, bool, bool) override { Count(); }
    void SetReadOnly(bool) override { Count(); }
};

struct NullComponent final : Null<IEditComponent> {
    void SetComponentID(const char16*) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetParameterValue(uint32, float) override { Count(); }
    void SetParameterName(uint32, const char16*) override { Count(); }
    IEditAutomationLane* GetParameterAutomation(uint32) override {
        return Counted(the<NullAutomationLane>);
    }
    void SetPresetChunk(const byte*, uint32) override { Count(); }
    void SetEditorVisible(bool) override { Count(); }
    void SetEditorRect(int32, int32, int32, int32) override { Count(); }
    void SetPowered(bool) override { Count(); }
    void SetParameterSafeDuringWrite(uint32, bool) override { Count(); }
    void SetComponentGuid(const char16*) override { Count(); }
    void SetPresetName(const char16*) override { Count(); }
};

struct NullEffectsSlot final : Null<IEditEffectsSlot> {
    void SetSlotIndex(uint32) override { Count(); }
    void SetBypassed(bool) override { Count(); }
    IEditComponent* GetComponent() override { return Counted(the<NullComponent>); }
    void UnusedSlot6() override { Count(); }
    void UnusedSlot7() override { Count(); }
    void SetSideChainChannels(uint32) override { Count(); }
    void AddInputChannel(int32, int32) override { Count(); }
    void AddOutputChannel(int32, int32) override { Count(); }
    void SetBusConfig(const char16*) override { Count(); }
};

struct NullEffectsRack final : Null<IEditEffectsRack> {
    IEditComponent* GetMixComponent() override { return Counted(the<NullComponent>); }
    IEditComponent* GetInputComponent() override { return Counted(the<NullComponent>); }
    IEditComponent* GetOutputComponent() override { return Counted(the<NullComponent>); }
    void SetPreFader(bool) override { Count(); }
    IEditEffectsSlot* AddSlot() override { return Counted(the<NullEffectsSlot>); }
};

struct NullClipProperties final : Null<IEditClipProperties> {
    void SetProperties(const char16*) override { Count(); }
};

struct NullAudioClip final : Null<IEditAudioClip> {
    void SetFileID(uint32) override { Count(); }
    void SetSourceInPoint(int64) override { Count(); }
    void SetDuration(int64) override { Count(); }
    void SetStartPoint(int64) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetLooped(bool) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetOffline(bool) override { Count(); }
    void SetSelected(bool) override { Count(); }
    void SetZOrder(int32) override { Count(); }
    void SetChannelSource(uint32, int32) override { Count(); }
    void SetLockedInTime(bool) override { Count(); }
    IEditClipFade* GetFadeIn() override { return Counted(the<NullClipFade>); }
    IEditClipFade* GetFadeOut() override { return Counted(the<NullClipFade>); }
    IEditClipStretch* GetClipStretch() override { return Counted(the<NullClipStretch>); }
    void SetClipAutoCrossfade(bool) override { Count(); }
    void SetCrossFadeHeadClipID(int32) override { Count(); }
    void SetCrossFadeTailClipID(int32) override { Count(); }
    void AddTake(int64) override { Count(); }
    IEditComponent* GetClipGainComponent() override { return Counted(the<NullComponent>); }
    IEditComponent* GetClipMuteComponent() override { return Counted(the<NullComponent>); }
    IEditComponent* GetClipPanComponent() override { return Counted(the<NullComponent>); }
    IEditEffectsRack* GetEffectsRack() override { return Counted(the<NullEffectsRack>); }
    void SetEditParameter(uint32, uint32) override { Count(); }
    IEditClipProperties* GetProperties() override { return Counted(the<NullClipProperties>); }
};

struct NullInstrumentTrack final : Null<IEditInstrumentTrack> {
    void SetMidiIn(const char16*) override { Count(); }
    void SetMidiAll(bool) override { Count(); }
};

struct NullMIDIClip final : Null<IEditMIDIClip> {
    void SetMIDIEvents(const byte*, uint32) override { Count(); }
    void SetSourceInPoint(int64) override { Count(); }
    void SetDuration(int64) override { Count(); }
    void SetStartPoint(int64) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetSelected(bool) override { Count(); }
    void SetLockedInTime(bool) override { Count(); }
};

struct NullMIDIClipList final : Null<IEditMIDIClipList> {
    IEditMIDIClip* CreateMIDIClip(uint32) override { return Counted(the<NullMIDIClip>); }
};

struct NullSendSlot final : Null<IEditSendSlot> {
    void SetSlotIndex(uint32) override { Count(); }
    void SetSendOutputId(int32) override { Count(); }
    void SetPreFader(bool) override { Count(); }
    IEditComponent* GetSendComponent(const char16*) override { return Counted(the<NullComponent>); }
    IEditComponent* GetPanComponent(const char16*) override { return Counted(the<NullComponent>); }
    void SetDestCompIndex(int32) override { Count(); }
};

struct NullSendList final : Null<IEditSendList> {
    IEditSendSlot* AddSlot() override { return Counted(the<NullSendSlot>); }
};

struct NullAudioTrack final : Null<IEditAudioTrackPrivate> {
    IEditAudioClip* CreateAudioClip(uint32) override { return Counted(the<NullAudioClip>); }
    IEditMIDIClipList* GetMIDIClipList() override { return Counted(the<NullMIDIClipList>); }
    void SetIndex(uint32) override { Count(); }
    void SetKind(uint32) override { Count(); }
    void SetSelected(bool) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetMinimized(bool) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetHeight(int32) override { Count(); }
    void SetPhaseInverted(bool) override { Count(); }
    void SetPreRendered(bool) override { Count(); }
    void SetSumToMono(bool) override { Count(); }
    void SetPreRenderedFile(const char16*) override { Count(); }
    void SetAutomationLaneOpenState(bool) override { Count(); }
    void SetVisible(bool) override { Count(); }
    IEditInstrumentTrack* GetInstrument() override { return Counted(the<NullInstrumentTrack>); }
    void SetAudioChannelType(uint32) override { Count(); }
    void SetSolo(bool) override { Count(); }
    void SetRecordArmed(bool) override { Count(); }
    void SetMonitoring(bool) override { Count(); }
    void SetSoloSafe(bool) override { Count(); }
    void SetOutputTrack(int32) override { Count(); }
    void SetInput(int32) override { Count(); }
    void SetHardwareOutput(int32) override { Count(); }
    IEditComponent* GetFaderComponent(const char16*) override {
        return Counted(the<NullComponent>);
    }
    IEditComponent* GetMuteComponent(const char16*) override { return Counted(the<NullComponent>); }
    IEditComponent* GetPanComponent(const char16*) override { return Counted(the<NullComponent>); }
    IEditComponent* GetEQComponent(const char16*) override { return Counted(the<NullComponent>); }
    void SetAutomationMode(int32) override { Count(); }
    IEditSendList* GetSendList() override { return Counted(the<NullSendList>); }
    IEditEffectsRack* GetEffectsRack() override { return Counted(the<NullEffectsRack>); }
    void SetEditParameter(uint32, uint32) override { Count(); }
};

struct NullClipGroup final : Null<IEditClipGroup> {
    void AddItem(uint32, uint32) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetName(const char16*) override { Count(); }
};

struct NullFile final : Null<IEditFile> {
    void SetPath(const char16*) override { Count(); }
    void SetRecoveryId(const char16*) override { Count(); }
    void SetMediaHandler(const char16*) override { Count(); }
    void SetImporterPrivateSettings(const char16*) override { Count(); }
};

struct NullGlobalTrackInfo final : Null<IEditGlobalTrackInfo> {
    void SetTimeSigVisible(bool) override { Count(); }
    void SetKeySigVisible(bool) override { Count(); }
    void SetTempoVisible(bool) override { Count(); }
    void SetTempoEvents(const byte*, uint32) override { Count(); }
    void SetTimeSignatureEvents(const byte*, uint32) override { Count(); }
    void SetKeySignatureEvents(const byte*, uint32) override { Count(); }
};

struct NullMetronomeInfo final : Null<IEditMetronomeInfoPrivate> {
    void SetEnabled(bool) override { Count(); }
    void SetSoundSet(uint32) override { Count(); }
    void SetPattern(const uint32*, uint32) override { Count(); }
    IEditAudioTrack* GetTrack() override { return Counted(the<NullAudioTrack>); }
    IEditGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Counted(the<NullGlobalTrackInfo>);
    }
};

struct NullProperties final : Null<IEditProperties> {
    void SetProperty(const char16*, const char16*) override { Count(); }
};

struct NullVideoFormat final : Null<IEditVideoFormat> {
    void SetFrameTiming(int64, int64) override { Count(); }
    void SetPixelType(int32) override { Count(); }
    void SetDimensions(int32, int32) override { Count(); }
    void SetPixelAspectRatio(uint32, uint32) override { Count(); }
    void SetFieldType(uint32) override { Count(); }
};

struct NullVideoClip final : Null<IEditVideoClip> {
    void SetFileID(uint32) override { Count(); }
    void SetSourceInPoint(int64) override { Count(); }
    void SetDuration(int64) override { Count(); }
    void SetStartPoint(int64) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetOffline(bool) override { Count(); }
    void SetSelected(bool) override { Count(); }
    void SetZOrder(int32) override { Count(); }
    void SetLockedInTime(bool) override { Count(); }
    IEditVideoFormat* GetVideoFormat() override { return Counted(the<NullVideoFormat>); }
};

struct NullVideoTrack final : Null<IEditVideoTrack> {
    void SetIndex(uint32) override { Count(); }
    void SetSelected(bool) override { Count(); }
    void SetHue(double) override { Count(); }
    void SetMinimized(bool) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void SetHeight(int32) override { Count(); }
    IEditVideoClip* CreateVideoClip(uint32) override { return Counted(the<NullVideoClip>); }
};

struct NullTrackVisibilityPreset final : Null<IEditTrackVisibilityPreset> {
    void SetId(uint32) override { Count(); }
    void SetName(const char16*) override { Count(); }
    void AddTrack(uint32, float, bool) override { Count(); }
};

struct NullSession final : Null<IEditSession> {
    void UnusedSlot3() override { Count(); }
    IHostLogTarget* GetLogTarget() override { return Counted(the<NullLogTarget>); }
    void SetProgress(uint32, uint32, uint32, uint32) override { Count(); }
    void SetFormatDescription(const char16*) override { Count(); }
    void SetSampleRate(uint32) override { Count(); }
    void SetChannelCount(int32) override { Count(); }
    void SetDuration(int64) override { Count(); }
    void SetBitDepth(uint32) override { Count(); }
    IEditFile* GetFile(uint32) override { return Counted(the<NullFile>); }
    IEditVideoTrack* GetVideoTrack(uint32) override { return Counted(the<NullVideoTrack>); }
    IEditAudioTrack* GetAudioTrack(uint32) override { return Counted(the<NullAudioTrack>); }
    IEditMetronomeInfo* GetMetronomeInfo() override { return Counted(the<NullMetronomeInfo>); }
    IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override {
        return Counted(the<NullTrackVisibilityPreset>);
    }
    void SetInputDeviceId(const char16*) override { Count(); }
    void AddInputPort(int32, const char16*) override { Count(); }
    void SetOutputDeviceId(const char16*) override { Count(); }
    void AddOutputPort(int32, const char16*) override { Count(); }
    IEditClipGroup* CreateClipGroup(uint32) override { return Counted(the<NullClipGroup>); }
    void SetSelection(int64, int64) override { Count(); }
    void SetCtiPosition(int64) override { Count(); }
    void SetViewState(int64, int64, int32, int32) override { Count(); }
    void SetTimeFormat(int32, int32, bool, bool, int32) override { Count(); }
    void SetPanMode(bool, double) override { Count(); }
    void SetLinkToDefaultTimeSettings(bool) override { Count(); }
    void SetMusicalTime(double, int32, int32, int32) override { Count(); }
    IEditProperties* GetProperties() override { return Counted(the<NullProperties>); }
    void SetXmpMetadata(const char16*) override { Count(); }
    void SetVersionDependentValue(int64) override { Count(); }
    void SetSmpteStart(int64) override { Count(); }
    void SetPlayOverlappingClips(bool) override { Count(); }
};

}  // namespace

IEditSession& NullHost() {
    return the<NullSession>;
}

NullHostTally TakeNullHostTally() {
    return std::exchange(tally, {});
}

}  // namespace bench
