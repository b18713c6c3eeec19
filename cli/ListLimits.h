#pragma once

#include <optional>
#include <string>

#include <orvo/Model.h>
#include "toolkit/DocumentScan.h"

namespace cli {

/// Finds a list that does not fit into a session file: the longest list if the session has too many
/// entries in total, or the first channel map with too many channels. The problem contains its JSON
/// path and advice. A table is as long as its highest number requires.
std::optional<toolkit::Problem> FindListBeyondLimits(const orvo::Session& session);

}  // namespace cli
