#pragma once

#include <string>

namespace cli {

/// The path relative to the working directory if the file is below it, otherwise the full path;
/// printable.
/// @param path  full, as a session has it
std::string ShownPath(const std::string& path);

}  // namespace cli
