#include "reference_host/recorder/CallJson.h"

#include <fmt/format.h>
#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace refhost {
namespace {

using Output = std::back_insert_iterator<std::string>;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

char Byte(char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
}

void AppendUtf8(std::string& json, char32_t codePoint) {
    if (codePoint < 0x80) {
        json += Byte(codePoint);
    } else if (codePoint < 0x800) {
        json += Byte(0xC0 | (codePoint >> 6));
        json += Byte(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        json += Byte(0xE0 | (codePoint >> 12));
        json += Byte(0x80 | ((codePoint >> 6) & 0x3F));
        json += Byte(0x80 | (codePoint & 0x3F));
    } else {
        json += Byte(0xF0 | (codePoint >> 18));
        json += Byte(0x80 | ((codePoint >> 12) & 0x3F));
        json += Byte(0x80 | ((codePoint >> 6) & 0x3F));
        json += Byte(0x80 | (codePoint & 0x3F));
    }
}

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
    const bool isUnpaired = IsHighSurrogate(character) || IsLowSurrogate(character);
    if (character < 0x20 || isUnpaired) {
        fmt::format_to(Output(json), "\\u{:04x}", static_cast<std::uint32_t>(character));
    } else {
        AppendUtf8(json, character);
    }
}

void AppendText(std::string& json, std::u16string_view text) {
    json += '"';
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (IsHighSurrogate(character) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            ++i;
            character = 0x10000 + ((character - 0xD800) << 10) + (text[i] - 0xDC00U);
        }
        AppendCharacter(json, character);
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
    using Sextets =
        boost::archive::iterators::transform_width<std::vector<kelcore::byte>::const_iterator, 6,
                                                   8>;
    using Digits = boost::archive::iterators::base64_from_binary<Sextets>;
    fmt::format_to(Output(json), R"({{"bytes": {}, "base64": ")", bytes.size());
    json.append(Digits(bytes.begin()), Digits(bytes.end()));
    json.append((3 - bytes.size() % 3) % 3, '=');
    json += "\"}";
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
