#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Where a tag ends, which is what the parser reports.
struct TagEnd {
    Place place;         ///< just after the tag
    std::size_t offset;  ///< the same in bytes
};

/// Where the tags with these ends begin. The time grows with the length of the document and the
/// number of tags, however many are on one line.
std::vector<Place> BeginsOf(const std::vector<TagEnd>& ends, std::string_view document);

}  // namespace toolkit
