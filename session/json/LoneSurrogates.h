#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// JSON can hold an unpaired surrogate, as its escape ("\ud800"); UTF-8 cannot, and neither can the
/// JSON library. On the way through the library it stands as a mark: the noncharacter U+FDD0
/// followed by three hexadecimal digits, its distance from U+D800. That noncharacter itself is the
/// mark "fff".
namespace orvo::json {

/// A code unit as JSON's escape: "\\ud800".
std::string UnicodeEscape(unsigned unit);

/// Turns the marks in a text that the library read back into surrogates, each as three bytes.
std::string UnmarkedText(std::string_view marked);

/// What the begin of a piece of JSON becomes, and how many bytes of it that was.
struct Replacement {
    std::string text;
    std::size_t size;
};

/// The first bytes of what may become a mark in JSON: of an escape, or of the marks' own character.
inline constexpr std::string_view kFirstOfMarked = "\\\xEF";

/// Replaces the escape or character at the begin of `json`, whose first byte is in
/// `kFirstOfMarked`. Escapes of unpaired surrogates and the marks' own character become marks;
/// others stay.
/// @param isEnd  whether nothing follows
/// @return nothing if more of the text is needed
std::optional<Replacement> ReplaceBegin(std::string_view json, bool isEnd);

/// A piece of a marked document as it was: marks become escapes.
std::string UnmarkedDocument(std::string_view marked);

}  // namespace orvo::json
