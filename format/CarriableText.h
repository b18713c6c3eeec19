#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tses {

/// Where a text stands in a document.
enum class TextPlace { Text, Attribute, Section };

/// The XML versions that a session is written in.
enum class XmlVersion { V1_0, V1_1 };

/// A part of a text as a document carries it: a run of characters, or one character as a reference.
struct TextPiece {
    std::u16string text;
    bool isReference = false;

    bool operator==(const TextPiece&) const = default;
};

/// A text as a document carries it.
struct CarriedText {
    std::vector<TextPiece> pieces;
    bool isComplete = true;  ///< no character had to be replaced

    bool operator==(const CarriedText&) const = default;
};

/// Carries `text` so that a reader gets it back, unit for unit, except for what XML cannot express.
///
/// Only these become U+FFFD:
/// - unpaired surrogates, U+0000, U+FFFE and U+FFFF, everywhere;
/// - U+0001 to U+001F except tab, line feed and carriage return, in an XML 1.0 document.
///
/// These become character references, because a reader would refuse the character itself or turn it
/// into a line feed, and the serialiser does not write a reference on its own:
/// - U+0001 to U+001F except tab, line feed and carriage return, U+007F to U+009F and U+2028, in an
///   XML 1.1 document;
/// - a carriage return in a CDATA section. The serialiser itself writes the references for carriage
///   returns in text and attributes, for tabs and line feeds in attributes, and for markup.
///
/// A CDATA section cannot hold a reference: one section ends before it, another begins after it.
CarriedText Carry(std::u16string_view text, TextPlace place, XmlVersion version);

/// The trace line of a text in which a character was replaced.
inline constexpr std::string_view kReplacementsTrace =
    "characters that XML cannot carry were replaced by U+FFFD";

/// What stands between "&" and ";" in the reference to a character, such as "#x85".
std::u16string ReferenceName(char16_t unit);

/// Whether documents of both versions carry `text` as it is.
bool IsCarriedAsItIs(std::u16string_view text, TextPlace place);

/// Whether ordinary text makes the whole document XML 1.1: it has a control character, below U+0020
/// or from U+007F to U+0084 or U+0086 to U+009F. U+0085 alone does not, on purpose.
bool NeedsXml11(std::u16string_view text);

}  // namespace tses
