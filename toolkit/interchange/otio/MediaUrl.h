#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace toolkit::interchange::otio {

/// The URL of a file: "file:///media/a%20b.wav"; a relative one for a relative path. Empty for an
/// empty path. A path of Windows gets slashes.
std::string UrlOf(std::string_view path);

/// The path that a URL means; URLs are also taken in the forms in which programs write them: with
/// a host, without one, or as plain paths. URLs of other schemes stay as they are.
/// @param folder  what relative ones count from
/// @return nothing if it cannot be a path
std::optional<std::string> PathOf(std::string_view url, const std::filesystem::path& folder);

}  // namespace toolkit::interchange::otio
