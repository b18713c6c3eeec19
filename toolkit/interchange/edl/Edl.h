#pragma once

#include "toolkit/interchange/Format.h"

namespace toolkit::interchange {

/// Writes edit decision lists (CMX3600), one for each track that has clips.
///
/// - A list has up to 999 events; a longer one goes on in another file. Clips that overlap are in
///   lists of their own, unless they are a crossfade: that is a dissolve.
/// - Times are rounded to frames, and clips of less than half a frame are left out, which is told.
/// - Reels are names of media in eight characters. A comment has the whole path.
/// - Fades are dissolves from or to black (reel BL) of up to 999 frames.
/// @throws Failure, Cancelled
void WriteEdl(const Export& job);

}  // namespace toolkit::interchange
