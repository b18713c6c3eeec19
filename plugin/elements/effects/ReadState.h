#pragma once

#include <vector>

#include "format/effects/EffectsRack.h"
#include "host/Automation.h"
#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What the elements of effects and automation remember during a read. Each object is replaced by
/// the next of its kind; only the component is let go at its element's end, so that what follows a
/// lane still lands in it.
struct EffectsReadState {
    HostReference<IEditEffectsRack> rack;
    HostReference<IEditEffectsSlot> slot;
    HostReference<IEditComponent> component;
    HostReference<IEditAutomationLane> lane;

    kelcore::uint32 parameterIndex = 0;             // of the last "parameter"
    float parameterValue = 0;                       // of the last "parameter"
    std::vector<kelcore::uint32> parameterIndices;  // of the "parameter" elements of this component
    bool poweredApplied = false;  // this component's "powered" was there and applied
    ChannelMapRecord channelMap;  // of the slot, whose channels follow

    void Clear() { *this = {}; }
};

}  // namespace tses
