#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <orvo/Api.h>

/// What pictures are drawn on. `SvgCanvas` draws a document; a program that shows sessions in its
/// own window implements `Canvas` with the calls of its toolkit.
namespace orvo {

/// A colour in sRGB.
struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// A place in pixels; y grows downwards.
struct Point {
    double x = 0;
    double y = 0;
};

/// A rectangle in pixels.
struct Area {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
};

/// How a shape is painted; without a colour, not at all.
struct Paint {
    /// Pixels of a dashed line that are drawn, and left out.
    static constexpr double kDash = 4;
    static constexpr double kDashGap = 3;

    std::optional<Colour> fill{};
    std::optional<Colour> stroke{};
    double strokeWidth = 1;  ///< in pixels, half of them on each side
    double opacity = 1;      ///< of the fill, and of the stroke
    bool dashed = false;     ///< of the stroke
};

enum class Anchor { Start, Middle, End };

struct TextStyle {
    /// The first of these that is installed is used.
    static constexpr std::string_view kFonts =
        "Inter, Segoe UI, Helvetica Neue, Noto Sans, DejaVu Sans, Arial, sans-serif";
    /// The weight of bold text, on the scale from 1 to 1000.
    static constexpr int kBold = 600;

    Colour colour{};
    double size = 11;  ///< of an em, in pixels
    bool bold = false;
    Anchor anchor = Anchor::Start;  ///< what of the text, from left to right, is at its place
};

/// Shapes cover those before them. Numbers are finite. The destructor of a canvas may come before
/// every part has ended.
class ORVO_API Canvas {
public:
    virtual ~Canvas();

    /// @param radius  of its corners, in pixels
    virtual void Rectangle(const Area& area, double radius, const Paint& paint) = 0;

    /// A line through the points, with round joins. Its fill closes it.
    virtual void Line(std::span<const Point> points, const Paint& paint) = 0;

    /// Separate lines, each from a point to the next one. They have no fill.
    virtual void Lines(std::span<const Point> ends, const Paint& paint) = 0;

    virtual void Circles(std::span<const Point> centres, double radius, const Colour& colour) = 0;

    /// @param base  the left end of its base line, or its middle or right end
    /// @param text  as the session has it; `LegibleText` makes it one that can be shown
    virtual void Text(const Point& base, const std::string& text, const TextStyle& style) = 0;

    /// Begins a part with coordinates of its own, from the left upper corner of an area. Nothing of
    /// it shows outside. Parts may lie in parts.
    /// @param title  says what it is, in tips and to screen readers; may be empty
    virtual void Begin(const Area& area, const std::string& title, double opacity) = 0;
    virtual void End() = 0;

protected:
    Canvas() = default;
    Canvas(const Canvas&) = default;
    Canvas& operator=(const Canvas&) = default;
    Canvas(Canvas&&) = default;
    Canvas& operator=(Canvas&&) = default;
};

/// A text on one line: a space for tabs and for what starts a new line, and U+FFFD for malformed
/// UTF-8, for other control characters and for characters that XML does not carry.
ORVO_API std::string LegibleText(const std::string& text);

/// What a picture says of itself.
struct PictureHead {
    double width = 0;  ///< in pixels
    double height = 0;
    std::string title{};
    std::string description{};  ///< for screen readers
};

/// Draws an SVG document. Text never becomes markup, whatever it holds.
class ORVO_API SvgCanvas final : public Canvas {
public:
    void Rectangle(const Area& area, double radius, const Paint& paint) override;
    void Line(std::span<const Point> points, const Paint& paint) override;
    void Lines(std::span<const Point> ends, const Paint& paint) override;
    void Circles(std::span<const Point> centres, double radius, const Colour& colour) override;
    void Text(const Point& base, const std::string& text, const TextStyle& style) override;
    void Begin(const Area& area, const std::string& title, double opacity) override;
    void End() override;

    /// The document. Nothing can be drawn after it.
    std::string Take(const PictureHead& head);

private:
    std::string document_{};
};

}  // namespace orvo
