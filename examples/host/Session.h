#pragma once

#include <vector>

#include "examples/host/Tracks.h"

// The session: format, media, tracks of the audio side, metronome. The bases drop everything else.

namespace example {

struct FileValues {
    uint32 id = 0;
    tses::HostText path;
    tses::HostText recoveryId;
    tses::HostText handler;
    tses::HostText settings;
};

struct EditFile final : tses::EditFileBase {
    FileValues& values;
    explicit EditFile(FileValues& filled) : values(filled) {}

    void SetPath(const char16* path) override { values.path.value = path; }
    void SetRecoveryId(const char16* id) override { values.recoveryId.value = id; }
    void SetMediaHandler(const char16* id) override { values.handler.value = id; }
    void SetImporterPrivateSettings(const char16* text) override { values.settings.value = text; }
};

struct QueryFile final : tses::QueryFileBase {
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

struct EditMetronome final : tses::EditMetronomeInfoBase {
    MetronomeValues& values;
    explicit EditMetronome(MetronomeValues& filled) : values(filled) {}

    void SetEnabled(bool enabled) override { values.enabled = enabled; }
    void SetSoundSet(uint32 soundSet) override { values.soundSet = soundSet; }
    void SetPattern(const uint32* beats, uint32 count) override {
        values.pattern.assign(beats, beats + count);
    }
    /// Not kept, but must not be null: a session with a metronome track could not be read.
    tses::IEditAudioTrack* GetTrack() override { return &dropped_.edit; }

private:
    Track dropped_;
};

struct QueryMetronome final : tses::QueryMetronomeInfoBase {
    MetronomeValues& values;
    explicit QueryMetronome(MetronomeValues& asked) : values(asked) {}

    bool IsEnabled() override { return values.enabled; }
    uint32 GetSoundSet() override { return values.soundSet; }
    uint32 GetPatternLength() override { return CountOf(values.pattern); }
    uint32 GetPatternBeat(uint32 index) override { return values.pattern[index]; }
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

/// The thing with this id, added if it is missing.
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

struct EditSession final : tses::EditSessionBase {
    SessionValues& values;
    LogTarget log;
    explicit EditSession(SessionValues& filled) : values(filled) {}

    tses::IHostLogTarget* GetLogTarget() override { return &log; }
    void SetSampleRate(uint32 rate) override { values.sampleRate = rate; }
    void SetChannelCount(int32 channels) override { values.channels = channels; }
    void SetDuration(int64 samples) override { values.duration = samples; }
    void SetBitDepth(uint32 bits) override { values.bitDepth = bits; }
    tses::IEditFile* GetFile(uint32 id) override { return &ThingWithId(values.files, id).edit; }
    tses::IEditAudioTrack* GetAudioTrack(uint32 id) override {
        return &ThingWithId(values.tracks, id).edit;
    }
    tses::IEditMetronomeInfo* GetMetronomeInfo() override { return &values.metronome.edit; }
};

struct QuerySession final : tses::QuerySessionBase {
    SessionValues& values;
    explicit QuerySession(SessionValues& asked) : values(asked) {}

    void GetFormatVersion(int32* major, int32* minor) override {
        *major = 1;
        *minor = 5;
    }
    uint32 GetSampleRate() override { return values.sampleRate; }
    int32 GetChannelCount() override { return values.channels; }
    int64 GetDuration() override { return values.duration; }
    uint32 GetBitDepth() override { return values.bitDepth; }
    uint32 GetFileCount() override { return CountOf(values.files); }
    tses::IQueryFile* GetFile(uint32 index) override { return &values.files[index].query; }
    uint32 GetAudioTrackCount() override { return CountOf(values.tracks); }
    tses::IQueryAudioTrack* GetAudioTrack(uint32 index) override {
        return &values.tracks[index].query;
    }
    tses::IQueryMetronomeInfo* GetMetronomeInfo() override { return &values.metronome.query; }
    bool IsLinkedToDefaultTimeSettings() override { return true; }
};

using Session = Thing<SessionValues, EditSession, QuerySession>;

}  // namespace example
