#pragma once

#include <string>
#include <vector>

#include "toolkit/view/Scene.h"
#include "toolkit/view/SvgCanvas.h"

namespace toolkit {

/// A scene as a picture: its rows, and what is around and above them.
class Picture {
public:
    /// The scene must outlive the picture.
    explicit Picture(Scene& scene);

    void Draw(SvgCanvas& canvas) const;

private:
    void DrawTitle(SvgCanvas& canvas) const;
    void DrawBackground(SvgCanvas& canvas) const;
    void DrawGrid(SvgCanvas& canvas) const;
    void DrawRuler(SvgCanvas& canvas) const;
    void DrawSelection(SvgCanvas& canvas) const;
    void DrawCursor(SvgCanvas& canvas) const;
    void DrawNotes(SvgCanvas& canvas) const;

    Scene& scene_;
    const orvo::Layout& layout_;
    const ThemeColours& colours_;
    const Frame& frame_;
    std::vector<orvo::RulerTick> ticks_;
};

}  // namespace toolkit
