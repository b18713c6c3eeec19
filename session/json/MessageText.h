#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Pieces of messages about JSON.
namespace orvo::json {

/// Whether the byte starts a UTF-8 character.
inline bool BeginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// A text of UTF-8: at most its first `size` bytes, the last of them not inside a character, and
/// "..." for the others.
std::string Shortened(std::string text, std::size_t size);

/// A key as a step of a JSON pointer: escaped for it, and marks become escapes (LoneSurrogates.h).
std::string PointerStep(std::string_view key);

}  // namespace orvo::json
