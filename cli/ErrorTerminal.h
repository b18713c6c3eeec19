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

/// Writes a text to standard error. A failure is ignored, as there is nowhere to report it.
void WriteError(std::string_view text) noexcept;

/// Shows a text as the last line of the terminal, in place of the one that stands there. Any thread
/// may do so.
/// @param text  fits the columns of the terminal
void ShowStatusLine(std::string_view text) noexcept;

/// Erases the status line and holds it back while this object lives, so that other output to the
/// terminal stands on its own lines.
class StatusLinePause {
public:
    StatusLinePause() noexcept;

private:
    std::scoped_lock<std::mutex> lock_;
};

}  // namespace cli
