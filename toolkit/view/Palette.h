#pragma once

#include <array>
#include <optional>

#include <orvo/Layout.h>
#include "toolkit/view/Colours.h"

namespace toolkit {

/// That of a track, or else of its kind.
double HueOf(const orvo::LayoutRow& row);

/// A hue in whole degrees, from 0 to 359: finer differences are not drawn.
int WholeDegrees(double hue);

/// The colours of tracks and clips, each made once. What has no colour has that of its kind of
/// track; what is muted is almost grey.
class Palette {
public:
    explicit Palette(orvo::Theme theme) : theme_(theme) {}

    const HueColours& Of(const orvo::LayoutRow& row);
    const HueColours& Of(const orvo::LayoutRow& row, const orvo::LayoutBox& box);
    const HueColours& Of(double hue, bool isMuted = false);

private:
    orvo::Theme theme_;
    std::array<std::optional<HueColours>, 360> made_{};  // by whole degrees
    std::array<std::optional<HueColours>, 360> muted_{};
};

}  // namespace toolkit
