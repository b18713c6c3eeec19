#pragma once

#include <optional>
#include <string>

#include "reference_host/model/Session.h"
#include "toolkit/DocumentScan.h"

namespace cli {

/// The list for which a session file has no room, with its place as in the session's JSON and what
/// to do: the longest one of a session that has too many entries, or the first map of too many
/// channels. A table is as long as its highest number says.
std::optional<toolkit::Problem> FindListBeyondLimits(const refhost::model::Session& session);

}  // namespace cli
