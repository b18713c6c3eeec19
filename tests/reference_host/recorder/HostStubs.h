#pragma once

#include <string>
#include <utility>

#include "host/AudioTracks.h"
#include "host/Effects.h"
#include "host/Files.h"
#include "host/LogTarget.h"
#include "host/Metronome.h"
#include "host/Session.h"

/// Host objects that do nothing and return nothing, for tests to override what they are about.
namespace refhost {

/// Counts its references and lives as long as the test wants.
template <class Interface>
class Counted : public Interface {
public:
    virtual ~Counted() = default;
    void AddReference() override { ++references; }
    void Release() override { --references; }

    int references = 0;
};

class StubString final : public Counted<tses::IHostString> {
public:
    explicit StubString(std::u16string text) : text_(std::move(text)) {}
    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return text_.data(); }
    kelcore::uint32 GetLength() override { return static_cast<kelcore::uint32>(text_.size()); }

private:
    std::u16string text_;
};

class StubHostLogTarget : public Counted<tses::IHostLogTarget> {
public:
    void UnusedSlot3() override {}
    void UnusedSlot4() override {}
    void UnusedSlot5() override {}
    void UnusedSlot6() override {}
    void UnusedSlot7() override {}
    void UnusedSlot8() override {}
    void LogMessage(tses::IHostString*) override {}
};

class StubEditSession : public Counted<tses::IEditSession> {
public:
    void UnusedSlot3() override {}
    tses::IHostLogTarget* GetLogTarget() override { return {}; }
    void SetProgress(kelcore::uint32, kelcore::uint32, kelcore::uint32, kelcore::uint32) override {}
    void SetFormatDescription(const kelcore::char16*) override {}
    void SetSampleRate(kelcore::uint32) override {}
    void SetChannelCount(kelcore::int32) override {}
    void SetDuration(kelcore::int64) override {}
    void SetBitDepth(kelcore::uint32) override {}
    tses::IEditFile* GetFile(kelcore::uint32) override { return {}; }
    tses::IEditVideoTrack* GetVideoTrack(kelcore::uint32) override { return {}; }
    tses::IEditAudioTrack* GetAudioTrack(kelcore::uint32) override { return {}; }
    tses::IEditMetronomeInfo* GetMetronomeInfo() override { return {}; }
    tses::IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override { return {}; }
    void SetInputDeviceId(const kelcore::char16*) override {}
    void AddInputPort(kelcore::int32, const kelcore::char16*) override {}
    void SetOutputDeviceId(const kelcore::char16*) override {}
    void AddOutputPort(kelcore::int32, const kelcore::char16*) override {}
    tses::IEditClipGroup* CreateClipGroup(kelcore::uint32) override { return {}; }
    void SetSelection(kelcore::int64, kelcore::int64) override {}
    void SetCtiPosition(kelcore::int64) override {}
    void SetViewState(kelcore::int64, kelcore::int64, kelcore::int32, kelcore::int32) override {}
    void SetTimeFormat(kelcore::int32, kelcore::int32, bool, bool, kelcore::int32) override {}
    void SetPanMode(bool, double) override {}
    void SetLinkToDefaultTimeSettings(bool) override {}
    void SetMusicalTime(double, kelcore::int32, kelcore::int32, kelcore::int32) override {}
    tses::IEditProperties* GetProperties() override { return {}; }
    void SetXmpMetadata(const kelcore::char16*) override {}
    void SetVersionDependentValue(kelcore::int64) override {}
    void SetSmpteStart(kelcore::int64) override {}
    void SetPlayOverlappingClips(bool) override {}
};

class StubEditFile : public Counted<tses::IEditFile> {
public:
    void SetPath(const kelcore::char16*) override {}
    void SetRecoveryId(const kelcore::char16*) override {}
    void SetMediaHandler(const kelcore::char16*) override {}
    void SetImporterPrivateSettings(const kelcore::char16*) override {}
};

class StubEditAudioTrack : public Counted<tses::IEditAudioTrack> {
public:
    tses::IEditAudioClip* CreateAudioClip(kelcore::uint32) override { return {}; }
    tses::IEditMIDIClipList* GetMIDIClipList() override { return {}; }
};

class StubEditAudioTrackPrivate : public Counted<tses::IEditAudioTrackPrivate> {
public:
    tses::IEditAudioClip* CreateAudioClip(kelcore::uint32) override { return {}; }
    tses::IEditMIDIClipList* GetMIDIClipList() override { return {}; }
    void SetIndex(kelcore::uint32) override {}
    void SetKind(kelcore::uint32) override {}
    void SetSelected(bool) override {}
    void SetHue(double) override {}
    void SetMinimized(bool) override {}
    void SetName(const kelcore::char16*) override {}
    void SetHeight(kelcore::int32) override {}
    void SetPhaseInverted(bool) override {}
    void SetPreRendered(bool) override {}
    void SetSumToMono(bool) override {}
    void SetPreRenderedFile(const kelcore::char16*) override {}
    void SetAutomationLaneOpenState(bool) override {}
    void SetVisible(bool) override {}
    tses::IEditInstrumentTrack* GetInstrument() override { return {}; }
    void SetAudioChannelType(kelcore::uint32) override {}
    void SetSolo(bool) override {}
    void SetRecordArmed(bool) override {}
    void SetMonitoring(bool) override {}
    void SetSoloSafe(bool) override {}
    void SetOutputTrack(kelcore::int32) override {}
    void SetInput(kelcore::int32) override {}
    void SetHardwareOutput(kelcore::int32) override {}
    tses::IEditComponent* GetFaderComponent(const kelcore::char16*) override { return {}; }
    tses::IEditComponent* GetMuteComponent(const kelcore::char16*) override { return {}; }
    tses::IEditComponent* GetPanComponent(const kelcore::char16*) override { return {}; }
    tses::IEditComponent* GetEQComponent(const kelcore::char16*) override { return {}; }
    void SetAutomationMode(kelcore::int32) override {}
    tses::IEditSendList* GetSendList() override { return {}; }
    tses::IEditEffectsRack* GetEffectsRack() override { return {}; }
    void SetEditParameter(kelcore::uint32, kelcore::uint32) override {}
};

class StubEditMetronomeInfo : public Counted<tses::IEditMetronomeInfo> {
public:
    void SetEnabled(bool) override {}
    void SetSoundSet(kelcore::uint32) override {}
    void SetPattern(const kelcore::uint32*, kelcore::uint32) override {}
    tses::IEditAudioTrack* GetTrack() override { return {}; }
};

class StubEditMetronomeInfoPrivate : public Counted<tses::IEditMetronomeInfoPrivate> {
public:
    void SetEnabled(bool) override {}
    void SetSoundSet(kelcore::uint32) override {}
    void SetPattern(const kelcore::uint32*, kelcore::uint32) override {}
    tses::IEditAudioTrack* GetTrack() override { return {}; }
    tses::IEditGlobalTrackInfo* GetGlobalTrackInfo() override { return {}; }
};

class StubEditEffectsRack : public Counted<tses::IEditEffectsRack> {
public:
    tses::IEditComponent* GetMixComponent() override { return {}; }
    tses::IEditComponent* GetInputComponent() override { return {}; }
    tses::IEditComponent* GetOutputComponent() override { return {}; }
    void SetPreFader(bool) override {}
    tses::IEditEffectsSlot* AddSlot() override { return {}; }
};

class StubEditComponent : public Counted<tses::IEditComponent> {
public:
    void SetComponentID(const kelcore::char16*) override {}
    void SetName(const kelcore::char16*) override {}
    void SetParameterValue(kelcore::uint32, float) override {}
    void SetParameterName(kelcore::uint32, const kelcore::char16*) override {}
    tses::IEditAutomationLane* GetParameterAutomation(kelcore::uint32) override { return {}; }
    void SetPresetChunk(const kelcore::byte*, kelcore::uint32) override {}
    void SetEditorVisible(bool) override {}
    void SetEditorRect(kelcore::int32, kelcore::int32, kelcore::int32, kelcore::int32) override {}
    void SetPowered(bool) override {}
    void SetParameterSafeDuringWrite(kelcore::uint32, bool) override {}
    void SetComponentGuid(const kelcore::char16*) override {}
    void SetPresetName(const kelcore::char16*) override {}
};

class StubQuerySession : public Counted<tses::IQuerySession> {
public:
    void UnusedSlot3() override {}
    tses::IHostObject* GetContext() override { return {}; }
    void GetFormatVersion(kelcore::int32*, kelcore::int32*) override {}
    void SetProgress(kelcore::uint32, kelcore::uint32, kelcore::uint32, kelcore::uint32) override {}
    kelcore::uint32 GetSampleRate() override { return {}; }
    kelcore::int32 GetChannelCount() override { return {}; }
    kelcore::int64 GetDuration() override { return {}; }
    kelcore::uint32 GetBitDepth() override { return {}; }
    kelcore::uint32 GetFileCount() override { return {}; }
    tses::IQueryFile* GetFile(kelcore::uint32) override { return {}; }
    kelcore::uint32 GetVideoTrackCount() override { return {}; }
    tses::IQueryVideoTrack* GetVideoTrack(kelcore::uint32) override { return {}; }
    kelcore::uint32 GetAudioTrackCount() override { return {}; }
    tses::IQueryAudioTrack* GetAudioTrack(kelcore::uint32) override { return {}; }
    kelcore::uint32 GetTrackVisibilityPresetCount() override { return {}; }
    tses::IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(kelcore::uint32) override {
        return {};
    }
    tses::IHostString* GetInputDeviceId() override { return {}; }
    kelcore::uint32 GetInputPortCount() override { return {}; }
    kelcore::int32 GetInputPortId(kelcore::uint32) override { return {}; }
    tses::IHostString* GetInputPortName(kelcore::uint32) override { return {}; }
    tses::IHostString* GetOutputDeviceId() override { return {}; }
    kelcore::uint32 GetOutputPortCount() override { return {}; }
    kelcore::int32 GetOutputPortId(kelcore::uint32) override { return {}; }
    tses::IHostString* GetOutputPortName(kelcore::uint32) override { return {}; }
    kelcore::uint32 GetClipGroupCount() override { return {}; }
    tses::IQueryClipGroup* GetClipGroup(kelcore::uint32) override { return {}; }
    tses::IQueryMetronomeInfo* GetMetronomeInfo() override { return {}; }
    void GetSelection(kelcore::int64&, kelcore::int64&) override {}
    void GetCtiPosition(kelcore::int64&) override {}
    void GetViewState(kelcore::int64&, kelcore::int64&, kelcore::int32&, kelcore::int32&) override {
    }
    void GetTimeFormat(kelcore::int32&, kelcore::int32&, bool&, bool&, kelcore::int32&) override {}
    void GetPanMode(bool&, double&) override {}
    bool IsLinkedToDefaultTimeSettings() override { return {}; }
    void GetMusicalTime(double&, kelcore::int32&, kelcore::int32&, kelcore::int32&) override {}
    tses::IQueryProperties* GetProperties() override { return {}; }
    tses::IHostString* GetXmpMetadata() override { return {}; }
    void GetSmpteStart(kelcore::int64&) override {}
    bool IsPlayOverlappingClips() override { return {}; }
};

}  // namespace refhost
