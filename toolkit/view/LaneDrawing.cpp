#include "toolkit/view/LaneDrawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "toolkit/view/LaneCurve.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

using orvo::LayoutKeyframe;
using orvo::LayoutLane;

constexpr double kRoomForRange = 34;

/// The name, and on its right the values at the top and at the bottom.
void DrawHeader(Canvas& canvas, const Scene& scene, const LayoutLane& lane, const Band& band) {
    constexpr double kApart = 8;
    const Area header = {Frame::kMargin + 10, band.top, scene.frame.left - Frame::kMargin - 16,
                         band.height};
    const TextStyle style = {.colour = scene.colours.faintText, .size = 11};
    const TextStyle small = {.colour = scene.colours.faintText, .size = 9, .anchor = Anchor::End};
    double room = header.width;
    canvas.Begin(header, lane.name, 1);
    if (band.height >= kRoomForRange) {
        const std::string high = fmt::format("{:.3g}", lane.high);
        const std::string low = fmt::format("{:.3g}", lane.low);
        canvas.Text({header.width, 11}, high, small);
        canvas.Text({header.width, header.height - 5}, low, small);
        room -= std::max(TextWidth(high, small), TextWidth(low, small)) + kApart;
    }
    canvas.Text({0, band.height / 2 + 4}, FittedText(lane.name, style, room), style);
    canvas.End();
}

/// Those that can be seen apart.
std::vector<Point> SeparateKeyframes(const std::vector<Point>& keyframes, double width) {
    constexpr double kApart = 5;
    std::vector<Point> points;
    for (const Point& point : keyframes) {
        if (point.x >= 0 && point.x <= width &&
            (points.empty() || point.x - points.back().x >= kApart ||
             std::abs(point.y - points.back().y) >= kApart)) {
            points.push_back(point);
        }
    }
    return points;
}

}  // namespace

void DrawLane(Canvas& canvas, Scene& scene, const orvo::LayoutRow& row, const LayoutLane& lane,
              const Band& band) {
    DrawHeader(canvas, scene, lane, band);
    const Area timeline = {scene.frame.left, band.top, scene.frame.right - scene.frame.left,
                           band.height};
    constexpr double kUnchanged = 0.5;
    canvas.Begin(timeline, lane.name, row.change == orvo::LayoutChange::Same ? kUnchanged : 1);
    DrawCurve(canvas, lane, {0, 0, timeline.width, timeline.height}, scene.frame.from,
              scene.frame.pixelsPerSample, scene.palette.Of(row).wave, true);
    canvas.End();
}

void DrawCurve(Canvas& canvas, const LayoutLane& lane, const Area& area, double from,
               double pixelsPerSample, const Colour& colour, bool isFilled) {
    const double inset = std::min(6.0, area.height / 4);
    const auto place = [&](double position, double level) {
        return Point{area.x + (position - from) * pixelsPerSample,
                     area.y + inset + (area.height - 2 * inset) * (1 - level)};
    };
    std::vector<Point> curve;
    for (const LanePoint& point : LaneCurve(lane, from, from + area.width / pixelsPerSample)) {
        curve.push_back(place(point.position, point.level));
    }
    if (isFilled) {
        std::vector<Point> below = curve;
        below.push_back({curve.back().x, area.Bottom()});
        below.push_back({curve.front().x, area.Bottom()});
        canvas.Line(below, {.fill = colour, .opacity = 0.14});
    }
    canvas.Line(curve, {.stroke = colour, .strokeWidth = isFilled ? 1.6 : 1.2});
    std::vector<Point> keyframes;
    for (const LayoutKeyframe& keyframe : lane.keyframes) {
        keyframes.push_back(place(static_cast<double>(keyframe.position), keyframe.level));
    }
    canvas.Circles(SeparateKeyframes(keyframes, area.Right()), isFilled ? 2.6 : 2, colour);
}

}  // namespace toolkit
