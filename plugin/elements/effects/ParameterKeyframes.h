#pragma once

#include <string_view>

#include "host/Automation.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a lane and its keyframes under the given names. A lane without keyframes is not written,
/// whatever its flags.
bool WriteParameterKeyframes(SessionXMLWriter& writer, std::u16string_view laneName,
                             std::u16string_view keyframeName, IQueryAutomationLane& lane);

}  // namespace tses
