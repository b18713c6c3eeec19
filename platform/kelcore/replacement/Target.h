#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "platform/kelcore/replacement/SystemCalls.h"

namespace kelcore::replacement {

/// The file to replace, after following links, in its real folder. The open descriptor keeps
/// pointing at the right folder even if that is renamed.
struct Target {
    Descriptor folder;
    bool folderCanBeSynced = false;  ///< false if the folder is writable but not readable
    std::string folderPath;          ///< ends with "/"
    std::string name;
    std::optional<struct stat> old;  ///< the existing file
};

/// Follows links and checks whether the file may be replaced.
/// @param path  absolute, in the system's bytes
/// @throws file_exception
Target FindTarget(const std::string& path);

}  // namespace kelcore::replacement
