#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Types.h"

/// Converts host values to attribute text and back. No conversion reports an error; each says what
/// it makes of text that does not fit.
namespace tses {

/// The text of a number, without an allocation.
class NumberText {
public:
    operator std::u16string_view() const { return {units_.data(), size_}; }
    bool operator==(std::u16string_view text) const { return std::u16string_view(*this) == text; }

private:
    friend class NumberFormat;

    std::array<char16_t, kelcore::kFloatBufferSize> units_;
    std::size_t size_;
};

/// Writes a real number as the shortest text that reads back to the same value.
NumberText FormatNumber(kelcore::uint32 value);
NumberText FormatNumber(kelcore::int32 value);
NumberText FormatNumber(kelcore::int64 value);
NumberText FormatNumber(float value);
NumberText FormatNumber(double value);

/// "true" or "false".
constexpr std::u16string_view FormatBool(bool value) {
    return value ? u"true" : u"false";
}

/// The whole text must be a number, or `target` keeps what it holds: callers put the default there.
void ParseNumber(std::u16string_view text, kelcore::uint32& target);
void ParseNumber(std::u16string_view text, kelcore::int32& target);
void ParseNumber(std::u16string_view text, kelcore::int64& target);
void ParseNumber(std::u16string_view text, float& target);

/// Reads as a stream of the "C" locale does, after turning every "," into ".": skips leading blanks
/// and ignores what follows the number. Gives 0 if there is no number or it is too large.
float ParseFloatLenient(std::u16string_view text);
double ParseDoubleLenient(std::u16string_view text);

/// True only for "true".
bool ParseBoolStrict(std::u16string_view text);

/// True for "true" and "1".
bool ParseBoolLenient(std::u16string_view text);

/// Binary blocks as the text of a CDATA section. Text that is not encoded so decodes to no bytes.
/// `DecodeBlock` replaces what `bytes` held.
std::u16string EncodeBlock(std::span<const kelcore::byte> bytes);
void DecodeBlock(std::u16string_view text, std::vector<kelcore::byte>& bytes);

}  // namespace tses
