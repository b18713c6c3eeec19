#include "platform/kelappsupport/Features.h"

#include <gtest/gtest.h>

namespace kelappsupport {
namespace {

TEST(Features, FeaturesAreOffByDefault) {
    EXPECT_FALSE(IsFeatureEnabled("Test.Unknown"));
    EXPECT_FALSE(IsFeatureEnabled(""));
}

TEST(Features, AFeatureCanBeSwitchedOnAndOff) {
    SetFeatureEnabled("Test.Feature", true);
    SetFeatureEnabled("Test.Feature", true);
    EXPECT_TRUE(IsFeatureEnabled("Test.Feature"));
    EXPECT_FALSE(IsFeatureEnabled("Test.Featur"));
    EXPECT_FALSE(IsFeatureEnabled("test.feature"));
    SetFeatureEnabled("Test.Feature", false);
    EXPECT_FALSE(IsFeatureEnabled("Test.Feature"));
    SetFeatureEnabled("Test.Feature", false);
    EXPECT_FALSE(IsFeatureEnabled("Test.Feature"));
}

}  // namespace
}  // namespace kelappsupport
