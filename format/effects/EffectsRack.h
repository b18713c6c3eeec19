#pragma once

#include <optional>
#include <string_view>

#include "format/Ids.h"
#include "format/Names.h"
#include "format/Rows.h"

// The effects of a track or clip:
//
//     <effectsRack preFader="true">
//       <component id="rackMix"/> <component id="rackInput"/> <component id="rackOutput"/>
//       <slot powered="true" sideChainChannels="2" slotIndex="0">
//         <component>
//           <channelMap direction="input"> <channel index="0" sourceIndex="1"/> ... </channelMap>
//         </component>
//       </slot>
//       ...
//     </effectsRack>
//
// A rack without "preFader" is pre-fader, on purpose. A slot without "powered" is powered.

namespace tses {

struct RackRecord {
    bool preFader = true;
};

inline constexpr auto kRackRows = Rows(StrictBool<&RackRecord::preFader>(names::preFader));

inline constexpr std::u16string_view kRackMix = u"rackMix";
inline constexpr std::u16string_view kRackInput = u"rackInput";
inline constexpr std::u16string_view kRackOutput = u"rackOutput";
inline constexpr std::u16string_view kRackComponents[] = {kRackMix, kRackInput, kRackOutput};

struct SlotRecord {
    kelcore::uint32 slotIndex = kNoId;
    bool powered = true;
    std::optional<kelcore::uint32> sideChainChannels;  // written unless it is 0
};

inline constexpr auto kSlotRows =
    Rows(StrictBool<&SlotRecord::powered>(names::powered),
         Number<&SlotRecord::sideChainChannels>(names::sideChainChannels),
         Number<&SlotRecord::slotIndex>(names::slotIndex));

/// A map is for outputs unless it says exactly "input".
struct ChannelMapRecord {
    bool isInput = false;
};

inline constexpr Keyword<bool> kDirections[] = {{u"input", true}, {u"output", false}};

inline constexpr auto kChannelMapRows =
    Rows(FirstOfTwo<&ChannelMapRecord::isInput, kDirections>(names::direction));

struct SlotChannelRecord {
    std::optional<kelcore::int32> index;
    kelcore::int32 sourceIndex = 0;
};

inline constexpr auto kSlotChannelRows =
    Rows(Number<&SlotChannelRecord::index>(names::index),
         Number<&SlotChannelRecord::sourceIndex>(names::sourceIndex));

}  // namespace tses
