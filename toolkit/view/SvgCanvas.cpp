#include "toolkit/view/SvgCanvas.h"

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

namespace toolkit {
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

/// On one line: a space for tabs and for what would start a new line, and U+FFFD for every other
/// control character and for what XML does not carry.
std::u16string Carried(const std::string& utf8) {
    std::u16string text = kelcore::UTF8to16(utf8);
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
    for (const char character : IsPlain(text) ? text : kelcore::UTF16to8(Carried(text))) {
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

void AppendColour(std::string& text, const Colour& colour) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    text += '#';
    for (const std::uint8_t channel : {colour.red, colour.green, colour.blue}) {
        text += kDigits[channel / 16];
        text += kDigits[channel % 16];
    }
}

constexpr const char* kFonts =
    "Inter,'Segoe UI','Helvetica Neue','Noto Sans','DejaVu Sans',Arial,sans-serif";

}  // namespace

void SvgCanvas::BeginAttribute(std::string_view name) {
    document_ += ' ';
    document_ += name;
    document_ += "=\"";
}

void SvgCanvas::Attribute(std::string_view name, double number) {
    BeginAttribute(name);
    AppendNumber(document_, number);
    document_ += '"';
}

void SvgCanvas::Attribute(std::string_view name, const Colour& colour) {
    BeginAttribute(name);
    AppendColour(document_, colour);
    document_ += '"';
}

/// Renderers draw what has an "opacity" on a surface of its own, as large as the picture.
void SvgCanvas::AddPaint(const Paint& paint) {
    if (paint.fill) {
        Attribute("fill", *paint.fill);
        if (paint.opacity != 1) {
            Attribute("fill-opacity", paint.opacity);
        }
    } else {
        document_ += " fill=\"none\"";
    }
    if (paint.stroke) {
        Attribute("stroke", *paint.stroke);
        if (paint.strokeWidth != 1) {
            Attribute("stroke-width", paint.strokeWidth);
        }
        if (paint.dashed) {
            document_ += " stroke-dasharray=\"4 3\"";
        }
        if (paint.opacity != 1) {
            Attribute("stroke-opacity", paint.opacity);
        }
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
    Attribute("fill", style.colour);
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
    document_ += '>';
    AppendEscaped(document_, text);
    document_ += "</text>\n";
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
        document_ += "<title>";
        AppendEscaped(document_, title);
        document_ += "</title>";
    }
    document_ += "\n";
}

void SvgCanvas::End() {
    document_ += "</g></svg>\n";
}

void SvgCanvas::Add(SvgCanvas other) {
    // The other one may be large, and is not needed twice.
    other.document_.insert(0, document_);
    document_ = std::move(other.document_);
}

std::string SvgCanvas::Take(const SvgHead& head) {
    SvgCanvas whole;
    std::string& text = whole.document_;
    text = "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\"";
    whole.Attribute("width", head.width);
    whole.Attribute("height", head.height);
    text += fmt::format(" viewBox=\"0 0 {} {}\" font-family=\"{}\" font-size=\"11\">\n<title>",
                        head.width, head.height, kFonts);
    AppendEscaped(text, head.title);
    text += "</title>\n<desc>";
    AppendEscaped(text, head.description);
    text += "</desc>\n";
    document_.insert(0, text);
    document_ += "</svg>\n";
    return std::move(document_);
}

}  // namespace toolkit
