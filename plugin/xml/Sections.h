#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "format/Limits.h"
#include "platform/kelcore/Unicode.h"

namespace tses {

/// How much of a text fits into one CDATA section. A section cannot hold its own end mark, and must
/// not be longer than a reader accepts in one piece.
inline std::size_t SectionLength(std::u16string_view text) {
    constexpr std::u16string_view kSectionEnd = u"]]>";
    constexpr std::size_t kBytesOfUnit = 3;  // at most, in UTF-8
    constexpr std::size_t kLongest = limits::kSectionBytes / kBytesOfUnit - 16;
    const bool splitsPair =
        kLongest < text.size() && kelcore::unicode::IsLowSurrogate(text[kLongest]);
    const std::size_t longest = kLongest - (splitsPair ? 1 : 0);
    const std::size_t end = text.substr(0, longest).find(kSectionEnd);
    return end != std::u16string_view::npos ? end + 1 : std::min(text.size(), longest);
}

/// Calls `take` with each section of a text; an empty text has one, which is empty.
template <class Take>
void ForEachSection(std::u16string_view text, Take take) {
    do {
        const std::u16string_view section = text.substr(0, SectionLength(text));
        take(section);
        text.remove_prefix(section.size());
    } while (!text.empty());
}

}  // namespace tses
