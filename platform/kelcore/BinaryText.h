#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Types.h"

/// Binary blocks as text: Base64 as the codec of Xerces-C writes and reads it (lines ended by a
/// line feed). Works whether or not the XML library has been started. Decoding takes no memory but
/// for the bytes, and none for those if there is room for them.
namespace kelcore {

/// The text of `size` bytes at `data`. No bytes give an empty text.
std::string EncodeBinaryDataToUTF8String(const byte* data, std::size_t size);

/// Decodes `text` into `bytes`, replacing what they held. White space is ignored wherever it
/// stands; a text of nothing else is that of no bytes. Returns false, and leaves `bytes` empty,
/// when the text is no such encoding.
bool DecodeBinaryDataFromUTF8String(std::string_view text, std::vector<byte>& bytes);
bool DecodeBinaryDataFromUTF16String(std::u16string_view text, std::vector<byte>& bytes);

}  // namespace kelcore
