#pragma once

#include <cstddef>
#include <mutex>
#include <string_view>

// Standard error, possibly a terminal whose last line shows progress.

namespace cli {

/// Whether standard error is a terminal.
bool HasErrorTerminal();

/// The width of that terminal in columns; 80 if unknown.
std::size_t ErrorTerminalColumns();

/// Whether the user refuses colours: NO_COLOR is set.
bool RefusesColours();

/// Whether to colour standard error: it is a terminal and the user does not refuse.
bool MayColourErrors();

/// Writes a text to standard error. Ignores failures, because there is nowhere to report them.
void WriteError(std::string_view text) noexcept;

/// Shows a text as the last line of the terminal, replacing the previous one. Any thread may call
/// this.
/// @param text  must fit the width of the terminal
void ShowStatusLine(std::string_view text) noexcept;

/// Erases the status line and suppresses it during the lifetime of this object, so that other
/// output gets its own lines.
class StatusLinePause {
public:
    StatusLinePause() noexcept;

private:
    std::scoped_lock<std::mutex> lock_;
};

}  // namespace cli
