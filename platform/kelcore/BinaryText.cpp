#include "platform/kelcore/BinaryText.h"

#include <array>
#include <new>
#include <type_traits>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/Base64.hpp>

namespace kelcore {
namespace {

/// The memory of one call of the codec, given back when the call is over. The library's own manager
/// exists only while the library is started, and the codec does not release all it took when it
/// fails.
class CallMemory final : public xercesc::MemoryManager {
public:
    void* allocate(XMLSize_t size) override { return blocks_.emplace_back(size).data(); }

    void deallocate(void* block) override {
        std::erase_if(blocks_, [block](const auto& owned) { return owned.data() == block; });
    }

    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

private:
    std::vector<std::vector<byte>> blocks_;
};

constexpr byte kPad = 0x40;      // "="
constexpr byte kNoDigit = 0x80;  // neither that nor a digit

constexpr std::array<byte, 0x80> kDigits = [] {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<byte, 0x80> digits{};
    digits.fill(kNoDigit);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        digits[static_cast<std::size_t>(kAlphabet[i])] = static_cast<byte>(i);
    }
    digits['='] = kPad;
    return digits;
}();

/// Four characters of the text, which hold three bytes, or fewer at its end.
using Quadruple = std::array<byte, 4>;

bool AreDigits(const Quadruple& quadruple) {
    return (quadruple[0] | quadruple[1] | quadruple[2] | quadruple[3]) < kPad;
}

/// Writes three bytes, of which those count that have a whole place, and returns what is behind
/// them.
byte* Put(const Quadruple& quadruple, byte* out) {
    for (std::size_t i = 0; i < 3; ++i) {
        *out++ = static_cast<byte>(quadruple[i] << (2 * i + 2) | quadruple[i + 1] >> (4 - 2 * i));
    }
    return out;
}

/// The last one of a text; null if it is none. The bits that are not used must be zero.
byte* PutLast(const Quadruple& quadruple, byte* out) {
    if (AreDigits(quadruple)) {
        return Put(quadruple, out);
    }
    const auto& [first, second, third, fourth] = quadruple;
    const bool isOneByte = third == kPad;
    const unsigned unused = isOneByte ? second & 0x0FU : third & (kNoDigit | 0x03U);
    if ((first | second) >= kPad || fourth != kPad || unused != 0) {
        return nullptr;
    }
    Put(quadruple, out);
    return out + (isOneByte ? 1 : 2);
}

template <class Unit>
bool IsWhiteSpace(Unit unit) {
    return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r';
}

template <class Unit>
byte DigitOf(Unit unit) {
    const auto code = static_cast<std::make_unsigned_t<Unit>>(unit);
    return code < kDigits.size() ? kDigits[code] : kNoDigit;
}

/// Zeros and what is not ASCII are refused wherever they stand.
template <class Unit>
bool IsText(Unit unit) {
    return unit != 0 && static_cast<std::make_unsigned_t<Unit>>(unit) < kDigits.size();
}

/// Takes what a line has of whole quadruples, as long as something follows: most of a text, and in
/// a quarter of the time that it would take by single characters.
template <class Unit>
byte* TakeLine(std::basic_string_view<Unit>& text, byte* out) {
    while (text.size() > 4) {
        const Quadruple next = {DigitOf(text[0]), DigitOf(text[1]), DigitOf(text[2]),
                                DigitOf(text[3])};
        if (!AreDigits(next)) {
            break;
        }
        out = Put(next, out);
        text.remove_prefix(4);
    }
    return out;
}

/// Writes the bytes of a text from `out` on, and returns what is behind them; null if it is no
/// encoding.
template <class Unit>
byte* Write(std::basic_string_view<Unit> text, byte* out) {
    Quadruple quadruple{};
    std::size_t size = 0;
    while (!text.empty()) {
        if (size == 0) {
            out = TakeLine(text, out);
        }
        const Unit unit = text.front();
        text.remove_prefix(1);
        if (IsWhiteSpace(unit)) {
            continue;
        }
        if (!IsText(unit)) {
            return nullptr;
        }
        if (size == quadruple.size()) {
            if (!AreDigits(quadruple)) {
                return nullptr;
            }
            out = Put(quadruple, out);
            size = 0;
        }
        quadruple[size++] = DigitOf(unit);
    }
    if (size == 0) {
        return out;
    }
    return size == quadruple.size() ? PutLast(quadruple, out) : nullptr;
}

template <class Unit>
bool Decode(std::basic_string_view<Unit> text, std::vector<byte>& bytes) {
    bytes.resize(text.size() / 4 * 3 + 1);  // never none: there is a place to begin at
    const byte* const end = Write(text, bytes.data());
    bytes.resize(end != nullptr ? static_cast<std::size_t>(end - bytes.data()) : 0);
    return end != nullptr;
}

}  // namespace

std::string EncodeBinaryDataToUTF8String(const byte* data, std::size_t size) {
    if (size == 0) {
        return {};
    }
    CallMemory memory;
    XMLSize_t length = 0;
    const XMLByte* const text = xercesc::Base64::encode(data, size, &length, &memory);
    if (text == nullptr) {
        throw std::bad_alloc();
    }
    return {text, text + length};
}

bool DecodeBinaryDataFromUTF8String(std::string_view text, std::vector<byte>& bytes) {
    return Decode(text, bytes);
}

bool DecodeBinaryDataFromUTF16String(std::u16string_view text, std::vector<byte>& bytes) {
    return Decode(text, bytes);
}

}  // namespace kelcore
