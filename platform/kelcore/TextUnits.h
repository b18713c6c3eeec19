#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelcore {

/// May stand before a text in UTF-8.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The "<" of EBCDIC, where bytes mean other characters than in ASCII.
inline constexpr char kEbcdicLess = 0x4C;

/// How an XML document stores its characters, as far as its first bytes show. That is enough to
/// find markup in it.
struct TextUnits {
    std::size_t size = 1;  ///< bytes: 2 in UTF-16, 4 in UCS-4, 1 in UTF-8 and all others
    bool littleEndian = false;
    std::size_t markSize = 0;  ///< bytes of the byte order mark, if there is one
};

/// @param begin  the first bytes of a document; four are enough
TextUnits RecogniseTextUnits(std::string_view begin);

/// Reduces units of several bytes to one byte each: ASCII stays as it is, a unit beyond U+FFFF
/// becomes 0xF0 and every other unit 0xE0, like the first byte in UTF-8. Leaves out an incomplete
/// unit at the end. Units of one byte stay as they are.
std::string MarkupOf(std::string_view bytes, TextUnits units);

}  // namespace kelcore
