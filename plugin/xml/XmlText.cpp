#include "plugin/xml/XmlText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "format/References.h"
#include "platform/kelcore/Types.h"
#include "platform/kelcore/Unicode.h"
#include "plugin/xml/Sections.h"

namespace tses::xml {
namespace {

using kelcore::byte;

/// Room is made for so many units at a time, each as long as a unit can get.
constexpr std::size_t kStep = 4096;
constexpr std::size_t kLongestUnit = 6;  // "&quot;"

constexpr References kNoReferences = {};

constexpr std::size_t kAscii = kNoReferences.size();

/// Whether each ASCII character stands for itself in the value of an attribute.
constexpr std::array<bool, kAscii> kIsPlainInAttributes = [] {
    std::array<bool, kAscii> isPlain{};
    for (std::size_t unit = 0x20; unit < 0x7F; ++unit) {
        isPlain[unit] = kReferencesInAttributes[unit].empty();
    }
    return isPlain;
}();

// Names are narrowed so many units at a time; unit by unit, a save took 4 % more instructions. The
// last block of a name overlaps the one before.
constexpr std::size_t kBlock = 8;
using Units [[gnu::vector_size(kBlock * sizeof(char16_t))]] = std::uint16_t;
using Bytes [[gnu::vector_size(kBlock)]] = byte;

void PutBlock(byte* end, const char16_t* ascii) {
    Units units;
    std::memcpy(&units, ascii, sizeof(units));
    const auto bytes = __builtin_convertvector(units, Bytes);
    std::memcpy(end, &bytes, sizeof(bytes));
}

byte* PutName(byte* end, std::u16string_view name) {
    if (name.size() < kBlock) {
        for (const char16_t unit : name) {
            *end++ = static_cast<byte>(unit);
        }
        return end;
    }
    const std::size_t last = name.size() - kBlock;
    for (std::size_t i = 0; i < last; i += kBlock) {
        PutBlock(end + i, name.data() + i);
    }
    PutBlock(end + last, name.data() + last);
    return end + name.size();
}

byte* Put(byte* end, std::string_view ascii) {
    return std::ranges::copy(ascii, end).out;
}

byte* PutCodePoint(byte* end, char32_t codePoint) {
    const auto put = [&end](char32_t bits) { *end++ = static_cast<byte>(bits); };
    if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
    }
    put(0x80 | (codePoint & 0x3F));
    return end;
}

/// Surrogates in `text` are paired.
void AppendUnits(ContentBuffer& content, std::u16string_view text, const References& references) {
    for (std::size_t i = 0; i < text.size();) {
        byte* end = content.Room(kLongestUnit * std::min(text.size() - i, kStep));
        for (const std::size_t stop = std::min(text.size(), i + kStep); i < stop;) {
            const char16_t unit = text[i];
            if (unit >= kAscii) {
                end = PutCodePoint(end, kelcore::unicode::NextCodePoint(text, i));
                continue;
            }
            if (const std::string_view reference = references[unit]; reference.empty()) {
                *end++ = static_cast<byte>(unit);
            } else {
                end = Put(end, reference);
            }
            ++i;
        }
        content.SetEnd(end);
    }
}

void AppendSection(ContentBuffer& content, std::u16string_view section) {
    AppendMarkup(content, "<![CDATA[");
    AppendUnits(content, section, kNoReferences);
    AppendMarkup(content, "]]>");
}

void AppendReference(ContentBuffer& content, char16_t unit) {
    AppendMarkup(content, "&");
    AppendName(content, ReferenceName(unit));
    AppendMarkup(content, ";");
}

}  // namespace

void AppendName(ContentBuffer& content, std::u16string_view name) {
    content.SetEnd(PutName(content.Room(name.size()), name));
}

bool AppendPlainAttribute(ContentBuffer& content, std::u16string_view name,
                          std::u16string_view value) {
    constexpr std::size_t kMarkup = 4;  // the blank, the sign and the quotes
    byte* end = content.Room(name.size() + value.size() + kMarkup);
    *end++ = ' ';
    end = PutName(end, name);
    *end++ = '=';
    *end++ = '"';
    for (const char16_t unit : value) {
        if (unit >= kAscii || !kIsPlainInAttributes[unit]) {
            return false;
        }
        *end++ = static_cast<byte>(unit);
    }
    *end++ = '"';
    content.SetEnd(end);
    return true;
}

void AppendText(ContentBuffer& content, std::u16string_view text, TextPlace place) {
    switch (place) {
        case TextPlace::Text:
            AppendUnits(content, text, kReferencesInText);
            break;
        case TextPlace::Attribute:
            AppendUnits(content, text, kReferencesInAttributes);
            break;
        case TextPlace::Section:
            ForEachSection(text, [&](auto section) { AppendSection(content, section); });
            break;
    }
}

void AppendCarried(ContentBuffer& content, const CarriedText& carried, TextPlace place) {
    for (const TextPiece& piece : carried.pieces) {
        if (piece.isReference) {
            AppendReference(content, piece.text.front());
        } else {
            AppendText(content, piece.text, place);
        }
    }
}

}  // namespace tses::xml
