#include "format/CarriableText.h"

#include <algorithm>

#include "platform/kelcore/Unicode.h"

namespace tses {
namespace {

using kelcore::unicode::IsHighSurrogate;
using kelcore::unicode::IsLowSurrogate;
using kelcore::unicode::IsSurrogate;

constexpr char16_t kReplacement = u'\uFFFD';
constexpr char16_t kLineSeparator = u'\u2028';

enum class Carriage { AsItIs, AsReference, Replaced };

bool BeginsPair(std::u16string_view text, std::size_t at) {
    return at + 1 < text.size() && IsHighSurrogate(text[at]) && IsLowSurrogate(text[at + 1]);
}

bool IsUnpairedSurrogate(std::u16string_view text, std::size_t at) {
    const bool endsPair = at > 0 && BeginsPair(text, at - 1);
    return IsSurrogate(text[at]) && !BeginsPair(text, at) && !endsPair;
}

/// How to carry a unit that is not a surrogate.
Carriage CarriageOf(char16_t unit, TextPlace place, XmlVersion version) {
    const bool isXml11 = version == XmlVersion::V1_1;
    if (unit == 0 || unit >= 0xFFFE) {
        return Carriage::Replaced;
    }
    if (unit == u'\r') {
        return place == TextPlace::Section ? Carriage::AsReference : Carriage::AsItIs;
    }
    if (unit < 0x20 && unit != u'\t' && unit != u'\n') {
        return isXml11 ? Carriage::AsReference : Carriage::Replaced;
    }
    const bool isReserved = (unit >= 0x7F && unit <= 0x9F) || unit == kLineSeparator;
    return isXml11 && isReserved ? Carriage::AsReference : Carriage::AsItIs;
}

Carriage CarriageAt(std::u16string_view text, std::size_t at, TextPlace place, XmlVersion version) {
    return IsUnpairedSurrogate(text, at) ? Carriage::Replaced
                                         : CarriageOf(text[at], place, version);
}

void AddToRun(std::vector<TextPiece>& pieces, char16_t unit) {
    if (pieces.empty() || pieces.back().isReference) {
        pieces.emplace_back();
    }
    pieces.back().text += unit;
}

}  // namespace

CarriedText Carry(std::u16string_view text, TextPlace place, XmlVersion version) {
    CarriedText carried;
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (CarriageAt(text, i, place, version)) {
            case Carriage::AsItIs:
                AddToRun(carried.pieces, text[i]);
                break;
            case Carriage::AsReference:
                carried.pieces.push_back({std::u16string(1, text[i]), true});
                break;
            case Carriage::Replaced:
                AddToRun(carried.pieces, kReplacement);
                carried.isComplete = false;
                break;
        }
    }
    return carried;
}

std::u16string ReferenceName(char16_t unit) {
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string digits;
    for (unsigned rest = unit; rest != 0; rest >>= 4) {
        digits.insert(digits.begin(), kDigits[rest & 0xF]);
    }
    return u"#x" + digits;
}

bool IsCarriedAsItIs(std::u16string_view text, TextPlace place) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isAscii = text[i] >= 0x20 && text[i] < 0x7F;
        if (!isAscii && (CarriageAt(text, i, place, XmlVersion::V1_0) != Carriage::AsItIs ||
                         CarriageAt(text, i, place, XmlVersion::V1_1) != Carriage::AsItIs)) {
            return false;
        }
    }
    return true;
}

bool NeedsXml11(std::u16string_view text) {
    return std::ranges::any_of(text, [](char16_t unit) {
        return unit < 0x20 || (unit >= 0x7F && unit <= 0x84) || (unit >= 0x86 && unit <= 0x9F);
    });
}

}  // namespace tses
