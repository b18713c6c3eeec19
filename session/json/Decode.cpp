#include "session/json/Decode.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>

#include "platform/kelcore/BinaryText.h"
#include "session/json/LoneSurrogates.h"
#include "session/json/RealTexts.h"

namespace orvo::json {
namespace {

/// Describes a JSON value for a message.
std::string Description(const ParsedJson& json) {
    if (json.is_number()) {
        return "the number " + json.dump();
    }
    if (json.is_boolean()) {
        return json.dump();
    }
    if (json.is_string()) {
        return "a text";
    }
    if (json.is_null()) {
        return "null";
    }
    return json.is_array() ? "a list" : "an object";
}

template <class Integer>
[[noreturn]] void FailAtInteger(const ParsedJson& json, Integer lowest, Integer highest) {
    FailAtValue(json, "give a whole number from " + std::to_string(lowest) + " to " +
                          std::to_string(highest) + ", without point or exponent");
}

}  // namespace

void Decode(const ParsedJson& json, bool& value) {
    if (!json.is_boolean()) {
        FailAtValue(json, "give true or false");
    }
    value = json.get<bool>();
}

void Decode(const ParsedJson& json, double& value) {
    if (json.is_number()) {
        value = json.get<double>();
    } else if (json == kNotANumber) {
        value = std::numeric_limits<double>::quiet_NaN();
    } else if (json == kInfinity) {
        value = std::numeric_limits<double>::infinity();
    } else if (json == kMinusInfinity) {
        value = -std::numeric_limits<double>::infinity();
    } else {
        FailAtValue(json, fmt::format(R"(give a number, or one of the texts "{}", "{}" and "{}")",
                                      kNotANumber, kInfinity, kMinusInfinity));
    }
}

void Decode(const ParsedJson& json, float& value) {
    double real = 0;
    Decode(json, real);
    if (std::isfinite(real) && std::abs(real) >= kBeyondSinglePrecision) {
        FailAtValue(json, "give a number between -3.4028235e38 and 3.4028235e38");
    }
    value = static_cast<float>(real);
    if (value == 0 && real != 0) {
        FailAtValue(json, "give 0 or a number that is at least 7.1e-46 away from it");
    }
}

void Decode(const ParsedJson& json, std::string& text) {
    if (!json.is_string()) {
        FailAtValue(json, "give a text");
    }
    text = UnmarkedText(json.get_ref<const std::string&>());
}

void Decode(const ParsedJson& json, std::vector<kelcore::byte>& block) {
    if (!json.is_string()) {
        FailAtValue(json, "give the bytes as a text in Base64");
    }
    const auto& text = json.get_ref<const std::string&>();
    block.clear();
    if (!text.empty() && !kelcore::DecodeBinaryDataFromUTF8String(text, block)) {
        throw WrongValue("this text is not Base64; give the bytes in Base64");
    }
}

std::optional<kelcore::int64> FindSigned(const ParsedJson& json, kelcore::int64 lowest,
                                         kelcore::int64 highest) {
    constexpr auto kHighest = std::numeric_limits<kelcore::int64>::max();
    const bool fitsType = json.is_number_integer() &&
                          (!json.is_number_unsigned() || json.get<kelcore::uint64>() <= kHighest);
    const kelcore::int64 value = fitsType ? json.get<kelcore::int64>() : 0;
    return fitsType && value >= lowest && value <= highest ? std::optional(value) : std::nullopt;
}

kelcore::int64 DecodeSigned(const ParsedJson& json, kelcore::int64 lowest, kelcore::int64 highest) {
    const auto value = FindSigned(json, lowest, highest);
    if (!value) {
        FailAtInteger(json, lowest, highest);
    }
    return *value;
}

kelcore::uint64 DecodeUnsigned(const ParsedJson& json, kelcore::uint64 highest) {
    if (!json.is_number_unsigned() || json.get<kelcore::uint64>() > highest) {
        FailAtInteger(json, kelcore::uint64{0}, highest);
    }
    return json.get<kelcore::uint64>();
}

void FailAtCode(const ParsedJson& json, const std::string& words, bool isSwitch) {
    const std::string wanted =
        "give one of " + words +
        (isSwitch ? std::string()
                  : ", or a whole number from " + std::to_string(kLowestCode) + " to " +
                        std::to_string(kHighestCode));
    if (json.is_string()) {
        throw WrongValue("unknown word; " + wanted);
    }
    FailAtValue(json, wanted);
}

kelcore::uint32 DecodeNumberKey(std::string_view key) {
    kelcore::uint32 number = 0;
    std::from_chars(key.data(), key.data() + key.size(), number);
    // Only one spelling is accepted, so no two keys are the same number.
    if (std::to_string(number) != key) {
        throw WrongValue("this key is not a number; give a whole number from 0 to 4294967295");
    }
    return number;
}

void FailAtValue(const ParsedJson& json, const std::string& wanted) {
    throw WrongValue("this is " + Description(json) + "; " + wanted);
}

}  // namespace orvo::json
