#pragma once

#include <cstddef>
#include <string_view>

namespace cli {

/// What a terminal shows as one character: a letter with its combining marks, or a sequence of
/// emoji that is one picture.
struct ShownCharacter {
    std::size_t size = 0;     ///< in bytes
    std::size_t columns = 0;  ///< on the terminal
};

/// The first one of a text (UTF-8) that is not empty. A byte that is part of no character is one by
/// itself.
ShownCharacter FirstShownCharacter(std::string_view text);

/// How many columns a text (UTF-8) takes.
std::size_t ColumnsOf(std::string_view text);

}  // namespace cli
