#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include <orvo/Layout.h>

namespace toolkit {

/// The curves of fades, each once.
class FadeCurves {
public:
    /// The number of a type's curve.
    std::size_t NumberOf(orvo::FadeType type);

    std::vector<orvo::Curve> Take() { return std::move(curves_); }

private:
    std::map<orvo::FadeType, std::size_t> numbers_;
    std::vector<orvo::Curve> curves_;
};

}  // namespace toolkit
