#include <orvo/Draw.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "toolkit/view/Colours.h"

namespace orvo {
namespace {

constexpr double kMargin = 16;
constexpr double kTitleHeight = 52;
constexpr double kLeastCellWidth = 480;
constexpr double kCellShape = 0.5;  // height to width

}  // namespace

class ContactSheet::Drawing {
public:
    /// Where the pictures are.
    struct Grid {
        explicit Grid(const DrawOptions& options)
            : width(std::max(options.width, kLeastCellWidth + 2 * kMargin)),
              top(options.title.empty() ? kMargin : kTitleHeight),
              columns(std::floor((width - kMargin) / (kLeastCellWidth + kMargin))),
              cellWidth(std::floor((width - kMargin) / columns) - kMargin),
              cellHeight(std::round(cellWidth * kCellShape)) {}

        double RowTop(double row) const { return top + row * (cellHeight + kMargin); }

        Area Cell(std::size_t place) const {
            const double row = std::floor(static_cast<double>(place) / columns);
            const double column = static_cast<double>(place) - row * columns;
            return {kMargin + column * (cellWidth + kMargin), RowTop(row), cellWidth, cellHeight};
        }

        double Height(std::size_t pictures) const {
            return RowTop(std::ceil(static_cast<double>(pictures) / columns));
        }

        double width;
        double top;  // of the first row
        double columns;
        double cellWidth;
        double cellHeight;
    };

    Drawing(Canvas& canvas, const DrawOptions& options)
        : canvas_(canvas), options_(options), grid_(options) {
        canvas_.Rectangle({0, 0, grid_.width, grid_.top}, 0, {.fill = Colours().lane});
        canvas_.Text({kMargin, 33}, options_.title,
                     {.colour = Colours().text, .size = 20, .bold = true});
    }

    double CellWidth() const { return grid_.cellWidth; }

    PictureHead Head() const { return HeadOf(options_, count_); }

    void Add(const Layout& layout, const std::vector<std::optional<Waveform>>& waveforms,
             const std::string& title) {
        const DrawOptions small = {.title = title,
                                   .width = grid_.cellWidth,
                                   .height = grid_.cellHeight,
                                   .theme = options_.theme,
                                   .isSmall = true};
        const Area cell = grid_.Cell(count_);
        if (cell.x == kMargin) {
            BeginRow(cell.y);
        }
        canvas_.Begin(cell, title, 1);
        Draw(canvas_, layout, waveforms, small);
        canvas_.End();
        ++count_;
    }

private:
    const toolkit::ThemeColours& Colours() const { return toolkit::ColoursOf(options_.theme); }

    /// Its background begins a little above it, so that no gap shows between two rows.
    void BeginRow(double top) {
        constexpr double kOverlap = kMargin / 2;
        canvas_.Rectangle({0, top - kOverlap, grid_.width, grid_.cellHeight + kMargin + kOverlap},
                          0, {.fill = Colours().lane});
    }

    Canvas& canvas_;
    DrawOptions options_;
    Grid grid_;
    std::size_t count_ = 0;
};

ContactSheet::ContactSheet(Canvas& canvas, const DrawOptions& options)
    : drawing_(std::make_unique<Drawing>(canvas, options)) {}
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

PictureHead ContactSheet::Head() const {
    return drawing_->Head();
}

PictureHead ContactSheet::HeadOf(const DrawOptions& options, std::size_t sessions) {
    const Drawing::Grid grid(options);
    return {.width = grid.width,
            .height = grid.Height(sessions),
            .title = options.title.empty() ? "Sessions" : options.title,
            .description = fmt::format("The timelines of {} sessions.", sessions)};
}

}  // namespace orvo
