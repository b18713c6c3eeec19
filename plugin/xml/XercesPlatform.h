#pragma once

#include <string>

#include "platform/kelcore/Types.h"

namespace tses {

/// Starts the XML library for this plug-in. A failure is printed to standard output and gives
/// false. Starting twice is starting once: one stop undoes it.
bool StartXerces();

/// Stops it, if it was started. Nothing of the library may be in use.
void StopXerces();

bool IsXercesStarted() noexcept;

/// A message of the library as UTF-8.
std::string TranscodeMessage(const kelcore::char16* message);

}  // namespace tses
