#pragma once

#include <vector>

#include <orvo/Layout.h>

namespace toolkit {

/// A place on the curve of a lane; the position in samples.
struct LanePoint {
    double position = 0;
    double level = 0;
};

/// The curve of a lane with keyframes over a range: level before the first keyframe and after the
/// last one, steps where it holds, and between splines points that lines may join. Splines are
/// monotone cubics: they pass through the keyframes and nowhere beyond them.
std::vector<LanePoint> LaneCurve(const orvo::LayoutLane& lane, double from, double to);

}  // namespace toolkit
