#pragma once

#include <optional>
#include <string_view>

#include "format/Names.h"
#include "format/Rows.h"

// Where else a track sends its sound:
//
//     <sendList>
//       <sendSlot destCompIndex="1" preFader="false" sendOutputID="4" slotIndex="0">
//         <component id="sendComponent"/> <component id="sendPan"/>
//       </sendSlot>
//     </sendList>
//
// A slot without "slotIndex" makes no slot; its content goes to the slot before it. A missing
// attribute leaves the host's value; an attribute that is not a number is 0.

namespace tses {

struct SendSlotRecord {
    std::optional<kelcore::uint32> slotIndex;
    std::optional<kelcore::int32> sendOutputId;
    std::optional<bool> preFader;
    std::optional<kelcore::int32> destCompIndex;  // written unless it is negative
};

inline constexpr auto kSendSlotRows =
    Rows(Number<&SendSlotRecord::destCompIndex>(names::destCompIndex),
         StrictBool<&SendSlotRecord::preFader>(names::preFader),
         Number<&SendSlotRecord::sendOutputId>(names::sendOutputID),
         Number<&SendSlotRecord::slotIndex>(names::slotIndex));

inline constexpr std::u16string_view kSendLevel = u"sendComponent";
inline constexpr std::u16string_view kSendPan = u"sendPan";
inline constexpr std::u16string_view kSendComponents[] = {kSendLevel, kSendPan};

}  // namespace tses
