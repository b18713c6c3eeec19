#include "toolkit/view/RowDrawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "toolkit/view/Facts.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

using orvo::LayoutBox;
using orvo::LayoutChange;
using orvo::LayoutRow;

}  // namespace

RowDrawing::RowDrawing(Canvas& canvas, Scene& scene, const LayoutRow& row, const Band& band)
    : canvas_(canvas), scene_(scene), frame_(scene.frame), row_(row), band_(band) {
    FindBoxesInFront();
}

/// Outlines of where clips were hide nothing.
void RowDrawing::FindBoxesInFront() {
    inFront_.resize(ColumnOf(HUGE_VAL) + 1);
    for (const LayoutBox& box : row_.boxes) {
        if (box.change != LayoutChange::Former) {
            std::fill(inFront_.begin() + static_cast<std::ptrdiff_t>(ColumnOf(X(box.start))),
                      inFront_.begin() + static_cast<std::ptrdiff_t>(ColumnOf(X(box.end))), &box);
        }
    }
}

std::size_t RowDrawing::ColumnOf(double x) const {
    return static_cast<std::size_t>(std::clamp(x, 0.0, frame_.right - frame_.left));
}

void RowDrawing::Draw() const {
    DrawHeader();
    if (row_.boxes.empty()) {
        return;
    }
    canvas_.Begin({frame_.left, band_.top, frame_.right - frame_.left, band_.height}, "", 1);
    DrawBoxes();
    DrawHiddenEnds();
    DrawCrossfades();
    canvas_.End();
}

void RowDrawing::DrawHeader() const {
    constexpr double kLowRow = 9;
    const double inset = std::min(1.0, band_.height / 8);
    canvas_.Rectangle({Frame::kMargin - 8, band_.top + inset, 4, band_.height - 2 * inset},
                      std::min(2.0, band_.height / 4), {.fill = scene_.palette.Of(row_).stripe});
    if (band_.height < kLowRow) {
        return;
    }
    canvas_.Begin({Frame::kMargin, band_.top, frame_.left - Frame::kMargin - 8, band_.height},
                  NameOf(row_), row_.hidden ? 0.6 : 1);
    DrawNames();
    canvas_.End();
}

void RowDrawing::DrawNames() const {
    constexpr double kRoomForFacts = 34;
    const bool hasFacts = band_.height >= kRoomForFacts && !scene_.options.isSmall;
    const TextStyle style = {
        .colour = scene_.colours.text, .size = std::min(13.0, band_.height * 0.8), .bold = true};
    const double base = band_.height / 2 + (hasFacts ? -2 : style.size * 0.36);
    const double end = DrawBadges(base - style.size * 0.36);
    canvas_.Text({0, base}, FittedText(NameOf(row_), style, end), style);
    if (hasFacts) {
        const TextStyle faint = {.colour = scene_.colours.faintText, .size = 10.5};
        canvas_.Text({0, base + 15},
                     FittedText(FactsOf(row_), faint, frame_.left - Frame::kMargin - 12), faint);
    }
}

double RowDrawing::DrawBadges(double middle) const {
    struct Badge {
        bool isOn;
        const char* letter;
        double hue;
    };
    constexpr double kSize = 15;
    double right = frame_.left - Frame::kMargin - 10;
    if (band_.height < kSize) {
        return right;
    }
    for (const Badge& badge :
         {Badge{row_.armed, "R", 5}, {row_.solo, "S", 45}, {row_.muted, "M", 215}}) {
        if (!badge.isOn) {
            continue;
        }
        const HueColours& hue = scene_.palette.Of(badge.hue);
        canvas_.Rectangle({right - kSize, middle - kSize / 2, kSize, kSize}, 3,
                          {.fill = hue.body, .stroke = hue.edge});
        canvas_.Text({right - kSize / 2, middle + 3.6}, badge.letter,
                     {.colour = hue.text, .size = 10, .bold = true, .anchor = Anchor::Middle});
        right -= kSize + 4;
    }
    return right - 4;
}

double RowDrawing::X(std::int64_t position) const {
    return frame_.X(position) - frame_.left;
}

/// What stayed the same steps back behind what changed.
double RowDrawing::OpacityOf(const LayoutBox& box) {
    constexpr double kUnchanged = 0.4;
    return box.change == LayoutChange::Same ? kUnchanged : 1;
}

/// What is too narrow to be seen beside the box before it is left out.
void RowDrawing::DrawBoxes() const {
    constexpr double kVisible = 0.5;
    double covered = -HUGE_VAL;
    for (const LayoutBox& box : row_.boxes) {
        const double begin = X(box.start);
        const double end = std::max(X(box.end), begin + 1);
        if (end - begin < kVisible * 3 && begin >= covered - 1 && end < covered + kVisible) {
            continue;
        }
        covered = end;
        DrawBox(box, begin, end);
    }
}

void RowDrawing::DrawBox(const LayoutBox& box, double begin, double end) const {
    const double width = frame_.right - frame_.left;
    const double inset = std::min(1.0, band_.height / 8);
    const double left = std::clamp(begin, 0.0, width);
    const Area part = {left, inset, std::clamp(end, 0.0, width) - left, band_.height - 2 * inset};
    if (part.width <= 0 || part.height <= 0) {
        return;
    }
    const Stretch clear = ClearStretch(box, left, part.width);
    canvas_.Begin(part, TipOf(box), OpacityOf(box));
    BoxDrawing(canvas_, scene_, row_, box, {part, begin - left, clear}).Draw();
    canvas_.End();
}

/// The first stretch of what can be seen of a box that no other one covers, counted from its begin;
/// empty: all of it is covered.
Stretch RowDrawing::ClearStretch(const LayoutBox& box, double left, double width) const {
    const auto columns =
        std::span(inFront_).subspan(ColumnOf(left), ColumnOf(left + width) - ColumnOf(left));
    const auto first = std::ranges::find(columns, &box);
    const auto last = std::find_if(first, columns.end(),
                                   [&box](const LayoutBox* inFront) { return inFront != &box; });
    const auto begin = static_cast<double>(first - columns.begin());
    const double end = last == columns.end() ? width : static_cast<double>(last - columns.begin());
    return {begin, std::max(begin, end)};
}

std::string RowDrawing::TipOf(const LayoutBox& box) const {
    const auto label = [this](std::int64_t position) {
        return orvo::PositionLabel(scene_.layout, position);
    };
    std::string tip =
        fmt::format("{}, {} to {}", NameOf(scene_.layout, box), label(box.start), label(box.end));
    constexpr std::size_t kMostTakes = 12;
    for (std::size_t i = 0; i < std::min(box.takes.size(), kMostTakes); ++i) {
        tip += (i == 0 ? "; takes from " : ", ") + label(box.takes[i]);
    }
    return box.takes.size() > kMostTakes ? tip + " …" : tip;
}

/// Dashes where a clip begins or ends behind another one, below the names.
void RowDrawing::DrawHiddenEnds() const {
    constexpr double kApart = 2;
    const double head = BoxDrawing::HeadHeight(band_.height - 2);
    if (head == 0) {
        return;
    }
    for (const LayoutBox& box : row_.boxes) {
        std::vector<Point> ends;
        for (const double x : {X(box.start), X(box.end)}) {
            const LayoutBox* const top = inFront_[ColumnOf(x)];
            const bool isHidden = top > &box && !AreJoined(box, *top) &&
                                  x >= X(top->start) + kApart && x <= X(top->end) - kApart;
            if (isHidden) {
                ends.insert(ends.end(), {{x, head + 3}, {x, band_.height - 3}});
            }
        }
        canvas_.Lines(
            ends, {.stroke = scene_.palette.Of(row_, box).text, .opacity = 0.6, .dashed = true});
    }
}

bool RowDrawing::AreJoined(const LayoutBox& box, const LayoutBox& other) const {
    const auto leadsTo = [this](const LayoutBox& from, const LayoutBox& to) {
        return from.crossfadesInto && &row_.boxes[*from.crossfadesInto] == &to;
    };
    return leadsTo(box, other) || leadsTo(other, box);
}

void RowDrawing::DrawCrossfades() const {
    for (const LayoutBox& box : row_.boxes) {
        if (box.crossfadesInto && box.change != LayoutChange::Same) {
            DrawCrossfade(box, row_.boxes[*box.crossfadesInto]);
        }
    }
}

/// Both curves, over the clips that they join.
void RowDrawing::DrawCrossfade(const LayoutBox& box, const LayoutBox& next) const {
    const double begin = X(next.start);
    const double end = X(std::min(box.end, next.end));
    constexpr double kNarrowest = 3;
    if (end - begin < kNarrowest) {
        return;
    }
    const HueColours& hue = scene_.palette.Of(row_, next);
    const double top = 1 + BoxDrawing::HeadHeight(band_.height - 2);
    const double height = band_.height - 1.5 - top;
    canvas_.Rectangle({begin, top, end - begin, height}, 0, {.fill = hue.edge, .opacity = 0.22});
    for (const auto& [fade, isIn] : {std::pair(box.fadeOut, false), {next.fadeIn, true}}) {
        std::vector<Point> points;
        const std::size_t count = fade ? scene_.layout.curves[fade->curve].size() : 2;
        for (std::size_t i = 0; i < count; ++i) {
            const double share = static_cast<double>(i) / static_cast<double>(count - 1);
            const double level = fade ? scene_.layout.curves[fade->curve][i] : share;
            points.push_back({isIn ? begin + share * (end - begin) : end - share * (end - begin),
                              top + 1 + (height - 2) * (1 - level)});
        }
        canvas_.Line(points, {.stroke = hue.text, .strokeWidth = 1.3});
    }
}

}  // namespace toolkit
