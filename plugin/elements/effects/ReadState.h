#pragma once

#include <vector>

#include "format/effects/EffectsRack.h"
#include "host/Automation.h"
#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"

namespace tses {

/// What the elements of effects and automation remember during a read. Each object stays until the
/// next of its kind replaces it, so keyframes that follow a lane still land in it. Only the
/// component is released at the end of its element.
struct EffectsReadState {
    HostReference<IEditEffectsRack> rack;
    HostReference<IEditEffectsSlot> slot;
    HostReference<IEditComponent> component;
    HostReference<IEditAutomationLane> lane;

    kelcore::uint32 parameterIndex = 0;             // of the last "parameter"
    float parameterValue = 0;                       // of the last "parameter"
    std::vector<kelcore::uint32> parameterIndices;  // of the "parameter" elements of this component
    bool poweredApplied = false;  // this component had "powered", and it was applied
    ChannelMapRecord channelMap;  // the slot's map whose channels follow

    void Clear() { *this = {}; }
};

}  // namespace tses
