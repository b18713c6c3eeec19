#pragma once

#include <memory>
#include <string>

#include <orvo/Canvas.h>

namespace cli {

/// Draws a PNG file, with text in any script.
class PngCanvas final : public orvo::Canvas {
public:
    /// @param width, height  in pixels of the drawing
    /// @param scale  pixels of the file to each of them
    /// @throws std::runtime_error  if a PNG cannot have so many pixels
    PngCanvas(double width, double height, double scale);
    ~PngCanvas() override;

    void Rectangle(const orvo::Area& area, double radius, const orvo::Paint& paint) override;
    void Line(std::span<const orvo::Point> points, const orvo::Paint& paint) override;
    void Lines(std::span<const orvo::Point> ends, const orvo::Paint& paint) override;
    void Circles(std::span<const orvo::Point> centres, double radius,
                 const orvo::Colour& colour) override;
    void Text(const orvo::Point& base, const std::string& text,
              const orvo::TextStyle& style) override;
    void Begin(const orvo::Area& area, const std::string& title, double opacity) override;
    void End() override;

    /// The file, without what is below a height.
    /// @throws std::runtime_error  if there is no memory for it
    std::string Take(double height);

private:
    class Pen;

    std::unique_ptr<Pen> pen_;
};

}  // namespace cli
