#pragma once

#include <cstddef>
#include <string>

namespace tses {

/// How a document stores its characters, as far as its first bytes show. That is enough to find
/// markup in it.
struct DocumentEncoding {
    std::size_t unitSize = 1;  ///< bytes: 2 in UTF-16, 4 in UCS-4, 1 in UTF-8 and all others
    bool littleEndian = false;
    std::size_t markSize = 0;  ///< bytes of the byte order mark, if there is one
};

DocumentEncoding RecogniseEncoding(const unsigned char* bytes, std::size_t size);

/// Reduces units of several bytes to one byte each: ASCII stays as it is, a unit beyond U+FFFF
/// becomes 0xF0 and every other unit 0xE0, like the first byte in UTF-8. Leaves out an incomplete
/// unit at the end. Units of one byte stay as they are.
std::string MarkupOf(const unsigned char* bytes, std::size_t size, DocumentEncoding encoding);

}  // namespace tses
