#pragma once

#include <cstddef>
#include <string_view>

namespace cli {

/// A unit that a terminal shows as one character: a letter with its combining marks, or an emoji
/// sequence that forms one picture.
struct ShownCharacter {
    std::size_t size = 0;     ///< in bytes
    std::size_t columns = 0;  ///< on the terminal
};

/// The first character of a non-empty text (UTF-8). A byte that is not part of a character counts
/// as one.
ShownCharacter FirstShownCharacter(std::string_view text);

/// The width of a text (UTF-8) in columns.
std::size_t ColumnsOf(std::string_view text);

}  // namespace cli
