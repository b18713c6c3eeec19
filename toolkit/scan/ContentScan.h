#pragma once

#include <stop_token>
#include <string_view>

#include "toolkit/DocumentScan.h"

namespace toolkit {

/// Whether a scan is to know where things are, which takes a tenth of it.
enum class Places { Unknown, Known };

/// Looks the content of a session file over. Starts and stops the XML library meanwhile.
DocumentScan ScanContent(std::string_view content, const Conversion& conversion, std::size_t limit,
                         Places places, const std::stop_token& stop);

}  // namespace toolkit
