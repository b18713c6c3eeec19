#pragma once

#include <optional>
#include <string>
#include <vector>

#include <orvo/Draw.h>
#include "toolkit/view/SvgCanvas.h"

namespace toolkit {

/// A layout in pixels, to be drawn as SVG.
class Picture {
public:
    /// The arguments must outlive the picture.
    Picture(const orvo::Layout& layout, const std::vector<std::optional<orvo::Waveform>>& waveforms,
            const orvo::DrawOptions& options);

    double Width() const { return width_; }
    double Height() const { return height_; }

    /// The title, or a general one.
    std::string Title() const;
    /// The session in a sentence.
    std::string Description() const;

    void Draw(SvgCanvas& canvas) const;

private:
    /// Where a row or lane is.
    struct Band {
        double top;
        double height;
    };

    double X(std::int64_t position) const;
    std::string Facts() const;
    double NotesHeight() const;
    double RowHeight(const orvo::LayoutRow& row) const;
    double LaneHeight() const;

    template <class Visitor>
    void ForEachBand(Visitor visit) const;
    static double OpacityOf(const orvo::LayoutRow& row, const orvo::LayoutBox& box);

    void DrawTitle(SvgCanvas& canvas) const;
    void DrawRuler(SvgCanvas& canvas) const;
    void DrawBackground(SvgCanvas& canvas) const;
    void DrawGrid(SvgCanvas& canvas, double bottom) const;
    void DrawNotes(SvgCanvas& canvas) const;
    void DrawRow(SvgCanvas& canvas, const orvo::LayoutRow& row, const Band& band) const;
    void DrawHeader(SvgCanvas& canvas, const orvo::LayoutRow& row, const Band& band) const;
    /// @return where the room on their left ends
    double DrawBadges(SvgCanvas& canvas, const orvo::LayoutRow& row, const Band& band) const;
    void DrawBoxes(SvgCanvas& canvas, const orvo::LayoutRow& row, const Band& band) const;
    void DrawCrossfades(SvgCanvas& canvas, const orvo::LayoutRow& row, const Band& band) const;
    void DrawLane(SvgCanvas& canvas, const orvo::LayoutRow& row, const orvo::LayoutLane& lane,
                  const Band& band) const;
    void DrawOverlays(SvgCanvas& canvas) const;

    const orvo::Layout& layout_;
    const std::vector<std::optional<orvo::Waveform>>& waveforms_;
    const orvo::DrawOptions& options_;
    const ThemeColours& colours_;
    double width_;
    double height_;
    double left_;   // of the timeline
    double right_;  // of it
    double rulerTop_;
    double rowsTop_;
    double rowScale_ = 1;  // of the heights of rows
    double pixelsPerSample_;
    std::vector<orvo::RulerTick> ticks_;
};

}  // namespace toolkit
