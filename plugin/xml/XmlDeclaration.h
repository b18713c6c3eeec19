#pragma once

#include <string_view>

namespace tses {

/// Whether a document, given as its markup (see `MarkupOf`) without the byte order mark, declares a
/// version of XML that begins with "1." and goes on with anything but a number. The parser takes
/// every version that begins so; of all else that is wrong with a declaration it tells itself.
bool HasMalformedVersion(std::string_view markup);

}  // namespace tses
