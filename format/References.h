#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tses {

/// What stands in a document for each ASCII character; empty for the character itself.
using References = std::array<std::string_view, 128>;

inline constexpr References kReferencesInText = [] {
    References references;
    references[u'&'] = "&amp;";
    references[u'<'] = "&lt;";
    references[u'>'] = "&gt;";
    references[u'\r'] = "&#xD;";
    return references;
}();

/// For values in double quotes.
inline constexpr References kReferencesInAttributes = [] {
    References references;
    references[u'&'] = "&amp;";
    references[u'<'] = "&lt;";
    references[u'"'] = "&quot;";
    references[u'\t'] = "&#x9;";
    references[u'\n'] = "&#xA;";
    references[u'\r'] = "&#xD;";
    return references;
}();

}  // namespace tses
