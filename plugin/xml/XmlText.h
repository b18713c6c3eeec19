#pragma once

#include <algorithm>
#include <string_view>

#include "format/CarriableText.h"
#include "plugin/xml/ContentBuffer.h"

/// Markup and texts in UTF-8, byte for byte as the XML library's serialiser writes them.
namespace tses::xml {

/// Appends ASCII as it is.
inline void AppendMarkup(ContentBuffer& content, std::string_view markup) {
    content.SetEnd(std::ranges::copy(markup, content.Room(markup.size())).out);
}

/// Appends the name of an element, an attribute or a reference, which is ASCII.
void AppendName(ContentBuffer& content, std::u16string_view name);

/// Appends an attribute with a blank in front of it if its value is plain: ASCII that stands for
/// itself in both versions. Returns false, and appends nothing, if not. Nearly every value is.
bool AppendPlainAttribute(ContentBuffer& content, std::u16string_view name,
                          std::u16string_view value);

/// Appends a text that documents of both versions carry as it is: ordinary text and the value of an
/// attribute with references for markup, a section with its marks.
void AppendText(ContentBuffer& content, std::u16string_view text, TextPlace place);

/// Appends a text as a document carries it.
void AppendCarried(ContentBuffer& content, const CarriedText& carried, TextPlace place);

}  // namespace tses::xml
