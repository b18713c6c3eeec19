#include <orvo/Canvas.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/kelcore/Strings.h"
#include "toolkit/view/Colours.h"

namespace orvo {
namespace {

/// A hundredth of a pixel is exact enough, and short.
void AppendNumber(std::string& text, double number) {
    constexpr double kMost = 1e9;  // farther away than any picture reaches
    std::int64_t hundredths = std::llround(std::clamp(number, -kMost, kMost) * 100);
    if (hundredths < 0) {
        text += '-';
        hundredths = -hundredths;
    }
    std::array<char, 16> digits{};
    char* const end =
        std::to_chars(digits.data(), digits.data() + digits.size(), hundredths / 100).ptr;
    text.append(digits.data(), end);
    const auto rest = static_cast<int>(hundredths % 100);
    if (rest != 0) {
        text += '.';
        text += static_cast<char>('0' + rest / 10);
        if (rest % 10 != 0) {
            text += static_cast<char>('0' + rest % 10);
        }
    }
}

bool IsSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool IsPair(std::u16string_view text, std::size_t place) {
    return place + 1 < text.size() && text[place] < 0xDC00 && text[place + 1] >= 0xDC00 &&
           IsSurrogate(text[place + 1]);
}

/// Whether a renderer may start a new line at it.
bool BreaksLine(char16_t unit) {
    return unit == '\n' || unit == '\r' || unit == 0x2028 || unit == 0x2029;
}

std::u16string Legible(std::u16string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsSurrogate(text[i])) {
            if (IsPair(text, i)) {
                ++i;
            } else {
                text[i] = 0xFFFD;
            }
        } else if (text[i] == '\t' || BreaksLine(text[i])) {
            text[i] = u' ';
        } else if (text[i] < 0x20 || (text[i] >= 0x7F && text[i] < 0xA0) || text[i] >= 0xFFFE) {
            text[i] = 0xFFFD;
        }
    }
    return text;
}

bool IsPlain(const std::string& text) {
    return std::ranges::all_of(text, [](char unit) { return unit >= 0x20 && unit < 0x7F; });
}

void AppendEscaped(std::string& out, const std::string& text) {
    for (const char character : LegibleText(text)) {
        switch (character) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += character;
        }
    }
}

void BeginAttribute(std::string& document, std::string_view name) {
    document += ' ';
    document += name;
    document += "=\"";
}

void AddAttribute(std::string& document, std::string_view name, double number) {
    BeginAttribute(document, name);
    AppendNumber(document, number);
    document += '"';
}

void AddAttribute(std::string& document, std::string_view name, const Colour& colour) {
    BeginAttribute(document, name);
    document += toolkit::CssOf(colour);
    document += '"';
}

/// Renderers draw what has an "opacity" on a surface of its own, as large as the picture.
void AddPaint(std::string& document, const Paint& paint) {
    if (paint.fill) {
        AddAttribute(document, "fill", *paint.fill);
        if (paint.opacity != 1) {
            AddAttribute(document, "fill-opacity", paint.opacity);
        }
    } else {
        document += " fill=\"none\"";
    }
    if (paint.stroke) {
        AddAttribute(document, "stroke", *paint.stroke);
        if (paint.strokeWidth != 1) {
            AddAttribute(document, "stroke-width", paint.strokeWidth);
        }
        if (paint.dashed) {
            document += fmt::format(" stroke-dasharray=\"{} {}\"", Paint::kDash, Paint::kDashGap);
        }
        if (paint.opacity != 1) {
            AddAttribute(document, "stroke-opacity", paint.opacity);
        }
    }
}

/// @param run  points after which a new line begins
void AddPlaces(std::string& document, std::span<const Point> points, std::size_t run) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        document += i % run == 0 ? 'M' : 'L';
        AppendNumber(document, points[i].x);
        document += ' ';
        AppendNumber(document, points[i].y);
    }
}

}  // namespace

Canvas::~Canvas() = default;

std::string LegibleText(const std::string& text) {
    return IsPlain(text) ? text : kelcore::UTF16to8(Legible(kelcore::UTF8to16(text)));
}

void SvgCanvas::Rectangle(const Area& area, double radius, const Paint& paint) {
    document_ += "<rect";
    AddAttribute(document_, "x", area.x);
    AddAttribute(document_, "y", area.y);
    AddAttribute(document_, "width", area.width);
    AddAttribute(document_, "height", area.height);
    if (radius > 0) {
        AddAttribute(document_, "rx", radius);
    }
    AddPaint(document_, paint);
    document_ += "/>\n";
}

void SvgCanvas::Line(std::span<const Point> points, const Paint& paint) {
    document_ += "<path d=\"";
    AddPlaces(document_, points, points.size());
    document_ += '"';
    AddPaint(document_, paint);
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
    AddPlaces(document_, ends, 2);
    document_ += '"';
    AddPaint(document_, paint);
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
    AddPaint(document_, {.stroke = colour, .strokeWidth = radius * 2});
    document_ += "/>\n";
}

void SvgCanvas::Text(const Point& base, const std::string& text, const TextStyle& style) {
    if (text.empty()) {
        return;
    }
    document_ += "<text";
    AddAttribute(document_, "x", base.x);
    AddAttribute(document_, "y", base.y);
    AddAttribute(document_, "fill", style.colour);
    if (style.size != TextStyle().size) {
        AddAttribute(document_, "font-size", style.size);
    }
    if (style.bold) {
        document_ += fmt::format(" font-weight=\"{}\"", TextStyle::kBold);
    }
    if (style.anchor != Anchor::Start) {
        document_ +=
            style.anchor == Anchor::Middle ? " text-anchor=\"middle\"" : " text-anchor=\"end\"";
    }
    document_ += '>';
    AppendEscaped(document_, text);
    document_ += "</text>\n";
}

void SvgCanvas::Begin(const Area& area, const std::string& title, double opacity) {
    document_ += "<svg";
    AddAttribute(document_, "x", area.x);
    AddAttribute(document_, "y", area.y);
    AddAttribute(document_, "width", area.width);
    AddAttribute(document_, "height", area.height);
    document_ += "><g";
    if (opacity != 1) {
        AddAttribute(document_, "opacity", opacity);
    }
    document_ += ">";
    if (!title.empty()) {
        document_ += "<title>";
        AppendEscaped(document_, title);
        document_ += "</title>";
    }
    document_ += "\n";
}

void SvgCanvas::End() {
    document_ += "</g></svg>\n";
}

std::string SvgCanvas::Take(const PictureHead& head) {
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\"";
    AddAttribute(text, "width", head.width);
    AddAttribute(text, "height", head.height);
    text += fmt::format(" viewBox=\"0 0 {} {}\" font-family=\"{}\" font-size=\"{}\">\n<title>",
                        head.width, head.height, TextStyle::kFonts, TextStyle().size);
    AppendEscaped(text, head.title);
    text += "</title>\n<desc>";
    AppendEscaped(text, head.description);
    text += "</desc>\n";
    document_.insert(0, text);
    document_ += "</svg>\n";
    return std::move(document_);
}

}  // namespace orvo
