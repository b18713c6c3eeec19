#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace toolkit {

/// Names of files and their digests, as sha256sum writes them: "digest  name", a line each.
using Manifest = std::vector<std::pair<std::string, std::string>>;

/// @param name  without line ends and "\"
std::string ManifestLine(const std::string& name, const std::string& digest);

/// Passes over a last line without an end, which is half of one.
/// @returns no value if a line is none of a manifest, or names a file outside the folder
std::optional<Manifest> ParseManifest(std::string_view text);

}  // namespace toolkit
