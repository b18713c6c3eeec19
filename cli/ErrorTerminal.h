#pragma once

#include <cstddef>
#include <mutex>
#include <string_view>

// Standard error, which may be a terminal whose last line shows how far the work is.

namespace cli {

/// Whether standard error is a terminal.
bool HasErrorTerminal();

/// How many columns that terminal has; 80 if that is not known.
std::size_t ErrorTerminalColumns();

/// Whether standard error may be coloured: it is a terminal and NO_COLOR is not set.
bool MayColourErrors();

/// Shows a text as the last line of the terminal, in place of the one that stands there. Any thread
/// may do so.
/// @param text  fits the columns of the terminal
void ShowStatusLine(std::string_view text);

/// Wipes the status line away, and keeps it away while one of these lives: what is written
/// meanwhile to that terminal stands by itself.
class StatusLinePause {
public:
    StatusLinePause();

private:
    std::scoped_lock<std::mutex> lock_;
};

}  // namespace cli
