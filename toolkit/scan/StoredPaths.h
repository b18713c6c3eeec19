#pragma once

#include <map>
#include <string>

#include "platform/kelcore/Types.h"

namespace toolkit {

/// The paths of a file of a session as the document has them, empty where it has none.
struct StoredPaths {
    std::u16string absolute;
    std::u16string relative;

    friend bool operator==(const StoredPaths&, const StoredPaths&) = default;
};

/// The media paths that a session file states, by id. A host gets only one path of each file. From
/// a file that breaks off, as many as can be read.
/// Starts and stops the XML library meanwhile.
/// @param path  as the system's calls take it
std::map<kelcore::uint32, StoredPaths> FindStoredPaths(const std::string& path);

}  // namespace toolkit
