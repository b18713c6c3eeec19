#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "format/CarriableText.h"

/// Values of a document as they stand there, with references.
namespace toolkit {

inline constexpr std::string_view kSectionBegin = "<![CDATA[";
inline constexpr std::string_view kSectionEnd = "]]>";

/// What a reader gets from a text or from the value of an attribute: references count for their
/// characters, line ends for line feeds, and white space in attributes for blanks.
/// @param spelled  without the marks of a section; if it is not well-formed, so is the result
std::u16string ReadValue(std::u16string_view spelled, tses::TextPlace place,
                         tses::XmlVersion version);

/// Spells a value so that a reader gets it back, as a save does; the value of an attribute for
/// either kind of quotes. No value if it contains something that no document of that version
/// carries.
std::optional<std::u16string> SpellValue(std::u16string_view value, tses::TextPlace place,
                                         tses::XmlVersion version, char quote = '"');

/// The reference to a character.
std::u16string SpellReference(char32_t character);

}  // namespace toolkit
