#include "format/ValueEncoding.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>
#include <type_traits>

#include "platform/kelcore/Strings.h"

namespace tses {
namespace {

TEST(Format, IntegersAreDecimal) {
    EXPECT_EQ(FormatNumber(kelcore::uint32{0}), u"0");
    EXPECT_EQ(FormatNumber(kelcore::uint32{4294967295}), u"4294967295");
    EXPECT_EQ(FormatNumber(-1), u"-1");
    EXPECT_EQ(FormatNumber(std::numeric_limits<kelcore::int32>::min()), u"-2147483648");
    EXPECT_EQ(FormatNumber(std::numeric_limits<kelcore::int64>::min()), u"-9223372036854775808");
}

TEST(Format, RealsAreTheShortestText) {
    EXPECT_EQ(FormatNumber(0.1f), u"0.1");
    EXPECT_EQ(FormatNumber(0.1), u"0.1");
    EXPECT_EQ(FormatNumber(-3.0), u"-3");
}

TEST(Format, BooleansAreTrueAndFalse) {
    EXPECT_EQ(FormatBool(true), u"true");
    EXPECT_EQ(FormatBool(false), u"false");
}

TEST(ParseInteger, TextThatIsNotANumberLeavesTheDefault) {
    for (const char16_t* const text : {u"", u" 5", u"5 ", u"+5", u"5x", u"0x5", u"5.0", u"-",
                                       u"4294967296", u"-2147483649", u"\u0665"}) {
        kelcore::int32 number = 77;
        ParseNumber(text, number);
        EXPECT_EQ(number, 77) << kelcore::UTF16to8(text);
        kelcore::uint32 unsignedNumber = 77;
        ParseNumber(text, unsignedNumber);
        EXPECT_EQ(unsignedNumber, 77u) << kelcore::UTF16to8(text);
    }
}

TEST(ParseInteger, AnIdWrittenUnsignedIsReadSignedWithItsBits) {
    kelcore::int32 number = 0;
    ParseNumber(u"4294967295", number);
    EXPECT_EQ(number, -1);
    kelcore::uint32 unsignedNumber = 0;
    ParseNumber(u"-1", unsignedNumber);
    EXPECT_EQ(unsignedNumber, 4294967295u);
}

TEST(ParseInteger, APositionBeyond32BitsSurvivesWriteAndRead) {
    for (const kelcore::int64 position :
         {2147483648LL, 5000000000LL, -5000000000LL, std::numeric_limits<long long>::max()}) {
        kelcore::int64 number = 0;
        ParseNumber(FormatNumber(position), number);
        EXPECT_EQ(number, position);
    }
}

TEST(ParseBool, OneIsTrueOnlyForTheLenientReader) {
    EXPECT_TRUE(ParseBoolLenient(u"1"));
    EXPECT_FALSE(ParseBoolStrict(u"1"));
}

TEST(ParseBool, OnlyTheExactTextIsTrue) {
    EXPECT_TRUE(ParseBoolStrict(u"true"));
    EXPECT_TRUE(ParseBoolLenient(u"true"));
    for (const char16_t* const text :
         {u"TRUE", u"True", u" true", u"true ", u"yes", u"", u"truer", u"false", u"11"}) {
        EXPECT_FALSE(ParseBoolStrict(text)) << kelcore::UTF16to8(text);
        EXPECT_FALSE(ParseBoolLenient(text)) << kelcore::UTF16to8(text);
    }
}

TEST(ParseLenient, ACommaIsADecimalPoint) {
    EXPECT_EQ(ParseFloatLenient(u"0,5"), 0.5f);
    EXPECT_EQ(ParseDoubleLenient(u"120,5"), 120.5);
    EXPECT_EQ(ParseDoubleLenient(u"-0,5"), -0.5);
}

TEST(ParseLenient, TextThatIsNotANumberIsZero) {
    for (const char16_t* const text :
         {u"abc", u"", u" ", u".", u"-", u"+", u"e5", u"1e", u"1e+", u"nan", u"inf", u"infinity",
          (u"\u2212"
           u"5")}) {
        EXPECT_EQ(ParseFloatLenient(text), 0.0f) << kelcore::UTF16to8(text);
        EXPECT_EQ(ParseDoubleLenient(text), 0.0) << kelcore::UTF16to8(text);
    }
}

TEST(ParseLenient, BlanksBeforeAndAnythingAfterTheNumberAreIgnored) {
    EXPECT_EQ(ParseDoubleLenient(u" \t\n\v\f\r1.5 dB"), 1.5);
    EXPECT_EQ(ParseDoubleLenient(u"1.5.3"), 1.5);
    EXPECT_EQ(ParseDoubleLenient(u"0x10"), 0.0);
    EXPECT_EQ(ParseDoubleLenient(u"1:5"), 1.0);
    EXPECT_EQ(ParseDoubleLenient(u"1/5"), 1.0);
    EXPECT_EQ(ParseDoubleLenient(u"1e5abc"), 1e5);
}

TEST(ParseLenient, ANumberTooLargeIsZeroAndOneTooSmallIsRounded) {
    EXPECT_EQ(ParseFloatLenient(u"1e39"), 0.0f);
    EXPECT_EQ(ParseDoubleLenient(u"-1e999"), 0.0);
    EXPECT_EQ(ParseDoubleLenient(u"1e-999"), 0.0);
    EXPECT_EQ(ParseFloatLenient(u"1e-45"), 1e-45f);
}

/// The reference for the fast parse.
template <class Real>
Real ByStream(std::u16string text) {
    kelcore::ReplaceInString(text, u",", u".");
    std::istringstream stream(kelcore::UTF16to8(text));
    stream.imbue(std::locale::classic());
    Real value{};
    return stream >> value ? value : Real{};
}

template <class Real>
bool SameBits(Real left, Real right) {
    using Bits = std::conditional_t<sizeof(Real) == sizeof(kelcore::uint32), kelcore::uint32,
                                    kelcore::uint64>;
    return std::bit_cast<Bits>(left) == std::bit_cast<Bits>(right);
}

RC_GTEST_PROP(ParseLenient, AgreesWithAStreamOnEveryText, ()) {
    const auto units = *rc::gen::container<std::u16string>(
        rc::gen::elementOf(std::u16string(u"0123456789+-.,eE xinfa\t\u0661")));
    RC_ASSERT(SameBits(ParseFloatLenient(units), ByStream<float>(units)));
    RC_ASSERT(SameBits(ParseDoubleLenient(units), ByStream<double>(units)));
}

RC_GTEST_PROP(ParseLenient, ReadsEveryFiniteValueBackExactly, (double value, float small)) {
    RC_PRE(std::isfinite(value) && std::isfinite(small));
    RC_ASSERT(SameBits(ParseDoubleLenient(FormatNumber(value)), value));
    RC_ASSERT(SameBits(ParseFloatLenient(FormatNumber(small)), small));
}

std::vector<kelcore::byte> Decoded(std::u16string_view text) {
    std::vector<kelcore::byte> bytes{1, 2, 3};
    DecodeBlock(text, bytes);
    return bytes;
}

TEST(LenientNumbers, AreReadHoweverLongTheTextIs) {
    for (const std::size_t length : {63U, 64U, 65U, 66U, 1000U}) {
        const std::u16string zeros(length - 3, u'0');
        for (const std::u16string blanks : {u"", u"  ", u"\n"}) {
            EXPECT_EQ(ParseDoubleLenient(blanks + zeros + u"7.5"), 7.5) << length;
            EXPECT_EQ(ParseDoubleLenient(blanks + u"7.5" + zeros), 7.5) << length;
            EXPECT_EQ(ParseDoubleLenient(blanks + zeros + u"71e"), 0) << length;
        }
    }
}

TEST(Block, EveryByteSurvives) {
    std::vector<kelcore::byte> bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes.push_back(static_cast<kelcore::byte>(i * 7));
    }
    EXPECT_EQ(Decoded(EncodeBlock(bytes)), bytes);
}

TEST(Block, TextThatIsNotEncodedGivesNoBytes) {
    EXPECT_TRUE(Decoded(u"").empty());
    EXPECT_TRUE(Decoded(u"%%%").empty());
    EXPECT_TRUE(Decoded(u"\u00E9\u00E9\u00E9\u00E9").empty());
    EXPECT_TRUE(EncodeBlock({}).empty());
}

}  // namespace
}  // namespace tses
