#include "platform/kelcore/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

namespace kelcore {
namespace {

/// A number's text as ASCII. Empty, and so not a number, if it contains any other character. Short
/// numbers need no allocation.
class NarrowText {
public:
    explicit NarrowText(std::u16string_view text) {
        char* narrow = short_.data();
        if (text.size() > short_.size()) {
            long_.resize(text.size());
            narrow = long_.data();
        }
        unsigned all = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            all |= text[i];
            narrow[i] = static_cast<char>(text[i]);
        }
        if (all <= 0x7F) {
            view_ = {narrow, text.size()};
        }
    }
    NarrowText(const NarrowText&) = delete;
    NarrowText& operator=(const NarrowText&) = delete;

    std::string_view View() const { return view_; }

private:
    std::array<char, 64> short_;
    std::string long_;
    std::string_view view_;
};

/// The value of one or more decimal digits; nothing if the text is malformed or the value exceeds
/// `highest`.
std::optional<uint64> ReadDigits(std::u16string_view text, uint64 highest) {
    constexpr std::size_t kAlwaysFit = std::numeric_limits<uint64>::digits10;
    uint64 value = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const uint64 digit = static_cast<uint64>(text[i]) - u'0';
        if (digit > 9 || (i >= kAlwaysFit && value > (highest - digit) / 10)) {
            return std::nullopt;
        }
        value = 10 * value + digit;
    }
    return text.empty() || value > highest ? std::nullopt : std::optional(value);
}

bool ReadInteger(std::u16string_view text, int64 lowest, int64 highest, int64& target) {
    const bool negative = text.starts_with(u'-');
    const uint64 farthest =
        negative ? 0 - static_cast<uint64>(lowest) : static_cast<uint64>(highest);
    const std::optional<uint64> magnitude = ReadDigits(text.substr(negative ? 1 : 0), farthest);
    if (magnitude) {
        target = static_cast<int64>(negative ? 0 - *magnitude : *magnitude);
    }
    return magnitude.has_value();
}

bool ReadInteger32(std::u16string_view text, int64& target) {
    return ReadInteger(text, std::numeric_limits<int32>::min(), std::numeric_limits<uint32>::max(),
                       target);
}

/// Whether an out-of-range number is too small rather than too large. That far out, the position of
/// the first non-zero digit decides.
bool IsVanishinglySmall(std::string_view number) {
    const std::size_t exponentMark = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, exponentMark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t firstDigit = mantissa.find_first_of("123456789");
    const int64 magnitude = static_cast<int64>(point) - static_cast<int64>(firstDigit);
    if (exponentMark == number.size()) {
        return magnitude < 0;
    }
    std::string_view exponent = number.substr(exponentMark + 1);
    if (exponent.starts_with('+')) {
        exponent.remove_prefix(1);
    }
    int32 value = 0;
    const auto [stop, error] =
        std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
    if (error == std::errc::result_out_of_range) {
        return exponent.starts_with('-');
    }
    return magnitude + value < 0;
}

template <typename Real>
bool ReadReal(std::u16string_view text, Real& target) {
    const NarrowText narrow(text);
    const std::string_view number = narrow.View();
    // Unlike this function, from_chars accepts "inf" and "nan".
    if (number.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return false;
    }
    const char* const end = number.data() + number.size();
    Real value = 0;
    const auto [stop, error] = std::from_chars(number.data(), end, value);
    if (stop != end || error == std::errc::invalid_argument) {
        return false;
    }
    if (error == std::errc::result_out_of_range) {
        if (!IsVanishinglySmall(number)) {
            return false;
        }
        value = number.starts_with('-') ? -Real{0} : Real{0};
    }
    target = value;
    return true;
}

std::ptrdiff_t SignificantDigits(std::string_view number) {
    const std::string_view mantissa = number.substr(0, number.find('e'));
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) {
        return 1;
    }
    const std::size_t last = mantissa.find_last_of("123456789");
    const std::string_view digits = mantissa.substr(first, last - first + 1);
    return std::count_if(digits.begin(), digits.end(), [](char digit) { return digit != '.'; });
}

std::size_t Widen(std::string_view text, char16* buffer) {
    *std::copy(text.begin(), text.end(), buffer) = u'\0';
    return text.size();
}

template <typename Real>
std::size_t WriteReal(char16* buffer, Real value, int precision) {
    if (std::isnan(value)) {
        return Widen("nan", buffer);
    }
    std::array<char, kFloatBufferSize> text;
    char* const begin = text.data();
    char* const limit = begin + text.size() - 1;
    char* end = std::to_chars(begin, limit, value).ptr;
    const int digits = std::max(precision, 1);
    if (end - begin > digits && std::isfinite(value) && SignificantDigits({begin, end}) > digits) {
        end = std::to_chars(begin, limit, value, std::chars_format::general, digits).ptr;
    }
    return Widen({begin, end}, buffer);
}

}  // namespace

bool StringToNumber(std::u16string_view text, int32& target, NumberFlags) {
    int64 value = 0;
    if (!ReadInteger32(text, value)) {
        return false;
    }
    target = static_cast<int32>(value);
    return true;
}

bool StringToNumber(std::u16string_view text, uint32& target, NumberFlags) {
    int64 value = 0;
    if (!ReadInteger32(text, value)) {
        return false;
    }
    target = static_cast<uint32>(value);
    return true;
}

bool StringToNumber(std::u16string_view text, int64& target, NumberFlags) {
    return ReadInteger(text, std::numeric_limits<int64>::min(), std::numeric_limits<int64>::max(),
                       target);
}

bool StringToNumber(std::u16string_view text, float& target, NumberFlags) {
    return ReadReal(text, target);
}

bool StringToNumber(std::u16string_view text, double& target, NumberFlags) {
    return ReadReal(text, target);
}

std::size_t ConvertFloatToBufferT(char16* buffer, float value, int precision) {
    return WriteReal(buffer, value, precision);
}

std::size_t ConvertFloatToBufferT(char16* buffer, double value, int precision) {
    return WriteReal(buffer, value, precision);
}

}  // namespace kelcore
