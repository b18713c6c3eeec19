#pragma once

#include <optional>

#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange::dawproject {

/// Reports what a fader, gain, send, pan or mute has beside its one value and its automation.
void ReportControl(const std::optional<orvo::Component>& control, const ModelPath& place,
                   Reporter& reporter);

/// Reports what an effect has beside its identity, its state, its parameters and its power.
void ReportEffect(const orvo::Component& effect, const ModelPath& place, Reporter& reporter);

/// Reports the values of a mute that are neither off nor on.
void ReportSwitch(const ParameterLane& lane, const ModelPath& place, Reporter& reporter);

}  // namespace toolkit::interchange::dawproject
