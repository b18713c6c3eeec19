#pragma once

#include <string>

#include "platform/kelcore/Types.h"

namespace tses {

/// Starts the XML library for this plug-in. Prints a failure to standard output and returns false.
/// A second start has no effect: one stop undoes both.
bool StartXerces();

/// Stops the XML library, if it was started. Nothing of it may be in use.
void StopXerces();

bool IsXercesStarted() noexcept;

/// A message of the library as UTF-8.
std::string TranscodeMessage(const kelcore::char16* message);

}  // namespace tses
