#pragma once

#include <string>
#include <string_view>

/// UTF-16 strings and their conversions. They fail only if memory runs out.
namespace kelcore {

/// Widens 7-bit ASCII. Any byte above 0x7F becomes U+FFFD.
std::u16string AsciiToUTF16(std::string_view text);

/// Decodes UTF-8. A surrogate encoded as three bytes (`UTF16to8` writes unpaired ones like that)
/// decodes to that surrogate; any other malformed sequence becomes U+FFFD, one per maximal subpart.
std::u16string UTF8to16(std::string_view text);

/// Encodes as UTF-8. UTF-8 has no form for an unpaired surrogate; it is written as the three bytes
/// of its code point, so that `UTF8to16(UTF16to8(text)) == text` for every text.
std::string UTF16to8(std::u16string_view text);

/// Replaces every occurrence of `from` in `text`, left to right, without searching the
/// replacements. An empty `from` changes nothing.
void ReplaceInString(std::u16string& text, std::u16string_view from, std::u16string_view to);

}  // namespace kelcore
