#include "reference_host/json/LoneSurrogates.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/kelcore/Strings.h"

namespace refhost {
namespace {

constexpr std::string_view kMark = "\xEF\xB7\x90";
constexpr unsigned kMarkCharacter = 0xFDD0;
constexpr unsigned kMarkItself = 0xFFF;
constexpr unsigned kFirstSurrogate = 0xD800;
constexpr unsigned kFirstLowSurrogate = 0xDC00;
constexpr unsigned kLastSurrogate = 0xDFFF;
constexpr std::size_t kDigits = 3;
constexpr std::size_t kMarkSize = kMark.size() + kDigits;
constexpr std::size_t kEscapeSize = 6;

bool IsHigh(unsigned unit) {
    return unit >= kFirstSurrogate && unit < kFirstLowSurrogate;
}

bool IsLow(unsigned unit) {
    return unit >= kFirstLowSurrogate && unit <= kLastSurrogate;
}

std::string Hexadecimal(unsigned number, std::size_t digits) {
    std::string text(digits, '0');
    for (std::size_t i = digits; i-- > 0; number /= 16) {
        text[i] = "0123456789abcdef"[number % 16];
    }
    return text;
}

std::string MarkOf(unsigned number) {
    return std::string(kMark) + Hexadecimal(number, kDigits);
}

/// The whole of `digits` as a hexadecimal number.
std::optional<unsigned> ParseHexadecimal(std::string_view digits) {
    unsigned number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// The code unit whose escape ("\ud800") begins `json`.
std::optional<unsigned> EscapedUnit(std::string_view json) {
    if (json.size() < kEscapeSize || !json.starts_with("\\u")) {
        return std::nullopt;
    }
    return ParseHexadecimal(json.substr(2, kEscapeSize - 2));
}

/// What a piece of a document becomes, and how long the piece was.
struct Replacement {
    std::string text;
    std::size_t size;
};

/// For the escape that begins `json`.
Replacement MarkEscape(std::string_view json) {
    const auto unit = EscapedUnit(json);
    const bool isMark = unit == kMarkCharacter;
    const bool isPair =
        unit && IsHigh(*unit) && IsLow(EscapedUnit(json.substr(kEscapeSize)).value_or(0));
    if (isMark) {
        return {MarkOf(kMarkItself), kEscapeSize};
    }
    if (unit && !isPair && (IsHigh(*unit) || IsLow(*unit))) {
        return {MarkOf(*unit - kFirstSurrogate), kEscapeSize};
    }
    const std::size_t size = isPair ? 2 * kEscapeSize : 2;
    return {std::string(json.substr(0, size)), size};
}

/// For the bytes that begin `text`: a surrogate's three, the mark's, or others.
Replacement MarkBytes(std::string_view text) {
    const auto byteAt = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (text.starts_with(kMark)) {
        return {MarkOf(kMarkItself), kMark.size()};
    }
    if (text.size() >= 3 && byteAt(0) == 0xED && byteAt(1) >= 0xA0) {
        return {MarkOf((byteAt(1) - 0xA0U) * 64U + (byteAt(2) - 0x80U)), 3};
    }
    return {std::string(1, text.front()), 1};
}

bool MayNeedMarks(std::u16string_view text) {
    for (const char16_t unit : text) {
        if (IsHigh(unit) || IsLow(unit) || unit == kMarkCharacter) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string MarkedText(std::u16string_view text) {
    // Here a surrogate that stands alone is three bytes; one of a pair is not to be seen.
    const std::string bytes = kelcore::UTF16to8(text);
    if (!MayNeedMarks(text)) {
        return bytes;
    }
    std::string marked;
    for (std::size_t at = 0; at < bytes.size();) {
        const Replacement replacement = MarkBytes(std::string_view(bytes).substr(at));
        marked += replacement.text;
        at += replacement.size;
    }
    return marked;
}

std::u16string UnmarkedText(std::string_view marked) {
    std::u16string text;
    for (std::size_t mark = marked.find(kMark); mark != marked.npos; mark = marked.find(kMark)) {
        text += kelcore::UTF8to16(marked.substr(0, mark));
        const unsigned number =
            ParseHexadecimal(marked.substr(mark + kMark.size(), kDigits)).value_or(kMarkItself);
        text += static_cast<char16_t>(number == kMarkItself ? kMarkCharacter
                                                            : kFirstSurrogate + number);
        marked.remove_prefix(mark + kMarkSize);
    }
    return text + kelcore::UTF8to16(marked);
}

std::string MarkedDocument(std::string_view json) {
    std::string marked;
    marked.reserve(json.size());
    while (!json.empty()) {
        const std::size_t plain = std::min(json.find_first_of("\\\xEF"), json.size());
        marked += json.substr(0, plain);
        json.remove_prefix(plain);
        if (json.empty()) {
            break;
        }
        if (json.front() == '\\') {
            const Replacement replacement = MarkEscape(json);
            marked += replacement.text;
            json.remove_prefix(std::min(replacement.size, json.size()));
        } else if (json.starts_with(kMark)) {
            marked += MarkOf(kMarkItself);
            json.remove_prefix(kMark.size());
        } else {
            marked += json.front();
            json.remove_prefix(1);
        }
    }
    return marked;
}

// An escape is as long as its mark; only the mark's own character becomes longer.
std::size_t UnmarkedOffset(std::string_view json, std::size_t offset) {
    for (std::size_t mark = json.find(kMark); mark < offset; mark = json.find(kMark, mark + 1)) {
        const std::size_t behind = mark + kMark.size();
        offset = offset < behind + kDigits ? std::min(offset, behind) : offset - kDigits;
    }
    return offset;
}

std::string UnmarkedDocument(std::string_view marked) {
    std::string json;
    json.reserve(marked.size());
    for (std::size_t mark = marked.find(kMark); mark != marked.npos; mark = marked.find(kMark)) {
        json += marked.substr(0, mark);
        const unsigned number =
            ParseHexadecimal(marked.substr(mark + kMark.size(), kDigits)).value_or(kMarkItself);
        json += number == kMarkItself ? std::string(kMark)
                                      : "\\u" + Hexadecimal(kFirstSurrogate + number, 4);
        marked.remove_prefix(mark + kMarkSize);
    }
    json += marked;
    return json;
}

}  // namespace refhost
