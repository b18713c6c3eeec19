#include "cli/terminal/Messages.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/terminal/ErrorTerminal.h"
#include "toolkit/TextPlaces.h"

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

bool IsControl(std::string_view character) {
    const auto lead = static_cast<unsigned char>(character.front());
    return lead < 0x20 || lead == 0x7F ||
           (lead == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0);
}

std::string Escaped(std::string_view bytes) {
    std::string escaped;
    for (const char byte : bytes) {
        escaped += fmt::format("\\x{:02x}", static_cast<unsigned char>(byte));
    }
    return escaped;
}

}  // namespace

std::string FormatMessage(const Message& message) {
    return std::string(kTool) + Body(message);
}

void Complain(const Message& message) {
    const StatusLinePause pause;
    if (MayColourErrors()) {
        WriteError(fmt::format("{}{}{}{}\n", kBoldRed, kTool, kPlain, Body(message)));
    } else {
        WriteError(FormatMessage(message) + "\n");
    }
}

std::string Printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t size = toolkit::CharacterSize(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(size, 1));
        shown += size == 0 || IsControl(character) ? Escaped(character) : std::string(character);
        text.remove_prefix(character.size());
    }
    return shown;
}

}  // namespace cli
