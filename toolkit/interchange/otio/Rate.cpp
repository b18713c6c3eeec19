#include "toolkit/interchange/otio/Rate.h"

#include <cmath>

namespace toolkit::interchange::otio {

std::optional<Rate> Rate::Of(double rate) {
    constexpr double kMost = 1e9;
    constexpr double kLeast = 1e-6;
    if (!(rate >= kLeast && rate <= kMost)) {
        return std::nullopt;
    }
    if (rate == std::floor(rate)) {
        return Rate{rate, 1};
    }
    // Rates of television are written with few digits, such as 23.976.
    constexpr double kTolerance = 2e-3;
    constexpr long double kTelevision = 1001;
    const double whole = std::ceil(rate);
    if (std::abs(rate - whole * 1000 / 1001) < kTolerance) {
        return Rate{static_cast<long double>(whole) * 1000, kTelevision};
    }
    return Rate{rate, 1};
}

long double Rate::To(const Rate& other, long double count) const {
    return count * (other.numerator * denominator) / (numerator * other.denominator);
}

std::int64_t Rounded(long double value) {
    return std::llround(value);
}

}  // namespace toolkit::interchange::otio
