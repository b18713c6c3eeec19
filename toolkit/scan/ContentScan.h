#pragma once

#include <stop_token>
#include <string_view>

#include "toolkit/DocumentScan.h"
#include "toolkit/scan/ContentSource.h"

namespace toolkit {

// Both scan a session file, and start the XML library and stop it again.

/// Does not find out where things are, which saves a tenth of the time and the memory for the
/// content.
DocumentScan ScanWithoutPlaces(const NextBytes& next, const Conversion& conversion,
                               std::size_t limit, const std::stop_token& stop);

DocumentScan ScanContent(std::string_view content, const Conversion& conversion, std::size_t limit,
                         const std::stop_token& stop);

}  // namespace toolkit
