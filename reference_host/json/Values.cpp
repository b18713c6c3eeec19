#include "reference_host/json/Values.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "platform/kelcore/BinaryText.h"
#include "reference_host/json/LoneSurrogates.h"
#include "reference_host/json/SessionJson.h"

namespace refhost {
namespace {

constexpr char kNotANumber[] = "NaN";
constexpr char kInfinity[] = "Infinity";
constexpr char kMinusInfinity[] = "-Infinity";
constexpr char kRealWanted[] =
    "give a number, or one of the texts \"NaN\", \"Infinity\" and \"-Infinity\"";

/// From here on the nearest real of single precision would be infinite.
constexpr double kBeyondSinglePrecision = 0x1.ffffffp127;

/// What stands there, for people.
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

[[noreturn]] void FailAtValue(const ParsedJson& json, const JsonPlace& place,
                              const std::string& wanted) {
    place.Fail("this is " + Description(json) + "; " + wanted);
}

template <class Integer>
[[noreturn]] void FailAtInteger(const ParsedJson& json, const JsonPlace& place, Integer lowest,
                                Integer highest) {
    FailAtValue(json, place,
                "give a whole number from " + std::to_string(lowest) + " to " +
                    std::to_string(highest) + ", without point or exponent");
}

/// The double whose shortest text is that of the float, so that 0.1 does not become
/// 0.10000000149011612; the float itself where that would not read back as it.
double ShortForm(float value) {
    char text[32];
    const auto end = std::to_chars(std::begin(text), std::end(text), value).ptr;
    double shortForm = 0;
    std::from_chars(std::begin(text), end, shortForm);
    return static_cast<float>(shortForm) == value ? shortForm : static_cast<double>(value);
}

}  // namespace

std::string PointerStep(std::string_view key) {
    std::string step = "/";
    for (const char character : UnmarkedDocument(key)) {
        switch (character) {
            case '~':
                step += "~0";
                break;
            case '/':
                step += "~1";
                break;
            default:
                step += character;
        }
    }
    return step;
}

std::string JsonPlace::Pointer() const {
    if (parent_ == nullptr) {
        return {};
    }
    return parent_->Pointer() + (key_ ? PointerStep(*key_) : "/" + std::to_string(index_));
}

void JsonPlace::Fail(const std::string& problem) const {
    const std::string pointer = Pointer();
    throw JsonError((pointer.empty() ? "the whole document" : pointer) + ": " + problem);
}

Json Encode(bool value) {
    return value;
}

Json Encode(double value) {
    if (std::isnan(value)) {
        return kNotANumber;
    }
    if (std::isinf(value)) {
        return value > 0 ? kInfinity : kMinusInfinity;
    }
    return value;
}

Json Encode(float value) {
    return Encode(std::isfinite(value) ? ShortForm(value) : static_cast<double>(value));
}

Json Encode(const std::u16string& text) {
    return MarkedText(text);
}

Json Encode(const std::vector<kelcore::byte>& block) {
    std::string text = kelcore::EncodeBinaryDataToUTF8String(block.data(), block.size());
    std::erase(text, '\n');
    return text;
}

void Decode(const ParsedJson& json, const JsonPlace& place, bool& value) {
    if (!json.is_boolean()) {
        FailAtValue(json, place, "give true or false");
    }
    value = json.get<bool>();
}

void Decode(const ParsedJson& json, const JsonPlace& place, double& value) {
    if (json.is_number()) {
        value = json.get<double>();
    } else if (json == kNotANumber) {
        value = std::numeric_limits<double>::quiet_NaN();
    } else if (json == kInfinity) {
        value = std::numeric_limits<double>::infinity();
    } else if (json == kMinusInfinity) {
        value = -std::numeric_limits<double>::infinity();
    } else {
        FailAtValue(json, place, kRealWanted);
    }
}

void Decode(const ParsedJson& json, const JsonPlace& place, float& value) {
    double real = 0;
    Decode(json, place, real);
    if (std::isfinite(real) && std::abs(real) >= kBeyondSinglePrecision) {
        FailAtValue(json, place, "give a number between -3.4028235e38 and 3.4028235e38");
    }
    value = static_cast<float>(real);
    if (value == 0 && real != 0) {
        FailAtValue(json, place, "give 0 or a number that is at least 7.1e-46 away from it");
    }
}

void Decode(const ParsedJson& json, const JsonPlace& place, std::u16string& text) {
    if (!json.is_string()) {
        FailAtValue(json, place, "give a text");
    }
    text = UnmarkedText(json.get_ref<const std::string&>());
}

void Decode(const ParsedJson& json, const JsonPlace& place, std::vector<kelcore::byte>& block) {
    if (!json.is_string()) {
        FailAtValue(json, place, "give the bytes as a text in Base64");
    }
    const std::string& text = json.get_ref<const std::string&>();
    block.clear();
    if (!text.empty() && !kelcore::DecodeBinaryDataFromUTF8String(text, block)) {
        place.Fail("this text is not Base64; give the bytes in Base64");
    }
}

kelcore::int64 DecodeSigned(const ParsedJson& json, const JsonPlace& place, kelcore::int64 lowest,
                            kelcore::int64 highest) {
    constexpr auto kHighest = std::numeric_limits<kelcore::int64>::max();
    const bool fitsType = json.is_number_integer() &&
                          (!json.is_number_unsigned() || json.get<kelcore::uint64>() <= kHighest);
    const kelcore::int64 value = fitsType ? json.get<kelcore::int64>() : 0;
    if (!fitsType || value < lowest || value > highest) {
        FailAtInteger(json, place, lowest, highest);
    }
    return value;
}

kelcore::uint64 DecodeUnsigned(const ParsedJson& json, const JsonPlace& place,
                               kelcore::uint64 highest) {
    if (!json.is_number_unsigned() || json.get<kelcore::uint64>() > highest) {
        FailAtInteger(json, place, kelcore::uint64{0}, highest);
    }
    return json.get<kelcore::uint64>();
}

kelcore::uint32 DecodeNumberKey(const std::string& key, const JsonPlace& place) {
    kelcore::uint32 number = 0;
    std::from_chars(key.data(), key.data() + key.size(), number);
    // Only the one spelling, so that no two keys are one number.
    if (std::to_string(number) != key) {
        place.Fail("this key is no number; give a whole number from 0 to 4294967295");
    }
    return number;
}

void RequireArray(const ParsedJson& json, const JsonPlace& place) {
    if (!json.is_array()) {
        FailAtValue(json, place, "give a list");
    }
}

void RequireObject(const ParsedJson& json, const JsonPlace& place) {
    if (!json.is_object()) {
        FailAtValue(json, place, "give an object");
    }
}

void FailAtUnknownKey(const JsonPlace& place, const std::string& key,
                      const std::vector<std::string>& knownKeys) {
    std::string known;
    for (const std::string& name : knownKeys) {
        known += (known.empty() ? "" : ", ") + name;
    }
    JsonPlace(place, key).Fail("unknown key; the keys here are " + known);
}

}  // namespace refhost
