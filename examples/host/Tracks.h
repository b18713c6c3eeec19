#pragma once

#include <deque>

#include "examples/host/Host.h"

// Tracks and clips: the values that this host keeps, and the two objects that the plug-in sees of
// each: one to fill, one to query. This host does not keep what these objects do not override.

namespace example {

template <class Container>
uint32 CountOf(const Container& container) {
    return static_cast<uint32>(container.size());
}

struct ClipValues {
    uint32 id = 0;
    uint32 file = 0;
    int64 inPoint = 0;
    int64 duration = 0;
    int64 start = 0;
    double hue = 0;
    bool looped = false;
    bool offline = false;
    bool selected = false;
    bool locked = false;
    bool autoCrossfade = false;
    int32 order = 0;
    int32 head = -1;
    int32 tail = -1;
    tses::HostText name;
};

struct EditClip final : tses::EditAudioClipBase {
    ClipValues& values;
    explicit EditClip(ClipValues& filled) : values(filled) {}

    void SetFileID(uint32 file) override { values.file = file; }
    void SetSourceInPoint(int64 sample) override { values.inPoint = sample; }
    void SetDuration(int64 samples) override { values.duration = samples; }
    void SetStartPoint(int64 sample) override { values.start = sample; }
    void SetHue(double hue) override { values.hue = hue; }
    void SetLooped(bool looped) override { values.looped = looped; }
    void SetName(const char16* name) override { values.name.value = name; }
    void SetOffline(bool offline) override { values.offline = offline; }
    void SetSelected(bool selected) override { values.selected = selected; }
    void SetZOrder(int32 order) override { values.order = order; }
    void SetLockedInTime(bool locked) override { values.locked = locked; }
    void SetClipAutoCrossfade(bool automatic) override { values.autoCrossfade = automatic; }
    void SetCrossFadeHeadClipID(int32 clip) override { values.head = clip; }
    void SetCrossFadeTailClipID(int32 clip) override { values.tail = clip; }
};

struct QueryClip final : tses::QueryAudioClipBase {
    ClipValues& values;
    explicit QueryClip(ClipValues& asked) : values(asked) {}

    uint32 GetID() override { return values.id; }
    uint32 GetFileID() override { return values.file; }
    int64 GetSourceInPoint() override { return values.inPoint; }
    int64 GetDuration() override { return values.duration; }
    int64 GetStartPoint() override { return values.start; }
    double GetHue() override { return values.hue; }
    bool GetLooped() override { return values.looped; }
    tses::IHostString* GetName() override { return &values.name; }
    bool GetOffline() override { return values.offline; }
    bool GetSelected() override { return values.selected; }
    int32 GetZOrder() override { return values.order; }
    bool GetLockedInTime() override { return values.locked; }
    int32 GetCrossFadeHeadClipID() override { return values.head; }
    int32 GetCrossFadeTailClipID() override { return values.tail; }
    bool GetClipAutoCrossfade() override { return values.autoCrossfade; }
};

/// The values of a thing in the session, with its two objects. It must not move.
template <class Values, class Edit, class Query>
struct Thing {
    Values values;
    Edit edit{values};
    Query query{values};
};
using Clip = Thing<ClipValues, EditClip, QueryClip>;

struct TrackValues {
    uint32 id = 0;
    uint32 index = 0;
    uint32 kind = 1;
    double hue = -1;
    int32 height = 0;
    uint32 channels = 0;
    int32 outputTrack = -1;
    int32 input = -1;
    int32 hardwareOutput = -1;
    int32 automationMode = 1;
    bool selected = false;
    bool minimized = false;
    bool phaseInverted = false;
    bool preRendered = false;
    bool sumToMono = false;
    bool lanesOpen = false;
    bool visible = true;
    bool solo = false;
    bool armed = false;
    bool monitoring = false;
    bool soloSafe = false;
    tses::HostText name;
    tses::HostText preRenderedFile;
    std::deque<Clip> clips;
};

struct EditTrack final : tses::EditAudioTrackBase {
    TrackValues& values;
    explicit EditTrack(TrackValues& filled) : values(filled) {}

    tses::IEditAudioClip* CreateAudioClip(uint32 id) override {
        Clip& clip = values.clips.emplace_back();
        clip.values.id = id;
        return &clip.edit;
    }
    void SetIndex(uint32 index) override { values.index = index; }
    void SetKind(uint32 kind) override { values.kind = kind; }
    void SetSelected(bool selected) override { values.selected = selected; }
    void SetHue(double hue) override { values.hue = hue; }
    void SetMinimized(bool minimized) override { values.minimized = minimized; }
    void SetName(const char16* name) override { values.name.value = name; }
    void SetHeight(int32 height) override { values.height = height; }
    void SetPhaseInverted(bool inverted) override { values.phaseInverted = inverted; }
    void SetPreRendered(bool preRendered) override { values.preRendered = preRendered; }
    void SetSumToMono(bool sumToMono) override { values.sumToMono = sumToMono; }
    void SetPreRenderedFile(const char16* path) override { values.preRenderedFile.value = path; }
    void SetAutomationLaneOpenState(bool open) override { values.lanesOpen = open; }
    void SetVisible(bool visible) override { values.visible = visible; }
    void SetAudioChannelType(uint32 channels) override { values.channels = channels; }
    void SetSolo(bool solo) override { values.solo = solo; }
    void SetRecordArmed(bool armed) override { values.armed = armed; }
    void SetMonitoring(bool monitoring) override { values.monitoring = monitoring; }
    void SetSoloSafe(bool soloSafe) override { values.soloSafe = soloSafe; }
    void SetOutputTrack(int32 track) override { values.outputTrack = track; }
    void SetInput(int32 port) override { values.input = port; }
    void SetHardwareOutput(int32 port) override { values.hardwareOutput = port; }
    void SetAutomationMode(int32 mode) override { values.automationMode = mode; }
};

struct QueryTrack final : tses::QueryAudioTrackBase {
    TrackValues& values;
    explicit QueryTrack(TrackValues& asked) : values(asked) {}

    uint32 GetClipCount() override { return CountOf(values.clips); }
    tses::IQueryAudioClip* GetClip(uint32 index) override { return &values.clips[index].query; }
    uint32 GetId() override { return values.id; }
    uint32 GetIndex() override { return values.index; }
    uint32 GetKind() override { return values.kind; }
    bool IsSelected() override { return values.selected; }
    double GetHue() override { return values.hue; }
    tses::IHostString* GetName() override { return &values.name; }
    int32 GetHeight() override { return values.height; }
    bool IsMinimized() override { return values.minimized; }
    bool IsPhaseInverted() override { return values.phaseInverted; }
    bool IsPreRendered() override { return values.preRendered; }
    bool IsSumToMono() override { return values.sumToMono; }
    tses::IHostString* GetPreRenderedFile() override { return &values.preRenderedFile; }
    bool IsAutomationLaneOpen() override { return values.lanesOpen; }
    bool IsVisible() override { return values.visible; }
    uint32 GetAudioChannelType() override { return values.channels; }
    bool IsSolo() override { return values.solo; }
    bool IsRecordArmed() override { return values.armed; }
    bool IsMonitoring() override { return values.monitoring; }
    bool IsSoloSafe() override { return values.soloSafe; }
    int32 GetOutputTrackId() override { return values.outputTrack; }
    int32 GetInputId() override { return values.input; }
    int32 GetHardwareOutputId() override { return values.hardwareOutput; }
    int32 GetAutomationMode() override { return values.automationMode; }
};

using Track = Thing<TrackValues, EditTrack, QueryTrack>;

}  // namespace example
