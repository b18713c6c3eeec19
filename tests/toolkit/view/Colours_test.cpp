#include "toolkit/view/Colours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using orvo::Theme;
using toolkit::Colour;
using toolkit::ColoursOf;
using toolkit::HueColours;

/// The contrast of two colours as WCAG counts it, from 1 to 21.
double Contrast(const Colour& one, const Colour& other) {
    const auto luminance = [](const Colour& colour) {
        const auto decoded = [](int channel) {
            const double share = channel / 255.0;
            return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * decoded(colour.red) + 0.7152 * decoded(colour.green) +
               0.0722 * decoded(colour.blue);
    };
    const auto [dark, bright] = std::minmax(luminance(one), luminance(other));
    return (bright + 0.05) / (dark + 0.05);
}

constexpr double kReadable = 4.5;
constexpr double kSeen = 1.7;

/// Calls `test(colours)` with those of every hue, in every theme, strong and almost grey.
template <class Test>
void ForEveryHue(const Test& test) {
    for (const Theme theme : {Theme::Light, Theme::Dark, Theme::Print}) {
        for (int hue = 0; hue < 360; ++hue) {
            for (const double strength : {1.0, 0.15}) {
                SCOPED_TRACE(testing::Message() << "theme " << static_cast<int>(theme) << ", hue "
                                                << hue << ", strength " << strength);
                test(ColoursOf(theme, hue, strength));
            }
        }
    }
}

TEST(Colours, NamesAreReadableOnEveryHue) {
    ForEveryHue([](const HueColours& colours) {
        EXPECT_GE(Contrast(colours.text, colours.bar), kReadable);
        EXPECT_GE(Contrast(colours.text, colours.body), kReadable);
    });
}

TEST(Colours, WaveformsStandOutFromTheirClips) {
    ForEveryHue(
        [](const HueColours& colours) { EXPECT_GE(Contrast(colours.wave, colours.body), kSeen); });
}

TEST(Colours, HuesKeepTheirNames) {
    const Colour red = ColoursOf(Theme::Light, 0).wave;
    EXPECT_GT(red.red, std::max(red.green, red.blue) + 50);
    const Colour green = ColoursOf(Theme::Light, 120).wave;
    EXPECT_GT(green.green, std::max(green.red, green.blue) + 50);
    const Colour blue = ColoursOf(Theme::Light, 240).wave;
    EXPECT_GT(blue.blue, std::max(blue.red, blue.green) + 50);
}

TEST(Colours, WhatHasNoStrengthIsGrey) {
    const Colour grey = ColoursOf(Theme::Dark, 120, 0).bar;
    EXPECT_EQ(grey.red, grey.green);
    EXPECT_EQ(grey.green, grey.blue);
}

TEST(Colours, AreWrittenInHexadecimal) {
    EXPECT_EQ(toolkit::CssOf({0, 171, 255}), "#00abff");
}

}  // namespace
