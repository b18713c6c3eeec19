#pragma once

#include <string>
#include <vector>

#include "toolkit/view/Scene.h"
#include "toolkit/view/Shapes.h"

namespace toolkit {

/// A scene as a picture: its rows, and what is around and above them.
class Picture {
public:
    /// The scene must outlive the picture.
    explicit Picture(Scene& scene);

    void Draw(Canvas& canvas) const;

private:
    void DrawTitle(Canvas& canvas) const;
    void DrawBackground(Canvas& canvas) const;
    void DrawGrid(Canvas& canvas) const;
    void DrawRuler(Canvas& canvas) const;
    void DrawSelection(Canvas& canvas) const;
    void DrawCursor(Canvas& canvas) const;
    void DrawNotes(Canvas& canvas) const;

    Scene& scene_;
    const orvo::Layout& layout_;
    const ThemeColours& colours_;
    const Frame& frame_;
    std::vector<orvo::RulerTick> ticks_;
};

}  // namespace toolkit
