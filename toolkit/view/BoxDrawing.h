#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/view/Scene.h"
#include "toolkit/view/Shapes.h"

namespace toolkit {

/// From left to right.
struct Stretch {
    double begin;
    double end;

    double Length() const { return end - begin; }
};

/// Where a box is drawn.
struct BoxPlace {
    Area part;      ///< what can be seen of it
    double left;    ///< of the whole box, in the coordinates of the part; 0 or less
    Stretch clear;  ///< what no other box covers, in those coordinates; its texts are there
};

/// Draws what is in a clip's box. The canvas has begun a part for what can be seen of the box.
class BoxDrawing {
public:
    BoxDrawing(Canvas& canvas, Scene& scene, const orvo::LayoutRow& row, const orvo::LayoutBox& box,
               const BoxPlace& place);

    void Draw() const;

    /// How high the bar with the name is in a box of a height; 0: it has none.
    static double HeadHeight(double height);

private:
    double Whole(std::int64_t samples) const;
    bool IsMissing() const;
    bool HasText() const;
    void DrawInside() const;
    void DrawBody() const;
    void DrawStack() const;
    void DrawHead() const;
    void DrawWave(const orvo::Waveform& waveform) const;
    void DrawPerforation() const;
    void DrawStaves() const;
    void DrawHatch() const;
    void DrawFade(const orvo::LayoutFade& fade, bool isIn) const;
    void DrawLanes() const;
    void DrawText() const;
    void DrawChange() const;
    void DrawGroup() const;
    std::vector<std::string> Marks() const;

    Canvas& canvas_;
    Scene& scene_;
    const orvo::LayoutBox& box_;
    const HueColours& hue_;
    double left_;
    double width_;   // of the whole box
    double end_;     // of what can be seen
    Stretch clear_;  // what of that no other box covers
    double height_;  // without the stack below
    double head_;
};

}  // namespace toolkit
