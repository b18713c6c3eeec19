#pragma once

#include <cstddef>
#include <cstdint>

#include <orvo/Draw.h>
#include <orvo/Layout.h>

namespace toolkit {

/// Where a row or lane is.
struct Band {
    double top;
    double height;
};

/// Where the parts of a picture are, in pixels.
struct Frame {
    static constexpr double kMargin = 16;
    static constexpr double kNoteHeight = 18;
    static constexpr std::size_t kMostNotes = 24;

    Frame(const orvo::Layout& layout, const orvo::DrawOptions& options);

    double X(std::int64_t position) const;
    double RowHeight(const orvo::LayoutRow& row) const;
    double LaneHeight() const;

    bool isDense = false;  ///< there is little room: rows are equally high, and have no lanes
    double width = 0;
    double height = 0;
    double left = 0;   ///< of the timeline
    double right = 0;  ///< of it
    double rulerTop = 0;
    double rulerBase = 0;
    double rowsBottom = 0;  ///< below it are the notes
    double gap = 0;         ///< before each row and lane
    double rowScale = 1;    ///< of the usual heights of rows and lanes
    double from = 0;        ///< where the timeline begins, in samples
    double pixelsPerSample = 0;

private:
    void ShareHeight(const orvo::Layout& layout, const orvo::DrawOptions& options);
};

/// Calls `visit(row, lane, band)` from top to bottom; `lane` is null for the row itself.
template <class Visitor>
void ForEachBand(const orvo::Layout& layout, const Frame& frame, Visitor visit) {
    double top = frame.rulerBase + frame.gap;
    for (const orvo::LayoutRow& row : layout.rows) {
        visit(row, nullptr, Band{top, frame.RowHeight(row)});
        top += frame.RowHeight(row) + frame.gap;
        if (frame.isDense) {
            continue;
        }
        for (const orvo::LayoutLane& lane : row.lanes) {
            visit(row, &lane, Band{top, frame.LaneHeight()});
            top += frame.LaneHeight() + frame.gap;
        }
    }
}

}  // namespace toolkit
