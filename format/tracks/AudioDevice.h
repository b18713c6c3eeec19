#pragma once

#include <string>

#include "format/Names.h"
#include "format/Rows.h"

// The audio device that the session was made with, and the ports that track inputs and outputs
// name:
//
//     <audioDevice inputID="..." outputID="...">
//       <inputPort id="1" name="Mic"/> <outputPort id="1" name="Main L/R"/>
//     </audioDevice>

namespace tses {

struct AudioDeviceRecord {
    InlineText inputId{};
    InlineText outputId{};
};

inline constexpr auto kAudioDeviceRows = Rows(Text<&AudioDeviceRecord::inputId>(names::inputID),
                                              Text<&AudioDeviceRecord::outputId>(names::outputID));

struct PortRecord {
    kelcore::int32 id = 0;
    InlineText name{};
};

inline constexpr auto kPortRows =
    Rows(Number<&PortRecord::id>(names::id), Text<&PortRecord::name>(names::name));

}  // namespace tses
