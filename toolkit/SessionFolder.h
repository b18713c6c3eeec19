#pragma once

#include <string>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// A folder below the one that was searched, and why what is in it is not known.
struct UnreadFolder {
    std::string path;
    Problem problem;
};

struct FolderContent {
    std::vector<std::string> sessions;  ///< paths that begin with the folder as it was named
    std::vector<UnreadFolder> unread;
};

/// The session files in a folder and all folders in it, by their extension in any case,
/// sorted by their paths. Links to files are taken, links to folders are not followed.
/// @param folder  as the system's calls take it
FolderContent FindSessions(const std::string& folder);

}  // namespace toolkit
