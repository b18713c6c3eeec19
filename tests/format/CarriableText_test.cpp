#include "format/CarriableText.h"

#include <gtest/gtest.h>

#include <array>

namespace tses {
namespace {

constexpr std::array kPlaces = {TextPlace::Text, TextPlace::Attribute, TextPlace::Section};
constexpr std::array kVersions = {XmlVersion::V1_0, XmlVersion::V1_1};

TextPiece Plain(std::u16string text) {
    return {std::move(text), false};
}
TextPiece Reference(char16_t unit) {
    return {std::u16string(1, unit), true};
}

TEST(CarriableText, PrintableTextStaysAsItIs) {
    const std::u16string text = u"a\t\n \u00E9 \u2029 \U0001F3B5 \uFFFD\uFEFF <&>]]>\"'";
    for (const TextPlace place : kPlaces) {
        EXPECT_TRUE(IsCarriedAsItIs(text, place));
        for (const XmlVersion version : kVersions) {
            EXPECT_EQ(Carry(text, place, version), (CarriedText{{Plain(text)}, true}));
        }
    }
}

TEST(CarriableText, WhatNoDocumentCanHoldIsReplacedEverywhere) {
    for (const char16_t unit : std::u16string{0, 0xFFFE, 0xFFFF, 0xD800, 0xDC00}) {
        for (const TextPlace place : kPlaces) {
            EXPECT_FALSE(IsCarriedAsItIs(std::u16string{unit}, place));
            for (const XmlVersion version : kVersions) {
                EXPECT_EQ(Carry(std::u16string{u'a', unit, u'b'}, place, version),
                          (CarriedText{{Plain(u"a\uFFFDb")}, false}))
                    << std::hex << int{unit};
            }
        }
    }
}

TEST(CarriableText, OnlyTheUnpairedSurrogateOfARowIsReplaced) {
    const std::u16string row = {0xDC00, 0xD800, 0xD83C, 0xDFB5, 0xDC01, 0xD801};
    const std::u16string carried = {0xFFFD, 0xFFFD, 0xD83C, 0xDFB5, 0xFFFD, 0xFFFD};
    EXPECT_EQ(Carry(row, TextPlace::Text, XmlVersion::V1_0),
              (CarriedText{{Plain(carried)}, false}));
}

TEST(CarriableText, ALowerControlIsReplacedInXml10AndAReferenceInXml11) {
    for (const char16_t unit : {u'\x01', u'\x08', u'\x0B', u'\x1F'}) {
        const std::u16string text = {u'a', unit};
        for (const TextPlace place : kPlaces) {
            EXPECT_FALSE(IsCarriedAsItIs(text, place));
            EXPECT_EQ(Carry(text, place, XmlVersion::V1_0),
                      (CarriedText{{Plain(u"a\uFFFD")}, false}));
            EXPECT_EQ(Carry(text, place, XmlVersion::V1_1),
                      (CarriedText{{Plain(u"a"), Reference(unit)}, true}));
        }
    }
}

TEST(CarriableText, AnUpperControlOrALineSeparatorIsAReferenceOnlyInXml11) {
    for (const char16_t unit : {u'\x7F', u'\x80', u'\x85', u'\x9F', u'\u2028'}) {
        const std::u16string text = {unit, u'b'};
        for (const TextPlace place : kPlaces) {
            EXPECT_FALSE(IsCarriedAsItIs(text, place));
            EXPECT_EQ(Carry(text, place, XmlVersion::V1_0), (CarriedText{{Plain(text)}, true}));
            EXPECT_EQ(Carry(text, place, XmlVersion::V1_1),
                      (CarriedText{{Reference(unit), Plain(u"b")}, true}));
        }
    }
}

TEST(CarriableText, ACarriageReturnIsAReferenceOnlyInSections) {
    const std::u16string text = u"a\r\r\nb";
    EXPECT_TRUE(IsCarriedAsItIs(text, TextPlace::Text));
    EXPECT_TRUE(IsCarriedAsItIs(text, TextPlace::Attribute));
    EXPECT_FALSE(IsCarriedAsItIs(text, TextPlace::Section));
    for (const XmlVersion version : kVersions) {
        EXPECT_EQ(
            Carry(text, TextPlace::Section, version),
            (CarriedText{{Plain(u"a"), Reference(u'\r'), Reference(u'\r'), Plain(u"\nb")}, true}));
    }
}

}  // namespace
}  // namespace tses
