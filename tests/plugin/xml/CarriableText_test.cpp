#include "plugin/xml/CarriableText.h"

#include <gtest/gtest.h>

namespace tses {
namespace {

TEST(CarriableText, PrintableTextStaysAsItIs) {
    const std::u16string text = u"a\t\n\r \u00E9 \u0085 \u2028 \U0001F3B5 \uFFFD <&>";
    EXPECT_EQ(CarriableText(text), text);
    EXPECT_EQ(CarriableContent(text), text);
}

TEST(CarriableText, WhatXmlCannotCarryIsReplaced) {
    const std::u16string units = {u'\0', u'\x01', u'\x1F', u'\xFFFE', u'\xFFFF', u'\xD800'};
    for (const char16_t unit : units) {
        EXPECT_EQ(CarriableText(std::u16string{u'a', unit, u'b'}), u"a\uFFFDb")
            << std::hex << int{unit};
        EXPECT_EQ(CarriableContent(std::u16string{u'a', unit}), u"a\uFFFD")
            << std::hex << int{unit};
    }
}

TEST(CarriableText, OnlyTheUnpairedSurrogateOfARowIsReplaced) {
    const std::u16string row = {0xDC00, 0xD800, 0xD83C, 0xDFB5, 0xDC01, 0xD801};
    const std::u16string carried = {0xFFFD, 0xFFFD, 0xD83C, 0xDFB5, 0xFFFD, 0xFFFD};
    EXPECT_EQ(CarriableText(row), carried);
}

TEST(CarriableText, DeleteAndTheUpperControlsAreReplacedInContentAlone) {
    for (const char16_t unit : {u'\x7F', u'\x80', u'\x84', u'\x86', u'\x9F'}) {
        const std::u16string text = {u'a', unit};
        EXPECT_EQ(CarriableText(text), text);
        EXPECT_EQ(CarriableContent(text), u"a\uFFFD");
    }
}

}  // namespace
}  // namespace tses
