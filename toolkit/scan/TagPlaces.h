#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Where a tag ends, which is what the parser tells.
struct TagEnd {
    Place place;         ///< behind the tag
    std::size_t offset;  ///< the same in bytes
};

/// Where the tags begin that end there. Takes time by the length of the document and the number of
/// tags, however many stand on one line.
std::vector<Place> BeginsOf(const std::vector<TagEnd>& ends, std::string_view document);

}  // namespace toolkit
