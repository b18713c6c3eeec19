#include "format/ValueEncoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <locale>
#include <optional>
#include <sstream>
#include <system_error>

#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Strings.h"

namespace tses {
namespace {

constexpr int kFloatPrecision = 100;

bool IsStreamSpace(char16_t unit) {
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}
bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

/// The part of a text that a stream takes for a number, narrowed, with "." for ",". Numbers of
/// ordinary length need no allocation.
class NumberPrefix {
public:
    explicit NumberPrefix(std::u16string_view text)
        : next_(text.data()), end_(next_ + text.size()) {
        while (next_ != end_ && IsStreamSpace(*next_)) {
            ++next_;
        }
        const auto room = static_cast<std::size_t>(end_ - next_);
        if (room > short_.size()) {
            long_.resize(room);
        }
        begin_ = narrow_ = room > short_.size() ? long_.data() : short_.data();
        TakeSign();
        bool digits = TakeDigits();
        if (TakePoint()) {
            digits = TakeDigits() || digits;
        }
        if (digits && TakeOneOf(u'e', u'E')) {
            TakeSign();
            TakeDigits();
        }
    }
    NumberPrefix(const NumberPrefix&) = delete;
    NumberPrefix& operator=(const NumberPrefix&) = delete;

    std::string_view Characters() const { return {begin_, narrow_}; }

private:
    bool TakeOneOf(char16_t one, char16_t other) {
        const bool taken = next_ != end_ && (*next_ == one || *next_ == other);
        if (taken) {
            Take();
        }
        return taken;
    }

    void TakeSign() { TakeOneOf(u'+', u'-'); }

    bool TakePoint() {
        const bool taken = TakeOneOf(u'.', u',');
        if (taken) {
            narrow_[-1] = '.';
        }
        return taken;
    }

    bool TakeDigits() {
        const char* const before = narrow_;
        while (next_ != end_ && IsDigit(*next_)) {
            Take();
        }
        return narrow_ != before;
    }

    void Take() { *narrow_++ = static_cast<char>(*next_++); }

    const char16_t* next_;
    const char16_t* end_;
    char* begin_;
    char* narrow_;  // the end of the number
    std::array<char, 64> short_;
    std::string long_;
};

template <class Real>
Real ReadFromStream(std::string_view characters) {
    std::istringstream stream{std::string(characters)};
    stream.imbue(std::locale::classic());
    Real value{};
    return stream >> value ? value : Real{};
}

/// Parses a text that is a number from its first unit to its last, as a program writes it.
template <class Real>
std::optional<Real> ParsePlain(std::u16string_view text) {
    std::array<char, 32> narrow;
    if (text.size() > narrow.size()) {
        return std::nullopt;
    }
    char* end = narrow.data();
    for (const char16_t unit : text) {
        if (!IsDigit(unit) && unit != u'.' && unit != u'-') {
            return std::nullopt;
        }
        *end++ = static_cast<char>(unit);
    }
    Real value{};
    const auto read = std::from_chars(narrow.data(), end, value);
    return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt;
}

template <class Real>
Real ParseLenient(std::u16string_view text) {
    if (const auto plain = ParsePlain<Real>(text)) {
        return *plain;
    }
    const NumberPrefix prefix(text);
    const std::string_view characters = prefix.Characters();
    const char* first = characters.data();
    const char* const last = first + characters.size();
    if (first != last && *first == '+') {
        ++first;
    }
    Real value{};
    const auto read = std::from_chars(first, last, value);
    if (read.ec == std::errc::result_out_of_range) {
        return ReadFromStream<Real>(characters);  // tells too large (0) from too small (rounded)
    }
    // A number that stops in the middle ("1e") is 0, as for a stream.
    return read.ec == std::errc() && read.ptr == last ? value : Real{};
}

template <class Integer>
void AppendInteger(Integer value, ValueText& text) {
    std::array<char, 24> digits;
    char* const end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    std::copy(digits.begin(), end, text.Extend(static_cast<std::size_t>(end - digits.begin())));
}

template <class Real>
void AppendReal(Real value, ValueText& text) {
    constexpr std::size_t kRoom = kelcore::kFloatBufferSize;
    text.Shorten(kRoom -
                 kelcore::ConvertFloatToBufferT(text.Extend(kRoom), value, kFloatPrecision));
}

}  // namespace

void AppendNumber(kelcore::uint32 value, ValueText& text) {
    AppendInteger(value, text);
}
void AppendNumber(kelcore::int32 value, ValueText& text) {
    AppendInteger(value, text);
}
void AppendNumber(kelcore::int64 value, ValueText& text) {
    AppendInteger(value, text);
}
void AppendNumber(float value, ValueText& text) {
    AppendReal(value, text);
}
void AppendNumber(double value, ValueText& text) {
    AppendReal(value, text);
}

void ParseNumber(std::u16string_view text, kelcore::uint32& target) {
    kelcore::StringToNumber(text, target);
}

void ParseNumber(std::u16string_view text, kelcore::int32& target) {
    kelcore::StringToNumber(text, target);
}

void ParseNumber(std::u16string_view text, kelcore::int64& target) {
    kelcore::StringToNumber(text, target);
}

void ParseNumber(std::u16string_view text, float& target) {
    kelcore::StringToNumber(text, target);
}

float ParseFloatLenient(std::u16string_view text) {
    return ParseLenient<float>(text);
}
double ParseDoubleLenient(std::u16string_view text) {
    return ParseLenient<double>(text);
}

bool ParseBoolStrict(std::u16string_view text) {
    return text == u"true";
}
bool ParseBoolLenient(std::u16string_view text) {
    return text == u"true" || text == u"1";
}

std::u16string EncodeBlock(std::span<const kelcore::byte> bytes) {
    const std::string ascii = kelcore::EncodeBinaryDataToUTF8String(bytes.data(), bytes.size());
    return {ascii.begin(), ascii.end()};
}

void DecodeBlock(std::u16string_view text, std::vector<kelcore::byte>& bytes) {
    kelcore::DecodeBinaryDataFromUTF16String(text, bytes);
}

}  // namespace tses
