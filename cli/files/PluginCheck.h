#pragma once

namespace cli {

/// Loads the plug-in, without which sessions can be neither read nor written.
/// @throws std::runtime_error if that fails, with what to do
void RequirePlugin();

}  // namespace cli
