#include "plugin/xml/Layout.h"

#include <algorithm>

namespace tses::xml {
namespace {

bool IsWhiteSpace(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

}  // namespace

void Layout::PassText(std::u16string_view text) {
    lineEndInText_ = false;
    whiteSpaceInText_ = 0;
    if (text.empty() || !std::ranges::all_of(text, IsWhiteSpace)) {
        return;
    }
    std::size_t lineEnd = text.rfind(u'\n');
    if (lineEnd == std::u16string_view::npos) {
        lineEnd = text.rfind(u'\r');
    }
    if (lineEnd != std::u16string_view::npos) {
        lineEndInText_ = true;
        whiteSpaceInText_ = static_cast<std::uint32_t>(text.size() - lineEnd);
    }
}

}  // namespace tses::xml
