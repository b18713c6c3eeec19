#pragma once

#include <string>
#include <vector>

namespace cli {

/// Whether the command line names a folder.
bool IsFolder(const std::string& name);

struct NamedFiles {
    std::vector<std::string> files;
    bool allKnown = true;  ///< false if a folder could not be read, or has no session files
};

/// The files that the command line names, in its order.
/// @param recursive  a folder stands for the session files in it and below. One that could not be
///                   read, or has none, is reported
NamedFiles FindFiles(const std::vector<std::string>& names, bool recursive);

}  // namespace cli
