#include "session/json/LoneSurrogates.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/kelcore/Unicode.h"

namespace orvo::json {
namespace {

using kelcore::unicode::IsHighSurrogate;
using kelcore::unicode::IsLowSurrogate;
using kelcore::unicode::IsSurrogate;

constexpr std::string_view kMark = "\xEF\xB7\x90";
constexpr unsigned kMarkCharacter = 0xFDD0;
constexpr unsigned kMarkItself = 0xFFF;
constexpr unsigned kFirstSurrogate = 0xD800;
constexpr std::size_t kDigits = 3;
constexpr std::size_t kMarkSize = kMark.size() + kDigits;
constexpr std::size_t kEscapeSize = 6;

/// Of a pair of escapes.
constexpr std::size_t kLongestReplaced = 2 * kEscapeSize;

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

/// For the escape that begins `json`.
Replacement MarkEscape(std::string_view json) {
    const auto unit = EscapedUnit(json);
    const bool isMark = unit == kMarkCharacter;
    const bool isPair = unit && IsHighSurrogate(*unit) &&
                        IsLowSurrogate(EscapedUnit(json.substr(kEscapeSize)).value_or(0));
    if (isMark) {
        return {MarkOf(kMarkItself), kEscapeSize};
    }
    if (unit && !isPair && IsSurrogate(*unit)) {
        return {MarkOf(*unit - kFirstSurrogate), kEscapeSize};
    }
    const std::size_t size = isPair ? kLongestReplaced : 2;
    return {std::string(json.substr(0, size)), std::min(size, json.size())};
}

/// For the bytes that begin `json`: the mark's character, or another.
Replacement MarkBytes(std::string_view json) {
    return json.starts_with(kMark) ? Replacement{MarkOf(kMarkItself), kMark.size()}
                                   : Replacement{std::string(1, json.front()), 1};
}

/// Calls `append` for each mark, with the code unit that it stands for.
template <class Append>
std::string WithoutMarks(std::string_view marked, const Append& append) {
    std::string text;
    text.reserve(marked.size());
    for (std::size_t mark = marked.find(kMark); mark != marked.npos; mark = marked.find(kMark)) {
        text += marked.substr(0, mark);
        const unsigned number =
            ParseHexadecimal(marked.substr(mark + kMark.size(), kDigits)).value_or(kMarkItself);
        append(text, number == kMarkItself ? kMarkCharacter : kFirstSurrogate + number);
        marked.remove_prefix(mark + kMarkSize);
    }
    text += marked;
    return text;
}

}  // namespace

std::string UnicodeEscape(unsigned unit) {
    return "\\u" + Hexadecimal(unit, kEscapeSize - 2);
}

std::string UnmarkedText(std::string_view marked) {
    return WithoutMarks(
        marked, [](std::string& text, unsigned unit) { kelcore::unicode::AppendUtf8(text, unit); });
}

std::optional<Replacement> ReplaceBegin(std::string_view json, bool isEnd) {
    if (!isEnd && json.size() < kLongestReplaced) {
        return std::nullopt;
    }
    return json.front() == '\\' ? MarkEscape(json) : MarkBytes(json);
}

std::string UnmarkedDocument(std::string_view marked) {
    return WithoutMarks(marked, [](std::string& json, unsigned unit) {
        if (unit == kMarkCharacter) {
            json += kMark;
        } else {
            json += UnicodeEscape(unit);
        }
    });
}

}  // namespace orvo::json
