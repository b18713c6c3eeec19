#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "format/ValueText.h"
#include "platform/kelcore/Types.h"

/// Converts host values to attribute text and back. No conversion reports an error; each says what
/// it makes of text that does not fit.
namespace tses {

/// Appends a number; a real one as the shortest text that reads back to the same value.
void AppendNumber(kelcore::uint32 value, ValueText& text);
void AppendNumber(kelcore::int32 value, ValueText& text);
void AppendNumber(kelcore::int64 value, ValueText& text);
void AppendNumber(float value, ValueText& text);
void AppendNumber(double value, ValueText& text);

template <class Number>
std::u16string FormatNumber(Number value) {
    ValueText text;
    AppendNumber(value, text);
    return text.ToString();
}

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
