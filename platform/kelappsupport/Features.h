#pragma once

#include <string_view>

/// Switches of the application, by name.
namespace kelappsupport {

/// Returns whether the application has turned the feature on. Features are off by default.
bool IsFeatureEnabled(std::string_view name);

/// For the application. Takes effect at the next query of any plug-in in the process.
void SetFeatureEnabled(std::string_view name, bool enabled);

}  // namespace kelappsupport
