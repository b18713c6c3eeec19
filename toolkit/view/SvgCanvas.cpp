#include "toolkit/view/SvgCanvas.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/kelcore/Strings.h"

namespace toolkit {
namespace {

/// A hundredth of a pixel is exact enough, and short.
void AppendNumber(std::string& text, double number) {
    const double rounded = std::round(number * 100) / 100;
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), rounded == 0 ? 0 : rounded).ptr;
    text.append(digits.begin(), end);
}

bool IsSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool IsPair(std::u16string_view text, std::size_t place) {
    return place + 1 < text.size() && text[place] < 0xDC00 && text[place + 1] >= 0xDC00 &&
           IsSurrogate(text[place + 1]);
}

/// With U+FFFD for every character that XML does not carry, and a space for each control character
/// that it does.
std::u16string Carried(const std::string& utf8) {
    std::u16string text = kelcore::UTF8to16(utf8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsSurrogate(text[i])) {
            if (IsPair(text, i)) {
                ++i;
            } else {
                text[i] = 0xFFFD;
            }
        } else if (text[i] < 0x20 || (text[i] >= 0x7F && text[i] < 0xA0)) {
            text[i] = text[i] == '\t' || text[i] == '\n' || text[i] == '\r' ? u' ' : 0xFFFD;
        } else if (text[i] >= 0xFFFE) {
            text[i] = 0xFFFD;
        }
    }
    return text;
}

std::string Escaped(const std::string& utf8) {
    std::string escaped;
    for (const char character : kelcore::UTF16to8(Carried(utf8))) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += character;
        }
    }
    return escaped;
}

std::string Hex(const Colour& colour) {
    return fmt::format("#{:02x}{:02x}{:02x}", colour.red, colour.green, colour.blue);
}

constexpr const char* kFonts =
    "Inter,'Segoe UI','Helvetica Neue','Noto Sans','DejaVu Sans',Arial,sans-serif";

}  // namespace

void SvgCanvas::Attribute(const char* name, double number) {
    document_ += fmt::format(" {}=\"", name);
    AppendNumber(document_, number);
    document_ += '"';
}

void SvgCanvas::AddPaint(const Paint& paint) {
    if (paint.fill) {
        document_ += " fill=\"" + Hex(*paint.fill) + "\"";
    } else {
        document_ += " fill=\"none\"";
    }
    if (paint.stroke) {
        document_ += " stroke=\"" + Hex(*paint.stroke) + "\"";
        if (paint.strokeWidth != 1) {
            Attribute("stroke-width", paint.strokeWidth);
        }
        if (paint.dashed) {
            document_ += " stroke-dasharray=\"4 3\"";
        }
    }
    if (paint.opacity != 1) {
        Attribute("opacity", paint.opacity);
    }
}

void SvgCanvas::Rectangle(const Area& area, double radius, const Paint& paint) {
    document_ += "<rect";
    Attribute("x", area.x);
    Attribute("y", area.y);
    Attribute("width", area.width);
    Attribute("height", area.height);
    if (radius > 0) {
        Attribute("rx", radius);
    }
    AddPaint(paint);
    document_ += "/>\n";
}

/// @param run  points after which a new line begins
void SvgCanvas::AddPlaces(std::span<const Point> points, std::size_t run) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        document_ += i % run == 0 ? 'M' : 'L';
        AppendNumber(document_, points[i].x);
        document_ += ' ';
        AppendNumber(document_, points[i].y);
    }
}

void SvgCanvas::Line(std::span<const Point> points, const Paint& paint) {
    document_ += "<path d=\"";
    AddPlaces(points, points.size());
    document_ += '"';
    AddPaint(paint);
    if (paint.stroke) {
        document_ += " stroke-linejoin=\"round\"";
    }
    document_ += "/>\n";
}

void SvgCanvas::Lines(std::span<const Point> ends, const Paint& paint) {
    if (ends.empty()) {
        return;
    }
    document_ += "<path d=\"";
    AddPlaces(ends, 2);
    document_ += '"';
    AddPaint(paint);
    document_ += "/>\n";
}

/// A line without a length and with round ends is a circle.
void SvgCanvas::Circles(std::span<const Point> centres, double radius, const Colour& colour) {
    document_ += "<path stroke-linecap=\"round\" d=\"";
    for (const Point& centre : centres) {
        document_ += 'M';
        AppendNumber(document_, centre.x);
        document_ += ' ';
        AppendNumber(document_, centre.y);
        document_ += "h0";
    }
    document_ += '"';
    AddPaint({.stroke = colour, .strokeWidth = radius * 2});
    document_ += "/>\n";
}

void SvgCanvas::Text(const Point& base, const std::string& text, const TextStyle& style) {
    if (text.empty()) {
        return;
    }
    document_ += "<text";
    Attribute("x", base.x);
    Attribute("y", base.y);
    document_ += " fill=\"" + Hex(style.colour) + "\"";
    if (style.size != TextStyle().size) {
        Attribute("font-size", style.size);
    }
    if (style.bold) {
        document_ += " font-weight=\"600\"";
    }
    if (style.anchor != Anchor::Start) {
        document_ +=
            style.anchor == Anchor::Middle ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
    }
    document_ += ">" + Escaped(text) + "</text>\n";
}

void SvgCanvas::Begin(const Area& area, const std::string& title, double opacity) {
    document_ += "<svg";
    Attribute("x", area.x);
    Attribute("y", area.y);
    Attribute("width", area.width);
    Attribute("height", area.height);
    document_ += "><g";
    if (opacity != 1) {
        Attribute("opacity", opacity);
    }
    document_ += ">";
    if (!title.empty()) {
        document_ += "<title>" + Escaped(title) + "</title>";
    }
    document_ += "\n";
}

void SvgCanvas::End() {
    document_ += "</g></svg>\n";
}

void SvgCanvas::Add(SvgCanvas other) {
    document_ += other.document_;
}

std::string SvgCanvas::Take(const SvgHead& head) {
    document_.insert(
        0, fmt::format("<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\" width=\"{0}\" "
                       "height=\"{1}\" viewBox=\"0 0 {0} {1}\" font-family=\"{2}\" "
                       "font-size=\"11\">\n<title>{3}</title>\n<desc>{4}</desc>\n",
                       head.width, head.height, kFonts, Escaped(head.title),
                       Escaped(head.description)));
    document_ += "</svg>\n";
    return std::move(document_);
}

}  // namespace toolkit
