#include "platform/kelcore/Numbers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <sstream>
#include <string>

#include "platform/kelcore/Strings.h"

namespace kelcore {
namespace {

/// The value of a text; nothing if it is rejected, which must leave the target unchanged.
template <typename Number>
std::optional<Number> Read(std::u16string_view text) {
    constexpr Number kUntouched = 77;
    Number target = kUntouched;
    if (StringToNumber(text, target)) {
        return target;
    }
    EXPECT_EQ(target, kUntouched);
    return std::nullopt;
}

template <typename Real>
std::string Write(Real value, int precision = 100) {
    std::array<char16, kFloatBufferSize> buffer;
    buffer.fill(u'#');
    const std::size_t length = ConvertFloatToBufferT(buffer.data(), value, precision);
    EXPECT_LT(length, kFloatBufferSize);
    EXPECT_EQ(buffer[length], u'\0');
    return UTF16to8(std::u16string_view(buffer.data(), length));
}

template <typename Real>
std::optional<Real> ReadByStream(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Real value = 0;
    stream >> value;
    return stream.fail() ? std::nullopt : std::optional(value);
}

TEST(StringToNumber32, ReadsTheWholeSharedRangeAndKeepsTheBits) {
    EXPECT_EQ(Read<int32>(u"-2147483648"), std::numeric_limits<int32>::min());
    EXPECT_EQ(Read<int32>(u"2147483647"), std::numeric_limits<int32>::max());
    EXPECT_EQ(Read<int32>(u"2147483648"), std::numeric_limits<int32>::min());
    EXPECT_EQ(Read<int32>(u"4294967295"), -1);
    EXPECT_EQ(Read<uint32>(u"4294967295"), 4294967295U);
    EXPECT_EQ(Read<uint32>(u"-1"), 4294967295U);
    EXPECT_EQ(Read<uint32>(u"-2147483648"), 2147483648U);
    EXPECT_EQ(Read<uint32>(u"0"), 0U);
}

TEST(StringToNumber32, RefusesWhatIsOutOfRange) {
    for (const auto* text :
         {u"-2147483649", u"4294967296", u"99999999999999999999", u"-99999999999"}) {
        EXPECT_EQ(Read<int32>(text), std::nullopt);
        EXPECT_EQ(Read<uint32>(text), std::nullopt);
    }
}

TEST(StringToNumber64, ReadsItsWholeRangeAndNoMore) {
    EXPECT_EQ(Read<int64>(u"-9223372036854775808"), std::numeric_limits<int64>::min());
    EXPECT_EQ(Read<int64>(u"9223372036854775807"), std::numeric_limits<int64>::max());
    EXPECT_EQ(Read<int64>(u"-9223372036854775809"), std::nullopt);
    EXPECT_EQ(Read<int64>(u"9223372036854775808"), std::nullopt);
}

TEST(StringToNumber64, RefusesWhatWouldOverflow64Bits) {
    for (const auto* text :
         {u"10000000000000000000", u"18446744073709551616", u"18446744073709551617",
          u"-18446744073709551616", u"-18446744073709551617", u"99999999999999999999999999"}) {
        EXPECT_EQ(Read<int64>(text), std::nullopt);
    }
}

TEST(StringToNumber64, AcceptsAnyNumberOfLeadingZeros) {
    EXPECT_EQ(Read<int64>(u"-0"), 0);
    EXPECT_EQ(Read<int64>(u"00000000000000000000000000000"), 0);
    EXPECT_EQ(Read<int64>(u"0000000000009223372036854775807"), std::numeric_limits<int64>::max());
    EXPECT_EQ(Read<int64>(u"-0000000000009223372036854775808"), std::numeric_limits<int64>::min());
    EXPECT_EQ(Read<int64>(u"0000000000009223372036854775808"), std::nullopt);
}

template <typename Number>
class StringToAnyNumber : public testing::Test {};
using AllNumbers = testing::Types<int32, uint32, int64, float, double>;
TYPED_TEST_SUITE(StringToAnyNumber, AllNumbers);

TYPED_TEST(StringToAnyNumber, RefusesEverythingThatIsNotOneNumber) {
    const std::u16string_view junk[] = {u"",
                                        u" ",
                                        u"-",
                                        u"+1",
                                        u" 1",
                                        u"1 ",
                                        u"1\n",
                                        u"--1",
                                        u"- 1",
                                        u"1-",
                                        u"0x10",
                                        u"1,5",
                                        u"abc",
                                        u"1a",
                                        u"a1",
                                        u"१",
                                        u"１",
                                        u"1\u0331",
                                        u"1e",
                                        u"e1",
                                        u"1_0",
                                        u"1'000",
                                        u"nan",
                                        u"inf",
                                        u"-inf",
                                        u"NaN",
                                        u"INF",
                                        u"infinity",
                                        u"1.0f",
                                        u"true",
                                        u".",
                                        u"1e+",
                                        u"1..",
                                        u"+",
                                        u"-.",
                                        u".e1",
                                        u"1 2",
                                        u"nan(1)",
                                        u"-nan",
                                        u"0x1p3",
                                        (u"\u2212"
                                         u"1")};
    for (const auto text : junk) {
        EXPECT_EQ(Read<TypeParam>(text), std::nullopt) << UTF16to8(text);
    }
    EXPECT_EQ(Read<TypeParam>(std::u16string_view(u"1\0", 2)), std::nullopt);
    EXPECT_EQ(Read<TypeParam>(std::u16string{u'1', 0x0131}), std::nullopt)
        << "0x31 in its low byte";
}

TYPED_TEST(StringToAnyNumber, IgnoresLeadingZerosHoweverMany) {
    EXPECT_EQ(Read<TypeParam>(u"007"), TypeParam{7});
    EXPECT_EQ(Read<TypeParam>(std::u16string(5000, u'0') + u"42"), TypeParam{42});
}

TEST(StringToInteger, RefusesFractionsAndExponents) {
    for (const auto* text : {u"1.0", u"1.", u".5", u"1e3"}) {
        EXPECT_EQ(Read<int32>(text), std::nullopt);
        EXPECT_EQ(Read<uint32>(text), std::nullopt);
        EXPECT_EQ(Read<int64>(text), std::nullopt);
    }
}

RC_GTEST_PROP(StringToInteger, EveryIntegerReadsBack, (int64 wide, int32 narrow, uint32 positive)) {
    const auto text = [](auto value) { return AsciiToUTF16(std::to_string(value)); };
    RC_ASSERT(Read<int64>(text(wide)) == wide);
    RC_ASSERT(Read<int32>(text(narrow)) == narrow);
    RC_ASSERT(Read<uint32>(text(positive)) == positive);
    RC_ASSERT(Read<int32>(text(positive)) == std::bit_cast<int32>(positive));
    RC_ASSERT(Read<uint32>(text(narrow)) == std::bit_cast<uint32>(narrow));
}

TEST(StringToReal, ReadsEachDocumentedForm) {
    EXPECT_EQ(Read<float>(u"0.5"), 0.5F);
    EXPECT_EQ(Read<double>(u"-0.5"), -0.5);
    EXPECT_EQ(Read<double>(u"3"), 3.0);
    EXPECT_EQ(Read<double>(u".5"), 0.5);
    EXPECT_EQ(Read<double>(u"5."), 5.0);
    EXPECT_EQ(Read<double>(u"1.5e3"), 1500.0);
    EXPECT_EQ(Read<double>(u"1.5E+3"), 1500.0);
    EXPECT_EQ(Read<double>(u"15e-1"), 1.5);
    EXPECT_TRUE(std::signbit(Read<double>(u"-0").value_or(1.0)));
}

TEST(StringToReal, RefusesAValueTooLargeForItsType) {
    EXPECT_EQ(Read<float>(u"3.5e38"), std::nullopt);
    EXPECT_EQ(Read<double>(u"3.5e38"), 3.5e38);
    EXPECT_EQ(Read<double>(u"1e309"), std::nullopt);
    EXPECT_EQ(Read<double>(u"1e+309"), std::nullopt);
    EXPECT_EQ(Read<double>(u"-1e309"), std::nullopt);
    EXPECT_EQ(Read<double>(u"1e99999999999999999999"), std::nullopt);
    EXPECT_EQ(Read<double>(u"1" + std::u16string(400, u'0')), std::nullopt);
    EXPECT_EQ(Read<double>(u"0.001e400"), std::nullopt);
}

TEST(StringToReal, ReadsAValueTooSmallForItsTypeAsZero) {
    EXPECT_EQ(Read<float>(u"1e-60"), 0.0F);
    EXPECT_EQ(Read<double>(u"1e-400"), 0.0);
    EXPECT_EQ(Read<double>(u"1e-99999999999999999999"), 0.0);
    EXPECT_EQ(Read<double>(u"0." + std::u16string(400, u'0') + u"1"), 0.0);
    EXPECT_EQ(Read<double>(u"1000e-400"), 0.0);
    EXPECT_TRUE(std::signbit(Read<double>(u"-1e-400").value_or(1.0)));
    EXPECT_EQ(Read<double>(u"0e99999999999999999999"), 0.0);
}

TEST(StringToReal, ReadsTheSmallestAndTheLargestValues) {
    EXPECT_EQ(Read<float>(u"1e-45"), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(Read<double>(u"5e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(Read<float>(u"3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(Read<double>(u"1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(ConvertFloatToBufferT, WritesTheShortestText) {
    EXPECT_EQ(Write(0.1F), "0.1");
    EXPECT_EQ(Write(0.1), "0.1");
    EXPECT_EQ(Write(1.0F), "1");
    EXPECT_EQ(Write(-2.5), "-2.5");
    EXPECT_EQ(Write(0.0F), "0");
    EXPECT_EQ(Write(-0.0), "-0");
    EXPECT_EQ(Write(1e30F), "1e+30");
    EXPECT_EQ(Write(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(Write(1.0F / 3.0F), "0.33333334");
}

TEST(ConvertFloatToBufferT, WritesNamesForNonNumbers) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Write(kInfinity), "inf");
    EXPECT_EQ(Write(-kInfinity), "-inf");
    EXPECT_EQ(Write(kNoNumber), "nan");
    EXPECT_EQ(Write(-kNoNumber), "nan");
    EXPECT_EQ(Write(std::numeric_limits<float>::infinity()), "inf");
    EXPECT_EQ(Write(std::numeric_limits<float>::quiet_NaN()), "nan");
}

TEST(ConvertFloatToBufferT, RoundsToTheGivenPrecision) {
    EXPECT_EQ(Write(3.14159265, 3), "3.14");
    EXPECT_EQ(Write(0.000123456, 3), "0.000123");
    EXPECT_EQ(Write(2.0 / 3.0, 1), "0.7");
    EXPECT_EQ(Write(123456.0, 2), "1.2e+05");
    EXPECT_EQ(Write(2.0 / 3.0, 0), "0.7") << "at least one digit";
    EXPECT_EQ(Write(2.0 / 3.0, -5), "0.7");
    EXPECT_EQ(Write(0.5, 3), "0.5") << "no zeros are added";
    EXPECT_EQ(Write(1000000.0, 1), "1e+06");
    EXPECT_EQ(Write(0.0, 1), "0");
    EXPECT_EQ(Write(-8.68555e-13F, 8), "-8.68555e-13") << "the shortest text has fewer digits";
}

/// Reals of all magnitudes: uniformly random numbers rarely have interesting exponents.
template <typename Real, typename Bits>
rc::Gen<Real> AnyFinite() {
    return rc::gen::suchThat(
        rc::gen::oneOf(
            rc::gen::map(rc::gen::noShrink(rc::gen::resize(1000, rc::gen::arbitrary<Bits>())),
                         [](Bits bits) { return std::bit_cast<Real>(bits); }),
            rc::gen::map(rc::gen::inRange(-1000000, 1000000),
                         [](int value) { return static_cast<Real>(value) / 1000; })),
        [](Real value) { return std::isfinite(value); });
}

template <typename Bits, typename Real>
void ExpectSameBitsBack(Real value) {
    const std::string text = Write(value);
    const auto number = Read<Real>(AsciiToUTF16(text));
    RC_ASSERT(number.has_value());
    RC_ASSERT(std::bit_cast<Bits>(*number) == std::bit_cast<Bits>(value));
    const auto streamed = ReadByStream<Real>(text);
    RC_ASSERT(streamed.has_value());
    RC_ASSERT(std::bit_cast<Bits>(*streamed) == std::bit_cast<Bits>(value));
}

TEST(FloatText, EveryFloatReadsBackToTheSameBits) {
    EXPECT_TRUE(rc::check([] { ExpectSameBitsBack<uint32>(*AnyFinite<float, uint32>()); }));
}

TEST(FloatText, EveryDoubleReadsBackToTheSameBits) {
    EXPECT_TRUE(rc::check([] { ExpectSameBitsBack<uint64>(*AnyFinite<double, uint64>()); }));
}

TEST(FloatText, FloatsOfAllMagnitudesReadBackToTheSameBits) {
    constexpr uint32 kStep = 65521;
    for (uint64 bits = 0; bits <= std::numeric_limits<uint32>::max(); bits += kStep) {
        const auto value = std::bit_cast<float>(static_cast<uint32>(bits));
        if (std::isfinite(value)) {
            const auto back = Read<float>(AsciiToUTF16(Write(value)));
            ASSERT_TRUE(back.has_value()) << Write(value);
            ASSERT_EQ(std::bit_cast<uint32>(*back), bits) << Write(value);
        }
    }
}

TEST(FloatText, DoublesOfAllMagnitudesReadBackToTheSameBits) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 200'000; ++i) {
        const uint64 bits = random();
        const auto value = std::bit_cast<double>(bits);
        if (std::isfinite(value)) {
            const auto back = Read<double>(AsciiToUTF16(Write(value)));
            ASSERT_TRUE(back.has_value()) << Write(value);
            ASSERT_EQ(std::bit_cast<uint64>(*back), bits) << Write(value);
        }
    }
}

TEST(FloatText, NoTextHasMoreDigitsThanThePrecision) {
    EXPECT_TRUE(rc::check([] {
        const double value = *AnyFinite<double, uint64>();
        const int precision = *rc::gen::inRange(1, 25);
        std::string digits = Write(value, precision);
        digits.erase(std::min(digits.find('e'), digits.size()));
        std::erase_if(digits, [](char character) { return character < '0' || character > '9'; });
        digits.erase(0, digits.find_first_not_of('0'));
        digits.erase(digits.find_last_not_of('0') + 1);
        RC_ASSERT(digits.size() <= static_cast<std::size_t>(precision));
    }));
}

}  // namespace
}  // namespace kelcore
