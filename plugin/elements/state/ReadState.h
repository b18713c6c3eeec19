#pragma once

#include "platform/kelcore/Types.h"

namespace tses {

/// What the saved state's elements remember during a read, in samples.
struct SavedStateReadState {
    kelcore::int64 ctiPosition = 0;
    kelcore::int64 selectionStart = 0;

    void Clear() { *this = {}; }
};

}  // namespace tses
