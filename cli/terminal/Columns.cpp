#include "cli/terminal/Columns.h"

#include <utf8proc.h>

#include <algorithm>

namespace cli {
namespace {

struct CodePoint {
    utf8proc_int32_t value = 0;
    std::size_t size = 0;  // in bytes; 0 if the text does not begin with a character
};

CodePoint FirstCodePoint(std::string_view text) {
    CodePoint point;
    const utf8proc_ssize_t size =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                         static_cast<utf8proc_ssize_t>(text.size()), &point.value);
    point.size = size > 0 ? static_cast<std::size_t>(size) : 0;
    return point;
}

/// Selects the emoji form of the preceding character.
constexpr utf8proc_int32_t kEmojiStyle = 0xFE0F;

/// The maximum width of a character, no matter how many code points it has.
constexpr std::size_t kWidest = 2;

}  // namespace

ShownCharacter FirstShownCharacter(std::string_view text) {
    CodePoint point = FirstCodePoint(text);
    if (point.size == 0) {
        return {1, 1};
    }
    ShownCharacter character;
    utf8proc_int32_t state = 0;
    for (bool ends = false; !ends;) {
        character.size += point.size;
        character.columns += static_cast<std::size_t>(utf8proc_charwidth(point.value));
        if (point.value == kEmojiStyle) {
            character.columns = kWidest;
        }
        const utf8proc_int32_t last = point.value;
        point = FirstCodePoint(text.substr(character.size));
        ends = point.size == 0 || utf8proc_grapheme_break_stateful(last, point.value, &state);
    }
    character.columns = std::min(character.columns, kWidest);
    return character;
}

std::size_t ColumnsOf(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const ShownCharacter character = FirstShownCharacter(text);
        columns += character.columns;
        text.remove_prefix(character.size);
    }
    return columns;
}

}  // namespace cli
