#pragma once

#include <string>

#include "platform/kelcore/Types.h"

/// The version of the application that runs the plug-in.
namespace kelcore {

/// The version as UTF-8 text, for example "25.1". Defaults to the version of this library.
std::string GetClientVersion();

/// The build number. Defaults to 0.
uint32 GetClientBuildNumber();

/// For the application. Call it once, before loading plug-ins.
void SetClientVersion(std::string version, uint32 buildNumber);

}  // namespace kelcore
