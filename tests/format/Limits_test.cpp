#include "format/Limits.h"

#include <gtest/gtest.h>

namespace test {

TEST(Limits, InWordsHaveTheirLargestUnit) {
    EXPECT_EQ(tses::limits::InWords(65536), "64 KiB");
    EXPECT_EQ(tses::limits::InWords(1048576), "1 MiB");
    EXPECT_EQ(tses::limits::InWords(2147483648), "2 GiB");
    EXPECT_EQ(tses::limits::InWords(4398046511104), "4096 GiB");
}

}  // namespace test
