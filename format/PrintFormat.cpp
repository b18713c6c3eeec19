// Prints the tree of elements as JSON, for the scripts that make documents from it.

#include <fmt/format.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "format/Elements.h"
#include "platform/kelcore/Strings.h"

namespace {

using nlohmann::ordered_json;
using namespace tses;

const char* NameOf(ValueKind kind) {
    switch (kind) {
        case ValueKind::Text:
            return "text";
        case ValueKind::Unsigned:
            return "u32";
        case ValueKind::Signed:
            return "i32";
        case ValueKind::Long:
            return "i64";
        case ValueKind::Real:
            return "real";
        case ValueKind::Real32:
            return "real32";
        case ValueKind::ExactReal32:
            return "exact real32";
        case ValueKind::Boolean:
            return "boolean";
        case ValueKind::BooleanOr1:
            return "boolean or 1";
        case ValueKind::Keyword:
            return "keyword";
        case ValueKind::KeywordOrNumber:
            return "keyword or u32";
        case ValueKind::Keywords:
            return "keywords";
        case ValueKind::HandlerName:
            return "media handler";
    }
    return "";
}

const char* NameOf(Written written) {
    switch (written) {
        case Written::Always:
            return "always";
        case Written::UnlessEmpty:
            return "unless empty";
        case Written::IfTrue:
            return "if true";
        case Written::IfKnown:
            return "if known";
        case Written::Sometimes:
            return "sometimes";
        case Written::Never:
            return "never";
    }
    return "";
}

const char* NameOf(TextKind text) {
    switch (text) {
        case TextKind::None:
            return "none";
        case TextKind::Plain:
            return "plain";
        case TextKind::Base64:
            return "base64";
    }
    return "";
}

ordered_json ToJson(const Attribute& attribute) {
    ordered_json json = {{"name", kelcore::UTF16to8(attribute.name)},
                         {"kind", NameOf(attribute.kind)},
                         {"words", ordered_json::array()},
                         {"isRead", attribute.isRead},
                         {"isDropped", attribute.isDropped},
                         {"written", NameOf(attribute.written)},
                         {"isAsBefore", attribute.isAsBefore}};
    for (const std::u16string_view word : attribute.words) {
        json["words"].push_back(kelcore::UTF16to8(word));
    }
    if (attribute.defaultText != nullptr) {
        if (const auto text = attribute.defaultText()) {
            json["default"] = kelcore::UTF16to8(*text);
        }
    }
    return json;
}

ordered_json ToJson(const Element& element) {
    ordered_json json = {{"name", kelcore::UTF16to8(element.name)},
                         {"parents", element.parents},
                         {"state", element.state},
                         {"text", NameOf(element.text)},
                         {"isDropped", element.isDropped},
                         {"needsInstrumentTracks", element.needsInstrumentTracks},
                         {"attributes", ordered_json::array()}};
    for (const Attribute& attribute : element.attributes) {
        json["attributes"].push_back(ToJson(attribute));
    }
    return json;
}

}  // namespace

int main() {
    ordered_json elements = ordered_json::array();
    for (const Element& element : kElements) {
        elements.push_back(ToJson(element));
    }
    fmt::print("{}\n", elements.dump(1));
    return std::fflush(stdout) == 0 ? 0 : 1;
}
