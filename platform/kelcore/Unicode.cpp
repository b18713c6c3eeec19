#include "platform/kelcore/Unicode.h"

#include <algorithm>

namespace kelcore::unicode {
namespace {

/// What a lead byte demands: how many bytes follow, and the bounds of the first of them. The bounds
/// exclude overlong forms and code points above U+10FFFF.
struct Lead {
    std::size_t following;
    unsigned payload;
    unsigned lowestNext = 0x80;
    unsigned highestNext = 0xBF;
};

constexpr Lead kNoLead{0, 0, 1, 0};

constexpr Lead LeadOf(unsigned byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, byte & 0x1F};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, byte & 0x0F, byte == 0xE0 ? 0xA0U : 0x80U};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, byte & 0x07, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
    }
    return kNoLead;
}

constexpr unsigned ByteAt(std::string_view text, std::size_t position) {
    return static_cast<unsigned char>(text[position]);
}

}  // namespace

Utf8Part FirstPart(std::string_view text) {
    const unsigned first = ByteAt(text, 0);
    if (first < 0x80) {
        return {first, 1, true};
    }
    const Lead lead = LeadOf(first);
    if (lead.following == 0) {
        return {0, 1, false};
    }
    char32_t codePoint = lead.payload;
    unsigned lowest = lead.lowestNext;
    unsigned highest = lead.highestNext;
    for (std::size_t i = 1; i <= lead.following; ++i) {
        if (i == text.size() || ByteAt(text, i) < lowest || ByteAt(text, i) > highest) {
            return {0, i, false};
        }
        codePoint = (codePoint << 6) | (ByteAt(text, i) & 0x3FU);
        lowest = 0x80;
        highest = 0xBF;
    }
    return {codePoint, lead.following + 1, true};
}

char32_t NextCodePoint(std::u16string_view text, std::size_t& position) {
    const char32_t unit = text[position++];
    if (IsHighSurrogate(unit) && position < text.size() && IsLowSurrogate(text[position])) {
        const char32_t low = text[position++];
        return 0x10000U + ((unit - 0xD800U) << 10) + (low - 0xDC00U);
    }
    return unit;
}

std::size_t AppendAscii(std::string& text, std::u16string_view source) {
    const auto* const end = std::ranges::find_if(source, [](char16_t unit) { return unit > 0x7F; });
    const auto count = static_cast<std::size_t>(end - source.begin());
    text.resize(text.size() + count);
    std::transform(source.begin(), end, text.end() - (end - source.begin()),
                   [](char16_t unit) { return static_cast<char>(unit); });
    return count;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0U | (codePoint >> 6));
        append(0x80U | (codePoint & 0x3FU));
    } else if (codePoint < 0x10000) {
        append(0xE0U | (codePoint >> 12));
        append(0x80U | ((codePoint >> 6) & 0x3FU));
        append(0x80U | (codePoint & 0x3FU));
    } else {
        append(0xF0U | (codePoint >> 18));
        append(0x80U | ((codePoint >> 12) & 0x3FU));
        append(0x80U | ((codePoint >> 6) & 0x3FU));
        append(0x80U | (codePoint & 0x3FU));
    }
}

void AppendUtf16(std::u16string& text, char32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800U + ((codePoint - 0x10000U) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00U + (codePoint & 0x3FFU)));
}

}  // namespace kelcore::unicode
