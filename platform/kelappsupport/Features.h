#pragma once

#include <string_view>

/// Switches of the application that plug-ins ask for by name.
namespace kelappsupport {

/// Whether the application's feature is on. A feature that nobody set is off.
bool IsFeatureEnabled(std::string_view name);

/// Called by the application; seen by every plug-in in the process at its next question.
void SetFeatureEnabled(std::string_view name, bool enabled);

}  // namespace kelappsupport
