#pragma once

#include <string>

namespace toolkit {

/// Whether the path leads to a regular file, directly or through links.
bool IsMediaFile(const std::string& path);

}  // namespace toolkit
