#include "toolkit/view/Picture.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "toolkit/Saturating.h"
#include "toolkit/view/BoxDrawing.h"
#include "toolkit/view/Changes.h"
#include "toolkit/view/LaneCurve.h"
#include "toolkit/view/TextWidth.h"

namespace toolkit {
namespace {

using orvo::Layout;
using orvo::LayoutBox;
using orvo::LayoutLane;
using orvo::LayoutRow;
using orvo::RowKind;

constexpr double kMargin = 16;
constexpr double kHeaderWidth = 196;
constexpr double kSmallHeaderWidth = 120;
constexpr double kTitleHeight = 58;
constexpr double kNoTitleHeight = 10;
constexpr double kRulerHeight = 30;
constexpr double kGap = 3;  // between rows
constexpr double kLeastWidth = 400;
constexpr double kGreatestHeight = 12'000;
constexpr double kLeastScale = 0.05;
constexpr double kRoomForLabel = 76;
constexpr double kRoomForNoTracks = 60;
constexpr double kNoteHeight = 18;
constexpr std::size_t kMostNotes = 24;

double UsualRowHeight(const LayoutRow& row) {
    constexpr double kEmpty = 38;
    if (row.boxes.empty()) {
        return kEmpty;
    }
    switch (row.kind) {
        case RowKind::Video:
            return 52;
        case RowKind::Instrument:
            return 60;
        default:
            return 68;
    }
}

constexpr double kUsualLaneHeight = 46;

const char* KindWord(RowKind kind) {
    switch (kind) {
        case RowKind::Video:
            return "Video";
        case RowKind::Audio:
            return "Audio";
        case RowKind::Bus:
            return "Bus";
        case RowKind::Master:
            return "Master";
        case RowKind::Metronome:
            return "Metronome";
        case RowKind::Instrument:
            return "Instrument";
    }
    return "";
}

std::string ChannelsWord(orvo::ChannelType channels) {
    switch (channels) {
        case orvo::ChannelType::NotSaid:
            return "";
        case orvo::ChannelType::Mono:
            return "mono";
        case orvo::ChannelType::Stereo:
            return "stereo";
        case orvo::ChannelType::FivePointOne:
            return "5.1";
    }
    return fmt::format("{} channels", static_cast<std::uint32_t>(channels));
}

std::string Counted(std::size_t count, const char* thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string NameOf(const LayoutRow& row) {
    return row.name.empty() ? fmt::format("{} {}", KindWord(row.kind), row.id) : row.name;
}

std::string KilohertzOf(std::uint32_t rate) {
    return fmt::format("{:g} kHz", rate / 1000.0);
}

}  // namespace

Picture::Picture(const Layout& layout, const std::vector<std::optional<orvo::Waveform>>& waveforms,
                 const orvo::DrawOptions& options)
    : layout_(layout),
      waveforms_(waveforms),
      options_(options),
      colours_(ColoursOf(options.theme)),
      width_(std::max(options.width, kLeastWidth)),
      height_(0),
      left_(options.isSmall ? kSmallHeaderWidth : kHeaderWidth),
      right_(width_ - kMargin),
      rulerTop_(options.title.empty() ? kNoTitleHeight : kTitleHeight),
      rowsTop_(rulerTop_ + kRulerHeight),
      pixelsPerSample_((right_ - left_) /
                       (static_cast<double>(layout.to) - static_cast<double>(layout.from))),
      ticks_(orvo::RulerTicks(
          layout, static_cast<std::int64_t>(std::ceil(kRoomForLabel / pixelsPerSample_)))) {
    double rows = 0;
    std::size_t gaps = 0;
    for (const LayoutRow& row : layout.rows) {
        rows += UsualRowHeight(row) + kUsualLaneHeight * static_cast<double>(row.lanes.size());
        gaps += 1 + row.lanes.size();
    }
    const double around = (layout.rows.empty() ? kRoomForNoTracks : 0) + NotesHeight() + rowsTop_ +
                          kGap * static_cast<double>(gaps) + kMargin;
    const double room = options.height.value_or(std::min(rows + around, kGreatestHeight)) - around;
    rowScale_ = rows > 0 ? std::max(room / rows, kLeastScale) : 1;
    height_ = std::ceil(std::max(rows * rowScale_ + around, options.height.value_or(0)));
}

double Picture::X(std::int64_t position) const {
    return left_ +
           (static_cast<double>(position) - static_cast<double>(layout_.from)) * pixelsPerSample_;
}

double Picture::RowHeight(const LayoutRow& row) const {
    return UsualRowHeight(row) * rowScale_;
}

/// Below the rows: what the layout has to say.
double Picture::NotesHeight() const {
    return layout_.notes.empty()
               ? 0
               : kNoteHeight *
                     (1 + static_cast<double>(std::min(layout_.notes.size(), kMostNotes + 1)));
}

void Picture::DrawNotes(SvgCanvas& canvas) const {
    const TextStyle style = {.colour = colours_.faintText, .size = 12};
    double base = height_ - kMargin - NotesHeight() + kNoteHeight * 1.5;
    std::size_t left = layout_.notes.size();
    for (const orvo::LayoutNote& note : layout_.notes) {
        if (layout_.notes.size() - left == kMostNotes) {
            canvas.Text({kMargin, base}, fmt::format("and {} more", left), style);
            break;
        }
        canvas.Text({kMargin, base}, FittedText(note.sentence, style, right_ - kMargin), style);
        base += kNoteHeight;
        --left;
    }
}

double Picture::LaneHeight() const {
    return kUsualLaneHeight * rowScale_;
}

std::string Picture::Title() const {
    return options_.title.empty() ? "A session" : options_.title;
}

std::string Picture::Facts() const {
    std::size_t clips = 0;
    for (const LayoutRow& row : layout_.rows) {
        clips += row.boxes.size();
    }
    const auto missing = static_cast<std::size_t>(
        std::ranges::count(layout_.media, false, &orvo::LayoutMedia::found));
    std::string facts = KilohertzOf(layout_.sampleRate);
    const auto add = [&facts](const std::string& fact) {
        facts += fact.empty() ? "" : " · " + fact;
    };
    add(fmt::format("{}-bit", layout_.bitDepth));
    add(ChannelsWord(layout_.channels));
    add(Counted(layout_.rows.size(), "track"));
    add(Counted(clips, "clip"));
    add(missing > 0
            ? fmt::format("{} of {} missing", missing, Counted(layout_.media.size(), "media file"))
            : Counted(layout_.media.size(), "media file"));
    return facts;
}

std::string Picture::Description() const {
    std::string names;
    for (const LayoutRow& row : layout_.rows) {
        names += (names.empty() ? "" : ", ") + NameOf(row);
    }
    return fmt::format("A timeline from {} to {}: {}. Tracks from top to bottom: {}.",
                       orvo::PositionLabel(layout_, layout_.from),
                       orvo::PositionLabel(layout_, layout_.to), Facts(), names);
}

void Picture::Draw(SvgCanvas& canvas) const {
    canvas.Rectangle({0, 0, width_, height_}, 0, {.fill = colours_.page});
    DrawTitle(canvas);
    DrawBackground(canvas);
    DrawRuler(canvas);
    ForEachBand([&](const LayoutRow& row, const LayoutLane* lane, const Band& band) {
        if (lane != nullptr) {
            DrawLane(canvas, row, *lane, band);
        } else {
            DrawRow(canvas, row, band);
        }
    });
    DrawOverlays(canvas);
    DrawNotes(canvas);
}

/// Calls `visit(row, lane, band)` from top to bottom; `lane` is null for the row itself.
template <class Visitor>
void Picture::ForEachBand(Visitor visit) const {
    double top = rowsTop_ + kGap;
    for (const LayoutRow& row : layout_.rows) {
        visit(row, nullptr, Band{top, RowHeight(row)});
        top += RowHeight(row) + kGap;
        for (const LayoutLane& lane : row.lanes) {
            visit(row, &lane, Band{top, LaneHeight()});
            top += LaneHeight() + kGap;
        }
    }
}

void Picture::DrawBackground(SvgCanvas& canvas) const {
    if (layout_.rows.empty()) {
        canvas.Text({width_ / 2, rowsTop_ + kRoomForNoTracks / 2}, "No tracks",
                    {.colour = colours_.faintText, .size = 13, .anchor = Anchor::Middle});
    }
    double bottom = rowsTop_;
    ForEachBand([&](const LayoutRow& /*row*/, const LayoutLane* lane, const Band& band) {
        canvas.Rectangle({left_, band.top, right_ - left_, band.height}, 4,
                         {.fill = lane != nullptr ? colours_.lane : colours_.row});
        bottom = band.top + band.height;
    });
    DrawGrid(canvas, bottom);
}

void Picture::DrawTitle(SvgCanvas& canvas) const {
    if (options_.title.empty()) {
        return;
    }
    const TextStyle style = {.colour = colours_.text, .size = 18, .bold = true};
    canvas.Text({kMargin, 27}, FittedText(options_.title, style, width_ - 260), style);
    canvas.Text({kMargin, 46}, Facts(), {.colour = colours_.faintText, .size = 12});
    canvas.Text({right_, 27},
                orvo::PositionLabel(layout_, layout_.from) + " – " +
                    orvo::PositionLabel(layout_, layout_.to),
                {.colour = colours_.faintText, .size = 12, .anchor = Anchor::End});
}

void Picture::DrawRuler(SvgCanvas& canvas) const {
    const double base = rulerTop_ + kRulerHeight;
    std::vector<Point> ends;
    for (const orvo::RulerTick& tick : ticks_) {
        const double x = X(tick.position);
        ends.insert(ends.end(), {{x, base - (tick.label.empty() ? 5.0 : 11.0)}, {x, base}});
        const TextStyle style = {.colour = colours_.faintText, .size = 10.5};
        if (x + 6 + TextWidth(tick.label, style) <= right_) {
            canvas.Text({x + 6, base - 9}, tick.label, style);
        }
    }
    canvas.Lines(ends, {.stroke = colours_.line});
    const Point line[] = {{0, base + 0.5}, {width_, base + 0.5}};
    canvas.Lines(line, {.stroke = colours_.line});
}

void Picture::DrawGrid(SvgCanvas& canvas, double bottom) const {
    std::vector<Point> weak;
    std::vector<Point> strong;
    for (const orvo::RulerTick& tick : ticks_) {
        const double x = X(tick.position);
        std::vector<Point>& ends = tick.label.empty() ? weak : strong;
        ends.insert(ends.end(), {{x, rowsTop_ + kGap}, {x, bottom}});
    }
    canvas.Lines(weak, {.stroke = colours_.grid});
    canvas.Lines(strong, {.stroke = colours_.strongGrid});
}

void Picture::DrawRow(SvgCanvas& canvas, const LayoutRow& row, const Band& band) const {
    DrawHeader(canvas, row, band);
    canvas.Begin({left_, band.top, right_ - left_, band.height}, "");
    DrawBoxes(canvas, row, {0, band.height});
    DrawCrossfades(canvas, row, {0, band.height});
    canvas.End();
}

void Picture::DrawHeader(SvgCanvas& canvas, const LayoutRow& row, const Band& band) const {
    const HueColours hue = ColoursOf(options_.theme, row.hue);
    canvas.Rectangle({kMargin - 8, band.top + 1, 4, std::max(band.height - 2, 1.0)}, 2,
                     {.fill = hue.stripe});
    constexpr double kLowRow = 14;
    if (band.height < kLowRow) {
        return;
    }
    std::string facts = row.hidden ? "Hidden · " : "";
    facts += row.change && *row.change != orvo::LayoutChange::Same
                 ? fmt::format("{} · ", WordOf(*row.change))
                 : "";
    facts += KindWord(row.kind);
    if (const std::string channels = ChannelsWord(row.channels); !channels.empty()) {
        facts += " · " + channels;
    }
    facts += row.output.empty() ? "" : " → " + row.output;
    canvas.Begin({kMargin, band.top, left_ - kMargin - 8, band.height}, NameOf(row),
                 row.hidden ? 0.6 : 1);
    constexpr double kRoomForFacts = 34;
    const bool hasFacts = band.height >= kRoomForFacts && !options_.isSmall;
    const double base = hasFacts ? band.height / 2 - 2 : band.height / 2 + 4;
    const double badges = DrawBadges(canvas, row, {base - 11, 14});
    const TextStyle nameStyle = {.colour = colours_.text, .size = 13, .bold = true};
    canvas.Text({0, base}, FittedText(NameOf(row), nameStyle, badges), nameStyle);
    if (hasFacts) {
        const TextStyle style = {.colour = colours_.faintText, .size = 10.5};
        canvas.Text({0, base + 15}, FittedText(facts, style, left_ - kMargin - 12), style);
    }
    canvas.End();
}

double Picture::DrawBadges(SvgCanvas& canvas, const LayoutRow& row, const Band& band) const {
    struct Badge {
        bool isOn;
        const char* letter;
        std::uint32_t hue;
    };
    double right = left_ - kMargin - 10;
    for (const Badge& badge :
         {Badge{row.armed, "R", 5}, {row.solo, "S", 45}, {row.muted, "M", 215}}) {
        if (!badge.isOn) {
            continue;
        }
        const HueColours hue = ColoursOf(options_.theme, badge.hue);
        canvas.Rectangle({right - 15, band.top, 15, band.height}, 3,
                         {.fill = hue.body, .stroke = hue.edge});
        canvas.Text({right - 7.5, band.top + 10.5}, badge.letter,
                    {.colour = hue.text, .size = 10, .bold = true, .anchor = Anchor::Middle});
        right -= 19;
    }
    return right - 4;
}

double Picture::OpacityOf(const LayoutRow& row, const LayoutBox& box) {
    constexpr double kPale = 0.5;
    constexpr double kUnchanged = 0.4;
    if (box.change) {
        return *box.change == orvo::LayoutChange::Same ? kUnchanged : 1;
    }
    return box.muted || row.muted ? kPale : 1;
}

/// What is too narrow to be seen beside the box before it is left out.
void Picture::DrawBoxes(SvgCanvas& canvas, const LayoutRow& row, const Band& band) const {
    constexpr double kVisible = 0.5;
    const double width = right_ - left_;
    double covered = -HUGE_VAL;
    for (const LayoutBox& box : row.boxes) {
        const double begin = X(box.start) - left_;
        const double end = std::max(X(box.end) - left_, begin + 1);
        if (end - begin < kVisible * 3 && begin >= covered - 1 && end < covered + kVisible) {
            continue;
        }
        covered = end;
        const double left = std::clamp(begin, 0.0, width);
        const Area part = {left, band.top + 1, std::clamp(end, 0.0, width) - left, band.height - 2};
        if (part.width <= 0 || part.height <= 2) {
            continue;
        }
        const HueColours hue = ColoursOf(options_.theme, box.hue ? box.hue : row.hue);
        const orvo::Waveform* const waveform =
            box.media && *box.media < waveforms_.size() && waveforms_[*box.media]
                ? &*waveforms_[*box.media]
                : nullptr;
        canvas.Begin(part,
                     fmt::format("{}, {} to {}", toolkit::NameOf(layout_, box),
                                 orvo::PositionLabel(layout_, box.start),
                                 orvo::PositionLabel(layout_, box.end)),
                     OpacityOf(row, box));
        BoxDrawing(canvas, layout_, box, waveform, hue, colours_,
                   {part, begin - left, pixelsPerSample_, options_.isSmall})
            .Draw();
        canvas.End();
    }
}

/// Both curves, over the clips that they join.
void Picture::DrawCrossfades(SvgCanvas& canvas, const LayoutRow& row, const Band& band) const {
    for (const LayoutBox& box : row.boxes) {
        if (!box.crossfadesInto || box.change == orvo::LayoutChange::Same) {
            continue;
        }
        const LayoutBox& next = row.boxes[*box.crossfadesInto];
        const double begin = X(next.start) - left_;
        const double end = X(std::min(box.end, next.end)) - left_;
        if (end - begin < 3) {
            continue;
        }
        const HueColours hue = ColoursOf(options_.theme, next.hue ? next.hue : row.hue);
        canvas.Rectangle({begin, band.top + 1.5, end - begin, band.height - 3}, 0,
                         {.fill = hue.edge, .opacity = 0.22});
        for (const auto& [fade, isIn] : {std::pair(box.fadeOut, false), {next.fadeIn, true}}) {
            std::vector<Point> points;
            const std::size_t count = fade ? layout_.curves[fade->curve].size() : 2;
            for (std::size_t i = 0; i < count; ++i) {
                const double share = static_cast<double>(i) / static_cast<double>(count - 1);
                const double level = fade ? layout_.curves[fade->curve][i] : share;
                points.push_back(
                    {isIn ? begin + share * (end - begin) : end - share * (end - begin),
                     band.top + 2 + (band.height - 4) * (1 - level)});
            }
            canvas.Line(points, {.stroke = hue.text, .strokeWidth = 1.3});
        }
    }
}

void Picture::DrawLane(SvgCanvas& canvas, const LayoutRow& row, const LayoutLane& lane,
                       const Band& band) const {
    const HueColours hue = ColoursOf(options_.theme, row.hue);
    const Area timeline = {left_, band.top, right_ - left_, band.height};
    constexpr double kLowLane = 12;
    if (band.height < kLowLane) {
        return;
    }
    canvas.Begin({kMargin + 10, band.top, left_ - kMargin - 18, band.height}, lane.name);
    const TextStyle style = {.colour = colours_.faintText, .size = 11};
    canvas.Text({0, band.height / 2 + 4}, FittedText(lane.name, style, left_ - kMargin - 20),
                style);
    canvas.End();
    canvas.Begin(timeline, lane.name);
    const double inset = 6;
    const auto place = [&](double position, double level) {
        return Point{(position - static_cast<double>(layout_.from)) * pixelsPerSample_,
                     inset + (band.height - 2 * inset) * (1 - level)};
    };
    std::vector<Point> curve;
    for (const LanePoint& point :
         LaneCurve(lane, static_cast<double>(layout_.from), static_cast<double>(layout_.to))) {
        curve.push_back(place(point.position, point.level));
    }
    std::vector<Point> area = curve;
    area.push_back({curve.back().x, band.height});
    area.push_back({curve.front().x, band.height});
    canvas.Line(area, {.fill = hue.wave, .opacity = 0.14});
    canvas.Line(curve, {.stroke = hue.wave, .strokeWidth = 1.6});
    std::vector<Point> points;
    for (const orvo::LayoutKeyframe& keyframe : lane.keyframes) {
        const Point point = place(static_cast<double>(keyframe.position), keyframe.level);
        constexpr double kApart = 5;
        if (point.x >= 0 && point.x <= timeline.width &&
            (points.empty() || point.x - points.back().x >= kApart ||
             std::abs(point.y - points.back().y) >= kApart)) {
            points.push_back(point);
        }
    }
    canvas.Circles(points, 2.6, hue.wave);
    canvas.End();
}

void Picture::DrawOverlays(SvgCanvas& canvas) const {
    const double bottom = height_ - kMargin + kGap - NotesHeight();
    if (layout_.selection.duration > 0) {
        const std::int64_t end = SaturatingSum(layout_.selection.start, layout_.selection.duration);
        const double begin = std::clamp(X(layout_.selection.start), left_, right_);
        const double width = std::clamp(X(end), left_, right_) - begin;
        if (width > 0) {
            canvas.Rectangle({begin, rulerTop_ + 12, width, bottom - rulerTop_ - 12}, 0,
                             {.fill = colours_.selection, .opacity = 0.1});
            const Point ends[] = {{begin, rulerTop_ + 12},
                                  {begin, bottom},
                                  {begin + width, rulerTop_ + 12},
                                  {begin + width, bottom}};
            canvas.Lines(ends, {.stroke = colours_.selection, .opacity = 0.5});
        }
    }
    const double x = X(layout_.cursor);
    if (x >= left_ && x <= right_) {
        const double top = rulerTop_ + kRulerHeight;
        const Point head[] = {
            {x - 5, top - 12}, {x + 5, top - 12}, {x + 5, top - 6}, {x, top}, {x - 5, top - 6}};
        canvas.Line(head, {.fill = colours_.cursor});
        const Point line[] = {{x, top}, {x, bottom}};
        canvas.Lines(line, {.stroke = colours_.cursor, .strokeWidth = 1.2});
    }
}

}  // namespace toolkit
