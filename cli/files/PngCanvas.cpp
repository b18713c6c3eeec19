#include "cli/files/PngCanvas.h"

#include <fmt/format.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace cli {
namespace {

using orvo::Area;
using orvo::Colour;
using orvo::Paint;
using orvo::Point;
using orvo::TextStyle;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;
using Layout = std::unique_ptr<PangoLayout, decltype(&g_object_unref)>;
using Font = std::unique_ptr<PangoFontDescription, decltype(&pango_font_description_free)>;

/// The most pixels of an image's side that cairo takes.
constexpr double kMostPixels = 32'767;

/// Farther away than any picture reaches; cairo's coordinates do not reach much farther.
constexpr double kFar = 500'000;

void Require(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(std::string("the picture cannot be drawn: ") +
                                 cairo_status_to_string(status));
    }
}

/// @param side  such as "high"
/// @param advice  what makes it smaller
int PixelsOf(double length, double scale, const char* side, const char* advice) {
    const double pixels = std::ceil(length * scale);
    if (pixels > kMostPixels) {
        throw std::runtime_error(
            fmt::format("the picture would be {} pixels {}, and a PNG has {} at most: {}", pixels,
                        side, kMostPixels, advice));
    }
    return static_cast<int>(pixels);
}

int WidthOf(double width, double scale) {
    return PixelsOf(width, scale, "wide", "choose a smaller --width or --scale");
}

int HeightOf(double height, double scale) {
    return PixelsOf(height, scale, "high", "choose a smaller --height or --scale, or draw an SVG");
}

cairo_status_t Append(void* file, const unsigned char* data, unsigned size) {
    static_cast<std::string*>(file)->append(reinterpret_cast<const char*>(data), size);
    return CAIRO_STATUS_SUCCESS;
}

/// Glyphs keep their shapes and distances at every scale, as in a browser.
Layout MakeLayout(cairo_t* context) {
    Layout layout(pango_cairo_create_layout(context), &g_object_unref);
    const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
        cairo_font_options_create(), &cairo_font_options_destroy);
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    PangoContext* const fonts = pango_layout_get_context(layout.get());
    pango_cairo_context_set_font_options(fonts, options.get());
    pango_context_set_round_glyph_positions(fonts, FALSE);
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    return layout;
}

Font FontOf(const TextStyle& style) {
    Font font(pango_font_description_new(), &pango_font_description_free);
    pango_font_description_set_family(font.get(), std::string(TextStyle::kFonts).c_str());
    pango_font_description_set_absolute_size(font.get(), style.size * PANGO_SCALE);
    if (style.bold) {
        pango_font_description_set_weight(font.get(), static_cast<PangoWeight>(TextStyle::kBold));
    }
    return font;
}

/// How far left of its place a text begins, in widths.
double ShiftOf(orvo::Anchor anchor) {
    switch (anchor) {
        case orvo::Anchor::Middle:
            return 0.5;
        case orvo::Anchor::End:
            return 1;
        case orvo::Anchor::Start:
            break;
    }
    return 0;
}

}  // namespace

class PngCanvas::Pen {
public:
    Pen(double width, double height, double scale)
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, WidthOf(width, scale),
                                              HeightOf(height, scale)),
                   &cairo_surface_destroy),
          context_(cairo_create(surface_.get()), &cairo_destroy),
          scale_(scale) {
        Require(cairo_status(context_.get()));
        cairo_scale(context_.get(), scale, scale);
        layout_ = MakeLayout(context_.get());
    }

    cairo_t* Context() const { return context_.get(); }

    void MoveTo(const Point& point) const {
        cairo_move_to(Context(), Near(point.x), Near(point.y));
    }
    void LineTo(const Point& point) const {
        cairo_line_to(Context(), Near(point.x), Near(point.y));
    }

    void AddRectangle(const Area& area, double radius) const {
        const double left = Near(area.x);
        const double top = Near(area.y);
        const double width = Near(area.Right()) - left;
        const double height = Near(area.Bottom()) - top;
        const double round = std::min({radius, width / 2, height / 2});
        if (round <= 0) {
            cairo_rectangle(Context(), left, top, width, height);
            return;
        }
        constexpr double kQuarter = std::numbers::pi / 2;
        const Point corners[] = {{left + width - round, top + round},
                                 {left + width - round, top + height - round},
                                 {left + round, top + height - round},
                                 {left + round, top + round}};
        double angle = -kQuarter;
        cairo_new_sub_path(Context());
        for (const Point& corner : corners) {
            cairo_arc(Context(), corner.x, corner.y, round, angle, angle + kQuarter);
            angle += kQuarter;
        }
        cairo_close_path(Context());
    }

    /// Paints the path, and begins a new one.
    void PaintPath(const Paint& paint) const {
        if (paint.fill) {
            Choose(*paint.fill, paint.opacity);
            cairo_fill_preserve(Context());
        }
        if (paint.stroke) {
            constexpr double kDashes[] = {Paint::kDash, Paint::kDashGap};
            Choose(*paint.stroke, paint.opacity);
            cairo_set_line_width(Context(), paint.strokeWidth);
            cairo_set_dash(Context(), kDashes, paint.dashed ? 2 : 0, 0);
            cairo_stroke_preserve(Context());
        }
        cairo_new_path(Context());
    }

    void Write(const Point& base, const std::string& text, const TextStyle& style) const {
        pango_layout_set_font_description(layout_.get(), FontOf(style).get());
        pango_layout_set_text(layout_.get(), orvo::LegibleText(text).c_str(), -1);
        int width = 0;
        pango_layout_get_size(layout_.get(), &width, nullptr);
        const double shift = ShiftOf(style.anchor) * width;
        MoveTo(
            {base.x - shift / PANGO_SCALE,
             base.y - static_cast<double>(pango_layout_get_baseline(layout_.get())) / PANGO_SCALE});
        Choose(style.colour, 1);
        pango_cairo_show_layout(Context(), layout_.get());
        cairo_new_path(Context());
    }

    void BeginPart(const Area& area, double opacity) {
        cairo_save(Context());
        cairo_translate(Context(), Near(area.x), Near(area.y));
        cairo_rectangle(Context(), 0, 0, Near(area.width), Near(area.height));
        cairo_clip(Context());
        if (opacity != 1) {
            cairo_push_group(Context());
        }
        opacities_.push_back(opacity);
    }

    void EndPart() {
        if (opacities_.back() != 1) {
            cairo_pop_group_to_source(Context());
            cairo_paint_with_alpha(Context(), opacities_.back());
        }
        opacities_.pop_back();
        cairo_restore(Context());
    }

    std::string Take(double height) const {
        Require(cairo_status(Context()));
        cairo_surface_flush(surface_.get());
        const int rows =
            std::min(HeightOf(height, scale_), cairo_image_surface_get_height(surface_.get()));
        const Surface part(cairo_image_surface_create_for_data(
                               cairo_image_surface_get_data(surface_.get()), CAIRO_FORMAT_RGB24,
                               cairo_image_surface_get_width(surface_.get()), rows,
                               cairo_image_surface_get_stride(surface_.get())),
                           &cairo_surface_destroy);
        std::string file;
        Require(cairo_surface_write_to_png_stream(part.get(), Append, &file));
        return file;
    }

private:
    static double Near(double number) { return std::clamp(number, -kFar, kFar); }

    void Choose(const Colour& colour, double opacity) const {
        constexpr double kMost = 255;
        cairo_set_source_rgba(Context(), colour.red / kMost, colour.green / kMost,
                              colour.blue / kMost, opacity);
    }

    Surface surface_;
    cli::Context context_;
    cli::Layout layout_{nullptr, &g_object_unref};
    double scale_;
    std::vector<double> opacities_{};
};

PngCanvas::PngCanvas(double width, double height, double scale)
    : pen_(std::make_unique<Pen>(width, height, scale)) {}
PngCanvas::~PngCanvas() = default;

void PngCanvas::Rectangle(const Area& area, double radius, const Paint& paint) {
    if (area.width > 0 && area.height > 0) {
        pen_->AddRectangle(area, radius);
        pen_->PaintPath(paint);
    }
}

void PngCanvas::Line(std::span<const Point> points, const Paint& paint) {
    for (const Point& point : points) {
        pen_->LineTo(point);
    }
    cairo_set_line_join(pen_->Context(), CAIRO_LINE_JOIN_ROUND);
    pen_->PaintPath(paint);
    cairo_set_line_join(pen_->Context(), CAIRO_LINE_JOIN_MITER);
}

void PngCanvas::Lines(std::span<const Point> ends, const Paint& paint) {
    for (std::size_t i = 0; i + 1 < ends.size(); i += 2) {
        pen_->MoveTo(ends[i]);
        pen_->LineTo(ends[i + 1]);
    }
    pen_->PaintPath(paint);
}

void PngCanvas::Circles(std::span<const Point> centres, double radius, const Colour& colour) {
    for (const Point& centre : centres) {
        pen_->AddRectangle({centre.x - radius, centre.y - radius, radius * 2, radius * 2}, radius);
    }
    pen_->PaintPath({.fill = colour});
}

void PngCanvas::Text(const Point& base, const std::string& text, const TextStyle& style) {
    if (!text.empty()) {
        pen_->Write(base, text, style);
    }
}

void PngCanvas::Begin(const Area& area, const std::string& /*title*/, double opacity) {
    pen_->BeginPart(area, opacity);
}

void PngCanvas::End() {
    pen_->EndPart();
}

std::string PngCanvas::Take(double height) {
    return pen_->Take(height);
}

}  // namespace cli
