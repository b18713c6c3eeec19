#pragma once

#include <stop_token>
#include <string_view>

#include "toolkit/DocumentScan.h"
#include "toolkit/scan/NextBytes.h"

namespace toolkit {

// Both need the XML library started (see `LibraryUse`).

/// Whether a document, if it is well-formed, is a session without anything to report. Takes a
/// fraction of the time of a scan. May be false for such a session that `ReadMarkup` cannot read.
bool IsKnownAsClean(const NextBytes& next, const Conversion& conversion,
                    const std::stop_token& stop);

DocumentScan ScanContent(std::string_view content, const Conversion& conversion, std::size_t limit,
                         const std::stop_token& stop);

}  // namespace toolkit
