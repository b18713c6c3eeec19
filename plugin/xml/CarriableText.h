#pragma once

#include <string>
#include <string_view>

namespace tses {

/// `text` with U+FFFD in place of every unit that no session document can carry: unpaired
/// surrogates, U+FFFE, U+FFFF and the control characters below U+0020 other than tab, line feed and
/// carriage return. A replacement is traced, one line for the text.
std::u16string CarriableText(std::u16string_view text);

/// The same for ordinary text, where U+007F to U+0084 and U+0086 to U+009F are replaced as well:
/// they make the document XML 1.1, and the library's serialiser writes none of them in such a
/// document.
std::u16string CarriableContent(std::u16string_view text);

}  // namespace tses
