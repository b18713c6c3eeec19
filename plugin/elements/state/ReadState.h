#pragma once

#include <string>

#include "format/state/Property.h"
#include "host/Metronome.h"
#include "host/Properties.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What the saved state's elements remember during a read.
struct SavedStateReadState {
    kelcore::int64 ctiPosition = 0;     // in samples
    kelcore::int64 selectionStart = 0;  // in samples
    HostReference<IEditMetronomeInfo> metronome;
    HostReference<IEditProperties> properties;
    PropertyRecord property;

    void Clear() { *this = {}; }
};

}  // namespace tses
