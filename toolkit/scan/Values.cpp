#include "toolkit/scan/Values.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <utility>

#include "format/References.h"
#include "platform/kelcore/Strings.h"
#include "platform/kelcore/Unicode.h"

namespace toolkit {
namespace {

using tses::TextPlace;
using tses::XmlVersion;

constexpr std::pair<std::u16string_view, char16_t> kNamedCharacters[] = {
    {u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}};

char32_t ReferredTo(std::u16string_view name) {
    for (const auto& [known, character] : kNamedCharacters) {
        if (name == known) {
            return character;
        }
    }
    const bool isHex = name.starts_with(u"#x");
    const std::string digits =
        kelcore::UTF16to8(name.substr(std::min<std::size_t>(name.size(), isHex ? 2 : 1)));
    std::uint32_t number = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), number, isHex ? 16 : 10);
    return number;
}

/// The size of the line end at that place; 0 if there is none.
std::size_t LineEndSize(std::u16string_view text, std::size_t at, XmlVersion version) {
    constexpr char16_t kNextLine = 0x85;
    constexpr char16_t kLineSeparator = 0x2028;
    const bool isXml11 = version == XmlVersion::V1_1;
    if (text[at] == u'\r') {
        const char16_t next = at + 1 < text.size() ? text[at + 1] : u'\0';
        return next == u'\n' || (isXml11 && next == kNextLine) ? 2 : 1;
    }
    return text[at] == u'\n' || (isXml11 && (text[at] == kNextLine || text[at] == kLineSeparator));
}

/// What stands for a character; empty for the character itself.
std::string_view ReferenceFor(char16_t unit, TextPlace place, char quote) {
    const tses::References& references =
        place == TextPlace::Attribute ? tses::kReferencesInAttributes : tses::kReferencesInText;
    if (place == TextPlace::Attribute && quote == '\'' && unit == u'\'') {
        return "&apos;";
    }
    return unit < references.size() ? references[unit] : std::string_view();
}

}  // namespace

std::u16string ReadValue(std::u16string_view spelled, TextPlace place, XmlVersion version) {
    std::u16string value;
    for (std::size_t i = 0; i < spelled.size();) {
        if (const std::size_t size = LineEndSize(spelled, i, version); size != 0) {
            value += place == TextPlace::Attribute ? u' ' : u'\n';
            i += size;
        } else if (spelled[i] == u'&' && place != TextPlace::Section) {
            const std::size_t end = std::min(spelled.find(u';', i), spelled.size());
            kelcore::unicode::AppendUtf16(value, ReferredTo(spelled.substr(i + 1, end - i - 1)));
            i = end + 1;
        } else {
            value += spelled[i] == u'\t' && place == TextPlace::Attribute ? u' ' : spelled[i];
            ++i;
        }
    }
    return value;
}

std::optional<std::u16string> SpellValue(std::u16string_view value, TextPlace place,
                                         XmlVersion version, char quote) {
    const tses::CarriedText carried = tses::Carry(value, place, version);
    if (!carried.isComplete) {
        return std::nullopt;
    }
    std::u16string spelled;
    for (const tses::TextPiece& piece : carried.pieces) {
        if (piece.isReference) {
            spelled += SpellReference(piece.text.front());
            continue;
        }
        for (const char16_t unit : piece.text) {
            const std::string_view reference = ReferenceFor(unit, place, quote);
            spelled +=
                reference.empty() ? std::u16string(1, unit) : kelcore::AsciiToUTF16(reference);
        }
    }
    return spelled;
}

std::u16string SpellReference(char32_t character) {
    return kelcore::AsciiToUTF16(fmt::format("&#x{:X};", static_cast<std::uint32_t>(character)));
}

}  // namespace toolkit
