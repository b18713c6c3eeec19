#pragma once

#include <optional>

#include <orvo/Draw.h>
#include "toolkit/view/SvgCanvas.h"

namespace toolkit {

/// Where a box is drawn.
struct BoxPlace {
    Area part;    ///< what can be seen of it
    double left;  ///< of the whole box, in the coordinates of the part; 0 or less
    double pixelsPerSample;
    bool isSmall;  ///< has no texts over its waveform
};

/// Draws what is in a clip's box. The canvas has begun a part for what can be seen of the box.
class BoxDrawing {
public:
    /// @param waveform  null: none
    BoxDrawing(SvgCanvas& canvas, const orvo::Layout& layout, const orvo::LayoutBox& box,
               const orvo::Waveform* waveform, const HueColours& hue, const ThemeColours& theme,
               const BoxPlace& place);

    void Draw() const;

private:
    double Whole(std::int64_t samples) const;
    bool IsMissing() const;
    double NameHeight() const;
    void DrawBody() const;
    void DrawWave() const;
    void DrawPicture() const;
    void DrawHatch() const;
    void DrawFade(const orvo::LayoutFade& fade, bool isIn) const;
    void DrawText() const;
    void DrawChange() const;
    void DrawGroup() const;
    std::string Marks() const;

    SvgCanvas& canvas_;
    const orvo::Layout& layout_;
    const orvo::LayoutBox& box_;
    const orvo::Waveform* waveform_;
    const HueColours& hue_;
    const ThemeColours& theme_;
    Area part_;
    double left_;
    double width_ = 0;  // of the whole box
    double pixelsPerSample_;
    bool isSmall_;
};

/// A clip's name, or else that of its media file.
std::string NameOf(const orvo::Layout& layout, const orvo::LayoutBox& box);

}  // namespace toolkit
