#pragma once

namespace orvo::json {

/// The texts that stand for real numbers that JSON has no number for.
inline constexpr char kNotANumber[] = "NaN";
inline constexpr char kInfinity[] = "Infinity";
inline constexpr char kMinusInfinity[] = "-Infinity";

}  // namespace orvo::json
