#include "toolkit/view/FadeCurves.h"

#include <cmath>
#include <numbers>

namespace toolkit {
namespace {

constexpr std::size_t kSteps = 24;

/// The level of a fade at a share of its length. A type without a name rises evenly.
double LevelOf(orvo::FadeType type, double share) {
    switch (type) {
        case orvo::FadeType::Logarithmic:
            return std::log10(1 + 9 * share);
        case orvo::FadeType::Cosine:
            return 0.5 - 0.5 * std::cos(std::numbers::pi * share);
    }
    return share;
}

orvo::Curve CurveOf(orvo::FadeType type) {
    orvo::Curve curve;
    for (std::size_t step = 0; step <= kSteps; ++step) {
        const double share = static_cast<double>(step) / kSteps;
        curve.push_back(static_cast<float>(LevelOf(type, share)));
    }
    return curve;
}

}  // namespace

std::size_t FadeCurves::NumberOf(orvo::FadeType type) {
    const auto [found, isNew] = numbers_.try_emplace(type, curves_.size());
    if (isNew) {
        curves_.push_back(CurveOf(type));
    }
    return found->second;
}

}  // namespace toolkit
