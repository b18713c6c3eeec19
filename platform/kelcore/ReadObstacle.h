#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace kelcore {

/// Why a file cannot be read, for people (UTF-8), for example "no such file" and "check the path".
struct ReadObstacle {
    std::string what;
    std::string advice;
};

/// What a system error number means for somebody who wants to read a file.
ReadObstacle ObstacleOfError(int systemError);

/// Describes something that is not a regular file, by its mode (`st_mode`).
ReadObstacle ObstacleOfKind(mode_t mode);

/// Finds what prevents reading the file at `path`. Nothing, if it is a regular file that opens and
/// whose first byte can be read. Never blocks.
std::optional<ReadObstacle> FindReadObstacle(std::u16string_view path);

}  // namespace kelcore
