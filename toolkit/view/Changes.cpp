#include "toolkit/view/Changes.h"

namespace toolkit {

const char* WordOf(orvo::LayoutChange change) {
    switch (change) {
        case orvo::LayoutChange::Same:
            return "";
        case orvo::LayoutChange::Added:
            return "added";
        case orvo::LayoutChange::Removed:
            return "removed";
        case orvo::LayoutChange::Moved:
            return "moved";
        case orvo::LayoutChange::Changed:
            return "changed";
        case orvo::LayoutChange::Former:
            return "was here";
    }
    return "";
}

std::optional<double> HueOf(orvo::LayoutChange change) {
    switch (change) {
        case orvo::LayoutChange::Same:
            break;
        case orvo::LayoutChange::Added:
            return 130;
        case orvo::LayoutChange::Removed:
            return 0;
        case orvo::LayoutChange::Moved:
        case orvo::LayoutChange::Former:
            return 215;
        case orvo::LayoutChange::Changed:
            return 40;
    }
    return std::nullopt;
}

std::optional<Colour> ColourOf(const ThemeColours& theme, orvo::LayoutChange change) {
    const std::optional<double> hue = HueOf(change);
    return hue ? std::optional(ColoursOf(theme.theme, *hue).wave) : std::nullopt;
}

}  // namespace toolkit
