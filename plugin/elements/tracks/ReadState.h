#pragma once

#include <string>
#include <vector>

#include "host/AudioTracks.h"
#include "host/Sends.h"
#include "host/VideoTracks.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// The kind of an audio-side track, as hosts number it.
enum class TrackKind : kelcore::uint32 {
    Audio = 1,
    Bus = 2,
    Master = 3,
    Metronome = 4,
    Instrument = 5
};

/// What a track element and its children say, until it reaches the track. Only a track element
/// resets it: children that come twice, or lack an attribute, find what stood there before.
struct PendingTrack {
    kelcore::uint32 id = 4294967295;
    kelcore::uint32 index = 0;
    TrackKind kind = TrackKind::Audio;
    bool select = false;
    bool phaseInverted = false;
    bool preRendered = false;
    bool sumToMono = false;
    std::u16string preRenderedFile;
    std::u16string midiIn;
    bool midiAll = false;
    bool automationLaneOpenState = false;
    bool visible = true;

    // trackParameters
    kelcore::int32 height = 0;
    std::u16string name;
    double hue = -1.0;
    bool minimized = false;

    // trackAudioParameters; volume and mute are accepted and dropped, the fader and mute components
    // carry them
    kelcore::uint32 audioChannelType = 0;
    float volume = 0;
    bool mute = false;
    bool solo = false;
    bool recordArmed = false;
    bool monitoring = false;
    bool soloSafe = false;
    kelcore::int32 automationMode = 1;
    kelcore::int32 outputTrackId = -1;
    kelcore::int32 inputId = -1;
    kelcore::int32 hardwareOutputId = -1;
    bool eqComponentPending = false;  // while the current component is the track's EQ

    // trackPanner: accepted in old files and dropped
    float panLeftRight = 0;
    float angle = 0;
    float radius = 0;
    float stereoSpread = 0;
};

/// A preset of track heights that is being read.
struct PendingVisibilityPreset {
    struct Entry {
        kelcore::uint32 trackId = 0;
        float height = 0;
        bool minimized = false;
    };

    kelcore::uint32 id = 0;
    std::u16string name;
    std::vector<Entry> entries;
};

/// What the tracks' elements remember during a read.
struct TracksReadState {
    PendingTrack pending;
    HostReference<IEditAudioTrackPrivate> track;
    HostReference<IEditVideoTrack> videoTrack;
    HostReference<IEditSendList> sendList;
    HostReference<IEditSendSlot> sendSlot;
    std::vector<PendingVisibilityPreset> visibilityPresets;

    void Clear() { *this = {}; }
};

}  // namespace tses
