#include "toolkit/interchange/HueColour.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace toolkit::interchange {
namespace {

constexpr double kSaturation = 0.6;
constexpr double kValue = 0.85;

/// A channel of a colour of the HSV model.
/// @param turn  where the channel's own hue lies: 5 for red, 3 for green, 1 for blue
std::uint8_t Channel(double hue, double turn) {
    const double k = std::fmod(turn + hue / 60, 6);
    const double share = std::clamp(std::min(k, 4 - k), 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(255 * kValue * (1 - kSaturation * share)));
}

std::optional<std::uint8_t> Byte(std::string_view digits) {
    std::uint8_t value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value)
                                                                        : std::nullopt;
}

}  // namespace

std::string Rgb::Hex() const {
    return fmt::format("#{:02x}{:02x}{:02x}", red, green, blue);
}

std::optional<Rgb> Rgb::FromHex(std::string_view text) {
    if ((text.size() != 7 && text.size() != 9) || text[0] != '#') {
        return std::nullopt;
    }
    const auto red = Byte(text.substr(1, 2));
    const auto green = Byte(text.substr(3, 2));
    const auto blue = Byte(text.substr(5, 2));
    return red && green && blue ? std::optional(Rgb{*red, *green, *blue}) : std::nullopt;
}

std::optional<Rgb> ColourOf(double hue) {
    if (!(hue >= 0) || !std::isfinite(hue)) {
        return std::nullopt;
    }
    const double angle = std::fmod(hue, 360);
    return Rgb{Channel(angle, 5), Channel(angle, 3), Channel(angle, 1)};
}

double HueOf(const Rgb& colour) {
    const double red = colour.red;
    const double green = colour.green;
    const double blue = colour.blue;
    const double most = std::max({red, green, blue});
    const double range = most - std::min({red, green, blue});
    if (range == 0) {
        return -1;
    }
    const double turn = most == red     ? (green - blue) / range
                        : most == green ? 2 + (blue - red) / range
                                        : 4 + (red - green) / range;
    return std::fmod(60 * turn + 360, 360);
}

}  // namespace toolkit::interchange
