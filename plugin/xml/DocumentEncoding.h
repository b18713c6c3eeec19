#pragma once

#include <cstddef>
#include <string>

namespace tses {

/// How a document's characters stand in its bytes, as far as its first bytes tell: which is enough
/// to find markup in it.
struct DocumentEncoding {
    std::size_t unitSize = 1;  ///< bytes: 2 in UTF-16, 4 in UCS-4, 1 in UTF-8 and all others
    bool littleEndian = false;
    std::size_t markSize = 0;  ///< bytes of the byte order mark, if there is one
};

DocumentEncoding RecogniseEncoding(const unsigned char* bytes, std::size_t size);

/// The bytes of whole units as one byte each: ASCII as it is, every other unit as 0xE0, but one of
/// a character beyond U+FFFF as 0xF0, like the first byte of UTF-8. An incomplete unit at the end
/// is left out.
std::string MarkupOf(const unsigned char* bytes, std::size_t size, DocumentEncoding encoding);

}  // namespace tses
