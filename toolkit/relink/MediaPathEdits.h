#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include <orvo/Edit.h>

namespace toolkit {

/// Where the media of a session are, for each file's id: the full path to write, or no value for
/// media that stay missing.
using MediaPlaces = std::function<std::optional<std::string>(std::uint32_t id)>;

/// Writes absolute paths, and relative paths that lead there from a session at `target`. Of media
/// that stay missing, a relative path leads to the same place as before.
/// @param source  the session file from which present relative paths lead
/// @param refuse  called for each file whose path a session file cannot carry, and why
void SetMediaPaths(orvo::Edit& edit, const std::filesystem::path& source,
                   const std::filesystem::path& target, const MediaPlaces& places,
                   const std::function<void(std::uint32_t id, const orvo::Message& why)>& refuse);

}  // namespace toolkit
