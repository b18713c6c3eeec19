#include "platform/kelmediatypes/PixelAspectRatio.h"

#include <gtest/gtest.h>

namespace kelmediatypes {
namespace {

TEST(PixelAspectRatio, UnknownIsZeroOverOne) {
    EXPECT_EQ(kPixelAspectRatio_Unknown.numerator, 0U);
    EXPECT_EQ(kPixelAspectRatio_Unknown.denominator, 1U);
}

TEST(PixelAspectRatio, ComparesNumbersInsteadOfQuotients) {
    EXPECT_EQ((PixelAspectRatio{4, 3}), (PixelAspectRatio{4, 3}));
    EXPECT_NE((PixelAspectRatio{4, 3}), (PixelAspectRatio{8, 6}));
}

}  // namespace
}  // namespace kelmediatypes
