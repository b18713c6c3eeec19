#include "format/InlineText.h"

#include <gtest/gtest.h>

#include <string>

namespace tses {
namespace {

TEST(InlineText, IsEmptyAndTerminatedAtFirst) {
    const InlineText text;
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(*text.c_str(), u'\0');
}

TEST(InlineText, KeepsTextsOfEveryLength) {
    for (const std::size_t size : {1U, 126U, 127U, 128U, 129U, 1000U}) {
        const std::u16string units(size, u'x');
        const InlineText text = std::u16string_view(units);
        EXPECT_TRUE(text == units) << size;
        EXPECT_EQ(text.c_str()[size], u'\0') << size;
    }
}

TEST(InlineText, WhatIsMovedFromStaysAText) {
    for (const std::size_t size : {3U, 200U}) {
        InlineText text = std::u16string_view(std::u16string(size, u'x'));
        const InlineText moved = static_cast<InlineText&&>(text);
        EXPECT_EQ(std::u16string_view(moved).size(), size);
        EXPECT_EQ(text.c_str()[std::u16string_view(text).size()], u'\0');
    }
}

}  // namespace
}  // namespace tses
