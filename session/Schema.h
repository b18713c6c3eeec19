#pragma once

// The rows of every struct of the model.

#include "session/rows/Clips.h"     // IWYU pragma: export
#include "session/rows/Document.h"  // IWYU pragma: export
#include "session/rows/Effects.h"   // IWYU pragma: export
#include "session/rows/State.h"     // IWYU pragma: export
#include "session/rows/Tracks.h"    // IWYU pragma: export
