#include <orvo/Draw.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/view/Picture.h"
#include "toolkit/view/SvgCanvas.h"

namespace orvo {
namespace {

constexpr double kMargin = 16;
constexpr double kTitleHeight = 52;
constexpr double kLeastCellWidth = 480;
constexpr double kCellShape = 0.5;  // height to width

}  // namespace

class ContactSheet::Drawing {
public:
    explicit Drawing(const DrawOptions& options)
        : options_(options),
          width_(std::max(options.width, kLeastCellWidth + 2 * kMargin)),
          columns_(std::floor((width_ - kMargin) / (kLeastCellWidth + kMargin))),
          cellWidth_(std::floor((width_ - kMargin) / columns_) - kMargin),
          cellHeight_(std::round(cellWidth_ * kCellShape)),
          top_(options.title.empty() ? kMargin : kTitleHeight) {}

    double CellWidth() const { return cellWidth_; }

    void Add(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
             const std::string& title) {
        const DrawOptions small = {.title = title,
                                   .width = cellWidth_,
                                   .height = cellHeight_,
                                   .theme = options_.theme,
                                   .isSmall = true};
        const double column = std::fmod(count_, columns_);
        cells_.Begin({kMargin + column * (cellWidth_ + kMargin), HeightOf(count_ - column),
                      cellWidth_, cellHeight_},
                     title);
        toolkit::Scene scene(layout, waveforms, small);
        toolkit::Picture(scene).Draw(cells_);
        cells_.End();
        ++count_;
    }

    std::string Take() {
        const toolkit::ThemeColours& colours = toolkit::ColoursOf(options_.theme);
        const double height = HeightOf(count_);
        toolkit::SvgCanvas around;
        around.Rectangle({0, 0, width_, height}, 0, {.fill = colours.lane});
        around.Text({kMargin, 33}, options_.title,
                    {.colour = colours.text, .size = 20, .bold = true});
        around.Add(std::move(cells_));
        return around.Take({.width = width_,
                            .height = height,
                            .title = options_.title.empty() ? "Sessions" : options_.title,
                            .description = fmt::format("The timelines of {} sessions.", count_)});
    }

private:
    /// Where the row after so many pictures begins.
    double HeightOf(double count) const {
        return top_ + std::ceil(count / columns_) * (cellHeight_ + kMargin);
    }

    DrawOptions options_;
    double width_;
    double columns_;
    double cellWidth_;
    double cellHeight_;
    double top_;
    double count_ = 0;
    toolkit::SvgCanvas cells_;
};

ContactSheet::ContactSheet(const DrawOptions& options)
    : drawing_(std::make_unique<Drawing>(options)) {}
ContactSheet::~ContactSheet() = default;
ContactSheet::ContactSheet(ContactSheet&& other) noexcept = default;
ContactSheet& ContactSheet::operator=(ContactSheet&& other) noexcept = default;

double ContactSheet::PictureWidth() const {
    return drawing_->CellWidth();
}

void ContactSheet::Add(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
                       const std::string& title) {
    drawing_->Add(layout, waveforms, title);
}

std::string ContactSheet::Take() {
    return drawing_->Take();
}

}  // namespace orvo
