#pragma once

#include <string>

#include "format/Ids.h"
#include "format/Names.h"
#include "format/Rows.h"

// The tracks of a session:
//
//     <tracks>
//       <videoTrack id="3" select="false"> <trackParameters/> <videoClip/> ... </videoTrack> ...
//       <audioTrack automationLaneOpenState="false" id="7" index="0" select="true" visible="true">
//         <trackParameters trackHeight="64" trackHue="212.5" trackMinimized="false">
//           <name>Voice</name>
//         </trackParameters>
//         <trackAudioParameters/> <effectsRack/> <editParameter/> ... <sendList/> <audioClip/> ...
//       </audioTrack>
//       ...
//     </tracks>
//
// "audioTrack", "busTrack", "masterTrack" and "instrumentTrack" differ only in name, and so does
// the "metronomeTrack" that stands inside "metronome".

namespace tses {

struct TrackRecord {
    kelcore::uint32 id = kNoId;
    kelcore::uint32 index = 0;
    bool select = false;
    bool phaseInverted = false;
    bool preRendered = false;
    bool sumToMono = false;
    std::u16string preRenderedFile{};
    std::u16string midiIn{};
    bool midiAll = false;
    bool automationLaneOpenState = false;
    bool visible = true;
};

inline constexpr auto kTrackIdRows = Rows(Number<&TrackRecord::id>(names::id));
/// The host's metronome holds its track; no id finds it.
inline constexpr auto kMetronomeTrackIdRows = Rows(WriteOnly(Number<&TrackRecord::id>(names::id)));

inline constexpr auto kTrackRows =
    Rows(StrictBool<&TrackRecord::automationLaneOpenState>(names::automationLaneOpenState),
         Number<&TrackRecord::index>(names::index),
         IfTrue(StrictBool<&TrackRecord::phaseInverted>(names::phaseInverted)),
         IfTrue(StrictBool<&TrackRecord::preRendered>(names::preRendered)),
         UnlessEmpty(Text<&TrackRecord::preRenderedFile>(names::preRenderedFile)),
         StrictBool<&TrackRecord::select>(names::select),
         IfTrue(StrictBool<&TrackRecord::sumToMono>(names::sumtomono)),
         StrictBool<&TrackRecord::visible>(names::visible));

inline constexpr auto kInstrumentRows =
    Rows(IfTrue(StrictBool<&TrackRecord::midiAll>(names::midiAll)),
         UnlessEmpty(Text<&TrackRecord::midiIn>(names::midiIn)));

/// The format does not save the index of a video track.
inline constexpr auto kVideoTrackRows =
    Rows(Number<&TrackRecord::id>(names::id), ReadOnly(Number<&TrackRecord::index>(names::index)),
         StrictBool<&TrackRecord::select>(names::select));

/// How a track is shown.
struct TrackParametersRecord {
    kelcore::int32 height = 0;
    double hue = -1.0;
    bool minimized = false;
};

inline constexpr auto kTrackParametersRows =
    Rows(Number<&TrackParametersRecord::height>(names::trackHeight),
         LenientReal<&TrackParametersRecord::hue>(names::trackHue),
         StrictBool<&TrackParametersRecord::minimized>(names::trackMinimized));

}  // namespace tses
