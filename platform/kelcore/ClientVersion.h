#pragma once

#include <string>

#include "platform/kelcore/Types.h"

/// The version of the application that runs the plug-in.
namespace kelcore {

/// Its version as UTF-8 text, for example "25.1". Until the application sets one: that of this
/// library.
std::string GetClientVersion();

/// Its build number; 0 until the application sets one.
uint32 GetClientBuildNumber();

/// Called by the application once, before it loads plug-ins.
void SetClientVersion(std::string version, uint32 buildNumber);

}  // namespace kelcore
