#pragma once

#include <string>
#include <vector>

#include "format/tracks/Track.h"
#include "format/tracks/TrackAudioParameters.h"
#include "format/tracks/TrackVisibility.h"
#include "host/AudioTracks.h"
#include "host/Sends.h"
#include "host/TrackKind.h"
#include "host/VideoTracks.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What a track element and its children say, until it reaches the track. Only a track element
/// resets it: a child that comes twice keeps the value of an attribute that it lacks the second
/// time.
struct PendingTrack {
    TrackKind kind = TrackKind::Audio;
    TrackRecord track;
    TrackParametersRecord parameters;
    std::u16string name;
    TrackAudioRecord audio;
    TrackOutputRecord output;
    TrackInputRecord input;
    TrackPannerRecord panner;
    bool eqComponentPending = false;  // while the current component is the track's EQ
};

/// A preset of track heights.
struct TrackVisibilityPreset {
    TrackVisibilityPresetRecord record;
    std::vector<TrackVisibilityRecord> tracks;
};

/// What the tracks' elements remember during a read.
struct TracksReadState {
    PendingTrack pending;
    HostReference<IEditAudioTrackPrivate> track;
    HostReference<IEditVideoTrack> videoTrack;
    HostReference<IEditSendList> sendList;
    HostReference<IEditSendSlot> sendSlot;
    std::vector<TrackVisibilityPreset> visibilityPresets;

    void Clear() { *this = {}; }
};

}  // namespace tses
