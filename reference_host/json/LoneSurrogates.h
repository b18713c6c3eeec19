#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// JSON can hold an unpaired surrogate, as its escape ("\ud800"); UTF-8 cannot, and neither can the
/// JSON library. On the way through the library it stands as a mark: the noncharacter U+FDD0
/// followed by three hexadecimal digits, its distance from U+D800. That noncharacter itself is the
/// mark "fff".
namespace refhost {

/// A text as the JSON library may hold it, and back.
std::string MarkedText(std::u16string_view text);
std::u16string UnmarkedText(std::string_view marked);

/// A JSON document as the library can parse it: escapes of unpaired surrogates become marks. Every
/// line keeps its number.
std::string MarkedDocument(std::string_view json);

/// Where in a document that byte comes from that stands at `offset` of what `MarkedDocument` makes
/// of it.
std::size_t UnmarkedOffset(std::string_view json, std::size_t offset);

/// A document that the library wrote, or a piece of one: marks become escapes.
std::string UnmarkedDocument(std::string_view marked);

}  // namespace refhost
