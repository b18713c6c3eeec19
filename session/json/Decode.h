#pragma once

#include <concepts>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/kelcore/Types.h"
#include "session/Words.h"

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

/// From here on the nearest real of single precision would be infinite.
inline constexpr double kBeyondSinglePrecision = 0x1.ffffffp127;

/// The numbers that stand for a value of an enumeration: all of 32 bits, signed or unsigned.
inline constexpr kelcore::int64 kLowestCode = std::numeric_limits<kelcore::int32>::min();
inline constexpr kelcore::int64 kHighestCode = std::numeric_limits<kelcore::uint32>::max();

/// An integer between two bounds; no value for anything else.
std::optional<kelcore::int64> FindSigned(const ParsedJson& json, kelcore::int64 lowest,
                                         kelcore::int64 highest);

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

/// Whether an enumeration has two values and no others.
template <class Code>
inline constexpr bool kIsSwitch = std::is_same_v<std::underlying_type_t<Code>, bool>;

/// A word or a number. Former texts have numbers for all values, current ones for those without a
/// word.
template <HasWords Code>
std::optional<Code> FindCode(const ParsedJson& json) {
    if (json.is_string()) {
        return CodeOf<Code>(json.get_ref<const std::string&>());
    }
    if constexpr (kIsSwitch<Code>) {
        return json.is_boolean() ? std::optional(Code{json.get<bool>()}) : std::nullopt;
    } else {
        const auto number = FindSigned(json, kLowestCode, kHighestCode);
        return number ? std::optional(static_cast<Code>(*number)) : std::nullopt;
    }
}

/// @param words     the words that are wanted, with quotes: "a", "b"
/// @param isSwitch  whether there are no other values
[[noreturn]] void FailAtCode(const ParsedJson& json, const std::string& words, bool isSwitch);

template <HasWords Code>
void Decode(const ParsedJson& json, Code& code) {
    const std::optional<Code> found = FindCode<Code>(json);
    if (!found) {
        std::string words;
        for (const Word<Code>& word : Words<Code>::kTable) {
            words.append(words.empty() ? "\"" : ", \"").append(word.text).append("\"");
        }
        FailAtCode(json, words, kIsSwitch<Code>);
    }
    code = *found;
}

/// A key that is a number, written as `Encode` writes it.
kelcore::uint32 DecodeNumberKey(std::string_view key);

/// @param wanted  "give a list"
[[noreturn]] void FailAtValue(const ParsedJson& json, const std::string& wanted);

}  // namespace orvo::json
