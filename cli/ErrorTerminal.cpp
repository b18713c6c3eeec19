#include "cli/ErrorTerminal.h"

#include <fmt/format.h>
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

bool MayColourErrors() {
    const char* const refused = std::getenv("NO_COLOR");
    return HasErrorTerminal() && (refused == nullptr || *refused == '\0');
}

void ShowStatusLine(std::string_view text) {
    const std::scoped_lock lock(statusMutex);
    statusShown = true;
    fmt::print(stderr, "{}{}", kWipeLine, text);
    std::fflush(stderr);
}

StatusLinePause::StatusLinePause() : lock_(statusMutex) {
    if (statusShown) {
        statusShown = false;
        fmt::print(stderr, "{}", kWipeLine);
        std::fflush(stderr);
    }
}

}  // namespace cli
