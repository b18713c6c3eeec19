#include "toolkit/view/BoxDrawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "toolkit/view/Changes.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

constexpr double kRadius = 3.5;
constexpr double kNameSize = 11;
constexpr double kRoomForName = 26;  // of a box, from left to right
constexpr double kLowBox = 26;       // has its name over its waveform
constexpr double kDeadWidth = 1.5;   // narrower ones have nothing inside

/// Places at equal distances, up to an end.
std::vector<double> PlacesFrom(double first, double end, double step) {
    std::vector<double> places;
    const double count = std::ceil((end - first) / step);
    for (int i = 0; i < count; ++i) {
        places.push_back(first + i * step);
    }
    return places;
}

/// The lowest and highest value of some peaks.
orvo::Peak Span(const orvo::Waveform& waveform, std::size_t begin, std::size_t end) {
    orvo::Peak span = waveform.peaks[begin];
    for (std::size_t i = begin + 1; i < end; ++i) {
        span.lowest = std::min(span.lowest, waveform.peaks[i].lowest);
        span.highest = std::max(span.highest, waveform.peaks[i].highest);
    }
    return span;
}

}  // namespace

std::string NameOf(const orvo::Layout& layout, const orvo::LayoutBox& box) {
    if (!box.name.empty() || !box.media) {
        return box.name;
    }
    const std::string& path = layout.media[*box.media].path;
    return path.substr(path.find_last_of('/') + 1);
}

BoxDrawing::BoxDrawing(SvgCanvas& canvas, const orvo::Layout& layout, const orvo::LayoutBox& box,
                       const orvo::Waveform* waveform, const HueColours& hue,
                       const ThemeColours& theme, const BoxPlace& place)
    : canvas_(canvas),
      layout_(layout),
      box_(box),
      waveform_(waveform),
      hue_(hue),
      theme_(theme),
      part_(place.part),
      left_(place.left),
      pixelsPerSample_(place.pixelsPerSample),
      isSmall_(place.isSmall) {
    width_ = std::max(Whole(box.end) - Whole(box.start), part_.width);
}

double BoxDrawing::Whole(std::int64_t samples) const {
    return static_cast<double>(samples) * pixelsPerSample_;
}

bool BoxDrawing::IsMissing() const {
    return box_.kind != orvo::BoxKind::Midi && (!box_.media || !layout_.media[*box_.media].found);
}

double BoxDrawing::NameHeight() const {
    return part_.height < kLowBox ? 0 : kNameSize + 5;
}

void BoxDrawing::Draw() const {
    if (box_.change == orvo::LayoutChange::Former) {
        DrawChange();
        return;
    }
    DrawBody();
    if (width_ < kDeadWidth) {
        DrawChange();
        return;
    }
    if (IsMissing()) {
        DrawHatch();
    }
    if (waveform_ != nullptr && !waveform_->peaks.empty()) {
        DrawWave();
    }
    if (box_.kind != orvo::BoxKind::Audio) {
        DrawPicture();
    }
    if (box_.fadeIn) {
        DrawFade(*box_.fadeIn, true);
    }
    if (box_.fadeOut) {
        DrawFade(*box_.fadeOut, false);
    }
    DrawGroup();
    DrawChange();
    if (part_.width >= kRoomForName && (!isSmall_ || part_.height >= kLowBox)) {
        DrawText();
    }
}

void BoxDrawing::DrawBody() const {
    // Half a pixel within, so that the edge is sharp.
    const Area area = {left_ + 0.5, 0.5, std::max(width_ - 1, 0.5), part_.height - 1};
    canvas_.Rectangle(area, std::min(kRadius, width_ / 2),
                      {.fill = hue_.body,
                       .stroke = box_.selected ? theme_.selection : hue_.edge,
                       .strokeWidth = box_.selected ? 1.6 : 1,
                       .dashed = box_.offline});
}

/// One column a pixel, from what can be seen of the box.
void BoxDrawing::DrawWave() const {
    const double top = NameHeight() + 1;
    const double middle = (top + part_.height - 2) / 2;
    const double reach = std::max((part_.height - 2 - top) / 2, 1.0);
    const double framesPerSample =
        layout_.sampleRate != 0
            ? static_cast<double>(waveform_->sampleRate) / layout_.sampleRate * box_.speed
            : box_.speed;
    const double framesPerPixel = framesPerSample / pixelsPerSample_;
    const double first = static_cast<double>(box_.sourceStart) / box_.speed * framesPerSample;
    const auto frames = static_cast<double>(waveform_->frames);
    std::vector<Point> outline;
    std::vector<Point> below;
    const auto draw = [&] {
        outline.insert(outline.end(), below.rbegin(), below.rend());
        if (!outline.empty()) {
            canvas_.Line(outline, {.fill = hue_.wave});
        }
        outline.clear();
        below.clear();
    };
    const double end = std::min(part_.width, left_ + width_);
    for (const double x : PlacesFrom(0, end, 1)) {
        double begin = first + (x - left_) * framesPerPixel;
        if (box_.looped && frames > 0) {
            begin -= std::floor(begin / frames) * frames;
        }
        if (begin < 0 || begin >= frames) {
            draw();
            continue;
        }
        const auto place = static_cast<std::size_t>(begin / waveform_->framesPerPeak);
        const auto beyond = static_cast<std::size_t>(
            std::ceil(std::min(begin + framesPerPixel, frames) / waveform_->framesPerPeak));
        if (place >= waveform_->peaks.size()) {
            continue;
        }
        const orvo::Peak peak =
            Span(*waveform_, place, std::clamp(beyond, place + 1, waveform_->peaks.size()));
        constexpr double kThinnest = 0.4;
        outline.push_back({x + 0.5, middle - std::max(peak.highest * reach, kThinnest)});
        below.push_back({x + 0.5, middle + std::max(-peak.lowest * reach, kThinnest)});
    }
    draw();
}

/// Perforation for video, staves for MIDI.
void BoxDrawing::DrawPicture() const {
    const double end = std::min(part_.width, left_ + width_);
    std::vector<Point> ends;
    if (box_.kind == orvo::BoxKind::Midi) {
        for (const double y : PlacesFrom(NameHeight() + 4, part_.height - 3, 6)) {
            ends.insert(ends.end(), {{std::max(left_, 0.0) + 4, y}, {end - 4, y}});
        }
        canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 0.8, .opacity = 0.7});
        return;
    }
    constexpr double kHole = 5;
    constexpr double kStep = 10;
    for (const double x : PlacesFrom(std::fmod(left_, kStep) + kStep / 2, end - kHole, kStep)) {
        ends.insert(ends.end(), {{x, part_.height - 6}, {x + kHole, part_.height - 6}});
    }
    canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 4, .opacity = 0.55});
}

/// Diagonals: there is no media to be shown.
void BoxDrawing::DrawHatch() const {
    constexpr double kStep = 7;
    std::vector<Point> ends;
    const double end = std::min(part_.width, left_ + width_);
    for (const double x : PlacesFrom(std::fmod(left_, kStep) - part_.height, end, kStep)) {
        ends.insert(ends.end(), {{x, part_.height}, {x + part_.height, 0}});
    }
    canvas_.Lines(ends, {.stroke = hue_.edge, .strokeWidth = 1, .opacity = 0.45});
}

/// Dims what the fade takes away, and draws its curve.
void BoxDrawing::DrawFade(const orvo::LayoutFade& fade, bool isIn) const {
    const double length = Whole(fade.length);
    if (length < 1) {
        return;
    }
    const orvo::Curve& curve = layout_.curves[fade.curve];
    const double end = isIn ? left_ : left_ + width_;
    const double height = part_.height - 2;
    std::vector<Point> points;
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(curve.size() - 1);
        points.push_back({end + (isIn ? share : -share) * length, 1 + height * (1 - curve[i])});
    }
    std::vector<Point> taken = points;
    taken.push_back({end, 1});
    canvas_.Line(taken, {.fill = theme_.row, .opacity = 0.6});
    canvas_.Line(points, {.stroke = hue_.text, .strokeWidth = 1.1, .opacity = 0.75});
}

/// A frame around what changed; dashed where nothing is any more.
void BoxDrawing::DrawChange() const {
    const std::optional<Colour> colour =
        box_.change ? ColourOf(theme_, *box_.change) : std::nullopt;
    if (!colour) {
        return;
    }
    const bool isGone =
        *box_.change == orvo::LayoutChange::Former || *box_.change == orvo::LayoutChange::Removed;
    const Area area = {left_ + 1, 1, std::max(width_ - 2, 0.5), part_.height - 2};
    canvas_.Rectangle(area, std::min(kRadius, width_ / 2), {.fill = colour, .opacity = 0.18});
    canvas_.Rectangle(area, std::min(kRadius, width_ / 2),
                      {.stroke = colour, .strokeWidth = 2, .dashed = isGone});
}

void BoxDrawing::DrawGroup() const {
    if (box_.group && part_.width >= kRoomForName && part_.height >= kLowBox) {
        const double right = std::min(part_.width, left_ + width_) - 3;
        canvas_.Rectangle({right - 6, part_.height - 10, 6, 6}, 1.5, {.fill = hue_.text});
    }
}

/// What a clip is besides its name.
std::string BoxDrawing::Marks() const {
    std::string marks;
    const auto add = [&marks](const std::string& mark) {
        marks += (marks.empty() || mark.empty() ? "" : " · ") + mark;
    };
    if (box_.change) {
        add(WordOf(*box_.change));
    }
    if (IsMissing()) {
        add(box_.media ? "missing" : "no media");
    }
    if (box_.offline) {
        add("offline");
    }
    if (box_.muted) {
        add("muted");
    }
    if (box_.looped) {
        add("loop");
    }
    if (box_.stretched) {
        add(fmt::format("{:.4g}×", 1 / box_.speed));
    }
    if (box_.takes > 0) {
        add(fmt::format("{} {}", box_.takes, box_.takes == 1 ? "take" : "takes"));
    }
    if (box_.effects > 0) {
        add("fx");
    }
    if (box_.locked) {
        add("locked");
    }
    return marks;
}

void BoxDrawing::DrawText() const {
    const double base =
        part_.height < kLowBox ? part_.height / 2 + kNameSize * 0.36 : kNameSize + 3;
    const double x = std::max(left_, 0.0) + 6;
    const double end = std::min(part_.width, left_ + width_) - 5;
    const TextStyle nameStyle = {.colour = hue_.text, .size = kNameSize, .bold = true};
    const std::string name = FittedText(NameOf(layout_, box_), nameStyle, end - x);
    canvas_.Text({x, base}, name, nameStyle);
    const std::string marks = Marks();
    const TextStyle style = {
        .colour = IsMissing() ? theme_.warning : hue_.text, .size = 10, .anchor = Anchor::End};
    constexpr double kApart = 8;
    if (x + TextWidth(name, nameStyle) + kApart + TextWidth(marks, style) <= end) {
        canvas_.Text({end, base}, marks, style);
    }
}

}  // namespace toolkit
