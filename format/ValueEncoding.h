#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kelcore/Numbers.h"
#include "platform/kelcore/Types.h"

/// Host values to attribute text and back. No conversion reports an error; what text that does not
/// fit gives is stated at each.
namespace tses {

/// Reals as the shortest text that reads back to the same value.
std::u16string FormatNumber(kelcore::uint32 value);
std::u16string FormatNumber(kelcore::int32 value);
std::u16string FormatNumber(kelcore::int64 value);
std::u16string FormatNumber(float value);
std::u16string FormatNumber(double value);

/// "true" or "false".
std::u16string FormatBool(bool value);

/// The whole text must be a number, else `target` keeps what it holds: callers put the default
/// there.
void ParseNumber(std::u16string_view text, kelcore::uint32& target);
void ParseNumber(std::u16string_view text, kelcore::int32& target);
void ParseNumber(std::u16string_view text, kelcore::int64& target);
void ParseNumber(std::u16string_view text, float& target);

/// Reads as a stream of the "C" locale does, after turning every "," into ".": leading blanks and a
/// tail that is no number are passed over. 0 if there is no number or it is too large.
float ParseFloatLenient(std::u16string_view text);
double ParseDoubleLenient(std::u16string_view text);

/// True only for "true".
bool ParseBoolStrict(std::u16string_view text);

/// True for "true" and "1".
bool ParseBoolLenient(std::u16string_view text);

/// Binary blocks as the text of a CDATA section. Text that is no encoding decodes to no bytes. What
/// `bytes` held is replaced.
std::u16string EncodeBlock(std::span<const kelcore::byte> bytes);
void DecodeBlock(std::u16string_view text, std::vector<kelcore::byte>& bytes);

}  // namespace tses
