#include <orvo/Draw.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "toolkit/view/Picture.h"
#include "toolkit/view/SvgCanvas.h"

namespace orvo {
namespace {

using toolkit::Area;
using toolkit::SvgCanvas;

constexpr double kMargin = 16;
constexpr double kTitleHeight = 52;
constexpr double kLeastCellWidth = 480;
constexpr double kCellShape = 0.5;  // height to width

}  // namespace

std::string DrawContactSheet(const std::vector<SheetPicture>& pictures,
                             const DrawOptions& options) {
    const double width = std::max(options.width, kLeastCellWidth + 2 * kMargin);
    const double columns = std::floor((width - kMargin) / (kLeastCellWidth + kMargin));
    const double cellWidth = std::floor((width - kMargin) / columns) - kMargin;
    const double cellHeight = std::round(cellWidth * kCellShape);
    const double top = options.title.empty() ? kMargin : kTitleHeight;
    const double rows = std::ceil(static_cast<double>(pictures.size()) / columns);
    const double height = top + rows * (cellHeight + kMargin);
    const toolkit::ThemeColours& colours = toolkit::ColoursOf(options.theme);
    SvgCanvas canvas(width, height, options.title.empty() ? "Sessions" : options.title,
                     fmt::format("The timelines of {} sessions.", pictures.size()));
    canvas.Rectangle({0, 0, width, height}, 0, {.fill = colours.lane});
    canvas.Text({kMargin, 33}, options.title, {.colour = colours.text, .size = 20, .bold = true});
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const auto number = static_cast<double>(i);
        const Area cell = {kMargin + std::fmod(number, columns) * (cellWidth + kMargin),
                           top + std::floor(number / columns) * (cellHeight + kMargin), cellWidth,
                           cellHeight};
        canvas.Begin(cell, pictures[i].title);
        const DrawOptions small = {.title = pictures[i].title,
                                   .width = cellWidth,
                                   .height = cellHeight,
                                   .theme = options.theme,
                                   .isSmall = true};
        toolkit::Scene scene(pictures[i].layout, pictures[i].waveforms, small);
        toolkit::Picture(scene).Draw(canvas);
        canvas.End();
    }
    return canvas.Take();
}

}  // namespace orvo
