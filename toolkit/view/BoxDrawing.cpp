#include "toolkit/view/BoxDrawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "toolkit/view/Changes.h"
#include "toolkit/view/Facts.h"
#include "toolkit/view/LaneDrawing.h"
#include "toolkit/view/MediaPlace.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

constexpr double kRadius = 3.5;
constexpr double kNameSize = 11;
constexpr double kDeadWidth = 1.5;  // narrower ones have nothing inside
constexpr int kStackCards = 2;
constexpr double kStackStep = 2.5;

/// Places at equal distances, up to an end.
std::vector<double> PlacesFrom(double first, double end, double step) {
    std::vector<double> places;
    const double count = std::ceil((end - first) / step);
    for (int i = 0; i < count; ++i) {
        places.push_back(first + i * step);
    }
    return places;
}

}  // namespace

double BoxDrawing::HeadHeight(double height) {
    constexpr double kHead = 16;
    constexpr double kLowBox = 28;
    return height < kLowBox ? 0 : kHead;
}

BoxDrawing::BoxDrawing(Canvas& canvas, Scene& scene, const orvo::LayoutRow& row,
                       const orvo::LayoutBox& box, const BoxPlace& place)
    : canvas_(canvas),
      scene_(scene),
      box_(box),
      hue_(scene.palette.Of(row, box)),
      left_(place.left),
      width_(std::max(Whole(box.end) - Whole(box.start), place.part.width)),
      end_(std::min(place.part.width, left_ + width_)),
      clear_(place.clear),
      height_(place.part.height),
      head_(HeadHeight(place.part.height)) {
    if (!box.takes.empty() && head_ > 0) {
        height_ -= kStackCards * kStackStep;
    }
}

double BoxDrawing::Whole(std::int64_t samples) const {
    return static_cast<double>(samples) * scene_.frame.pixelsPerSample;
}

bool BoxDrawing::IsMissing() const {
    return box_.kind != orvo::BoxKind::Midi &&
           (!box_.media || !scene_.layout.media[*box_.media].found);
}

/// Texts over waveforms are for large pictures.
bool BoxDrawing::HasText() const {
    constexpr double kRoomForName = 26;
    constexpr double kLowest = kNameSize + 2;
    return clear_.Length() >= kRoomForName &&
           (head_ > 0 || (!scene_.options.isSmall && height_ >= kLowest));
}

void BoxDrawing::Draw() const {
    if (box_.change != orvo::LayoutChange::Former) {
        DrawStack();
        DrawBody();
        if (width_ >= kDeadWidth) {
            DrawInside();
        }
    }
    DrawChange();
    if (box_.change != orvo::LayoutChange::Former && HasText()) {
        DrawText();
    }
}

void BoxDrawing::DrawInside() const {
    if (IsMissing()) {
        DrawHatch();
    }
    const orvo::Waveform* const waveform = scene_.WaveformOf(box_);
    switch (box_.kind) {
        case orvo::BoxKind::Audio:
            if (waveform != nullptr) {
                DrawWave(*waveform);
            }
            break;
        case orvo::BoxKind::Video:
            DrawPerforation();
            break;
        case orvo::BoxKind::Midi:
            DrawStaves();
            break;
    }
    if (box_.fadeIn) {
        DrawFade(*box_.fadeIn, true);
    }
    if (box_.fadeOut) {
        DrawFade(*box_.fadeOut, false);
    }
    DrawLanes();
    DrawHead();
    DrawGroup();
}

/// The edges of the takes that lie below the one that is heard.
void BoxDrawing::DrawStack() const {
    if (box_.takes.empty() || head_ == 0) {
        return;
    }
    for (int card = kStackCards; card > 0; --card) {
        const double inset = std::min(card * 3.0, width_ / 12 * card);
        canvas_.Rectangle({left_ + 0.5 + inset, head_, std::max(width_ - 1 - 2 * inset, 0.5),
                           height_ - head_ - 0.5 + card * kStackStep},
                          std::min(kRadius, width_ / 2), {.fill = hue_.bar, .stroke = hue_.edge});
    }
}

void BoxDrawing::DrawBody() const {
    // Half a pixel within, so that the edge is sharp.
    const double inset = std::min(0.5, height_ / 8);
    const Area area = {left_ + 0.5, inset, std::max(width_ - 1, 0.5), height_ - 2 * inset};
    canvas_.Rectangle(area, std::min({kRadius, width_ / 2, height_ / 4}),
                      {.fill = hue_.body,
                       .stroke = box_.selected ? scene_.colours.selection : hue_.edge,
                       .strokeWidth = box_.selected ? 2 : 2 * inset,
                       .dashed = box_.offline});
}

/// The bar of the name; its corners are those of the body.
void BoxDrawing::DrawHead() const {
    if (head_ == 0 || width_ < 2 * kRadius) {
        return;
    }
    const double left = left_ + 1;
    const double right = left_ + width_ - 1;
    constexpr double kCut = 1;
    const Point outline[] = {
        {left, head_},         {left, 1 + 2 * kCut},  {left + kCut, 1 + kCut / 2},
        {left + 2 * kCut, 1},  {right - 2 * kCut, 1}, {right - kCut, 1 + kCut / 2},
        {right, 1 + 2 * kCut}, {right, head_}};
    canvas_.Line(outline, {.fill = hue_.bar});
}

/// One column a pixel, from what can be seen of the box.
void BoxDrawing::DrawWave(const orvo::Waveform& waveform) const {
    const double top = head_ + 1;
    const double middle = (top + height_ - 2) / 2;
    const double reach = std::max((height_ - 2 - top) / 2, 0.5);
    const MediaPlace place(scene_.layout, box_, waveform.sampleRate);
    const double framesPerPixel = place.framesPerSample / scene_.frame.pixelsPerSample;
    const auto frames = static_cast<double>(waveform.frames);
    std::vector<Point> outline;
    std::vector<Point> below;
    const auto draw = [&] {
        outline.insert(outline.end(), below.rbegin(), below.rend());
        if (!outline.empty()) {
            constexpr double kBelowText = 0.45;
            canvas_.Line(outline,
                         {.fill = hue_.wave, .opacity = head_ == 0 && HasText() ? kBelowText : 1});
        }
        outline.clear();
        below.clear();
    };
    for (const double x : PlacesFrom(std::max(0.0, left_), end_, 1)) {
        double begin = place.first + (x - left_) * framesPerPixel;
        if (box_.looped && frames > 0) {
            begin -= std::floor(begin / frames) * frames;
        }
        const double columnEnd = std::min(1.0, end_ - x) * framesPerPixel;
        const auto peak = waveform.Span(begin, begin + columnEnd);
        if (!peak) {
            draw();
            continue;
        }
        constexpr double kThinnest = 0.4;
        outline.push_back({x + 0.5, middle - std::max(peak->highest * reach, kThinnest)});
        below.push_back({x + 0.5, middle + std::max(-peak->lowest * reach, kThinnest)});
    }
    draw();
}

void BoxDrawing::DrawStaves() const {
    std::vector<Point> ends;
    for (const double y : PlacesFrom(head_ + 5, height_ - 3, 6)) {
        ends.insert(ends.end(), {{std::max(left_, 0.0) + 4, y}, {end_ - 4, y}});
    }
    canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 0.8, .opacity = 0.7});
}

void BoxDrawing::DrawPerforation() const {
    constexpr double kHole = 5;
    constexpr double kStep = 10;
    std::vector<Point> ends;
    for (const double x : PlacesFrom(std::fmod(left_, kStep) + kStep / 2, end_ - kHole, kStep)) {
        ends.insert(ends.end(), {{x, height_ - 6}, {x + kHole, height_ - 6}});
    }
    canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 4, .opacity = 0.55});
}

/// Diagonals: there is no media to be shown.
void BoxDrawing::DrawHatch() const {
    constexpr double kStep = 7;
    std::vector<Point> ends;
    const double rise = height_ - head_;
    for (const double x : PlacesFrom(std::fmod(left_, kStep) - rise, end_, kStep)) {
        ends.insert(ends.end(), {{x, height_}, {x + rise, head_}});
    }
    canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 1, .opacity = 0.45});
}

/// Dims what the fade takes away, and draws its curve.
void BoxDrawing::DrawFade(const orvo::LayoutFade& fade, bool isIn) const {
    const double length = Whole(fade.length);
    if (length < 1) {
        return;
    }
    const orvo::Curve& curve = scene_.layout.curves[fade.curve];
    const double end = isIn ? left_ : left_ + width_;
    const double top = std::max(head_, 1.0);
    const double height = height_ - 1 - top;
    std::vector<Point> points;
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(curve.size() - 1);
        points.push_back({end + (isIn ? share : -share) * length, top + height * (1 - curve[i])});
    }
    std::vector<Point> taken = points;
    taken.push_back({end, top});
    canvas_.Line(taken, {.fill = scene_.colours.row, .opacity = 0.6});
    canvas_.Line(points, {.stroke = hue_.text, .strokeWidth = 1.1, .opacity = 0.75});
}

/// The clip's own automation, over its sound.
void BoxDrawing::DrawLanes() const {
    constexpr double kNarrow = 32;
    const double left = std::max(left_, 0.0);
    if (head_ == 0 || end_ - left < kNarrow) {
        return;
    }
    const double from =
        static_cast<double>(box_.start) + (left - left_) / scene_.frame.pixelsPerSample;
    for (const orvo::LayoutLane& lane : box_.lanes) {
        DrawCurve(canvas_, lane, {left, head_, end_ - left, height_ - head_}, from,
                  scene_.frame.pixelsPerSample, hue_.text, false);
    }
}

/// A frame around what changed; dashed where nothing is any more.
void BoxDrawing::DrawChange() const {
    const std::optional<Colour> colour =
        box_.change ? ColourOf(scene_.colours, *box_.change) : std::nullopt;
    if (!colour) {
        return;
    }
    const bool isGone =
        *box_.change == orvo::LayoutChange::Former || *box_.change == orvo::LayoutChange::Removed;
    const Area area = {left_ + 1, 1, std::max(width_ - 2, 0.5), std::max(height_ - 2, 0.5)};
    canvas_.Rectangle(area, std::min(kRadius, width_ / 2), {.fill = colour, .opacity = 0.18});
    canvas_.Rectangle(area, std::min(kRadius, width_ / 2),
                      {.stroke = colour, .strokeWidth = 2, .dashed = isGone});
}

/// A square in the group's colour, if it has one.
void BoxDrawing::DrawGroup() const {
    constexpr double kSize = 7;
    constexpr double kRoom = 16;
    if (!box_.group || clear_.Length() < kRoom || head_ == 0) {
        return;
    }
    const std::optional<double> hue = scene_.layout.groups[*box_.group].hue;
    const Colour colour = hue ? scene_.palette.Of(*hue).wave : hue_.text;
    canvas_.Rectangle({clear_.end - 4 - kSize, height_ - 4 - kSize, kSize, kSize}, 1.5,
                      {.fill = colour, .stroke = hue_.body});
}

/// What a clip is besides its name, the most important first.
std::vector<std::string> BoxDrawing::Marks() const {
    std::vector<std::string> marks;
    const auto add = [&marks](bool is, const std::string& mark) {
        if (is) {
            marks.push_back(mark);
        }
    };
    const bool isChanged = box_.change && *box_.change != orvo::LayoutChange::Same;
    add(isChanged, isChanged ? WordOf(*box_.change) : "");
    add(IsMissing(), box_.media ? "missing" : "no media");
    add(box_.offline, "offline");
    add(box_.muted, "muted");
    add(box_.looped, "loop");
    add(box_.stretched, fmt::format("{:.4g}×", 1 / box_.speed));
    add(!box_.takes.empty(), Counted(box_.takes.size(), "take"));
    add(box_.effects > 0, "fx");
    add(box_.locked, "locked");
    return marks;
}

/// The name, and of the marks those for which there is room beside it.
void BoxDrawing::DrawText() const {
    const double base = head_ == 0 ? height_ / 2 + kNameSize * 0.36 : head_ - 4.5;
    const double x = clear_.begin + 5;
    const double end = clear_.end - 5;
    const TextStyle nameStyle = {.colour = hue_.text, .size = kNameSize, .bold = true};
    const std::string name = FittedText(NameOf(scene_.layout, box_), nameStyle, end - x);
    canvas_.Text({x, base}, name, nameStyle);
    const TextStyle style = {.colour = IsMissing() ? scene_.colours.warning : hue_.text,
                             .size = 10,
                             .anchor = Anchor::End};
    constexpr double kApart = 8;
    const double room = end - x - TextWidth(name, nameStyle) - kApart;
    std::string shown;
    for (const std::string& mark : Marks()) {
        const std::size_t before = shown.size();
        shown += shown.empty() ? "" : " · ";
        shown += mark;
        if (TextWidth(shown, style) > room) {
            shown.resize(before);
        }
    }
    canvas_.Text({end, base}, shown, style);
}

}  // namespace toolkit
