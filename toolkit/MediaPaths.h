#pragma once

#include <optional>
#include <string_view>

#include <orvo/Model.h>
#include "toolkit/DocumentScan.h"

/// Media paths as JSON states them: a full path of this system or another, a path relative to the
/// JSON file, or a URL of a file. A session has only full paths.
namespace toolkit {

/// Whether a session that is read from JSON gets the path exactly as JSON states it.
bool IsFullMediaPath(std::u16string_view path);

/// Turns the path of every media file of a session into a full path, as `kelcore::MakeFileFromPath`
/// does. The files need not exist.
/// @param location  the full path of the JSON file
/// @returns what is wrong with the first path that leads to no file, with its place in the JSON
std::optional<Problem> ResolveMediaPaths(orvo::Session& session, std::u16string_view location);

}  // namespace toolkit
