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

/// What a session file says of the paths of its media, by id: a host gets one path of each, and it
/// does not hear of the other. As much as can be read of a file that cannot be read to its end.
/// Starts and stops the XML library meanwhile.
/// @param path  as the system's calls take it
std::map<kelcore::uint32, StoredPaths> FindStoredPaths(const std::string& path);

}  // namespace toolkit
