#pragma once

#include <map>
#include <string>

#include "host/AudioClips.h"
#include "host/ClipGroups.h"
#include "host/GlobalTrackInfo.h"
#include "host/MidiClips.h"
#include "host/VideoClips.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What a clip element of any kind says. A clip that lacks "name" or "hue" takes over those of the
/// clip before it in the document, so `Reset` leaves both alone.
struct PendingClipRecord {
    kelcore::uint32 id = 4294967295;
    kelcore::uint32 fileId = 4294967295;
    kelcore::int64 sourceInPoint = -1;
    kelcore::int64 sourceOutPoint = -1;
    kelcore::int64 startPoint = -1;
    kelcore::int64 endPoint = -1;  // read, and passed to nobody
    double hue = 0;
    bool looped = false;
    std::u16string name;
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    kelcore::int32 zOrder = 0;
    kelcore::int32 crossFadeHeadClipId = -1;
    kelcore::int32 crossFadeTailClipId = -1;
    bool clipAutoCrossfade = true;
    std::map<kelcore::uint32, kelcore::int32> channelMapEntries;  // source by channel

    void Reset() {
        PendingClipRecord fresh;
        fresh.hue = hue;
        fresh.name.swap(name);
        *this = std::move(fresh);
    }
};

/// What the clips' elements remember during a read.
struct ClipsReadState {
    PendingClipRecord pending;
    HostReference<IEditAudioClip> audioClip;
    HostReference<IEditMIDIClip> midiClip;
    HostReference<IEditVideoClip> videoClip;
    HostReference<IEditGlobalTrackInfo> globalTrackInfo;
    HostReference<IEditClipGroup> clipGroup;
    std::u16string clipGroupName;

    void Clear() { *this = {}; }
};

}  // namespace tses
