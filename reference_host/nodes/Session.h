#pragma once

#include "reference_host/SessionNode.h"
#include "reference_host/nodes/AudioTracks.h"
#include "reference_host/nodes/ClipGroups.h"
#include "reference_host/nodes/Files.h"
#include "reference_host/nodes/KeyIndex.h"
#include "reference_host/nodes/Metronome.h"
#include "reference_host/nodes/Properties.h"
#include "reference_host/nodes/TrackVisibility.h"
#include "reference_host/nodes/VideoTracks.h"

namespace refhost {

class EditSession final : public Face<tses::IEditSession, orvo::Session> {
    /// The thing with this id, made if it is missing; null for the id that names nothing.
    template <class Child, auto member, class Index>
    auto* FoundOrAdded(Index& index, kelcore::uint32 id) {
        Owner().ReportPart();
        const auto place = [&] { return index.FindOrAdd(Value().*member, id); };
        return id == orvo::kNoId ? nullptr : &Owner().ElementNode<Child, member>(place()).Edit();
    }

public:
    explicit EditSession(SessionNode& node) : Face(node), node_(node) {}

    void UnusedSlot3() override {}
    tses::IHostLogTarget* GetLogTarget() override { return node_.GetLogTarget(); }
    void SetProgress(kelcore::uint32 done, kelcore::uint32 total, kelcore::uint32 reserved,
                     kelcore::uint32 flag) override {
        node_.Report({done, total, reserved, flag});
    }
    void SetFormatDescription(const kelcore::char16* description) override {
        Value().formatDescription = kelcore::UTF16to8(description);
    }
    void SetSampleRate(kelcore::uint32 samplesPerSecond) override {
        Value().sampleRate = samplesPerSecond;
    }
    void SetChannelCount(kelcore::int32 channels) override {
        Value().audioChannelType = static_cast<orvo::ChannelType>(channels);
    }
    void SetDuration(kelcore::int64 samples) override { Value().duration = samples; }
    void SetBitDepth(kelcore::uint32 bits) override { Value().bitDepth = bits; }
    tses::IEditFile* GetFile(kelcore::uint32 id) override {
        return FoundOrAdded<FileNode, &orvo::Session::files>(files_, id);
    }
    tses::IEditVideoTrack* GetVideoTrack(kelcore::uint32 id) override {
        return FoundOrAdded<VideoTrackNode, &orvo::Session::videoTracks>(videoTracks_, id);
    }
    tses::IEditAudioTrack* GetAudioTrack(kelcore::uint32 id) override {
        return FoundOrAdded<AudioTrackNode, &orvo::Session::audioTracks>(audioTracks_, id);
    }
    tses::IEditMetronomeInfo* GetMetronomeInfo() override {
        return Made<MetronomeNode, &orvo::Session::metronome>();
    }
    tses::IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override {
        return Appended<VisibilityPresetNode, &orvo::Session::trackVisibilityPresets>();
    }
    void SetInputDeviceId(const kelcore::char16* deviceId) override {
        Value().audioDevice.inputDeviceId = kelcore::UTF16to8(deviceId);
    }
    void AddInputPort(kelcore::int32 id, const kelcore::char16* name) override {
        Value().audioDevice.inputPorts.push_back({id, kelcore::UTF16to8(name)});
    }
    void SetOutputDeviceId(const kelcore::char16* deviceId) override {
        Value().audioDevice.outputDeviceId = kelcore::UTF16to8(deviceId);
    }
    void AddOutputPort(kelcore::int32 id, const kelcore::char16* name) override {
        Value().audioDevice.outputPorts.push_back({id, kelcore::UTF16to8(name)});
    }
    tses::IEditClipGroup* CreateClipGroup(kelcore::uint32 id) override {
        tses::IEditClipGroup* const group = Appended<ClipGroupNode, &orvo::Session::clipGroups>();
        Value().clipGroups.back().id = id;
        return group;
    }
    void SetSelection(kelcore::int64 start, kelcore::int64 duration) override {
        Value().selection = {start, duration};
    }
    void SetCtiPosition(kelcore::int64 position) override { Value().ctiPosition = position; }
    void SetViewState(kelcore::int64 horizontalViewStart, kelcore::int64 horizontalViewDuration,
                      kelcore::int32 trackControlsWidth,
                      kelcore::int32 verticalScrollOffset) override {
        Value().viewState = {horizontalViewStart, horizontalViewDuration, trackControlsWidth,
                             verticalScrollOffset};
    }
    void SetTimeFormat(kelcore::int32 format, kelcore::int32 frameRate, bool ntsc, bool dropFrame,
                       kelcore::int32 customFrameRate) override {
        orvo::TimeFormat& stored = Value().timeFormat;
        stored = {orvo::TimeDisplay{format}, frameRate, ntsc, dropFrame, customFrameRate,
                  stored.linkedToDefaults};
    }
    void SetPanMode(bool logarithmic, double panPower) override {
        Value().mixingOptions.panLogarithmic = logarithmic;
        Value().mixingOptions.panPower = panPower;
    }
    void SetLinkToDefaultTimeSettings(bool linked) override {
        Value().timeFormat.linkedToDefaults = linked;
    }
    void SetMusicalTime(double beatsPerMinute, kelcore::int32 beatsPerBar,
                        kelcore::int32 noteLength, kelcore::int32 subdivisions) override {
        Value().musicalTime = {beatsPerMinute, beatsPerBar, noteLength, subdivisions};
    }
    tses::IEditProperties* GetProperties() override {
        return Made<PropertiesNode, &orvo::Session::properties>();
    }
    void SetXmpMetadata(const kelcore::char16* packet) override {
        Value().xmpMetadata = kelcore::UTF16to8(packet);
    }
    void SetVersionDependentValue(kelcore::int64 position) override {
        Value().versionDependentValue = position;
    }
    void SetSmpteStart(kelcore::int64 start) override { Value().smpteStart = start; }
    void SetPlayOverlappingClips(bool play) override {
        Value().mixingOptions.playOverlappingClips = play;
    }

private:
    SessionNode& node_;
    KeyIndex<&orvo::File::id> files_;
    KeyIndex<&orvo::VideoTrack::id> videoTracks_;
    KeyIndex<&orvo::AudioTrack::id> audioTracks_;
};

class QuerySession final : public Face<tses::IQuerySession, orvo::Session> {
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
    kelcore::int32 GetChannelCount() override {
        return static_cast<kelcore::int32>(Value().audioChannelType);
    }
    kelcore::int64 GetDuration() override { return Value().duration; }
    kelcore::uint32 GetBitDepth() override { return Value().bitDepth; }
    kelcore::uint32 GetFileCount() override { return CountOf(Value().files); }
    tses::IQueryFile* GetFile(kelcore::uint32 index) override {
        return FoundAt<FileNode, &orvo::Session::files>(index);
    }
    kelcore::uint32 GetVideoTrackCount() override { return CountOf(Value().videoTracks); }
    tses::IQueryVideoTrack* GetVideoTrack(kelcore::uint32 index) override {
        return FoundAt<VideoTrackNode, &orvo::Session::videoTracks>(index);
    }
    kelcore::uint32 GetAudioTrackCount() override { return CountOf(Value().audioTracks); }
    tses::IQueryAudioTrack* GetAudioTrack(kelcore::uint32 index) override {
        node_.ReportTrack(index, GetAudioTrackCount());
        return FoundAt<AudioTrackNode, &orvo::Session::audioTracks>(index);
    }
    kelcore::uint32 GetTrackVisibilityPresetCount() override {
        return CountOf(Value().trackVisibilityPresets);
    }
    tses::IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(kelcore::uint32 index) override {
        return FoundAt<VisibilityPresetNode, &orvo::Session::trackVisibilityPresets>(index);
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
    kelcore::uint32 GetClipGroupCount() override { return CountOf(Value().clipGroups); }
    tses::IQueryClipGroup* GetClipGroup(kelcore::uint32 index) override {
        return FoundAt<ClipGroupNode, &orvo::Session::clipGroups>(index);
    }
    tses::IQueryMetronomeInfo* GetMetronomeInfo() override {
        return Found<MetronomeNode, &orvo::Session::metronome>();
    }
    void GetSelection(kelcore::int64& start, kelcore::int64& duration) override {
        start = Value().selection.start;
        duration = Value().selection.duration;
    }
    void GetCtiPosition(kelcore::int64& position) override { position = Value().ctiPosition; }
    void GetViewState(kelcore::int64& horizontalViewStart, kelcore::int64& horizontalViewDuration,
                      kelcore::int32& trackControlsWidth,
                      kelcore::int32& verticalScrollOffset) override {
        const orvo::ViewState& view = Value().viewState;
        horizontalViewStart = view.horizontalViewStart;
        horizontalViewDuration = view.horizontalViewDuration;
        trackControlsWidth = view.trackControlsWidth;
        verticalScrollOffset = view.verticalScrollOffset;
    }
    void GetTimeFormat(kelcore::int32& format, kelcore::int32& frameRate, bool& ntsc,
                       bool& dropFrame, kelcore::int32& customFrameRate) override {
        const orvo::TimeFormat& stored = Value().timeFormat;
        format = NumberOf(stored.format);
        frameRate = stored.frameRate;
        ntsc = stored.ntsc;
        dropFrame = stored.dropFrame;
        customFrameRate = stored.customFrameRate;
    }
    void GetPanMode(bool& logarithmic, double& panPower) override {
        logarithmic = Value().mixingOptions.panLogarithmic;
        panPower = Value().mixingOptions.panPower;
    }
    bool IsLinkedToDefaultTimeSettings() override { return Value().timeFormat.linkedToDefaults; }
    void GetMusicalTime(double& beatsPerMinute, kelcore::int32& beatsPerBar,
                        kelcore::int32& noteLength, kelcore::int32& subdivisions) override {
        const orvo::MusicalTime& time = Value().musicalTime;
        beatsPerMinute = time.beatsPerMinute;
        beatsPerBar = time.beatsPerBar;
        noteLength = time.noteLength;
        subdivisions = time.subdivisions;
    }
    tses::IQueryProperties* GetProperties() override {
        return Found<PropertiesNode, &orvo::Session::properties>();
    }
    tses::IHostString* GetXmpMetadata() override { return GiveOut(Value().xmpMetadata); }
    void GetSmpteStart(kelcore::int64& start) override { start = Value().smpteStart; }
    bool IsPlayOverlappingClips() override { return Value().mixingOptions.playOverlappingClips; }

private:
    SessionNode& node_;
};

}  // namespace refhost
