#include "cli/terminal/ErrorTerminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace cli {
namespace {

constexpr std::string_view kWipeLine = "\r\x1b[K";

std::mutex statusMutex;
bool statusShown = false;  // guarded by the mutex

}  // namespace

bool HasErrorTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

std::size_t ErrorTerminalColumns() {
    constexpr std::size_t kUsual = 80;
    winsize size{};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return known ? size.ws_col : kUsual;
}

bool RefusesColours() {
    const char* const refused = std::getenv("NO_COLOR");
    return refused != nullptr && *refused != '\0';
}

bool MayColourErrors() {
    return HasErrorTerminal() && !RefusesColours();
}

void WriteError(std::string_view text) noexcept {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
    std::fflush(stderr);
}

void ShowStatusLine(std::string_view text) noexcept {
    const std::scoped_lock lock(statusMutex);
    statusShown = true;
    WriteError(kWipeLine);
    WriteError(text);
}

StatusLinePause::StatusLinePause() noexcept : lock_(statusMutex) {
    if (statusShown) {
        statusShown = false;
        WriteError(kWipeLine);
    }
}

}  // namespace cli
