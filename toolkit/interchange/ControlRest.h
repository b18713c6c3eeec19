#pragma once

#include <optional>

#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// Reports what a fader, mute, pan or send has beside the value and the automation of its parameter
/// 0: other parameters and saved states are lost, names and windows are counted.
/// @param place  of the control
void ReportRestOf(const std::optional<orvo::Component>& control, const ModelPath& place,
                  Reporter& reporter);

/// Reports the automation of a control's parameter 0 as lost, if there is any.
void ReportLostLane(const std::optional<orvo::Component>& control, const ModelPath& place,
                    Reporter& reporter);

}  // namespace toolkit::interchange
