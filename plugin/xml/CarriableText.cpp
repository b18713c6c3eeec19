#include "plugin/xml/CarriableText.h"

#include "platform/kelcore/Trace.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {
namespace {

constexpr char16_t kReplacement = u'\uFFFD';

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

bool IsUnpairedSurrogate(std::u16string_view text, std::size_t at) {
    if (IsHighSurrogate(text[at])) {
        return at + 1 == text.size() || !IsLowSurrogate(text[at + 1]);
    }
    return IsLowSurrogate(text[at]) && (at == 0 || !IsHighSurrogate(text[at - 1]));
}

bool IsLostEverywhere(char16_t unit) {
    const bool kept = unit == u'\t' || unit == u'\n' || unit == u'\r';
    return (unit < 0x20 && !kept) || unit >= 0xFFFE;
}

bool IsLostInContent(char16_t unit) {
    return IsLostEverywhere(unit) || (unit >= 0x7F && unit <= 0x9F && unit != 0x85);
}

template <class IsLost>
std::u16string Replaced(std::u16string_view text, IsLost isLost) {
    std::u16string carried(text);
    bool replaced = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isLost(text[i]) || IsUnpairedSurrogate(text, i)) {
            carried[i] = kReplacement;
            replaced = true;
        }
    }
    if (replaced) {
        kelcore::trace::Write(kWriterTraceCategory,
                              "characters that XML cannot carry were replaced by U+FFFD");
    }
    return carried;
}

}  // namespace

std::u16string CarriableText(std::u16string_view text) {
    return Replaced(text, IsLostEverywhere);
}

std::u16string CarriableContent(std::u16string_view text) {
    return Replaced(text, IsLostInContent);
}

}  // namespace tses
