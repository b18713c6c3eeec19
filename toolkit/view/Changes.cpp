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

std::optional<Colour> ColourOf(const ThemeColours& theme, orvo::LayoutChange change) {
    const auto edge = [&theme](double hue) { return ColoursOf(theme.theme, hue).wave; };
    switch (change) {
        case orvo::LayoutChange::Same:
            break;
        case orvo::LayoutChange::Added:
            return edge(130);
        case orvo::LayoutChange::Removed:
            return edge(0);
        case orvo::LayoutChange::Moved:
            return edge(215);
        case orvo::LayoutChange::Changed:
            return edge(40);
        case orvo::LayoutChange::Former:
            return edge(215);
    }
    return std::nullopt;
}

}  // namespace toolkit
