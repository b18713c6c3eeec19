#pragma once

#include <algorithm>

#include <orvo/Metronome.h>
#include "host/GlobalTrackInfo.h"
#include "host/Metronome.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/AudioTracks.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditGlobalTrackInfo final : public Face<tses::IEditGlobalTrackInfo, orvo::GlobalTrackInfo> {
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

class QueryGlobalTrackInfo final : public Face<tses::IQueryGlobalTrackInfo, orvo::GlobalTrackInfo> {
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
    TwoFacedNode<orvo::GlobalTrackInfo, EditGlobalTrackInfo, QueryGlobalTrackInfo>;

class EditMetronome final : public Face<tses::IEditMetronomeInfoPrivate, orvo::Metronome> {
public:
    using Face::Face;

    void SetEnabled(bool enabled) override { Value().enabled = enabled; }
    void SetSoundSet(kelcore::uint32 soundSet) override {
        Value().soundSet = orvo::SoundSet{soundSet};
    }
    void SetPattern(const kelcore::uint32* beats, kelcore::uint32 count) override {
        Value().pattern.resize(count);
        std::transform(beats, beats + count, Value().pattern.begin(),
                       [](kelcore::uint32 beat) { return orvo::Beat{beat}; });
    }
    /// A track that is made here has no id of its own, because a read does not pass on the file's.
    tses::IEditAudioTrack* GetTrack() override {
        if (!Value().track) {
            Value().track.emplace().id = orvo::kNoId;
        }
        return Made<AudioTrackNode, &orvo::Metronome::track>();
    }
    tses::IEditGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Made<GlobalTrackInfoNode, &orvo::Metronome::globalTrackInfo>();
    }
};

class QueryMetronome final : public Face<tses::IQueryMetronomeInfoPrivate, orvo::Metronome> {
public:
    using Face::Face;

    bool IsEnabled() override { return Value().enabled; }
    kelcore::uint32 GetSoundSet() override { return NumberOf(Value().soundSet); }
    kelcore::uint32 GetPatternLength() override { return CountOf(Value().pattern); }
    kelcore::uint32 GetPatternBeat(kelcore::uint32 index) override {
        return NumberOf(Value().pattern.at(index));
    }
    tses::IQueryAudioTrack* GetMetronomeTrack() override {
        return Found<AudioTrackNode, &orvo::Metronome::track>();
    }
    tses::IQueryGlobalTrackInfo* GetGlobalTrackInfo() override {
        return Found<GlobalTrackInfoNode, &orvo::Metronome::globalTrackInfo>();
    }
};

using MetronomeNode = TwoFacedNode<orvo::Metronome, EditMetronome, QueryMetronome>;

}  // namespace refhost
