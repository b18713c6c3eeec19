#pragma once

#include <string>

#include "format/Names.h"
#include "format/Rows.h"

// Presets that say how high tracks are shown:
//
//     <trackVisibilityPresets>
//       <trackVisibilityPreset id="1" name="Voices only">
//         <trackVisibility id="7" trackHeight="64" trackMinimized="true"/>
//       </trackVisibilityPreset>
//     </trackVisibilityPresets>

namespace tses {

struct TrackVisibilityPresetRecord {
    kelcore::uint32 id = 0;
    std::u16string name{};
};

inline constexpr auto kTrackVisibilityPresetRows =
    Rows(Number<&TrackVisibilityPresetRecord::id>(names::id),
         UnlessEmpty(Text<&TrackVisibilityPresetRecord::name>(names::name)));

struct TrackVisibilityRecord {
    kelcore::uint32 trackId = 0;
    float height = 0;
    bool minimized = false;
};

inline constexpr auto kTrackVisibilityRows =
    Rows(Number<&TrackVisibilityRecord::trackId>(names::id),
         Number<&TrackVisibilityRecord::height>(names::trackHeight),
         IfTrue(StrictBool<&TrackVisibilityRecord::minimized>(names::trackMinimized)));

}  // namespace tses
