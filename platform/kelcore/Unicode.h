#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 and UTF-16, one code point at a time.
namespace kelcore::unicode {

constexpr bool IsSurrogate(char32_t codePoint) {
    return (codePoint & 0xFFFFF800U) == 0xD800U;
}
constexpr bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00U) == 0xD800U;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00U) == 0xDC00U;
}

/// The first code point of a UTF-8 text, or its first malformed sequence.
struct Utf8Part {
    char32_t codePoint;  ///< meaningless if not `wellFormed`
    std::size_t length;  ///< in bytes; for a malformed sequence, its maximal subpart
    bool wellFormed;     ///< true for a surrogate encoded as three bytes
};

/// Decodes the start of `text`, which must not be empty.
Utf8Part FirstPart(std::string_view text);

/// Decodes the code point at `position`, which must be inside `text`, and advances past it. An
/// unpaired surrogate counts as a code point.
char32_t NextCodePoint(std::u16string_view text, std::size_t& position);

void AppendUtf8(std::string& text, char32_t codePoint);

/// Appends the leading ASCII characters of `source` and returns how many there are.
std::size_t AppendAscii(std::string& text, std::u16string_view source);
void AppendUtf16(std::u16string& text, char32_t codePoint);

}  // namespace kelcore::unicode
