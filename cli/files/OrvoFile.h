#pragma once

#include <optional>

#include "cli/files/JsonFile.h"
#include "cli/files/Losses.h"
#include "cli/files/SessionFile.h"
#include "cli/terminal/ProgressBar.h"
#include "toolkit/Conversion.h"
#include "toolkit/DocumentScan.h"

namespace cli {

/// Reports losses, or why they are unknown, and returns whether to convert.
bool MayConvert(const SessionFile& file, const toolkit::DocumentScan& scan, const LossRule& rule);

/// Reads a session file that is to be saved anew. Reports what the conversion does not carry over,
/// and why there is no session if the file cannot be read or the rule forbids losses.
std::optional<ReadInput> ReadOrvo(const SessionFile& file, const toolkit::Conversion& conversion,
                                  const LossRule& rule, Progress& progress);

}  // namespace cli
