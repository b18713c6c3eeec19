#pragma once

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {

/// Writes a REAPER project. Nobody has opened one in the program; tests read them with a reader of
/// their own.
///
/// - Busses are tracks, fed by receives. A master's clips are on a track of their own.
/// - Automation of the levels of tracks becomes an envelope. That of pans, mutes, sends and clips
///   is lost, and so are the curves of fades, effects and the events of MIDI clips, which are empty
///   items.
/// - Loops, stretches, groups and locks are those of items.
/// @throws Failure, Cancelled
void WriteRpp(const Export& job);

}  // namespace toolkit::interchange
