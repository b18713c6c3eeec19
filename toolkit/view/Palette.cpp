#include "toolkit/view/Palette.h"

#include <cmath>
#include <cstddef>

namespace toolkit {
namespace {

double UsualHue(orvo::RowKind kind) {
    switch (kind) {
        case orvo::RowKind::Video:
            return 300;
        case orvo::RowKind::Audio:
            return 215;
        case orvo::RowKind::Bus:
            return 150;
        case orvo::RowKind::Master:
            return 45;
        case orvo::RowKind::Metronome:
            return 60;
        case orvo::RowKind::Instrument:
            return 265;
    }
    return 0;
}

}  // namespace

double HueOf(const orvo::LayoutRow& row) {
    return row.hue ? *row.hue : UsualHue(row.kind);
}

int WholeDegrees(double hue) {
    return static_cast<int>(std::lround(hue) % 360);
}

const HueColours& Palette::Of(const orvo::LayoutRow& row) {
    return Of(HueOf(row));
}

const HueColours& Palette::Of(const orvo::LayoutRow& row, const orvo::LayoutBox& box) {
    return Of(box.hue ? *box.hue : HueOf(row), row.muted || box.muted);
}

const HueColours& Palette::Of(double hue, bool isMuted) {
    constexpr double kLittle = 0.15;
    const auto degrees = static_cast<std::size_t>(WholeDegrees(hue));
    std::optional<HueColours>& made = isMuted ? muted_[degrees] : made_[degrees];
    if (!made) {
        made = ColoursOf(theme_, static_cast<double>(degrees), isMuted ? kLittle : 1);
    }
    return *made;
}

}  // namespace toolkit
