#include "toolkit/view/Picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "toolkit/Saturating.h"
#include "toolkit/view/Facts.h"
#include "toolkit/view/LaneDrawing.h"
#include "toolkit/view/RowDrawing.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

using orvo::LayoutLane;
using orvo::LayoutRow;

constexpr double kRoomForLabel = 76;
constexpr double kMargin = Frame::kMargin;

std::vector<orvo::RulerTick> TicksOf(const Scene& scene) {
    const double room = std::ceil(kRoomForLabel / scene.frame.pixelsPerSample);
    return orvo::RulerTicks(scene.layout, static_cast<std::int64_t>(room));
}

}  // namespace

Picture::Picture(Scene& scene)
    : scene_(scene),
      layout_(scene.layout),
      colours_(scene.colours),
      frame_(scene.frame),
      ticks_(TicksOf(scene)) {}

void Picture::Draw(Canvas& canvas) const {
    canvas.Rectangle({0, 0, frame_.width, frame_.height}, 0, {.fill = colours_.page});
    DrawTitle(canvas);
    DrawBackground(canvas);
    DrawRuler(canvas);
    ForEachBand(layout_, frame_,
                [&](const LayoutRow& row, const LayoutLane* lane, const Band& band) {
                    if (lane != nullptr) {
                        DrawLane(canvas, scene_, row, *lane, band);
                    } else {
                        RowDrawing(canvas, scene_, row, band).Draw();
                    }
                });
    DrawSelection(canvas);
    DrawCursor(canvas);
    DrawNotes(canvas);
}

void Picture::DrawTitle(Canvas& canvas) const {
    const std::string& title = scene_.options.title;
    if (title.empty()) {
        return;
    }
    const TextStyle style = {.colour = colours_.text, .size = 18, .bold = true};
    const TextStyle faint = {.colour = colours_.faintText, .size = 12};
    const std::string times = orvo::PositionLabel(layout_, layout_.from) + " – " +
                              orvo::PositionLabel(layout_, layout_.to);
    const double room = frame_.right - kMargin;
    constexpr double kApart = 24;
    canvas.Text({kMargin, 27}, FittedText(title, style, room - TextWidth(times, faint) - kApart),
                style);
    canvas.Text({kMargin, 46}, FittedText(FactsOf(layout_), faint, room), faint);
    canvas.Text({frame_.right, 27}, times,
                {.colour = colours_.faintText, .size = 12, .anchor = Anchor::End});
}

void Picture::DrawBackground(Canvas& canvas) const {
    if (layout_.rows.empty()) {
        canvas.Text({frame_.width / 2, (frame_.rulerBase + frame_.rowsBottom) / 2}, "No tracks",
                    {.colour = colours_.faintText, .size = 13, .anchor = Anchor::Middle});
        return;
    }
    ForEachBand(
        layout_, frame_, [&](const LayoutRow& /*row*/, const LayoutLane* lane, const Band& band) {
            canvas.Rectangle({frame_.left, band.top, frame_.right - frame_.left, band.height}, 4,
                             {.fill = lane != nullptr ? colours_.lane : colours_.row});
        });
    DrawGrid(canvas);
}

void Picture::DrawGrid(Canvas& canvas) const {
    std::vector<Point> weak;
    std::vector<Point> strong;
    for (const orvo::RulerTick& tick : ticks_) {
        const double x = frame_.X(tick.position);
        std::vector<Point>& ends = tick.label.empty() ? weak : strong;
        ends.insert(ends.end(),
                    {{x, frame_.rulerBase + frame_.gap}, {x, frame_.rowsBottom - frame_.gap}});
    }
    canvas.Lines(weak, {.stroke = colours_.grid});
    canvas.Lines(strong, {.stroke = colours_.strongGrid});
}

void Picture::DrawRuler(Canvas& canvas) const {
    const double base = frame_.rulerBase;
    std::vector<Point> ends;
    for (const orvo::RulerTick& tick : ticks_) {
        const double x = frame_.X(tick.position);
        ends.insert(ends.end(), {{x, base - (tick.label.empty() ? 5.0 : 11.0)}, {x, base}});
        const TextStyle style = {.colour = colours_.faintText, .size = 10.5};
        if (x + 6 + TextWidth(tick.label, style) <= frame_.right) {
            canvas.Text({x + 6, base - 9}, tick.label, style);
        }
    }
    canvas.Lines(ends, {.stroke = colours_.line});
    const Point line[] = {{0, base + 0.5}, {frame_.width, base + 0.5}};
    canvas.Lines(line, {.stroke = colours_.line});
}

void Picture::DrawSelection(Canvas& canvas) const {
    if (layout_.selection.duration <= 0) {
        return;
    }
    const std::int64_t end = SaturatingSum(layout_.selection.start, layout_.selection.duration);
    const double begin = std::clamp(frame_.X(layout_.selection.start), frame_.left, frame_.right);
    const double width = std::clamp(frame_.X(end), frame_.left, frame_.right) - begin;
    if (width <= 0) {
        return;
    }
    const double top = frame_.rulerTop + 12;
    const double bottom = frame_.rowsBottom;
    canvas.Rectangle({begin, top, width, bottom - top}, 0,
                     {.fill = colours_.selection, .opacity = 0.1});
    const Point ends[] = {
        {begin, top}, {begin, bottom}, {begin + width, top}, {begin + width, bottom}};
    canvas.Lines(ends, {.stroke = colours_.selection, .opacity = 0.5});
}

void Picture::DrawCursor(Canvas& canvas) const {
    const double x = frame_.X(layout_.cursor);
    if (x < frame_.left || x > frame_.right) {
        return;
    }
    const double top = frame_.rulerBase;
    const Point head[] = {
        {x - 5, top - 12}, {x + 5, top - 12}, {x + 5, top - 6}, {x, top}, {x - 5, top - 6}};
    canvas.Line(head, {.fill = colours_.cursor});
    const Point line[] = {{x, top}, {x, frame_.rowsBottom}};
    canvas.Lines(line, {.stroke = colours_.cursor, .strokeWidth = 1.2});
}

void Picture::DrawNotes(Canvas& canvas) const {
    const TextStyle style = {.colour = colours_.faintText, .size = 12};
    double base = frame_.rowsBottom + Frame::kNoteHeight * 1.5;
    std::size_t left = layout_.notes.size();
    for (const orvo::LayoutNote& note : layout_.notes) {
        if (layout_.notes.size() - left == Frame::kMostNotes) {
            canvas.Text({kMargin, base}, fmt::format("and {} more", left), style);
            break;
        }
        canvas.Text({kMargin, base}, FittedText(note.sentence, style, frame_.right - kMargin),
                    style);
        base += Frame::kNoteHeight;
        --left;
    }
}

}  // namespace toolkit
