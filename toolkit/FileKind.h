#pragma once

#include <optional>
#include <string>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// What a file is instead of a session, as far as its first bytes tell, and what to do with it;
/// nothing if they tell nothing.
/// @param path  as the system's calls take it
std::optional<Problem> RecogniseOtherKind(const std::string& path);

}  // namespace toolkit
