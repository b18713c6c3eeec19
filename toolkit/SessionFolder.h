#pragma once

#include <string>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// A folder below the searched one, and why its content is unknown.
struct UnreadFolder {
    std::string path;
    Problem problem;
};

struct FolderContent {
    std::vector<std::string> sessions;  ///< paths that begin with the folder as it was named
    std::vector<UnreadFolder> unread;
};

/// The session files in a folder and in all folders below it, sorted by path. Recognises them by
/// their extension in upper or lower case. Includes links to files but does not follow links to
/// folders.
/// @param folder  as the system's calls take it
FolderContent FindSessions(const std::string& folder);

}  // namespace toolkit
