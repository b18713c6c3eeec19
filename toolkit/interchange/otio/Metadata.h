#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "session/MemberKey.h"
#include "session/Schema.h"
#include "session/json/Decode.h"
#include "session/json/Encode.h"

/// What `metadata.orvo` holds: the session's JSON without what OpenTimelineIO says itself.
namespace toolkit::interchange::otio {

using orvo::json::JsonWriter;
using orvo::json::ParsedJson;

inline constexpr std::string_view kOwnKey = "orvo";
inline constexpr std::int64_t kMetadataVersion = 1;

/// The keys of members.
template <class Struct, class... Members>
std::vector<std::string_view> KeysOf(Members Struct::*... members) {
    return {orvo::KeyOf(members)...};
}

/// Writes a struct without some of its members.
/// @param said  the keys of the members that the format says itself
template <class Struct>
void EncodeRest(JsonWriter& out, const Struct& value, const std::vector<std::string_view>& said) {
    const auto add = [&](const auto& row) {
        const auto& member = value.*row.member;
        const bool isSaid = std::ranges::find(said, row.key) != said.end();
        if (!isSaid &&
            !orvo::json::IsDefault(member, orvo::json::DefaultOf<Struct>().*row.member)) {
            out.Key(row.key);
            orvo::json::Encode(out, member);
        }
    };
    out.BeginObject();
    std::apply([&](const auto&... rows) { (add(rows), ...); }, orvo::Schema<Struct>::kRows);
    out.EndObject();
}

// Declared first, so that composite values can nest in any order. All throw json::WrongValue.

template <class Value>
void DecodeInto(const ParsedJson& json, Value& value);
template <class Element>
requires(!std::is_same_v<Element, std::uint8_t>) void DecodeInto(const ParsedJson& json,
                                                                 std::vector<Element>& list);
template <class Held>
void DecodeInto(const ParsedJson& json, std::optional<Held>& value);
template <class Held>
void DecodeInto(const ParsedJson& json, std::map<std::uint32_t, Held>& table);

/// Keys that the struct does not have are ignored.
template <class Value>
void DecodeInto(const ParsedJson& json, Value& value) {
    if constexpr (orvo::HasSchema<Value>) {
        if (!json.is_object()) {
            orvo::json::FailAtValue(json, "give an object");
        }
        const auto take = [&](const auto& row) {
            if (const auto member = json.find(row.key); member != json.end()) {
                DecodeInto(*member, value.*row.member);
            }
        };
        std::apply([&](const auto&... rows) { (take(rows), ...); }, orvo::Schema<Value>::kRows);
    } else {
        orvo::json::Decode(json, value);
    }
}

template <class Element>
requires(!std::is_same_v<Element, std::uint8_t>) void DecodeInto(const ParsedJson& json,
                                                                 std::vector<Element>& list) {
    if (!json.is_array()) {
        orvo::json::FailAtValue(json, "give a list");
    }
    for (const ParsedJson& element : json) {
        DecodeInto(element, list.emplace_back());
    }
}

template <class Held>
void DecodeInto(const ParsedJson& json, std::optional<Held>& value) {
    if (!json.is_null()) {
        DecodeInto(json, value.emplace());
    }
}

template <class Held>
void DecodeInto(const ParsedJson& json, std::map<std::uint32_t, Held>& table) {
    if (!json.is_object()) {
        orvo::json::FailAtValue(json, "give an object");
    }
    for (const auto& [key, held] : json.items()) {
        DecodeInto(held, table[orvo::json::DecodeNumberKey(key)]);
    }
}

}  // namespace toolkit::interchange::otio
