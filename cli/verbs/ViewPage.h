#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvo/Draw.h>
#include <orvo/Layout.h>
#include <orvo/Model.h>
#include "cli/ExitCode.h"
#include "cli/files/Output.h"

namespace cli {

/// Saves a session as a page for a browser.
ExitCode SavePage(const Output& out, const orvo::Layout& layout, const orvo::Session& session,
                  const std::vector<std::optional<orvo::Waveform>>& waveforms,
                  const std::string& title);

/// Asks the system to show a page, and does not wait for it. Reports if the system cannot.
ExitCode OpenPage(const std::string& name);

}  // namespace cli
