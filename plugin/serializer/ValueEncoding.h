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

std::u16string FormatUnsigned(kelcore::uint32 value);
std::u16string FormatSigned(kelcore::int32 value);
std::u16string FormatInt64(kelcore::int64 value);

/// The shortest text that reads back to the same value.
std::u16string FormatFloat(float value);
std::u16string FormatDouble(double value);

/// "true" or "false".
std::u16string FormatBool(bool value);

/// The whole text must be a number, else `target` keeps what it holds: callers put the default
/// there.
void ParseUnsigned(std::u16string_view text, kelcore::uint32& target);
void ParseSigned(std::u16string_view text, kelcore::int32& target);
void ParseInt64(std::u16string_view text, kelcore::int64& target);
void ParseFloat(std::u16string_view text, float& target);

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
