#include "cli/terminal/JsonList.h"

#include "cli/terminal/StandardStreams.h"

namespace cli {
namespace {

constexpr int kIndent = 2;

/// Indents an element of an array.
std::string Indented(const std::string& text) {
    std::string indented(kIndent, ' ');
    for (const char character : text) {
        indented += character;
        indented += character == '\n' ? std::string(kIndent, ' ') : "";
    }
    return indented;
}

}  // namespace

std::string DumpJson(const nlohmann::ordered_json& value, int indent) {
    return value.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

void JsonList::Add(const nlohmann::ordered_json& value) {
    if (form_ == Form::Lines) {
        Print(DumpJson(value) + "\n");
    } else {
        Print((isFirst_ ? "[\n" : ",\n") + Indented(DumpJson(value, kIndent)));
    }
    isFirst_ = false;
}

void JsonList::End() {
    if (form_ == Form::Array) {
        Print(isFirst_ ? "[]\n" : "\n]\n");
    }
}

}  // namespace cli
