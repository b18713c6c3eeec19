#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "reference_host/json/Values.h"

namespace refhost {

/// A JSON document as values, in which lone surrogates are marked (LoneSurrogates.h). Takes a time
/// that grows with the length of the text.
/// @throws JsonError  for what is malformed, with its place, and for a key
/// that stands twice in one object, with its JSON pointer
ParsedJson ParseJson(std::string_view text);

/// A text of UTF-8 for a message: at most its first `size` bytes, the last of them not inside a
/// character, and "..." for the others.
std::string Shortened(std::string text, std::size_t size);

}  // namespace refhost
