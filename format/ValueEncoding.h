#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Types.h"

/// Converts host values to attribute text and back. No conversion reports an error; each says what
/// it makes of text that does not fit.
namespace tses {

/// Writes a real number as the shortest text that reads back to the same value.
std::u16string FormatNumber(kelcore::uint32 value);
std::u16string FormatNumber(kelcore::int32 value);
std::u16string FormatNumber(kelcore::int64 value);
std::u16string FormatNumber(float value);
std::u16string FormatNumber(double value);

/// "true" or "false".
std::u16string FormatBool(bool value);

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
