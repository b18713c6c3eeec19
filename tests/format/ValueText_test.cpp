#include "format/ValueText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tses {
namespace {

TEST(ValueText, KeepsTextsOfEveryLengthOneBehindTheOther) {
    ValueText text;
    std::u16string expected;
    for (const std::size_t size : {0U, 1U, 510U, 1U, 1U, 5000U}) {
        const std::u16string part(size, static_cast<char16_t>(u'a' + expected.size() % 26));
        EXPECT_EQ(text.Size(), expected.size());
        text.Append(part);
        EXPECT_EQ(text.Part(expected.size(), size), part);
        expected += part;
    }
    EXPECT_EQ(text.ToString(), expected);
}

TEST(ValueText, UnitsThatAreNotNeededAreTakenBack) {
    for (const std::size_t size : {4U, 1000U}) {
        ValueText text;
        text.Append(u"a");
        std::ranges::fill_n(text.Extend(size), 2, u'b');
        text.Shorten(size - 2);
        text.Append(u'c');
        EXPECT_EQ(text.ToString(), u"abbc");
    }
}

TEST(ValueText, WhatIsMovedFromStaysAText) {
    for (const std::size_t size : {3U, 1000U}) {
        ValueText text;
        text.Append(std::u16string(size, u'x'));
        const ValueText moved = static_cast<ValueText&&>(text);
        text.Append(u'y');
        EXPECT_EQ(moved.ToString(), std::u16string(size, u'x'));
        EXPECT_EQ(text.ToString(), std::u16string(size, u'x') + u'y');
    }
}

}  // namespace
}  // namespace tses
