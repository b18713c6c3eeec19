#include "cli/terminal/ShownSize.h"

#include <gtest/gtest.h>

namespace {

using cli::ShownSize;

TEST(ShownSize, ChoosesAUnitThatLeavesAFewDigits) {
    EXPECT_EQ(ShownSize(0), "0 bytes");
    EXPECT_EQ(ShownSize(1), "1 byte");
    EXPECT_EQ(ShownSize(999), "999 bytes");
    EXPECT_EQ(ShownSize(1000), "1.0 kB");
    EXPECT_EQ(ShownSize(999'949), "999.9 kB");
    EXPECT_EQ(ShownSize(999'950), "1.0 MB");
    EXPECT_EQ(ShownSize(64'500'000'000), "64.5 GB");
    EXPECT_EQ(ShownSize(~kelcore::uint64{0}), "18446.7 PB");
}

}  // namespace
