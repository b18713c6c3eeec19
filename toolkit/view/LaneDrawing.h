#pragma once

#include <vector>

#include "toolkit/view/Scene.h"
#include "toolkit/view/Shapes.h"

namespace toolkit {

/// Draws a lane of a track: its name and range, and its curve.
void DrawLane(Canvas& canvas, Scene& scene, const orvo::LayoutRow& row,
              const orvo::LayoutLane& lane, const Band& band);

/// Draws the curve of a lane and its keyframes into an area.
/// @param from  the position at the left of the area
void DrawCurve(Canvas& canvas, const orvo::LayoutLane& lane, const Area& area, double from,
               double pixelsPerSample, const Colour& colour, bool isFilled);

}  // namespace toolkit
