#include "reference_host/recorder/CallJson.h"

#include <fmt/format.h>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>

#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Unicode.h"

namespace refhost {
namespace {

using Output = std::back_insert_iterator<std::string>;

void AppendCharacter(std::string& json, char32_t character) {
    switch (character) {
        case U'"':
            json += "\\\"";
            return;
        case U'\\':
            json += "\\\\";
            return;
        case U'\b':
            json += "\\b";
            return;
        case U'\f':
            json += "\\f";
            return;
        case U'\n':
            json += "\\n";
            return;
        case U'\r':
            json += "\\r";
            return;
        case U'\t':
            json += "\\t";
            return;
        default:
            break;
    }
    if (character < 0x20 || kelcore::unicode::IsSurrogate(character)) {
        fmt::format_to(Output(json), "\\u{:04x}", static_cast<std::uint32_t>(character));
    } else {
        kelcore::unicode::AppendUtf8(json, character);
    }
}

void AppendText(std::string& json, std::u16string_view text) {
    json += '"';
    for (std::size_t i = 0; i < text.size();) {
        AppendCharacter(json, kelcore::unicode::NextCodePoint(text, i));
    }
    json += '"';
}

template <class Real>
void AppendReal(std::string& json, Real number) {
    if (std::isnan(number)) {
        json += "\"NaN\"";
    } else if (std::isinf(number)) {
        json += number > 0 ? "\"Infinity\"" : "\"-Infinity\"";
    } else {
        fmt::format_to(Output(json), "{}", number);
    }
}

void AppendBytes(std::string& json, const std::vector<kelcore::byte>& bytes) {
    std::string digits = kelcore::EncodeBinaryDataToUTF8String(bytes.data(), bytes.size());
    std::erase(digits, '\n');
    fmt::format_to(Output(json), R"({{"bytes": {}, "base64": "{}"}})", bytes.size(), digits);
}

struct ValueAppender {
    std::string& json;

    void operator()(std::monostate) const { json += "null"; }
    void operator()(bool value) const { json += value ? "true" : "false"; }
    void operator()(std::int64_t value) const { fmt::format_to(Output(json), "{}", value); }
    void operator()(std::uint64_t value) const { fmt::format_to(Output(json), "{}", value); }
    void operator()(float value) const { AppendReal(json, value); }
    void operator()(double value) const { AppendReal(json, value); }
    void operator()(const std::u16string& value) const { AppendText(json, value); }
    void operator()(const std::vector<kelcore::uint32>& value) const {
        fmt::format_to(Output(json), "[{}]", fmt::join(value, ", "));
    }
    void operator()(const std::vector<kelcore::byte>& value) const { AppendBytes(json, value); }
};

void AppendArguments(std::string& json, const std::vector<TraceValue>& arguments) {
    const char* separator = "";
    for (const TraceValue& argument : arguments) {
        json += separator;
        std::visit(ValueAppender{json}, argument);
        separator = ", ";
    }
}

}  // namespace

std::string FormatCallAsJson(const CallRecord& call) {
    std::string json =
        fmt::format(R"({{"seq": {}, "object": "{}#{}", "call": "{}", "args": [)", call.sequence,
                    call.interfaceName, call.objectNumber, call.operation);
    AppendArguments(json, call.arguments);
    json += ']';
    if (call.returned && call.returned->IsNull()) {
        json += R"(, "returns": null)";
    } else if (call.returned) {
        fmt::format_to(Output(json), R"(, "returns": "{}#{}")", call.returned->interfaceName,
                       call.returned->objectNumber);
    }
    json += '}';
    return json;
}

}  // namespace refhost
