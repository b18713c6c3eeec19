#pragma once

#include <concepts>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/kelcore/Types.h"

/// The model's single values from those of the JSON library, by their types. Texts have marks in
/// place of lone surrogates (LoneSurrogates.h).
namespace orvo::json {

using ParsedJson = nlohmann::json;

/// What is wrong with a value, and what to do; whoever knows the place adds it.
class WrongValue : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// All throw WrongValue.

void Decode(const ParsedJson& json, bool& value);
void Decode(const ParsedJson& json, double& value);
void Decode(const ParsedJson& json, float& value);
void Decode(const ParsedJson& json, std::string& text);
void Decode(const ParsedJson& json, std::vector<kelcore::byte>& block);

/// An integer between two bounds.
kelcore::int64 DecodeSigned(const ParsedJson& json, kelcore::int64 lowest, kelcore::int64 highest);
kelcore::uint64 DecodeUnsigned(const ParsedJson& json, kelcore::uint64 highest);

template <std::signed_integral Integer>
void Decode(const ParsedJson& json, Integer& value) {
    using Limits = std::numeric_limits<Integer>;
    value = static_cast<Integer>(DecodeSigned(json, Limits::min(), Limits::max()));
}

template <std::unsigned_integral Integer>
void Decode(const ParsedJson& json, Integer& value) {
    value = static_cast<Integer>(DecodeUnsigned(json, std::numeric_limits<Integer>::max()));
}

template <class Code>
requires std::is_enum_v<Code>
void Decode(const ParsedJson& json, Code& code) {
    std::underlying_type_t<Code> number{};
    Decode(json, number);
    code = Code{number};
}

/// A key that is a number, written as `Encode` writes it.
kelcore::uint32 DecodeNumberKey(std::string_view key);

/// @param wanted  "give a list"
[[noreturn]] void FailAtValue(const ParsedJson& json, const std::string& wanted);

}  // namespace orvo::json
