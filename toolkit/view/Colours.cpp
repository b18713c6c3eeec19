#include "toolkit/view/Colours.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace toolkit {
namespace {

struct Linear {
    double red;
    double green;
    double blue;
};

double Decoded(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Encoded(double channel) {
    return channel <= 0.0031308 ? channel * 12.92 : 1.055 * std::pow(channel, 1 / 2.4) - 0.055;
}

/// The pure colour of a hue.
Linear PureColour(double hue) {
    const auto channel = [hue](double offset) {
        const double place = std::fmod(hue / 60 + offset, 6);
        return Decoded(1 - std::clamp(std::min(place, 4 - place), 0.0, 1.0));
    };
    return {channel(5), channel(3), channel(1)};
}

/// The angle of a colour in the space OKLab, in radians.
double AngleOf(const Linear& colour) {
    const double l = std::cbrt(0.4122214708 * colour.red + 0.5363325363 * colour.green +
                               0.0514459929 * colour.blue);
    const double m = std::cbrt(0.2119034982 * colour.red + 0.6806995451 * colour.green +
                               0.1073969566 * colour.blue);
    const double s = std::cbrt(0.0883024619 * colour.red + 0.2817188376 * colour.green +
                               0.6299787005 * colour.blue);
    return std::atan2(0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s,
                      1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s);
}

Linear FromOklab(double lightness, double a, double b) {
    const auto cube = [](double value) { return value * value * value; };
    const double l = cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

bool IsOnScreen(const Linear& colour) {
    constexpr double kRounding = 1e-4;
    const auto fits = [](double channel) {
        return channel >= -kRounding && channel <= 1 + kRounding;
    };
    return fits(colour.red) && fits(colour.green) && fits(colour.blue);
}

/// A lightness and a strength of colour, both from 0 to 1.
struct Tone {
    double lightness;
    double chroma;
};

/// The tone in that angle; with less colour if a screen has no such colour.
Colour Mixed(Tone tone, double angle) {
    Linear colour{};
    do {
        colour =
            FromOklab(tone.lightness, tone.chroma * std::cos(angle), tone.chroma * std::sin(angle));
        tone.chroma -= 0.005;
    } while (!IsOnScreen(colour) && tone.chroma > 0);
    const auto byte = [](double channel) {
        return static_cast<std::uint8_t>(std::lround(Encoded(std::clamp(channel, 0.0, 1.0)) * 255));
    };
    return {byte(colour.red), byte(colour.green), byte(colour.blue)};
}

struct Tones {
    Tone body;
    Tone bar;
    Tone edge;
    Tone wave;
    Tone text;
    Tone stripe;
};

const Tones& TonesOf(orvo::Theme theme) {
    static constexpr Tones kLight = {{0.92, 0.045}, {0.84, 0.085}, {0.68, 0.11},
                                     {0.58, 0.12},  {0.32, 0.07},  {0.70, 0.14}};
    static constexpr Tones kDark = {{0.34, 0.055}, {0.44, 0.080}, {0.56, 0.10},
                                    {0.74, 0.11},  {0.94, 0.03},  {0.70, 0.13}};
    static constexpr Tones kPrint = {{0.98, 0.010}, {0.93, 0.025}, {0.55, 0.06},
                                     {0.55, 0.06},  {0.20, 0.02},  {0.60, 0.10}};
    switch (theme) {
        case orvo::Theme::Light:
            break;
        case orvo::Theme::Dark:
            return kDark;
        case orvo::Theme::Print:
            return kPrint;
    }
    return kLight;
}

constexpr Colour Of(std::uint32_t rgb) {
    return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
            static_cast<std::uint8_t>(rgb)};
}

constexpr ThemeColours kLightTheme = {
    .theme = orvo::Theme::Light,
    .page = Of(0xffffff),
    .row = Of(0xf7f8fa),
    .lane = Of(0xf1f3f6),
    .header = Of(0xffffff),
    .line = Of(0xe1e5ea),
    .grid = Of(0xeceff3),
    .strongGrid = Of(0xdfe4ea),
    .text = Of(0x1c2430),
    .faintText = Of(0x5d6878),
    .cursor = Of(0xd6336c),
    .selection = Of(0x3b82f6),
    .warning = Of(0xb42318),
};
constexpr ThemeColours kDarkTheme = {
    .theme = orvo::Theme::Dark,
    .page = Of(0x15181d),
    .row = Of(0x1b1f26),
    .lane = Of(0x181c22),
    .header = Of(0x15181d),
    .line = Of(0x2a3039),
    .grid = Of(0x222830),
    .strongGrid = Of(0x2d343e),
    .text = Of(0xe8ecf2),
    .faintText = Of(0x98a3b3),
    .cursor = Of(0xff6b9a),
    .selection = Of(0x60a5fa),
    .warning = Of(0xff8a7a),
};
constexpr ThemeColours kPrintTheme = {
    .theme = orvo::Theme::Print,
    .page = Of(0xffffff),
    .row = Of(0xffffff),
    .lane = Of(0xffffff),
    .header = Of(0xffffff),
    .line = Of(0xb8bec7),
    .grid = Of(0xe6e9ed),
    .strongGrid = Of(0xd3d8df),
    .text = Of(0x000000),
    .faintText = Of(0x444b55),
    .cursor = Of(0x000000),
    .selection = Of(0x6b7280),
    .warning = Of(0x000000),
};

}  // namespace

std::string CssOf(const Colour& colour) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const std::uint8_t channel : {colour.red, colour.green, colour.blue}) {
        text += kDigits[channel / 16];
        text += kDigits[channel % 16];
    }
    return text;
}

const ThemeColours& ColoursOf(orvo::Theme theme) {
    switch (theme) {
        case orvo::Theme::Light:
            break;
        case orvo::Theme::Dark:
            return kDarkTheme;
        case orvo::Theme::Print:
            return kPrintTheme;
    }
    return kLightTheme;
}

HueColours ColoursOf(orvo::Theme theme, double hue, double strength) {
    const Tones& tones = TonesOf(theme);
    const double angle = AngleOf(PureColour(hue));
    const auto mixed = [&](const Tone& tone) {
        return Mixed({tone.lightness, tone.chroma * strength}, angle);
    };
    return {.body = mixed(tones.body),
            .bar = mixed(tones.bar),
            .edge = mixed(tones.edge),
            .wave = mixed(tones.wave),
            .text = mixed(tones.text),
            .stripe = mixed(tones.stripe)};
}

}  // namespace toolkit
