#pragma once

#include <charconv>
#include <concepts>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "platform/kelcore/Types.h"
#include "session/Schema.h"
#include "session/Words.h"
#include "session/json/Defaults.h"
#include "session/json/JsonWriter.h"

/// The model's values as JSON, by their types.
namespace orvo::json {

void Encode(JsonWriter& out, bool value);
void Encode(JsonWriter& out, double value);
void Encode(JsonWriter& out, float value);
void Encode(JsonWriter& out, const std::string& text);
void Encode(JsonWriter& out, const std::vector<kelcore::byte>& block);

/// Calls `use` with the text of a number.
template <std::integral Integer, class Use>
void WithDigits(Integer value, const Use& use) {
    char digits[24];
    const char* const end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
    use(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

template <std::integral Integer>
void Encode(JsonWriter& out, Integer value) {
    WithDigits(value, [&](std::string_view digits) { out.Plain(digits); });
}

/// The word, or the number of a value without one.
template <HasWords Code>
void Encode(JsonWriter& out, Code code) {
    if (const auto word = WordOf(code)) {
        out.Quoted(*word);
    } else {
        Encode(out, static_cast<std::underlying_type_t<Code>>(code));
    }
}

// Declared first, so that composite values can nest in any order.

template <HasSchema Struct>
void Encode(JsonWriter& out, const Struct& value);
template <class Element>
void Encode(JsonWriter& out, const std::vector<Element>& list);
template <class Held>
void Encode(JsonWriter& out, const std::optional<Held>& value);
template <class Held>
void Encode(JsonWriter& out, const std::map<kelcore::uint32, Held>& table);

template <HasSchema Struct>
void Encode(JsonWriter& out, const Struct& value) {
    const auto add = [&](const auto& row) {
        const auto& member = value.*row.member;
        if (out.IsFull() || !IsDefault(member, DefaultOf<Struct>().*row.member)) {
            out.Key(row.key);
            Encode(out, member);
        }
    };
    out.BeginObject();
    ForEachRow<Struct>(add);
    out.EndObject();
}

template <class Element>
void Encode(JsonWriter& out, const std::vector<Element>& list) {
    out.BeginList();
    for (const Element& element : list) {
        out.Item();
        Encode(out, element);
    }
    out.EndList();
}

template <class Held>
void Encode(JsonWriter& out, const std::optional<Held>& value) {
    if (value) {
        Encode(out, *value);
    } else {
        out.Plain("null");
    }
}

/// An object whose keys are the numbers.
template <class Held>
void Encode(JsonWriter& out, const std::map<kelcore::uint32, Held>& table) {
    out.BeginObject();
    for (const auto& [number, value] : table) {
        WithDigits(number, [&](std::string_view digits) { out.Key(digits); });
        Encode(out, value);
    }
    out.EndObject();
}

template <class Value>
void WriteValue(const Value& value, JsonWriter::Style style, std::string_view end,
                const TextSink& sink, const ByteProgress& progress = {}) {
    JsonWriter out(sink, style, progress);
    Encode(out, value);
    out.Finish(end);
}

/// A value alone, as a text.
template <class Value>
std::string Encoded(const Value& value, JsonWriter::Style style, std::string_view end = {}) {
    std::string text;
    WriteValue(value, style, end, [&](std::string_view block) { text += block; });
    return text;
}

}  // namespace orvo::json
