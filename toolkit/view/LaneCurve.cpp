#include "toolkit/view/LaneCurve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace toolkit {
namespace {

using orvo::LaneSegment;
using orvo::LayoutKeyframe;

class Curve {
public:
    explicit Curve(const std::vector<LayoutKeyframe>& keyframes) : keyframes_(keyframes) {}

    std::vector<LanePoint> Points(double from, double to) {
        Add(std::min(from, At(0)), Level(0));
        for (std::size_t i = 0; i < keyframes_.size(); ++i) {
            Add(At(i), Level(i));
            if (i + 1 < keyframes_.size()) {
                AddSegment(i);
            }
        }
        Add(std::max(to, At(keyframes_.size() - 1)), Level(keyframes_.size() - 1));
        return std::move(points_);
    }

private:
    double At(std::size_t i) const { return static_cast<double>(keyframes_[i].position); }
    double Level(std::size_t i) const { return keyframes_[i].level; }
    void Add(double position, double level) { points_.push_back({position, level}); }

    void AddSegment(std::size_t i) {
        switch (keyframes_[i].segment) {
            case LaneSegment::Linear:
                break;
            case LaneSegment::Hold:
                Add(At(i + 1), Level(i));
                break;
            case LaneSegment::Spline:
                AddSpline(i);
                break;
        }
    }

    void AddSpline(std::size_t i) {
        constexpr int kSteps = 16;
        const double length = At(i + 1) - At(i);
        const double slope = SlopeAt(i) * length;
        const double nextSlope = SlopeAt(i + 1) * length;
        for (int step = 1; step < kSteps; ++step) {
            const double t = static_cast<double>(step) / kSteps;
            const double s = 1 - t;
            Add(At(i) + t * length, Level(i) * (1 + 2 * t) * s * s + slope * t * s * s +
                                        Level(i + 1) * t * t * (3 - 2 * t) - nextSlope * t * t * s);
        }
    }

    double Secant(std::size_t i) const { return (Level(i + 1) - Level(i)) / (At(i + 1) - At(i)); }

    /// Flat at both ends and at every peak; elsewhere the harmonic mean of both sides.
    double SlopeAt(std::size_t i) const {
        if (i == 0 || i + 1 == keyframes_.size()) {
            return 0;
        }
        const double before = Secant(i - 1);
        const double after = Secant(i);
        return before * after > 0 ? 2 * before * after / (before + after) : 0;
    }

    const std::vector<LayoutKeyframe>& keyframes_;
    std::vector<LanePoint> points_;
};

}  // namespace

std::vector<LanePoint> LaneCurve(const orvo::LayoutLane& lane, double from, double to) {
    return Curve(lane.keyframes).Points(from, to);
}

}  // namespace toolkit
