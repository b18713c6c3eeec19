#include "plugin/xml/XmlDeclaration.h"

#include <algorithm>

namespace tses {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool Take(std::string_view& markup, std::string_view expected) {
    const bool isThere = markup.starts_with(expected);
    markup.remove_prefix(isThere ? expected.size() : 0);
    return isThere;
}

void TakeBlanks(std::string_view& markup) {
    markup.remove_prefix(std::min(markup.find_first_not_of(kBlanks), markup.size()));
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The value of the next attribute; empty if its name is not `name`, or if there is no attribute.
std::string_view TakeAttribute(std::string_view markup, std::string_view name) {
    if (!Take(markup, name)) {
        return {};
    }
    TakeBlanks(markup);
    if (!Take(markup, "=")) {
        return {};
    }
    TakeBlanks(markup);
    const std::string_view quote = markup.substr(0, 1);
    if ((quote != "\"" && quote != "'") || !Take(markup, quote)) {
        return {};
    }
    return markup.substr(0, markup.find(quote));
}

}  // namespace

bool HasMalformedVersion(std::string_view markup) {
    if (!Take(markup, "<?xml")) {
        return false;
    }
    TakeBlanks(markup);
    std::string_view version = TakeAttribute(markup, "version");
    return Take(version, "1.") && !IsNumber(version);
}

}  // namespace tses
