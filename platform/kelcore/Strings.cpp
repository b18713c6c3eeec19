#include "platform/kelcore/Strings.h"

#include "platform/kelcore/Unicode.h"

namespace kelcore {
namespace {

constexpr char16_t kReplacementCharacter = u'\uFFFD';

}  // namespace

std::u16string AsciiToUTF16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        result.push_back(byte < 0x80 ? char16_t{byte} : kReplacementCharacter);
    }
    return result;
}

std::u16string UTF8to16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const unicode::Utf8Part part = unicode::FirstPart(text);
        unicode::AppendUtf16(result, part.wellFormed ? part.codePoint : kReplacementCharacter);
        text.remove_prefix(part.length);
    }
    return result;
}

std::string UTF16to8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    std::size_t position = unicode::AppendAscii(result, text);
    while (position < text.size()) {
        unicode::AppendUtf8(result, unicode::NextCodePoint(text, position));
        position += unicode::AppendAscii(result, text.substr(position));
    }
    return result;
}

void ReplaceInString(std::u16string& text, std::u16string_view from, std::u16string_view to) {
    if (from.empty()) {
        return;
    }
    const std::u16string_view source = text;
    std::size_t found = source.find(from);
    if (found == std::u16string_view::npos) {
        return;
    }
    // Builds a new string because `from` and `to` may be views into `text`.
    std::u16string result;
    std::size_t done = 0;
    for (; found != std::u16string_view::npos; found = source.find(from, done)) {
        result.append(source, done, found - done).append(to);
        done = found + from.size();
    }
    result.append(source, done);
    text = std::move(result);
}

}  // namespace kelcore
