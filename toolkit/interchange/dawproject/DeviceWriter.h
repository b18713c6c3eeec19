#pragma once

#include "toolkit/interchange/dawproject/StructureWriter.h"

namespace toolkit::interchange::dawproject {

/// Writes the element "Devices": the effects of an audio track's rack and its equaliser.
/// @param track   gets the lanes of their parameters
/// @param states  gets their states
void WriteDevices(const Writing& writing, PlannedTrack& track, States& states);

}  // namespace toolkit::interchange::dawproject
