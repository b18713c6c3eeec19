#include "platform/kelcore/BinaryText.h"

#include <array>
#include <new>
#include <type_traits>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/Base64.hpp>

namespace kelcore {
namespace {

/// Frees everything that one call of the codec allocated. The codec leaks when it fails, and the
/// library's own memory manager exists only while the library is running.
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
constexpr byte kNoDigit = 0x80;  // neither "=" nor a digit

constexpr std::array<byte, 0x80> kDigits = [] {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<byte, 0x80> digits{};
    digits.fill(kNoDigit);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        digits[static_cast<byte>(kAlphabet[i])] = static_cast<byte>(i);
    }
    digits['='] = kPad;
    return digits;
}();

/// Four digits, which encode three bytes; the last quadruple of a text may encode fewer.
using Quadruple = std::array<byte, 4>;

bool AreDigits(const Quadruple& quadruple) {
    return (quadruple[0] | quadruple[1] | quadruple[2] | quadruple[3]) < kPad;
}

/// Decodes three bytes and returns the position after them. Padding leaves garbage in the bytes
/// that it stands for; the caller drops those.
byte* Put(const Quadruple& quadruple, byte* out) {
    for (std::size_t i = 0; i < 3; ++i) {
        *out++ = static_cast<byte>(quadruple[i] << (2 * i + 2) | quadruple[i + 1] >> (4 - 2 * i));
    }
    return out;
}

/// Decodes the last quadruple of a text. Returns null if it is malformed: unused bits must be zero.
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

/// Zeros and non-ASCII characters are errors wherever they appear.
template <class Unit>
bool IsText(Unit unit) {
    return unit != 0 && static_cast<std::make_unsigned_t<Unit>>(unit) < kDigits.size();
}

/// Decodes whole quadruples up to the next character that is not a digit, but leaves the last one
/// to the caller. Most text goes through here, four times faster than character by character.
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

/// Decodes `text` to `out` and returns the end of the output, or null if the text is malformed.
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
    bytes.resize(text.size() / 4 * 3 + 1);  // one extra, so that data() is never null
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
