#pragma once

#include "format/Names.h"
#include "format/Rows.h"

// Clips, of any tracks, that are edited together:
//
//     <clipGroups>
//       <clipGroup hue="30" id="1">
//         <name>Chorus</name>
//         <item clipID="12" trackID="7"/> ...
//       </clipGroup>
//     </clipGroups>

namespace tses {

struct ClipGroupRecord {
    kelcore::uint32 id = 0;
    double hue = 0;
};

inline constexpr auto kClipGroupRows =
    Rows(LenientReal<&ClipGroupRecord::hue>(names::hue), Number<&ClipGroupRecord::id>(names::id));

struct ClipGroupItemRecord {
    kelcore::uint32 trackId = 0;
    kelcore::uint32 clipId = 0;
};

inline constexpr auto kClipGroupItemRows =
    Rows(Number<&ClipGroupItemRecord::clipId>(names::clipID),
         Number<&ClipGroupItemRecord::trackId>(names::trackID));

}  // namespace tses
