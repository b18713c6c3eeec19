#pragma once

#include <concepts>
#include <cstddef>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/json/Schema.h"

/// The model's values as values of the JSON library, both ways, by their types.
namespace refhost {

/// What is written has its keys in the order of the rows. What is read can have any number of them,
/// among which an ordered object would look for each from the first one on.
using Json = nlohmann::ordered_json;
using ParsedJson = nlohmann::json;

/// Where in the document a value is; only an error spells it out.
class JsonPlace {
public:
    JsonPlace() = default;
    JsonPlace(const JsonPlace& parent, std::string_view key) : parent_(&parent), key_(key) {}
    JsonPlace(const JsonPlace& parent, std::size_t index) : parent_(&parent), index_(index) {}

    /// As a JSON pointer; empty for the whole document.
    std::string Pointer() const;

    /// @throws JsonError that names this place.
    [[noreturn]] void Fail(const std::string& problem) const;

private:
    const JsonPlace* parent_ = nullptr;
    std::optional<std::string_view> key_;  // none: an element of a list
    std::size_t index_ = 0;
};

/// A key as a step of a JSON pointer: escaped for it, and marks become escapes (LoneSurrogates.h).
std::string PointerStep(std::string_view key);

// One value into the library's form, and from it, where a wrong one throws a JsonError.

Json Encode(bool value);
Json Encode(double value);
Json Encode(float value);
Json Encode(const std::u16string& text);
Json Encode(const std::vector<kelcore::byte>& block);

void Decode(const ParsedJson& json, const JsonPlace& place, bool& value);
void Decode(const ParsedJson& json, const JsonPlace& place, double& value);
void Decode(const ParsedJson& json, const JsonPlace& place, float& value);
void Decode(const ParsedJson& json, const JsonPlace& place, std::u16string& text);
void Decode(const ParsedJson& json, const JsonPlace& place, std::vector<kelcore::byte>& block);

/// An integer between two bounds.
kelcore::int64 DecodeSigned(const ParsedJson& json, const JsonPlace& place, kelcore::int64 lowest,
                            kelcore::int64 highest);
kelcore::uint64 DecodeUnsigned(const ParsedJson& json, const JsonPlace& place,
                               kelcore::uint64 highest);

/// A key that is a number, written as `Encode` writes it.
kelcore::uint32 DecodeNumberKey(const std::string& key, const JsonPlace& place);

void RequireArray(const ParsedJson& json, const JsonPlace& place);
void RequireObject(const ParsedJson& json, const JsonPlace& place);
[[noreturn]] void FailAtUnknownKey(const JsonPlace& place, const std::string& key,
                                   const std::vector<std::string>& knownKeys);

template <std::integral Integer>
Json Encode(Integer value) {
    return value;
}

template <std::signed_integral Integer>
void Decode(const ParsedJson& json, const JsonPlace& place, Integer& value) {
    using Limits = std::numeric_limits<Integer>;
    value = static_cast<Integer>(DecodeSigned(json, place, Limits::min(), Limits::max()));
}

template <std::unsigned_integral Integer>
void Decode(const ParsedJson& json, const JsonPlace& place, Integer& value) {
    value = static_cast<Integer>(DecodeUnsigned(json, place, std::numeric_limits<Integer>::max()));
}

// What is made of other values names itself here first, so that each may hold any other.

template <class Struct>
concept HasSchema = requires {
    Schema<Struct>::kRows;
};

template <HasSchema Struct>
Json Encode(const Struct& value);
template <class Element>
Json Encode(const std::vector<Element>& list);
template <class Held>
Json Encode(const std::optional<Held>& value);
template <class Held>
Json Encode(const std::map<kelcore::uint32, Held>& values);

template <HasSchema Struct>
void Decode(const ParsedJson& json, const JsonPlace& place, Struct& value);
template <class Element>
void Decode(const ParsedJson& json, const JsonPlace& place, std::vector<Element>& list);
template <class Held>
void Decode(const ParsedJson& json, const JsonPlace& place, std::optional<Held>& value);
template <class Held>
void Decode(const ParsedJson& json, const JsonPlace& place,
            std::map<kelcore::uint32, Held>& values);

template <HasSchema Struct>
Json Encode(const Struct& value) {
    Json json = Json::object();
    const auto add = [&](const auto& row) {
        json.get_ref<Json::object_t&>().emplace_back(row.key, Encode(value.*row.member));
    };
    std::apply([&](const auto&... rows) { (add(rows), ...); }, Schema<Struct>::kRows);
    return json;
}

template <class Element>
Json Encode(const std::vector<Element>& list) {
    Json json = Json::array();
    for (const Element& element : list) {
        json.push_back(Encode(element));
    }
    return json;
}

template <class Held>
Json Encode(const std::optional<Held>& value) {
    return value ? Encode(*value) : Json();
}

/// An object whose keys are the numbers.
template <class Held>
Json Encode(const std::map<kelcore::uint32, Held>& values) {
    Json json = Json::object();
    for (const auto& [number, value] : values) {
        json.get_ref<Json::object_t&>().emplace_back(std::to_string(number), Encode(value));
    }
    return json;
}

template <HasSchema Struct>
std::vector<std::string> KeysOf() {
    return std::apply([](const auto&... rows) { return std::vector<std::string>{rows.key...}; },
                      Schema<Struct>::kRows);
}

template <HasSchema Struct>
void Decode(const ParsedJson& json, const JsonPlace& place, Struct& value) {
    RequireObject(json, place);
    for (const auto& [key, member] : json.items()) {
        const auto decodeIfNamed = [&, &key = key, &member = member](const auto& row) {
            if (row.key != key) {
                return false;
            }
            Decode(member, JsonPlace(place, key), value.*row.member);
            return true;
        };
        const bool known =
            std::apply([&](const auto&... rows) { return (decodeIfNamed(rows) || ...); },
                       Schema<Struct>::kRows);
        if (!known) {
            FailAtUnknownKey(place, key, KeysOf<Struct>());
        }
    }
}

template <class Element>
void Decode(const ParsedJson& json, const JsonPlace& place, std::vector<Element>& list) {
    RequireArray(json, place);
    list.clear();
    list.reserve(json.size());
    for (const ParsedJson& element : json) {
        const JsonPlace elementPlace(place, list.size());
        Decode(element, elementPlace, list.emplace_back());
    }
}

template <class Held>
void Decode(const ParsedJson& json, const JsonPlace& place,
            std::map<kelcore::uint32, Held>& values) {
    RequireObject(json, place);
    values.clear();
    for (const auto& [key, value] : json.items()) {
        const JsonPlace valuePlace(place, key);
        Decode(value, valuePlace, values[DecodeNumberKey(key, valuePlace)]);
    }
}

template <class Held>
void Decode(const ParsedJson& json, const JsonPlace& place, std::optional<Held>& value) {
    if (json.is_null()) {
        value.reset();
    } else {
        Decode(json, place, value.emplace());
    }
}

}  // namespace refhost
