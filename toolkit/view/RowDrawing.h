#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/view/BoxDrawing.h"
#include "toolkit/view/Scene.h"
#include "toolkit/view/Shapes.h"

namespace toolkit {

/// Draws a track: its header, and its clips.
class RowDrawing {
public:
    RowDrawing(Canvas& canvas, Scene& scene, const orvo::LayoutRow& row, const Band& band);

    void Draw() const;

private:
    void DrawHeader() const;
    void DrawNames() const;
    /// @return where the room on their left ends
    double DrawBadges(double middle) const;
    void FindBoxesInFront();
    std::size_t ColumnOf(double x) const;
    void DrawBoxes() const;
    Stretch ClearStretch(const orvo::LayoutBox& box, double left, double width) const;
    void DrawBox(const orvo::LayoutBox& box, double begin, double end) const;
    void DrawHiddenEnds() const;
    void DrawCrossfades() const;
    void DrawCrossfade(const orvo::LayoutBox& box, const orvo::LayoutBox& next) const;
    std::string TipOf(const orvo::LayoutBox& box) const;
    bool AreJoined(const orvo::LayoutBox& box, const orvo::LayoutBox& other) const;
    static double OpacityOf(const orvo::LayoutBox& box);
    double X(std::int64_t position) const;

    Canvas& canvas_;
    Scene& scene_;
    const Frame& frame_;
    const orvo::LayoutRow& row_;
    const Band& band_;
    std::vector<const orvo::LayoutBox*> inFront_{};  // in each column of pixels; null: none
};

}  // namespace toolkit
