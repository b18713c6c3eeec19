#pragma once

#include <string>
#include <string_view>

/// UTF-16 strings and their conversions. Nothing here fails or throws (but for want of memory).
namespace kelcore {

/// Widens 7-bit text. A byte above 0x7F, which ASCII text does not have, becomes U+FFFD.
std::u16string AsciiToUTF16(std::string_view text);

/// Decodes UTF-8. A surrogate that stands as three bytes (as `UTF16to8` writes an unpaired one)
/// comes back as that surrogate; every other malformed sequence becomes U+FFFD, one for each
/// maximal part.
std::u16string UTF8to16(std::string_view text);

/// Encodes as UTF-8. An unpaired surrogate, which UTF-8 has no form for, is written as the three
/// bytes that its code point would have, so that `UTF8to16(UTF16to8(text)) == text` for every text.
std::string UTF16to8(std::u16string_view text);

/// Replaces every occurrence of `from` in `text`, left to right, never looking again at what it put
/// in. An empty `from` changes nothing.
void ReplaceInString(std::u16string& text, std::u16string_view from, std::u16string_view to);

}  // namespace kelcore
