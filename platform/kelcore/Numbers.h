#pragma once

#include <cstddef>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Numbers to text and back, without locale.
namespace kelcore {

/// How `StringToNumber` reads. There is one way so far; the argument keeps calls open for more.
enum class NumberFlags : uint32 { Default = 0 };

/// Reads a decimal number that must be the whole text: an optional "-" and digits, no blanks, no
/// "+". Returns false, and leaves `target` as it was, for anything else, also for a number out of
/// range.
///
/// The two 32-bit readers share one range, -2^31 to 2^32-1, and keep the low 32 bits: ids are
/// written unsigned and read signed, and neither direction may lose one.
bool StringToNumber(std::u16string_view text, int32& target,
                    NumberFlags flags = NumberFlags::Default);
bool StringToNumber(std::u16string_view text, uint32& target,
                    NumberFlags flags = NumberFlags::Default);

/// The same for -2^63 to 2^63-1.
bool StringToNumber(std::u16string_view text, int64& target,
                    NumberFlags flags = NumberFlags::Default);

/// The same for a real number: optional "-", digits with at most one ".", optional exponent.
/// Infinities, "nan" and hexadecimal forms are no numbers; a value too large for the type is out of
/// range, one too small for it is zero.
bool StringToNumber(std::u16string_view text, float& target,
                    NumberFlags flags = NumberFlags::Default);
bool StringToNumber(std::u16string_view text, double& target,
                    NumberFlags flags = NumberFlags::Default);

/// Room that every number's text fits in, its terminating zero included.
inline constexpr std::size_t kFloatBufferSize = 64;

/// Writes `value` as zero-terminated text into `buffer` (at least `kFloatBufferSize` units) and
/// returns its length without the zero. The text is the shortest that reads back to the same value
/// (with "." and, where that is shorter, an exponent), or, if that has more than `precision`
/// significant digits, the value rounded to so many, at least one; 100, which every caller passes,
/// never cuts any. Not-a-number gives "nan", infinities "inf" and "-inf".
std::size_t ConvertFloatToBufferT(char16* buffer, float value, int precision);
std::size_t ConvertFloatToBufferT(char16* buffer, double value, int precision);

}  // namespace kelcore
