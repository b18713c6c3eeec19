#pragma once

#include <optional>

#include "format/Names.h"
#include "format/Rows.h"

// The musical timeline, inside "metronome":
//
//     <globalTrackInfo keySigVisible="false" tempoVisible="true" timeSigVisible="true">
//       <tempoEvents/> <timeSignatureEvents/> <keySignatureEvents/>
//     </globalTrackInfo>
//
// A visibility that the element does not state stays as the host has it.

namespace tses {

struct GlobalTrackInfoRecord {
    std::optional<bool> timeSigVisible;
    std::optional<bool> keySigVisible;
    std::optional<bool> tempoVisible;
};

inline constexpr auto kGlobalTrackInfoRows =
    Rows(StrictBool<&GlobalTrackInfoRecord::keySigVisible>(names::keySigVisible),
         StrictBool<&GlobalTrackInfoRecord::tempoVisible>(names::tempoVisible),
         StrictBool<&GlobalTrackInfoRecord::timeSigVisible>(names::timeSigVisible));

}  // namespace tses
