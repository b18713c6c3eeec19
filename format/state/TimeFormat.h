#pragma once

#include <algorithm>

#include "format/Names.h"
#include "format/Rows.h"

// How times are shown, and the musical grid:
//
//     <timeFormatState beatsPerBar="4" beatsPerMinute="120" customFrameRate="0"
//                      linkToDefaultTimeSettings="true" noteLength="4" subdivisions="16"
//                      timeCodeDropFrame="false" timeCodeFrameRate="30" timeCodeNTSC="true"
//                      timeFormat="timeFormatTimeCode"/>
//
// All codes of timecode are written as one keyword; which one is meant follows from the rate and
// the flags.

namespace tses {

/// The codes of "timeFormat".
namespace timeFormats {
inline constexpr kelcore::int32 decimal = 0;
inline constexpr kelcore::int32 samples = 1;
inline constexpr kelcore::int32 timeCode = 2;
inline constexpr kelcore::int32 ntsc30 = 3;
inline constexpr kelcore::int32 ntsc30DropFrame = 4;
inline constexpr kelcore::int32 barsAndBeats = 6;
inline constexpr kelcore::int32 ntsc60 = 12;
inline constexpr kelcore::int32 ntsc60DropFrame = 13;
inline constexpr kelcore::int32 ntsc24 = 14;
}  // namespace timeFormats

/// NTSC timecode. The frame rate is the nominal one: the frames that a label counts in a second.
struct NtscTimeCode {
    kelcore::int32 format;
    kelcore::int32 frameRate;
    bool dropFrame;
};
inline constexpr NtscTimeCode kNtscTimeCodes[] = {
    {timeFormats::ntsc30, 30, false},         {timeFormats::ntsc30DropFrame, 30, true},
    {timeFormats::ntsc24, 24, false},         {timeFormats::ntsc60, 60, false},
    {timeFormats::ntsc60DropFrame, 60, true},
};

/// The one that a rate and the drop-frame flag mean. A rate without NTSC timecode counts as 30; 24
/// frames a second drop no frames.
constexpr const NtscTimeCode& NtscTimeCodeOf(kelcore::int32 frameRate, bool dropFrame) {
    const auto find = [&](kelcore::int32 rate, bool drops) {
        return std::find_if(
            std::begin(kNtscTimeCodes), std::end(kNtscTimeCodes),
            [&](const auto& code) { return code.frameRate == rate && code.dropFrame == drops; });
    };
    const bool isKnown = find(frameRate, false) != std::end(kNtscTimeCodes);
    const auto* const found = find(isKnown ? frameRate : 30, dropFrame);
    return found != std::end(kNtscTimeCodes) ? *found : *find(frameRate, false);
}

/// A keyword's first row is the code that it reads as.
inline constexpr Keyword<kelcore::int32> kTimeFormats[] = {
    {u"timeFormatDecimal", timeFormats::decimal},
    {u"timeFormatSamples", timeFormats::samples},
    {u"timeFormatTimeCode", timeFormats::timeCode},
    {u"timeFormatTimeCode", timeFormats::ntsc30},
    {u"timeFormatTimeCode", timeFormats::ntsc30DropFrame},
    {u"timeFormatTimeCode", timeFormats::ntsc60},
    {u"timeFormatTimeCode", timeFormats::ntsc60DropFrame},
    {u"timeFormatTimeCode", timeFormats::ntsc24},
    {u"timeFormatBarsAndBeats", timeFormats::barsAndBeats},
};

struct TimeFormatRecord {
    kelcore::int32 format = timeFormats::decimal;
    kelcore::int32 frameRate = 0;
    bool ntsc = false;
    bool dropFrame = false;
    kelcore::int32 customFrameRate = 0;
    bool linkedToDefault = true;
    double beatsPerMinute = 0;
    kelcore::int32 beatsPerBar = 0;
    kelcore::int32 noteLength = 0;
    kelcore::int32 subdivisions = 0;
};

inline constexpr auto kTimeFormatRows =
    Rows(Number<&TimeFormatRecord::beatsPerBar>(names::beatsPerBar),
         LenientReal<&TimeFormatRecord::beatsPerMinute>(names::beatsPerMinute),
         Number<&TimeFormatRecord::customFrameRate>(names::customFrameRate),
         LenientBool<&TimeFormatRecord::linkedToDefault>(names::linkToDefaultTimeSettings),
         Number<&TimeFormatRecord::noteLength>(names::noteLength),
         Number<&TimeFormatRecord::subdivisions>(names::subdivisions),
         LenientBool<&TimeFormatRecord::dropFrame>(names::timeCodeDropFrame),
         Number<&TimeFormatRecord::frameRate>(names::timeCodeFrameRate),
         LenientBool<&TimeFormatRecord::ntsc>(names::timeCodeNTSC),
         KnownWordElseNumber<&TimeFormatRecord::format, kTimeFormats>(names::timeFormat));

}  // namespace tses
