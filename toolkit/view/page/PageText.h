#pragma once

#include <string>
#include <string_view>

/// Texts as they may stand in a page.
namespace orvo::page {

/// Appends a text as JSON that may stand in a script element: `<` and the separators that end a
/// line in a script stand as escapes. Surrogates and malformed UTF-8 become U+FFFD.
void AppendJsonText(std::string& out, std::string_view text);

/// A text as the content of an element.
std::string AsMarkup(std::string_view text);

}  // namespace orvo::page
