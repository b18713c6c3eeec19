#pragma once

#include "reference_host/SessionNode.h"
#include "reference_host/nodes/Files.h"
#include "reference_host/nodes/IdIndex.h"

namespace refhost {

class EditSession final : public Face<tses::IEditSession, model::Session> {
public:
    explicit EditSession(SessionNode& node) : Face(node), node_(node) {}

    void UnusedSlot3() override {}
    tses::IHostLogTarget* GetLogTarget() override { return node_.GetLogTarget(); }
    void SetProgress(kelcore::uint32 done, kelcore::uint32 total, kelcore::uint32 reserved,
                     kelcore::uint32 flag) override {
        node_.Report({done, total, reserved, flag});
    }
    void SetFormatDescription(const kelcore::char16* description) override {
        Value().formatDescription = description;
    }
    void SetSampleRate(kelcore::uint32 samplesPerSecond) override {
        Value().sampleRate = samplesPerSecond;
    }
    void SetChannelCount(kelcore::int32 channels) override { Value().channelCount = channels; }
    void SetDuration(kelcore::int64 samples) override { Value().duration = samples; }
    void SetBitDepth(kelcore::uint32 bits) override { Value().bitDepth = bits; }
    tses::IEditFile* GetFile(kelcore::uint32 id) override;
    tses::IEditVideoTrack* GetVideoTrack(kelcore::uint32 /*id*/) override { return nullptr; }
    tses::IEditAudioTrack* GetAudioTrack(kelcore::uint32 /*id*/) override { return nullptr; }
    tses::IEditMetronomeInfo* GetMetronomeInfo() override { return nullptr; }
    tses::IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override { return nullptr; }
    void SetInputDeviceId(const kelcore::char16* deviceId) override {
        Value().audioDevice.inputDeviceId = deviceId;
    }
    void AddInputPort(kelcore::int32 id, const kelcore::char16* name) override {
        Value().audioDevice.inputPorts.push_back({id, name});
    }
    void SetOutputDeviceId(const kelcore::char16* deviceId) override {
        Value().audioDevice.outputDeviceId = deviceId;
    }
    void AddOutputPort(kelcore::int32 id, const kelcore::char16* name) override {
        Value().audioDevice.outputPorts.push_back({id, name});
    }
    tses::IEditClipGroup* CreateClipGroup(kelcore::uint32 /*id*/) override { return nullptr; }
    void SetSelection(kelcore::int64 /*start*/, kelcore::int64 /*duration*/) override {}
    void SetCtiPosition(kelcore::int64 /*position*/) override {}
    void SetViewState(kelcore::int64 /*horizontalViewStart*/,
                      kelcore::int64 /*horizontalViewDuration*/,
                      kelcore::int32 /*trackControlsWidth*/,
                      kelcore::int32 /*verticalScrollOffset*/) override {}
    void SetTimeFormat(kelcore::int32 /*format*/, kelcore::int32 /*frameRate*/, bool /*ntsc*/,
                       bool /*dropFrame*/, kelcore::int32 /*customFrameRate*/) override {}
    void SetPanMode(bool /*logarithmic*/, double /*panPower*/) override {}
    void SetLinkToDefaultTimeSettings(bool /*linked*/) override {}
    void SetMusicalTime(double /*beatsPerMinute*/, kelcore::int32 /*beatsPerBar*/,
                        kelcore::int32 /*noteLength*/, kelcore::int32 /*subdivisions*/) override {}
    tses::IEditProperties* GetProperties() override { return nullptr; }
    void SetXmpMetadata(const kelcore::char16* /*packet*/) override {}
    void SetVersionDependentValue(kelcore::int64 position) override {
        Value().versionDependentValue = position;
    }
    void SetSmpteStart(kelcore::int64 /*start*/) override {}
    void SetPlayOverlappingClips(bool /*play*/) override {}

private:
    SessionNode& node_;
    IdIndex files_;
};

class QuerySession final : public Face<tses::IQuerySession, model::Session> {
public:
    explicit QuerySession(SessionNode& node) : Face(node), node_(node) {}

    void UnusedSlot3() override {}
    tses::IHostObject* GetContext() override { return this; }
    void GetFormatVersion(kelcore::int32* major, kelcore::int32* minor) override {
        *major = Value().formatVersion.major;
        *minor = Value().formatVersion.minor;
    }
    void SetProgress(kelcore::uint32 done, kelcore::uint32 total, kelcore::uint32 reserved,
                     kelcore::uint32 flag) override {
        node_.Report({done, total, reserved, flag});
    }
    kelcore::uint32 GetSampleRate() override { return Value().sampleRate; }
    kelcore::int32 GetChannelCount() override { return Value().channelCount; }
    kelcore::int64 GetDuration() override { return Value().duration; }
    kelcore::uint32 GetBitDepth() override { return Value().bitDepth; }
    kelcore::uint32 GetFileCount() override { return CountOf(Value().files); }
    tses::IQueryFile* GetFile(kelcore::uint32 index) override;
    kelcore::uint32 GetVideoTrackCount() override { return 0; }
    tses::IQueryVideoTrack* GetVideoTrack(kelcore::uint32 /*index*/) override { return nullptr; }
    kelcore::uint32 GetAudioTrackCount() override { return 0; }
    tses::IQueryAudioTrack* GetAudioTrack(kelcore::uint32 /*index*/) override { return nullptr; }
    kelcore::uint32 GetTrackVisibilityPresetCount() override { return 0; }
    tses::IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(
        kelcore::uint32 /*index*/) override {
        return nullptr;
    }
    tses::IHostString* GetInputDeviceId() override {
        return GiveOut(Value().audioDevice.inputDeviceId);
    }
    kelcore::uint32 GetInputPortCount() override { return CountOf(Value().audioDevice.inputPorts); }
    kelcore::int32 GetInputPortId(kelcore::uint32 index) override {
        return Value().audioDevice.inputPorts.at(index).id;
    }
    tses::IHostString* GetInputPortName(kelcore::uint32 index) override {
        return GiveOut(Value().audioDevice.inputPorts.at(index).name);
    }
    tses::IHostString* GetOutputDeviceId() override {
        return GiveOut(Value().audioDevice.outputDeviceId);
    }
    kelcore::uint32 GetOutputPortCount() override {
        return CountOf(Value().audioDevice.outputPorts);
    }
    kelcore::int32 GetOutputPortId(kelcore::uint32 index) override {
        return Value().audioDevice.outputPorts.at(index).id;
    }
    tses::IHostString* GetOutputPortName(kelcore::uint32 index) override {
        return GiveOut(Value().audioDevice.outputPorts.at(index).name);
    }
    kelcore::uint32 GetClipGroupCount() override { return 0; }
    tses::IQueryClipGroup* GetClipGroup(kelcore::uint32 /*index*/) override { return nullptr; }
    tses::IQueryMetronomeInfo* GetMetronomeInfo() override { return nullptr; }
    void GetSelection(kelcore::int64& /*start*/, kelcore::int64& /*duration*/) override {}
    void GetCtiPosition(kelcore::int64& /*position*/) override {}
    void GetViewState(kelcore::int64& /*horizontalViewStart*/,
                      kelcore::int64& /*horizontalViewDuration*/,
                      kelcore::int32& /*trackControlsWidth*/,
                      kelcore::int32& /*verticalScrollOffset*/) override {}
    void GetTimeFormat(kelcore::int32& /*format*/, kelcore::int32& /*frameRate*/, bool& /*ntsc*/,
                       bool& /*dropFrame*/, kelcore::int32& /*customFrameRate*/) override {}
    void GetPanMode(bool& /*logarithmic*/, double& /*panPower*/) override {}
    bool IsLinkedToDefaultTimeSettings() override { return false; }
    void GetMusicalTime(double& /*beatsPerMinute*/, kelcore::int32& /*beatsPerBar*/,
                        kelcore::int32& /*noteLength*/, kelcore::int32& /*subdivisions*/) override {
    }
    tses::IQueryProperties* GetProperties() override { return nullptr; }
    tses::IHostString* GetXmpMetadata() override { return nullptr; }
    void GetSmpteStart(kelcore::int64& /*start*/) override {}
    bool IsPlayOverlappingClips() override { return false; }

private:
    SessionNode& node_;
};

}  // namespace refhost
