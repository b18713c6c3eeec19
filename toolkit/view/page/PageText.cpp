#include "toolkit/view/page/PageText.h"

#include <fmt/format.h>

#include "platform/kelcore/Unicode.h"

namespace orvo::page {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// Whether a character stands as it is.
bool IsPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\' && byte != '<';
}

bool NeedsEscape(char32_t codePoint) {
    return codePoint < 0x80 || codePoint == 0x2028 || codePoint == 0x2029;
}

}  // namespace

void AppendJsonText(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && IsPlain(text[plain])) {
            ++plain;
        }
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        const auto part = kelcore::unicode::FirstPart(text);
        if (!part.wellFormed || kelcore::unicode::IsSurrogate(part.codePoint)) {
            out += kReplacement;
        } else if (NeedsEscape(part.codePoint)) {
            fmt::format_to(std::back_inserter(out), "\\u{:04x}",
                           static_cast<std::uint32_t>(part.codePoint));
        } else {
            out += text.substr(0, part.length);
        }
        text.remove_prefix(part.length);
    }
    out += '"';
}

std::string AsMarkup(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const auto part = kelcore::unicode::FirstPart(text);
        if (!part.wellFormed || kelcore::unicode::IsSurrogate(part.codePoint)) {
            out += kReplacement;
        } else if (part.codePoint == '<') {
            out += "&lt;";
        } else if (part.codePoint == '&') {
            out += "&amp;";
        } else if (part.codePoint != 0) {
            out += text.substr(0, part.length);
        }
        text.remove_prefix(part.length);
    }
    return out;
}

}  // namespace orvo::page
