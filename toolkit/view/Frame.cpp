#include "toolkit/view/Frame.h"

#include <algorithm>
#include <cmath>

namespace toolkit {
namespace {

using orvo::LayoutRow;
using orvo::RowKind;

constexpr double kHeaderWidth = 196;
constexpr double kSmallHeaderWidth = 120;
constexpr double kTitleHeight = 58;
constexpr double kNoTitleHeight = 10;
constexpr double kRulerHeight = 30;
constexpr double kUsualGap = 3;
constexpr double kLeastWidth = 400;
constexpr double kGreatestHeight = 12'000;
constexpr double kRoomForNoTracks = 60;
constexpr double kUsualLaneHeight = 46;

double UsualRowHeight(const LayoutRow& row, bool isDense) {
    constexpr double kEmpty = 38;
    constexpr double kDense = 46;
    if (isDense) {
        return kDense;
    }
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

double NotesHeight(const orvo::Layout& layout) {
    const std::size_t lines = std::min(layout.notes.size(), Frame::kMostNotes + 1);
    return lines == 0 ? 0 : Frame::kNoteHeight * static_cast<double>(1 + lines);
}

}  // namespace

Frame::Frame(const orvo::Layout& layout, const orvo::DrawOptions& options)
    : isDense(options.isSmall),
      width(std::max(options.width, kLeastWidth)),
      left(options.isSmall ? kSmallHeaderWidth : kHeaderWidth),
      right(width - kMargin),
      rulerTop(options.title.empty() ? kNoTitleHeight : kTitleHeight),
      rulerBase(rulerTop + kRulerHeight),
      from(static_cast<double>(layout.from)),
      pixelsPerSample((right - left) / (static_cast<double>(layout.to) - from)) {
    ShareHeight(layout, options);
    constexpr double kTooLow = 0.35;
    if (!isDense && rowScale < kTooLow) {
        isDense = true;
        ShareHeight(layout, options);
    }
}

/// Gaps shrink with the rows, and do not grow with them.
void Frame::ShareHeight(const orvo::Layout& layout, const orvo::DrawOptions& options) {
    double rows = 0;
    double gaps = 1;
    for (const LayoutRow& row : layout.rows) {
        const auto lanes = isDense ? 0 : static_cast<double>(row.lanes.size());
        rows += UsualRowHeight(row, isDense) + kUsualLaneHeight * lanes;
        gaps += 1 + lanes;
    }
    const double usual = rows > 0 ? rows + kUsualGap * gaps : kRoomForNoTracks;
    const double notes = NotesHeight(layout);
    const double around = rulerBase + notes + kMargin;
    height = std::ceil(options.height.value_or(std::min(usual + around, kGreatestHeight)));
    const double room = std::max(height - around, 0.0);
    gap = kUsualGap * std::min(room / usual, 1.0);
    rowScale = rows > 0 ? std::max((room - gap * gaps) / rows, 0.0) : 1;
    if (options.isSmall) {
        rowScale = std::min(rowScale, 1.0);
    }
    rowsBottom = rows > 0 ? rulerBase + rows * rowScale + gap * gaps : height - notes - kMargin;
}

double Frame::X(std::int64_t position) const {
    return left + (static_cast<double>(position) - from) * pixelsPerSample;
}

double Frame::RowHeight(const LayoutRow& row) const {
    return UsualRowHeight(row, isDense) * rowScale;
}

double Frame::LaneHeight() const {
    return kUsualLaneHeight * rowScale;
}

}  // namespace toolkit
