#include "toolkit/view/TextWidth.h"

#include <utf8proc.h>

#include <cstddef>

namespace toolkit {
namespace {

/// A character, by its width in ems and its length in bytes.
struct Character {
    double width;
    std::size_t length;
};

bool IsNarrow(utf8proc_int32_t character) {
    return character == 'i' || character == 'l' || character == 'j' || character == ' ' ||
           character == '.' || character == ',' || character == ':' || character == '\'' ||
           character == '|' || character == '!';
}

/// What is not UTF-8 is shown as U+FFFD, byte by byte.
Character Next(const std::string& text, std::size_t place, bool bold) {
    const auto* const bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data()) + place;
    utf8proc_int32_t character = 0;
    const utf8proc_ssize_t length =
        utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size() - place), &character);
    if (length <= 0) {
        return {1, 1};
    }
    const double column = IsNarrow(character)                    ? 0.32
                          : character >= 'A' && character <= 'Z' ? 0.70
                                                                 : 0.57;
    const int columns = utf8proc_charwidth(character);
    const double width = columns == 2 ? 1 : columns * column;
    return {bold ? width * 1.07 : width, static_cast<std::size_t>(length)};
}

}  // namespace

double TextWidth(const std::string& text, const TextStyle& style) {
    double width = 0;
    for (std::size_t place = 0; place < text.size();) {
        const Character next = Next(text, place, style.bold);
        width += next.width;
        place += next.length;
    }
    return width * style.size;
}

std::string FittedText(const std::string& text, const TextStyle& style, double width) {
    if (TextWidth(text, style) <= width) {
        return text;
    }
    constexpr const char* kEllipsis = "…";
    constexpr int kFewLetters = 3;
    const double room = width - TextWidth(kEllipsis, style);
    double taken = 0;
    int letters = 0;
    std::size_t withEllipsis = 0;  // bytes that leave room for it
    std::size_t place = 0;
    while (place < text.size()) {
        const Character next = Next(text, place, style.bold);
        taken += next.width * style.size;
        if (taken > width) {
            break;
        }
        place += next.length;
        if (taken <= room) {
            withEllipsis = place;
            ++letters;
        }
    }
    return letters < kFewLetters ? text.substr(0, place) : text.substr(0, withEllipsis) + kEllipsis;
}

}  // namespace toolkit
