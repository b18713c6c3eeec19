#pragma once

#include <string_view>

namespace tses {

/// `text` without the blanks, tabs, carriage returns and line feeds at both of its ends.
std::u16string_view TrimWhitespace(std::u16string_view text);

}  // namespace tses
