#pragma once

#include <cstring>
#include <string_view>

namespace tses {

/// Compares whole blocks of memory; the standard's `==` compares UTF-16 unit by unit.
inline bool IsSame(std::u16string_view one, std::u16string_view other) noexcept {
    return one.size() == other.size() &&
           (one.empty() ||
            std::memcmp(one.data(), other.data(), one.size() * sizeof(char16_t)) == 0);
}

/// `text` without the blanks, tabs, carriage returns and line feeds at both of its ends.
std::u16string_view TrimWhitespace(std::u16string_view text);

}  // namespace tses
