#pragma once

#include <span>
#include <string>
#include <string_view>

#include "toolkit/view/Shapes.h"

namespace toolkit {

/// What a document says of itself.
struct SvgHead {
    double width = 0;
    double height = 0;
    std::string title{};
    std::string description{};  ///< for who does not see it
};

/// Draws an SVG document. Shapes cover those before them. Texts are texts, whatever is in them.
class SvgCanvas {
public:
    void Rectangle(const Area& area, double radius, const Paint& paint);

    /// A line through the points. Its fill closes it.
    void Line(std::span<const Point> points, const Paint& paint);

    /// Separate lines, each from a point to the next one.
    void Lines(std::span<const Point> ends, const Paint& paint);

    void Circles(std::span<const Point> centres, double radius, const Colour& colour);

    /// @param base  the left end of its base line, or its middle or right end
    void Text(const Point& base, const std::string& text, const TextStyle& style);

    /// Begins a part with coordinates of its own, from the left upper corner of an area. Nothing of
    /// it shows outside.
    /// @param title  says what it is; may be empty
    void Begin(const Area& area, const std::string& title, double opacity = 1);
    void End();

    /// Adds what is on another canvas.
    void Add(SvgCanvas other);

    /// The document. Nothing can be drawn after it.
    std::string Take(const SvgHead& head);

private:
    void BeginAttribute(std::string_view name);
    void Attribute(std::string_view name, double number);
    void Attribute(std::string_view name, const Colour& colour);
    void AddPaint(const Paint& paint);
    void AddPlaces(std::span<const Point> points, std::size_t run);

    std::string document_;
};

}  // namespace toolkit
