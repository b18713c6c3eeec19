#pragma once

#include <string>

#include "format/Ids.h"
#include "format/Names.h"
#include "format/Rows.h"

// A region of a media file, or of MIDI events, on a track:
//
//     <audioClip clipAutoCrossfade="true" crossFadeHeadClipID="-1" crossFadeTailClipID="-1"
//                endPoint="96000" fileID="3" hue="-1" id="12" lockedInTime="false" looped="false"
//                name="Take 2" offline="false" select="false" sourceInPoint="0"
//                sourceOutPoint="48000" startPoint="48000" zOrder="0"> ... </audioClip>
//     <midiClip endPoint="96000" hue="-1" id="12" .../>
//     <videoClip endPoint="96000" fileID="4" hue="-1" id="12" .../>
//
// "endPoint" is written for other readers: a clip's length is that of its source range.
//
// Each kind of clip has a table of its own for what it has besides the common attributes. Looping
// and crossfades of a video clip mean nothing.

namespace tses {

struct ClipRecord {
    kelcore::uint32 id = kNoId;
    kelcore::uint32 fileId = kNoId;
    kelcore::int64 sourceInPoint = -1;
    kelcore::int64 sourceOutPoint = -1;
    kelcore::int64 startPoint = -1;
    kelcore::int64 endPoint = -1;
    double hue = 0;
    bool looped = false;
    InlineText name{};
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    kelcore::int32 zOrder = 0;
    kelcore::int32 crossFadeHeadClipId = -1;
    kelcore::int32 crossFadeTailClipId = -1;
    bool clipAutoCrossfade = true;
};

inline constexpr auto kClipRows =
    Rows(WriteOnly(Number<&ClipRecord::endPoint>(names::endPoint)),
         OrAsBefore(LenientReal<&ClipRecord::hue>(names::hue)), Number<&ClipRecord::id>(names::id),
         StrictBool<&ClipRecord::lockedInTime>(names::lockedInTime),
         OrAsBefore(Text<&ClipRecord::name>(names::name)),
         StrictBool<&ClipRecord::selected>(names::select),
         Number<&ClipRecord::sourceInPoint>(names::sourceInPoint),
         Number<&ClipRecord::sourceOutPoint>(names::sourceOutPoint),
         Number<&ClipRecord::startPoint>(names::startPoint));

inline constexpr auto kAudioClipRows = Rows(
    StrictBool<&ClipRecord::clipAutoCrossfade>(names::clipAutoCrossfade),
    Number<&ClipRecord::crossFadeHeadClipId>(names::crossFadeHeadClipID),
    Number<&ClipRecord::crossFadeTailClipId>(names::crossFadeTailClipID),
    Number<&ClipRecord::fileId>(names::fileID), StrictBool<&ClipRecord::looped>(names::looped),
    StrictBool<&ClipRecord::offline>(names::offline), Number<&ClipRecord::zOrder>(names::zOrder));

inline constexpr auto kVideoClipRows = Rows(
    Dropped(StrictBool<&ClipRecord::clipAutoCrossfade>(names::clipAutoCrossfade)),
    Dropped(Number<&ClipRecord::crossFadeHeadClipId>(names::crossFadeHeadClipID)),
    Dropped(Number<&ClipRecord::crossFadeTailClipId>(names::crossFadeTailClipID)),
    Number<&ClipRecord::fileId>(names::fileID),
    Dropped(StrictBool<&ClipRecord::looped>(names::looped)),
    StrictBool<&ClipRecord::offline>(names::offline), Number<&ClipRecord::zOrder>(names::zOrder));

inline constexpr std::u16string_view kClipGain = u"clipGain";
inline constexpr std::u16string_view kClipMute = u"clipMute";
inline constexpr std::u16string_view kClipPan = u"clipPan";
inline constexpr std::u16string_view kClipComponents[] = {kClipGain, kClipMute, kClipPan};

}  // namespace tses
