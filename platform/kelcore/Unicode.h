#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The steps that the conversions between UTF-8 and UTF-16 share. For use inside this library.
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

/// What stands at the start of a UTF-8 text.
struct Utf8Part {
    char32_t codePoint;  ///< meaningless if not `wellFormed`
    std::size_t length;  ///< bytes; of a malformed sequence those of its maximal part
    bool wellFormed;     ///< surrogates as three bytes count as well formed
};

/// Takes the first part of `text`, which must not be empty.
Utf8Part FirstPart(std::string_view text);

/// Takes the code point at `position`, which must be inside `text`, and moves past it. An unpaired
/// surrogate is a code point of its own.
char32_t NextCodePoint(std::u16string_view text, std::size_t& position);

void AppendUtf8(std::string& text, char32_t codePoint);

/// Appends the ASCII characters that `source` begins with, and returns how many there are.
std::size_t AppendAscii(std::string& text, std::u16string_view source);
void AppendUtf16(std::u16string& text, char32_t codePoint);

}  // namespace kelcore::unicode
