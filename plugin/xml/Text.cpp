#include "plugin/xml/Text.h"

namespace tses {

std::u16string_view TrimWhitespace(std::u16string_view text) {
    constexpr std::u16string_view kWhitespace = u" \t\n\r";
    const auto first = text.find_first_not_of(kWhitespace);
    if (first == std::u16string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
}

}  // namespace tses
