#include "cli/Messages.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace cli {
namespace {

constexpr std::string_view kTool = "orvo:";
constexpr std::string_view kBoldRed = "\x1b[1;31m";
constexpr std::string_view kPlain = "\x1b[0m";

std::string Body(const Message& message) {
    std::string text;
    if (!message.subject.empty()) {
        text += " " + Printable(message.subject) + ":";
    }
    if (message.place.line != 0) {
        text += fmt::format("{}:{}:", message.place.line, message.place.column);
    }
    text += " " + Printable(message.what);
    if (!message.advice.empty()) {
        text += ": " + Printable(message.advice);
    }
    return text;
}

}  // namespace

std::string FormatMessage(const Message& message) {
    return std::string(kTool) + Body(message);
}

void Complain(const Message& message) {
    if (MayColourErrors()) {
        fmt::print(stderr, "{}{}{}{}\n", kBoldRed, kTool, kPlain, Body(message));
    } else {
        fmt::print(stderr, "{}\n", FormatMessage(message));
    }
}

std::string Printable(std::string_view text) {
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7F) {
            shown += fmt::format("\\x{:02x}", byte);
        } else {
            shown += character;
        }
    }
    return shown;
}

bool HasErrorTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

bool MayColourErrors() {
    const char* const refused = std::getenv("NO_COLOR");
    return HasErrorTerminal() && (refused == nullptr || *refused == '\0');
}

}  // namespace cli
