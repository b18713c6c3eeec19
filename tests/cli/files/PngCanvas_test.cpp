#include "cli/files/PngCanvas.h"

#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using cli::PngCanvas;
using orvo::Colour;

constexpr Colour kRed = {255, 0, 0};
constexpr Colour kBlue = {0, 0, 255};
constexpr Colour kBlack = {0, 0, 0};
constexpr Colour kWhite = {255, 255, 255};

/// A PNG file, read again.
class Image {
public:
    explicit Image(const std::string& png) : left_(png) {
        surface_.reset(cairo_image_surface_create_from_png_stream(Read, this));
        EXPECT_EQ(cairo_surface_status(surface_.get()), CAIRO_STATUS_SUCCESS);
    }

    int Width() const { return cairo_image_surface_get_width(surface_.get()); }
    int Height() const { return cairo_image_surface_get_height(surface_.get()); }

    Colour At(int x, int y) const {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel,
                    cairo_image_surface_get_data(surface_.get()) +
                        y * cairo_image_surface_get_stride(surface_.get()) + x * 4,
                    sizeof pixel);
        return {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
                static_cast<std::uint8_t>(pixel)};
    }

    /// How many pixels of an area are not white.
    int CountInk(int left, int top, int right, int bottom) const {
        int count = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                count += At(x, y) == kWhite ? 0 : 1;
            }
        }
        return count;
    }

private:
    static cairo_status_t Read(void* image, unsigned char* data, unsigned size) {
        std::string_view& left = static_cast<Image*>(image)->left_;
        if (left.size() < size) {
            return CAIRO_STATUS_READ_ERROR;
        }
        std::memcpy(data, left.data(), size);
        left.remove_prefix(size);
        return CAIRO_STATUS_SUCCESS;
    }

    std::string_view left_;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_{
        nullptr, &cairo_surface_destroy};
};

class PngCanvasTest : public testing::Test {
protected:
    static constexpr int kSize = 40;

    PngCanvasTest() { canvas_.Rectangle({0, 0, kSize, kSize}, 0, {.fill = kWhite}); }

    Image Drawn() {
        png_ = canvas_.Take(kSize);
        return Image(png_);
    }

    PngCanvas canvas_{kSize, kSize, 1};
    std::string png_;
};

TEST_F(PngCanvasTest, ARectangleCoversWhatIsBehindIt) {
    canvas_.Rectangle({10, 10, 20, 20}, 0, {.fill = kRed});
    canvas_.Rectangle({20, 20, 20, 20}, 0, {.fill = kBlue});
    const Image image = Drawn();
    EXPECT_EQ(image.At(9, 10), kWhite);
    EXPECT_EQ(image.At(10, 10), kRed);
    EXPECT_EQ(image.At(25, 25), kBlue);
}

TEST_F(PngCanvasTest, RoundCornersAreLeftOut) {
    canvas_.Rectangle({0, 0, 40, 40}, 100, {.fill = kRed});
    const Image image = Drawn();
    EXPECT_EQ(image.At(0, 0), kWhite);
    EXPECT_EQ(image.At(39, 39), kWhite);
    EXPECT_EQ(image.At(20, 1), kRed);
    EXPECT_EQ(image.At(20, 20), kRed);
}

TEST_F(PngCanvasTest, AnEmptyRectangleHasNoEdge) {
    canvas_.Rectangle({10, 10, 0, 20}, 2, {.fill = kRed, .stroke = kRed});
    EXPECT_EQ(Drawn().CountInk(0, 0, kSize, kSize), 0);
}

TEST_F(PngCanvasTest, OpacityLetsShapesShowThrough) {
    canvas_.Rectangle({0, 0, 40, 40}, 0, {.fill = kBlack, .opacity = 0.2});
    EXPECT_EQ(Drawn().At(20, 20), (Colour{204, 204, 204}));
}

TEST_F(PngCanvasTest, APartHasItsOwnPlaceAndOpacityAndHidesWhatIsOutside) {
    canvas_.Begin({10, 10, 10, 10}, "part", 0.2);
    canvas_.Rectangle({-5, -5, 40, 40}, 0, {.fill = kRed});
    canvas_.Rectangle({5, 5, 5, 5}, 0, {.fill = kBlack});
    canvas_.End();
    canvas_.Rectangle({0, 0, 5, 5}, 0, {.fill = kRed});
    const Image image = Drawn();
    EXPECT_EQ(image.At(9, 10), kWhite);
    EXPECT_EQ(image.At(20, 19), kWhite);
    EXPECT_EQ(image.At(11, 11), (Colour{255, 204, 204}));
    EXPECT_EQ(image.At(17, 17), (Colour{204, 204, 204})) << "nothing of the part shows through";
    EXPECT_EQ(image.At(2, 2), kRed) << "after the part places count from the corner again";
}

TEST_F(PngCanvasTest, LinesAreSeparateAndMayBeDashed) {
    const orvo::Point ends[] = {{0, 5}, {40, 5}, {0, 15}, {40, 15}};
    canvas_.Lines(ends, {.stroke = kRed, .strokeWidth = 2});
    const orvo::Point dashed[] = {{0, 30}, {40, 30}};
    canvas_.Lines(dashed, {.stroke = kBlue, .strokeWidth = 2, .dashed = true});
    const Image image = Drawn();
    EXPECT_EQ(image.At(20, 5), kRed);
    EXPECT_EQ(image.At(20, 10), kWhite) << "the end of one line is not joined to the next";
    EXPECT_EQ(image.At(2, 30), kBlue);
    EXPECT_EQ(image.At(5, 30), kWhite);
    EXPECT_EQ(image.At(8, 30), kBlue);
}

TEST_F(PngCanvasTest, TheFillOfALineClosesIt) {
    const orvo::Point corners[] = {{0, 0}, {40, 0}, {40, 40}};
    canvas_.Line(corners, {.fill = kRed});
    const Image image = Drawn();
    EXPECT_EQ(image.At(30, 10), kRed);
    EXPECT_EQ(image.At(10, 30), kWhite);
}

TEST_F(PngCanvasTest, PlacesFarAwayDoNoHarm) {
    const orvo::Point corners[] = {
        {-1e300, -1e300}, {1e300, -1e300}, {1e300, 1e300}, {-1e300, 1e300}};
    canvas_.Line(corners, {.fill = kRed});
    EXPECT_EQ(Drawn().At(20, 20), kRed);
}

TEST_F(PngCanvasTest, CirclesLieAroundTheirCentres) {
    const orvo::Point centres[] = {{10, 10}, {30, 30}};
    canvas_.Circles(centres, 5, kRed);
    const Image image = Drawn();
    EXPECT_EQ(image.At(10, 10), kRed);
    EXPECT_EQ(image.At(30, 33), kRed);
    EXPECT_EQ(image.At(5, 5), kWhite);
    EXPECT_EQ(image.At(20, 20), kWhite);
}

TEST_F(PngCanvasTest, ATextLiesAtItsAnchor) {
    canvas_.Text({20, 12}, "mm", {});
    canvas_.Text({20, 24}, "mm", {.anchor = orvo::Anchor::End});
    canvas_.Text({20, 36}, "mm", {.anchor = orvo::Anchor::Middle});
    const Image image = Drawn();
    EXPECT_EQ(image.CountInk(0, 0, 19, 14), 0);
    EXPECT_GT(image.CountInk(20, 0, 40, 14), 20);
    EXPECT_GT(image.CountInk(0, 16, 20, 26), 20);
    EXPECT_EQ(image.CountInk(21, 16, 40, 26), 0);
    EXPECT_GT(image.CountInk(10, 28, 20, 38), 10);
    EXPECT_GT(image.CountInk(20, 28, 30, 38), 10);
}

TEST_F(PngCanvasTest, TextsStayOnOneLine) {
    canvas_.Text({0, 12},
                 "a\nb\xE2\x80\xA8"
                 "c\xFF",
                 {});
    const Image image = Drawn();
    EXPECT_GT(image.CountInk(0, 0, 40, 16), 0);
    EXPECT_EQ(image.CountInk(0, 17, 40, 40), 0);
}

TEST(PngCanvasSize, IsThatOfTheDrawingTimesTheScale) {
    PngCanvas canvas(10.5, 20, 1.5);
    const std::string png = canvas.Take(10);
    const Image image(png);
    EXPECT_EQ(image.Width(), 16);
    EXPECT_EQ(image.Height(), 15) << "what is below is left out";
}

TEST(PngCanvasSize, HasALimitThatIsSaid) {
    try {
        const PngCanvas canvas(400, 20'000, 2);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(),
                    testing::HasSubstr("40000 pixels high, and a PNG has 32767 at most"));
    }
}

}  // namespace
