#pragma once

#include <string_view>

namespace tses {

/// Whether a document declares an XML version that begins with "1." but does not go on with a
/// number. The parser accepts every version that begins so; it reports every other mistake in a
/// declaration itself. `markup` is the document's (see `MarkupOf`), without the byte order mark.
bool HasMalformedVersion(std::string_view markup);

}  // namespace tses
