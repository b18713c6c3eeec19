#pragma once

#include <map>
#include <string>

#include "platform/kelcore/Types.h"

namespace toolkit {

/// The paths of a media file as the document has them; empty if it has none.
struct StoredPaths {
    std::u16string absolute;
    std::u16string relative;

    friend bool operator==(const StoredPaths&, const StoredPaths&) = default;
};

/// The media paths that a session file states, by id. A host gets only one path of each file. If
/// the file breaks off, returns the paths before that. Starts the XML library and stops it again.
/// @param path  as the system's calls take it
std::map<kelcore::uint32, StoredPaths> FindStoredPaths(const std::string& path);

}  // namespace toolkit
