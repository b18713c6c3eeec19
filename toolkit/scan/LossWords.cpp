#include "toolkit/scan/LossWords.h"

#include <algorithm>

#include "platform/kelcore/Strings.h"

namespace toolkit {

std::string Tag(std::u16string_view name) {
    return "<" + kelcore::UTF16to8(name) + ">";
}

std::string Quoted(std::u16string_view text, Length length) {
    constexpr std::size_t kLongest = 40;
    constexpr std::size_t kBegin = 10;
    std::u16string shown(text);
    if (length == Length::Short && text.size() > kLongest) {
        shown.replace(kBegin, text.size() - kLongest, u"...");
    }
    std::replace_if(
        shown.begin(), shown.end(),
        [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); }, u' ');
    return "\"" + kelcore::UTF16to8(shown) + "\"";
}

std::string ValueOf(std::u16string_view attribute, std::u16string_view element,
                    std::u16string_view value, Length length) {
    return "the value " + Quoted(value, length) + " of the attribute " +
           kelcore::UTF16to8(attribute) + " of " + Tag(element);
}

}  // namespace toolkit
