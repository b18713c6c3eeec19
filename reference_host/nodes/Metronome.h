#pragma once

#include <algorithm>

#include "host/GlobalTrackInfo.h"
#include "host/Metronome.h"
#include "reference_host/Node.h"
#include "reference_host/model/Metronome.h"
#include "reference_host/nodes/AudioTracks.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditGlobalTrackInfo final : public Face<tses::IEditGlobalTrackInfo, model::GlobalTrackInfo> {
public:
    using Face::Face;

    void SetTimeSigVisible(bool visible) override { Value().timeSigVisible = visible; }
    void SetKeySigVisible(bool visible) override { Value().keySigVisible = visible; }
    void SetTempoVisible(bool visible) override { Value().tempoVisible = visible; }
    void SetTempoEvents(const kelcore::byte* data, kelcore::uint32 size) override {
        Value().tempoEvents.assign(data, data + size);
    }
    void SetTimeSignatureEvents(const kelcore::byte* data, kelcore::uint32 size) override {
        Value().timeSignatureEvents.assign(data, data + size);
    }
    void SetKeySignatureEvents(const kelcore::byte* data, kelcore::uint32 size) override {
        Value().keySignatureEvents.assign(data, data + size);
    }
};

class QueryGlobalTrackInfo final
    : public Face<tses::IQueryGlobalTrackInfo, model::GlobalTrackInfo> {
public:
    using Face::Face;

    bool GetTimeSigVisible() override { return Value().timeSigVisible; }
    bool GetKeySigVisible() override { return Value().keySigVisible; }
    bool GetTempoVisible() override { return Value().tempoVisible; }
    kelcore::uint32 GetTempoEventsSize() override { return CountOf(Value().tempoEvents); }
    bool GetTempoEvents(kelcore::byte* buffer) override {
        std::ranges::copy(Value().tempoEvents, buffer);
        return true;
    }
    kelcore::uint32 GetTimeSignatureEventsSize() override {
        return CountOf(Value().timeSignatureEvents);
    }
    bool GetTimeSignatureEvents(kelcore::byte* buffer) override {
        std::ranges::copy(Value().timeSignatureEvents, buffer);
        return true;
    }
    kelcore::uint32 GetKeySignatureEventsSize() override {
        return CountOf(Value().keySignatureEvents);
    }
    bool GetKeySignatureEvents(kelcore::byte* buffer) override {
        std::ranges::copy(Value().keySignatureEvents, buffer);
        return true;
    }
};

using GlobalTrackInfoNode =
    TwoFacedNode<model::GlobalTrackInfo, EditGlobalTrackInfo, QueryGlobalTrackInfo>;

class EditMetronome final : public Face<tses::IEditMetronomeInfoPrivate, model::Metronome> {
public:
    using Face::Face;

    void SetEnabled(bool enabled) override { Value().enabled = enabled; }
    void SetSoundSet(kelcore::uint32 soundSet) override { Value().soundSet = soundSet; }
    void SetPattern(const kelcore::uint32* beats, kelcore::uint32 count) override {
        Value().pattern.assign(beats, beats + count);
    }
    /// The track that is made has no id of its own: a read is not told the file's.
    tses::IEditAudioTrack* GetTrack() override {
        if (!Value().track) {
            Value().track.emplace().id = kNoId;
        }
        return Made<AudioTrackNode, &model::Metronome::track>();
    }
    tses::IEditGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Made<GlobalTrackInfoNode, &model::Metronome::globalTrackInfo>();
    }
};

class QueryMetronome final : public Face<tses::IQueryMetronomeInfoPrivate, model::Metronome> {
public:
    using Face::Face;

    bool IsEnabled() override { return Value().enabled; }
    kelcore::uint32 GetSoundSet() override { return Value().soundSet; }
    kelcore::uint32 GetPatternLength() override { return CountOf(Value().pattern); }
    kelcore::uint32 GetPatternBeat(kelcore::uint32 index) override {
        return Value().pattern.at(index);
    }
    tses::IQueryAudioTrack* GetMetronomeTrack() override {
        return Found<AudioTrackNode, &model::Metronome::track>();
    }
    tses::IQueryGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Found<GlobalTrackInfoNode, &model::Metronome::globalTrackInfo>();
    }
};

using MetronomeNode = TwoFacedNode<model::Metronome, EditMetronome, QueryMetronome>;

}  // namespace refhost
