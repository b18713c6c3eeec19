#pragma once

#include <map>
#include <string>

#include "format/clips/Clip.h"
#include "host/AudioClips.h"
#include "host/ClipGroups.h"
#include "host/GlobalTrackInfo.h"
#include "host/MidiClips.h"
#include "host/VideoClips.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What a clip element of any kind says. A clip without "name" or "hue" takes over the value of the
/// clip before it in the document, so `Reset` keeps both.
struct PendingClipRecord : ClipRecord {
    std::map<kelcore::uint32, kelcore::int32> channelMapEntries;  // source by channel

    void Reset() {
        PendingClipRecord fresh;
        fresh.hue = hue;
        std::swap(fresh.name, name);
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
