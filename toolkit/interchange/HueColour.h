#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace toolkit::interchange {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    /// "#rrggbb"
    std::string Hex() const;

    /// No value for any other text. Also takes "#rrggbbaa", without its alpha.
    static std::optional<Rgb> FromHex(std::string_view text);

    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// The colour of a hue in degrees; no value below 0 or for what is no number.
std::optional<Rgb> ColourOf(double hue);

/// The hue in degrees, within half a degree of the one that the colour was made of; -1 for grey.
double HueOf(const Rgb& colour);

}  // namespace toolkit::interchange
