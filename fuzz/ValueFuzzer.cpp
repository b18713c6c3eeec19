#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "format/ValueEncoding.h"
#include "fuzz/ByteSource.h"
#include "fuzz/PluginUnderTest.h"
#include "platform/kelcore/BinaryText.h"
#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Strings.h"
#include "plugin/xml/Text.h"

// Converts values to text and back, and reads arbitrary text as values.

namespace {

void Expect(bool holds, const char* what) {
    if (!holds) {
        fuzz::Fail(what);
    }
}

bool IsSame(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

void NumbersComeBack(fuzz::ByteSource source) {
    const auto unsignedNumber = source.Take<kelcore::uint32>();
    kelcore::uint32 readUnsigned = ~unsignedNumber;
    tses::ParseNumber(tses::FormatNumber(unsignedNumber), readUnsigned);
    Expect(readUnsigned == unsignedNumber, "an unsigned number changed");

    const auto signedNumber = source.Take<kelcore::int32>();
    kelcore::int32 readSigned = ~signedNumber;
    tses::ParseNumber(tses::FormatNumber(signedNumber), readSigned);
    Expect(readSigned == signedNumber, "a signed number changed");

    const auto longNumber = source.Take<kelcore::int64>();
    kelcore::int64 readLong = ~longNumber;
    tses::ParseNumber(tses::FormatNumber(longNumber), readLong);
    Expect(readLong == longNumber, "a long number changed");

    const auto real = source.Take<double>();
    if (std::isfinite(real)) {
        Expect(IsSame(tses::ParseDoubleLenient(tses::FormatNumber(real)), real),
               "a double number changed");
    }
    const auto shortReal = source.Take<float>();
    if (std::isfinite(shortReal)) {
        float readReal = shortReal + 1;
        tses::ParseNumber(tses::FormatNumber(shortReal), readReal);
        Expect(IsSame(readReal, shortReal), "a float number changed");
    }
}

/// An accepted text must denote the number that was read; a rejected one must leave the target
/// unchanged.
template <class Number>
void AnyTextIsANumberOrNone(std::u16string_view text) {
    Number number = 42;
    if (!kelcore::StringToNumber(text, number)) {
        Expect(number == 42, "a rejected number changed the target");
        return;
    }
    Expect(text.find_first_of(u" \t\n,") == std::u16string_view::npos && !text.starts_with(u'+'),
           "a malformed number was accepted");
}

void BlocksComeBack(const std::uint8_t* data, std::size_t size) {
    const std::vector<kelcore::byte> bytes(reinterpret_cast<const kelcore::byte*>(data),
                                           reinterpret_cast<const kelcore::byte*>(data) + size);
    std::vector<kelcore::byte> back;
    tses::DecodeBlock(tses::EncodeBlock(bytes), back);
    Expect(back == bytes, "a block changed");
}

void TextsComeBack(std::string_view bytes, std::u16string_view text) {
    const std::u16string wide = kelcore::UTF8to16(bytes);
    Expect(kelcore::UTF8to16(kelcore::UTF16to8(wide)) == wide, "a text changed");
    const std::u16string_view trimmed = tses::TrimWhitespace(text);
    Expect(tses::TrimWhitespace(trimmed) == trimmed, "trimming twice changes the text again");
    std::vector<kelcore::byte> block;
    tses::DecodeBlock(text, block);
    tses::ParseFloatLenient(text);
    tses::ParseDoubleLenient(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string text = kelcore::UTF8to16(bytes);
    NumbersComeBack(fuzz::ByteSource(data, size));
    AnyTextIsANumberOrNone<kelcore::int32>(text);
    AnyTextIsANumberOrNone<kelcore::uint32>(text);
    AnyTextIsANumberOrNone<kelcore::int64>(text);
    AnyTextIsANumberOrNone<float>(text);
    AnyTextIsANumberOrNone<double>(text);
    BlocksComeBack(data, size);
    TextsComeBack(bytes, text);
    return 0;
}
