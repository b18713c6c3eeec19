#include "toolkit/ValueCheck.h"

#include <gtest/gtest.h>

namespace {

using toolkit::IsValue;
using tses::ValueKind;

constexpr std::u16string_view kWords[] = {u"low", u"high"};

bool Is(ValueKind kind, std::u16string_view text) {
    return IsValue(kind, kWords, text);
}

TEST(IsValue, TakesAnyText) {
    EXPECT_TRUE(Is(ValueKind::Text, u""));
    EXPECT_TRUE(Is(ValueKind::Text, u" a"));
}

TEST(IsValue, TakesWholeNumbersAsLargeAsTheirTypes) {
    for (const ValueKind kind : {ValueKind::Unsigned, ValueKind::Signed}) {
        EXPECT_TRUE(Is(kind, u"-2147483648"));
        EXPECT_TRUE(Is(kind, u"4294967295"));
    }
    EXPECT_TRUE(Is(ValueKind::Long, u"4294967296"));
    for (const auto* const none : {u"", u" 1", u"1.0", u"4294967296"}) {
        EXPECT_FALSE(Is(ValueKind::Unsigned, none));
        EXPECT_FALSE(Is(ValueKind::Signed, none));
    }
    EXPECT_FALSE(Is(ValueKind::Long, u"9223372036854775808"));
}

TEST(IsValue, TakesARealNumberWithWhateverAReaderIgnoresAroundIt) {
    for (const ValueKind kind : {ValueKind::Real, ValueKind::Real32}) {
        for (const auto* const number : {u"0.5", u"0,5", u" -3e2\t", u"7"}) {
            EXPECT_TRUE(Is(kind, number));
        }
        for (const auto* const none : {u"", u" ", u"abc", u"0.5 dB", u"nan", u"inf", u"1e400"}) {
            EXPECT_FALSE(Is(kind, none));
        }
    }
    EXPECT_TRUE(Is(ValueKind::Real, u"1e60"));
    EXPECT_FALSE(Is(ValueKind::Real32, u"1e60"));
}

TEST(IsValue, TakesAnExactRealNumberWithNothingAroundIt) {
    EXPECT_TRUE(Is(ValueKind::ExactReal32, u"-0.5"));
    EXPECT_FALSE(Is(ValueKind::ExactReal32, u"0,5"));
    EXPECT_FALSE(Is(ValueKind::ExactReal32, u" 3"));
}

TEST(IsValue, TakesNoNumberThatReadsAsZeroButIsNot) {
    for (const ValueKind kind : {ValueKind::Real32, ValueKind::ExactReal32}) {
        EXPECT_FALSE(Is(kind, u"1e-60"));
        EXPECT_FALSE(Is(kind, u"-0.1E-60"));
        EXPECT_TRUE(Is(kind, u"1e-45"));
    }
    EXPECT_TRUE(Is(ValueKind::Real, u"1e-60"));
    EXPECT_FALSE(Is(ValueKind::Real, u"1e-400"));
    for (const auto* const zero : {u"0", u"-0.00", u"0e5"}) {
        EXPECT_TRUE(Is(ValueKind::Real, zero));
        EXPECT_TRUE(Is(ValueKind::ExactReal32, zero));
    }
}

TEST(IsValue, TakesTheWordsOfABooleanAndWhatMeansTheSame) {
    for (const ValueKind kind : {ValueKind::Boolean, ValueKind::BooleanOr1}) {
        for (const auto* const boolean : {u"true", u"false", u"0"}) {
            EXPECT_TRUE(Is(kind, boolean));
        }
        for (const auto* const none : {u"", u"TRUE", u"yes", u" true"}) {
            EXPECT_FALSE(Is(kind, none));
        }
    }
    EXPECT_FALSE(Is(ValueKind::Boolean, u"1"));
    EXPECT_TRUE(Is(ValueKind::BooleanOr1, u"1"));
}

TEST(IsValue, TakesOneOfTheWordsOrItsPlace) {
    EXPECT_TRUE(Is(ValueKind::Keyword, u"low"));
    EXPECT_FALSE(Is(ValueKind::Keyword, u"Low"));
    EXPECT_FALSE(Is(ValueKind::Keyword, u"1"));
    EXPECT_TRUE(Is(ValueKind::KeywordOrNumber, u"high"));
    EXPECT_TRUE(Is(ValueKind::KeywordOrNumber, u"1"));
    EXPECT_FALSE(Is(ValueKind::KeywordOrNumber, u"2"));
    EXPECT_FALSE(Is(ValueKind::KeywordOrNumber, u"-1"));
    EXPECT_FALSE(Is(ValueKind::KeywordOrNumber, u"none"));
}

TEST(IsValue, TakesAnyNumberInPlaceOfAWordForJson) {
    for (const auto* const number : {u"2", u"4294967295", u"-1"}) {
        EXPECT_TRUE(IsValue(ValueKind::KeywordOrNumber, kWords, number, toolkit::Target::Json));
        EXPECT_FALSE(Is(ValueKind::KeywordOrNumber, number));
    }
    EXPECT_FALSE(IsValue(ValueKind::KeywordOrNumber, kWords, u"High", toolkit::Target::Json));
}

TEST(IsValue, TakesAnyNumberOfWordsWithABlankBetweenThem) {
    for (const auto* const words : {u"", u"low", u"low high ", u"high high"}) {
        EXPECT_TRUE(Is(ValueKind::Keywords, words));
    }
    for (const auto* const others : {u" ", u"low  high", u" low", u"low,high", u"low none"}) {
        EXPECT_FALSE(Is(ValueKind::Keywords, others));
    }
}

TEST(IsValue, TakesTheNameOfAMediaHandler) {
    EXPECT_TRUE(Is(ValueKind::HandlerName, u"Ogg Vorbis"));
    EXPECT_FALSE(Is(ValueKind::HandlerName, u"Wax Cylinder"));
}

}  // namespace
