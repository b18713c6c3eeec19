#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// What a file is instead of a session, as far as its first bytes show, and what to do with it; no
/// value if they do not show it.
/// @param path  as the system's calls take it
std::optional<Problem> RecogniseOtherKind(const std::string& path);

/// The same for what should be JSON.
/// @param begin  its first bytes; a few dozen are enough
std::optional<Problem> RecogniseOtherKindThanJson(std::string_view begin);

}  // namespace toolkit
