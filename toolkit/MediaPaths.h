#pragma once

#include <optional>
#include <string_view>

#include <orvo/Model.h>
#include "toolkit/DocumentScan.h"

/// Media paths as JSON states them: a full path, of this system or another, a path as seen from the
/// JSON file, or a URL of a file. A session has full paths alone.
namespace toolkit {

/// Whether a session that was read from JSON has the path just as JSON states it.
bool IsFullMediaPath(std::u16string_view path);

/// Makes the path of every media file of a session a full one. Names are worked out as
/// `kelcore::MakeFileFromPath` does; nothing need exist.
/// @param location  the full path of the JSON file
/// @returns what is wrong with the first path that leads to no file, with its place in the JSON
std::optional<Problem> ResolveMediaPaths(orvo::Session& session, std::u16string_view location);

}  // namespace toolkit
