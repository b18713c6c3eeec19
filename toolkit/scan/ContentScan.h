#pragma once

#include <stop_token>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Whether a scan finds out where things are. That takes a tenth of its time.
enum class Places { Unknown, Known };

/// Scans the content of a session file. Starts the XML library and stops it again.
DocumentScan ScanContent(std::string_view content, const Conversion& conversion, std::size_t limit,
                         Places places, const std::stop_token& stop);

}  // namespace toolkit
