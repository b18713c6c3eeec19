#pragma once

#include <optional>

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/ZipArchive.h"

namespace toolkit::interchange::dawproject {

/// The session that travels in a file which nobody has changed since `WriteDawProject` wrote it. No
/// value for any other file; a change is said.
std::optional<orvo::Session> ReadRestored(const Import& job, const ZipReader& zip);

}  // namespace toolkit::interchange::dawproject
