#pragma once

#include "platform/kelcore/Types.h"

namespace tses {

/// The kind of a track, as `SetKind` and `GetKind` number it.
enum class TrackKind : kelcore::uint32 {
    Audio = 1,
    Bus = 2,
    Master = 3,
    Metronome = 4,
    Instrument = 5
};

}  // namespace tses
