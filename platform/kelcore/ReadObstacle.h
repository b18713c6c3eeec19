#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace kelcore {

/// Why a file cannot be read, in words for people (UTF-8): "no such file", "check the path".
struct ReadObstacle {
    std::string what;
    std::string advice;
};

/// What one of the system's error numbers means to somebody who wants to read a file.
ReadObstacle ObstacleOfError(int systemError);

/// Of something that is not a regular file, by its mode (`st_mode`).
ReadObstacle ObstacleOfKind(mode_t mode);

/// What keeps the file at `path` from being read; nothing if it is a regular file that opens and
/// gives its first byte. Never waits.
std::optional<ReadObstacle> FindReadObstacle(std::u16string_view path);

}  // namespace kelcore
