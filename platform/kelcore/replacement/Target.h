#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "platform/kelcore/replacement/SystemCalls.h"

namespace kelcore::replacement {

/// The file that a replacement is for: behind links, in the folder that really holds it. The folder
/// is held open, so that renaming it meanwhile does not lead astray.
struct Target {
    Descriptor folder;
    bool folderCanBeSynced = false;  ///< false for a folder that may be written but not read
    std::string folderPath;          ///< with "/" behind it
    std::string name;
    std::optional<struct stat> old;  ///< what stands there now
};

/// Follows links and looks whether what stands there may be replaced.
/// @param path  absolute, as the system takes it
/// @throws file_exception
Target FindTarget(const std::string& path);

}  // namespace kelcore::replacement
