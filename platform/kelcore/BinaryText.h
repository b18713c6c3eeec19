#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Types.h"

/// Binary blocks as Base64 text, in the form of Xerces-C's codec (each line ends with a line feed).
/// Works even when the XML library has not been started. Decoding allocates nothing if `bytes` has
/// enough capacity.
namespace kelcore {

/// Encodes `size` bytes at `data`. No bytes give an empty text.
std::string EncodeBinaryDataToUTF8String(const byte* data, std::size_t size);

/// Decodes `text` into `bytes`, replacing their content. Ignores white space anywhere; a text of
/// only white space decodes to no bytes. If the text is malformed, returns false and leaves `bytes`
/// empty.
bool DecodeBinaryDataFromUTF8String(std::string_view text, std::vector<byte>& bytes);
bool DecodeBinaryDataFromUTF16String(std::u16string_view text, std::vector<byte>& bytes);

}  // namespace kelcore
