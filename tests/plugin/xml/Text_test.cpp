#include "plugin/xml/Text.h"

#include <gtest/gtest.h>

namespace tses {
namespace {

TEST(TrimWhitespace, KeepsTheInnerPartWithItsBlanks) {
    EXPECT_EQ(TrimWhitespace(u"\r\n  one  two \t"), u"one  two");
}

TEST(TrimWhitespace, OnlyWhitespaceBecomesEmpty) {
    EXPECT_EQ(TrimWhitespace(u" \t \t"), u"");
    EXPECT_EQ(TrimWhitespace(u""), u"");
}

TEST(TrimWhitespace, OtherSpacesStay) {
    EXPECT_EQ(TrimWhitespace(u"\u00A0x\v"), u"\u00A0x\v");
}

}  // namespace
}  // namespace tses
