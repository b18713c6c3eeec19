#pragma once

#include <vector>

#include "format/Names.h"
#include "format/Rows.h"

// The click track:
//
//     <metronome enabled="true" pattern="downBeat upBeat upBeat " soundSet="sticks">
//       <metronomeTrack/> <globalTrackInfo/>
//     </metronome>

namespace tses {

inline constexpr kelcore::uint32 kSticks = 8;

inline constexpr Keyword<kelcore::uint32> kSoundSets[] = {
    {u"african1", 0}, {u"african2", 1}, {u"beeps", 2},  {u"cymbals", 3},      {u"kit", 4},
    {u"latin1", 5},   {u"latin2", 6},   {u"latin3", 7}, {u"sticks", kSticks}, {u"tabla", 9},
};

inline constexpr Keyword<kelcore::uint32> kBeats[] = {
    {u"none", 0}, {u"downBeat", 1}, {u"upBeat", 2}, {u"subdivision", 3}};

struct MetronomeRecord {
    bool enabled = false;
    kelcore::uint32 soundSet = kSticks;
    std::vector<kelcore::uint32> pattern{};
};

inline constexpr auto kMetronomeRows =
    Rows(StrictBool<&MetronomeRecord::enabled>(names::enabled),
         WordList<&MetronomeRecord::pattern, kBeats>(names::pattern),
         KnownWord<&MetronomeRecord::soundSet, kSoundSets>(names::soundSet));

}  // namespace tses
