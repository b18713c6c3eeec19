#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tses {

/// What a text is in a document.
enum class TextPlace { Text, Attribute, Section };

/// The XML versions that a session is written in.
enum class XmlVersion { V1_0, V1_1 };

/// A part of a text as a document carries it: a run of characters, or one as a character reference.
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

/// Carries `text` so that a reader gets it back, unit for unit, but for what XML has no means for.
///
/// Replaced by U+FFFD, and nothing else ever is:
/// - unpaired surrogates, U+0000, U+FFFE and U+FFFF, everywhere;
/// - U+0001 to U+001F but tab, line feed and carriage return, in an XML 1.0 document.
///
/// A character reference, because a reader refuses the character itself or makes a line feed of it,
/// and the serialiser does not see to it:
/// - U+0001 to U+001F but tab, line feed and carriage return, U+007F to U+009F and U+2028, in an
///   XML 1.1 document;
/// - a carriage return in a CDATA section. In text and attributes, as also for tabs and line feeds
///   in attributes and for markup, the serialiser writes the reference by itself.
///
/// Sections hold no references: the section ends before one and another begins behind it.
CarriedText Carry(std::u16string_view text, TextPlace place, XmlVersion version);

/// Whether documents of both versions carry `text` as it is.
bool IsCarriedAsItIs(std::u16string_view text, TextPlace place);

}  // namespace tses
