#pragma once

#include <vector>

#include "examples/host/Tracks.h"
#include "host/Files.h"
#include "host/Metronome.h"
#include "host/Session.h"

// The session: format, media, tracks of the audio side, metronome. All else is not kept.

namespace example {

struct FileValues {
    uint32 id = 0;
    Text path;
    Text recoveryId;
    Text handler;
    Text settings;
};

struct EditFile final : Counted<tses::IEditFile> {
    FileValues& values;
    explicit EditFile(FileValues& filled) : values(filled) {}

    void SetPath(const char16* path) override { values.path.value = path; }
    void SetRecoveryId(const char16* id) override { values.recoveryId.value = id; }
    void SetMediaHandler(const char16* id) override { values.handler.value = id; }
    void SetImporterPrivateSettings(const char16* text) override { values.settings.value = text; }
};

struct QueryFile final : Counted<tses::IQueryFile> {
    FileValues& values;
    explicit QueryFile(FileValues& asked) : values(asked) {}

    uint32 GetId() override { return values.id; }
    tses::IHostString* GetPath() override { return &values.path; }
    tses::IHostString* GetRecoveryId() override { return &values.recoveryId; }
    tses::IHostString* GetMediaHandler() override { return &values.handler; }
    tses::IHostString* GetImporterPrivateSettings() override { return &values.settings; }
};

using MediaFile = Thing<FileValues, EditFile, QueryFile>;

struct MetronomeValues {
    bool enabled = false;
    uint32 soundSet = 8;
    std::vector<uint32> pattern;
};

struct EditMetronome final : Counted<tses::IEditMetronomeInfo> {
    MetronomeValues& values;
    explicit EditMetronome(MetronomeValues& filled) : values(filled) {}

    void SetEnabled(bool enabled) override { values.enabled = enabled; }
    void SetSoundSet(uint32 soundSet) override { values.soundSet = soundSet; }
    void SetPattern(const uint32* beats, uint32 count) override {
        values.pattern.assign(beats, beats + count);
    }
    /// Not kept, but must be there: without it a session with the metronome's track is not read.
    tses::IEditAudioTrack* GetTrack() override { return &dropped_.edit; }

private:
    Track dropped_;
};

struct QueryMetronome final : Counted<tses::IQueryMetronomeInfo> {
    MetronomeValues& values;
    explicit QueryMetronome(MetronomeValues& asked) : values(asked) {}

    bool IsEnabled() override { return values.enabled; }
    uint32 GetSoundSet() override { return values.soundSet; }
    uint32 GetPatternLength() override { return CountOf(values.pattern); }
    uint32 GetPatternBeat(uint32 index) override { return values.pattern[index]; }
    tses::IQueryAudioTrack* GetMetronomeTrack() override { return nullptr; }
};

using Metronome = Thing<MetronomeValues, EditMetronome, QueryMetronome>;

struct SessionValues {
    uint32 sampleRate = 0;
    int32 channels = 2;
    int64 duration = 0;
    uint32 bitDepth = 0;
    std::deque<MediaFile> files;
    std::deque<Track> tracks;
    Metronome metronome;
};

/// The thing with this id, made if need be.
template <class Things>
auto& ThingWithId(Things& things, uint32 id) {
    for (auto& thing : things) {
        if (thing.values.id == id) {
            return thing;
        }
    }
    auto& thing = things.emplace_back();
    thing.values.id = id;
    return thing;
}

struct EditSession final : Counted<tses::IEditSession> {
    SessionValues& values;
    LogTarget log;
    explicit EditSession(SessionValues& filled) : values(filled) {}

    void UnusedSlot3() override {}
    tses::IHostLogTarget* GetLogTarget() override { return &log; }
    void SetProgress(uint32 /*done*/, uint32 /*total*/, uint32 /*reserved*/,
                     uint32 /*flag*/) override {}
    void SetFormatDescription(const char16* /*description*/) override {}
    void SetSampleRate(uint32 rate) override { values.sampleRate = rate; }
    void SetChannelCount(int32 channels) override { values.channels = channels; }
    void SetDuration(int64 samples) override { values.duration = samples; }
    void SetBitDepth(uint32 bits) override { values.bitDepth = bits; }
    tses::IEditFile* GetFile(uint32 id) override { return &ThingWithId(values.files, id).edit; }
    tses::IEditVideoTrack* GetVideoTrack(uint32 /*id*/) override { return nullptr; }
    tses::IEditAudioTrack* GetAudioTrack(uint32 id) override {
        return &ThingWithId(values.tracks, id).edit;
    }
    tses::IEditMetronomeInfo* GetMetronomeInfo() override { return &values.metronome.edit; }
    tses::IEditTrackVisibilityPreset* CreateTrackVisibilityPreset() override { return nullptr; }
    void SetInputDeviceId(const char16* /*id*/) override {}
    void AddInputPort(int32 /*id*/, const char16* /*name*/) override {}
    void SetOutputDeviceId(const char16* /*id*/) override {}
    void AddOutputPort(int32 /*id*/, const char16* /*name*/) override {}
    tses::IEditClipGroup* CreateClipGroup(uint32 /*id*/) override { return nullptr; }
    void SetSelection(int64 /*start*/, int64 /*duration*/) override {}
    void SetCtiPosition(int64 /*position*/) override {}
    void SetViewState(int64 /*start*/, int64 /*duration*/, int32 /*width*/,
                      int32 /*offset*/) override {}
    void SetTimeFormat(int32 /*format*/, int32 /*rate*/, bool /*ntsc*/, bool /*drop*/,
                       int32 /*customRate*/) override {}
    void SetPanMode(bool /*logarithmic*/, double /*power*/) override {}
    void SetLinkToDefaultTimeSettings(bool /*linked*/) override {}
    void SetMusicalTime(double /*tempo*/, int32 /*beats*/, int32 /*note*/,
                        int32 /*subdivisions*/) override {}
    tses::IEditProperties* GetProperties() override { return nullptr; }
    void SetXmpMetadata(const char16* /*packet*/) override {}
    void SetVersionDependentValue(int64 /*position*/) override {}
    void SetSmpteStart(int64 /*start*/) override {}
    void SetPlayOverlappingClips(bool /*play*/) override {}
};

struct QuerySession final : Counted<tses::IQuerySession> {
    SessionValues& values;
    explicit QuerySession(SessionValues& asked) : values(asked) {}

    void UnusedSlot3() override {}
    tses::IHostObject* GetContext() override { return nullptr; }
    void GetFormatVersion(int32* major, int32* minor) override {
        *major = 1;
        *minor = 5;
    }
    void SetProgress(uint32 /*done*/, uint32 /*total*/, uint32 /*reserved*/,
                     uint32 /*flag*/) override {}
    uint32 GetSampleRate() override { return values.sampleRate; }
    int32 GetChannelCount() override { return values.channels; }
    int64 GetDuration() override { return values.duration; }
    uint32 GetBitDepth() override { return values.bitDepth; }
    uint32 GetFileCount() override { return CountOf(values.files); }
    tses::IQueryFile* GetFile(uint32 index) override { return &values.files[index].query; }
    uint32 GetVideoTrackCount() override { return 0; }
    tses::IQueryVideoTrack* GetVideoTrack(uint32 /*index*/) override { return nullptr; }
    uint32 GetAudioTrackCount() override { return CountOf(values.tracks); }
    tses::IQueryAudioTrack* GetAudioTrack(uint32 index) override {
        return &values.tracks[index].query;
    }
    uint32 GetTrackVisibilityPresetCount() override { return 0; }
    tses::IQueryTrackVisibilityPreset* GetTrackVisibilityPreset(uint32 /*index*/) override {
        return nullptr;
    }
    tses::IHostString* GetInputDeviceId() override { return nullptr; }
    uint32 GetInputPortCount() override { return 0; }
    int32 GetInputPortId(uint32 /*index*/) override { return 0; }
    tses::IHostString* GetInputPortName(uint32 /*index*/) override { return nullptr; }
    tses::IHostString* GetOutputDeviceId() override { return nullptr; }
    uint32 GetOutputPortCount() override { return 0; }
    int32 GetOutputPortId(uint32 /*index*/) override { return 0; }
    tses::IHostString* GetOutputPortName(uint32 /*index*/) override { return nullptr; }
    uint32 GetClipGroupCount() override { return 0; }
    tses::IQueryClipGroup* GetClipGroup(uint32 /*index*/) override { return nullptr; }
    tses::IQueryMetronomeInfo* GetMetronomeInfo() override { return &values.metronome.query; }
    void GetSelection(int64& /*start*/, int64& /*duration*/) override {}
    void GetCtiPosition(int64& /*position*/) override {}
    void GetViewState(int64& /*start*/, int64& /*duration*/, int32& /*width*/,
                      int32& /*offset*/) override {}
    void GetTimeFormat(int32& /*format*/, int32& /*rate*/, bool& /*ntsc*/, bool& /*drop*/,
                       int32& /*customRate*/) override {}
    void GetPanMode(bool& /*logarithmic*/, double& /*power*/) override {}
    bool IsLinkedToDefaultTimeSettings() override { return true; }
    void GetMusicalTime(double& /*tempo*/, int32& /*beats*/, int32& /*note*/,
                        int32& /*subdivisions*/) override {}
    tses::IQueryProperties* GetProperties() override { return nullptr; }
    tses::IHostString* GetXmpMetadata() override { return nullptr; }
    void GetSmpteStart(int64& /*start*/) override {}
    bool IsPlayOverlappingClips() override { return false; }
};

using Session = Thing<SessionValues, EditSession, QuerySession>;

}  // namespace example
