#pragma once

#include <cstddef>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Conversions between numbers and text, independent of the locale.
namespace kelcore {

/// How `StringToNumber` reads. Only the default exists so far.
enum class NumberFlags : uint32 { Default = 0 };

/// Parses a decimal number that makes up the whole text: an optional "-" and digits, without blanks
/// or "+". For anything else, including a number out of range, returns false and leaves `target`
/// unchanged.
///
/// Both 32-bit overloads accept -2^31 to 2^32-1 and keep the low 32 bits: ids are written unsigned
/// and read signed, and must survive both.
bool StringToNumber(std::u16string_view text, int32& target,
                    NumberFlags flags = NumberFlags::Default);
bool StringToNumber(std::u16string_view text, uint32& target,
                    NumberFlags flags = NumberFlags::Default);

/// Accepts -2^63 to 2^63-1.
bool StringToNumber(std::u16string_view text, int64& target,
                    NumberFlags flags = NumberFlags::Default);

/// Parses a real number: optional "-", digits with at most one ".", optional exponent. Infinities,
/// "nan" and hexadecimal forms are errors. A value too large for the type is out of range; one that
/// is too small becomes zero.
bool StringToNumber(std::u16string_view text, float& target,
                    NumberFlags flags = NumberFlags::Default);
bool StringToNumber(std::u16string_view text, double& target,
                    NumberFlags flags = NumberFlags::Default);

/// A buffer size that fits the text of any number, including the terminating zero.
inline constexpr std::size_t kFloatBufferSize = 64;

/// Writes `value` as zero-terminated text to `buffer` (at least `kFloatBufferSize` units) and
/// returns the length without the zero. The text is the shortest one that parses back to the same
/// value, with "." as the decimal point and an exponent where that is shorter. If it has more than
/// `precision` significant digits (at least one), the value is rounded to that many; a precision of
/// 100 never rounds. Not-a-number becomes "nan", infinities "inf" and "-inf".
std::size_t ConvertFloatToBufferT(char16* buffer, float value, int precision);
std::size_t ConvertFloatToBufferT(char16* buffer, double value, int precision);

}  // namespace kelcore
