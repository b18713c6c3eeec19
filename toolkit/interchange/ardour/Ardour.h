#pragma once

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {

/// Writes the folder of an Ardour 7 session: a file "NAME.ardour" in the target, where NAME is the
/// target's without its extension. Media stay where they are.
///
/// - Media must have the session's rate. A clip ends where its media end.
/// - Fades, gains of clips with their automation, crossfades, loops (as regions), levels and pans
///   of tracks with their automation, sends, busses and markers are carried.
/// - Stretch, pans of clips, automation of mutes and sends, effects, MIDI and video are lost.
/// - A mono track is 3 dB softer on each side of the centre; a mono bus becomes stereo.
/// @throws Failure  also if media have another rate
/// @throws Cancelled
void WriteArdour(const Export& job);

}  // namespace toolkit::interchange
