#include "platform/kelcore/Strings.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace kelcore {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(AsciiToUTF16, WidensEvery7BitCharacterIncludingZero) {
    std::string ascii;
    std::u16string expected;
    for (char character = 0;; ++character) {
        ascii.push_back(character);
        expected.push_back(static_cast<char16_t>(character));
        if (character == 0x7F) {
            break;
        }
    }
    EXPECT_EQ(AsciiToUTF16(ascii), expected);
    EXPECT_EQ(AsciiToUTF16(""), u"");
}

TEST(AsciiToUTF16, ReplacesEachByteThatIsNotAscii) {
    EXPECT_EQ(AsciiToUTF16("a\x80\xC3\xFFz"), u"a\uFFFD\uFFFD\uFFFDz");
}

TEST(UTF16to8, EncodesEachLengthOfSequence) {
    EXPECT_EQ(UTF16to8(u""), "");
    EXPECT_EQ(UTF16to8(u"A\u007F"), "A\x7F");
    EXPECT_EQ(UTF16to8(u"\u0080\u07FF"), "\xC2\x80\xDF\xBF");
    EXPECT_EQ(UTF16to8(u"\u0800\uFFFF"), "\xE0\xA0\x80\xEF\xBF\xBF");
    EXPECT_EQ(UTF16to8(u"\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(UTF16to8, KeepsZeros) {
    EXPECT_EQ(UTF16to8(u"a\0b"sv), "a\0b"s);
}

TEST(UTF16to8, WritesAnUnpairedSurrogateAsThreeBytes) {
    EXPECT_EQ(UTF16to8(std::u16string{0xD800}), "\xED\xA0\x80");
    EXPECT_EQ(UTF16to8(std::u16string{0xDFFF}), "\xED\xBF\xBF");
    EXPECT_EQ(UTF16to8(std::u16string{0xDC00, 0xD800}), "\xED\xB0\x80\xED\xA0\x80");
    EXPECT_EQ(UTF16to8(std::u16string{0xD83D, u'x'}), "\xED\xA0\xBDx");
}

TEST(StringConversions, EveryUnitSurvivesAloneAndBetweenOthers) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::u16string alone(1, static_cast<char16_t>(unit));
        ASSERT_EQ(UTF8to16(UTF16to8(alone)), alone) << std::hex << unit;
        const std::u16string between = u"a" + alone + u"\u00E9";
        ASSERT_EQ(UTF8to16(UTF16to8(between)), between) << std::hex << unit;
    }
}

TEST(StringConversions, EverySurrogatePairIsFourBytesAndSurvives) {
    for (unsigned high = 0xD800; high <= 0xDBFF; ++high) {
        for (unsigned low = 0xDC00; low <= 0xDFFF; ++low) {
            const std::u16string pair{static_cast<char16_t>(high), static_cast<char16_t>(low)};
            const std::string bytes = UTF16to8(pair);
            ASSERT_EQ(bytes.size(), 4U) << std::hex << high << ' ' << low;
            ASSERT_EQ(UTF8to16(bytes), pair) << std::hex << high << ' ' << low;
        }
    }
}

RC_GTEST_PROP(StringConversions, EveryTextSurvives, ()) {
    const auto unit = rc::gen::oneOf(rc::gen::arbitrary<std::uint16_t>(),
                                     rc::gen::inRange<std::uint16_t>(0xD7F0, 0xE010));
    const auto units = *rc::gen::container<std::vector<std::uint16_t>>(unit);
    const std::u16string text(units.begin(), units.end());
    RC_ASSERT(UTF8to16(UTF16to8(text)) == text);
}

RC_GTEST_PROP(UTF8to16, TakesEveryByteString, (const std::string& bytes)) {
    const std::u16string text = UTF8to16(bytes);
    RC_ASSERT(text.size() <= bytes.size());
    RC_ASSERT(UTF8to16(UTF16to8(text)) == text);
}

TEST(UTF8to16, ReadsSurrogatesEncodedAsThreeBytes) {
    EXPECT_EQ(UTF8to16("x\xED\xA0\x80y"), (std::u16string{u'x', 0xD800, u'y'}));
    EXPECT_EQ(UTF8to16("\xED\xBF\xBF"), (std::u16string{0xDFFF}));
}

TEST(UTF8to16, ReplacesEachMaximalPartOfAMalformedSequence) {
    EXPECT_EQ(UTF8to16("\x80\xBF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(UTF8to16("\xC0\x80"), u"\uFFFD\uFFFD") << "overlong zero";
    EXPECT_EQ(UTF8to16("\xC1\xBF"), u"\uFFFD\uFFFD") << "overlong";
    EXPECT_EQ(UTF8to16("\xE0\x9F\xBF"), u"\uFFFD\uFFFD\uFFFD") << "overlong";
    EXPECT_EQ(UTF8to16("\xF0\x8F\xBF\xBF"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "overlong";
    EXPECT_EQ(UTF8to16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond U+10FFFF";
    EXPECT_EQ(UTF8to16("\xF5\xFE\xFF"), u"\uFFFD\uFFFD\uFFFD") << "never a lead byte";
    EXPECT_EQ(UTF8to16("\xE2\x82z"), u"\uFFFDz") << "cut short by another character";
    EXPECT_EQ(UTF8to16("\xF0\x9F\x98"), u"\uFFFD") << "cut short by the end";
    EXPECT_EQ(UTF8to16("\xF0\x9F\x98\xC3\xA9"), u"\uFFFD\u00E9") << "cut short by a sequence";
    EXPECT_EQ(UTF8to16("\xC3"), u"\uFFFD");
}

TEST(ReplaceInString, ReplacesEveryOccurrence) {
    std::u16string text = u"0,5 and 1,5,";
    ReplaceInString(text, u",", u".");
    EXPECT_EQ(text, u"0.5 and 1.5.");
}

TEST(ReplaceInString, GrowsAndShrinksText) {
    std::u16string text = u"aXbXc";
    ReplaceInString(text, u"X", u"--");
    EXPECT_EQ(text, u"a--b--c");
    ReplaceInString(text, u"--", u"");
    EXPECT_EQ(text, u"abc");
}

TEST(ReplaceInString, NeverSearchesTheReplacement) {
    std::u16string text = u"aa";
    ReplaceInString(text, u"a", u"aa");
    EXPECT_EQ(text, u"aaaa");
    text = u"aaa";
    ReplaceInString(text, u"aa", u"a");
    EXPECT_EQ(text, u"aa");
}

TEST(ReplaceInString, LeavesTextWithoutOccurrenceAlone) {
    std::u16string text = u"abc";
    ReplaceInString(text, u"x", u"y");
    EXPECT_EQ(text, u"abc");
}

TEST(ReplaceInString, AnEmptyPatternChangesNothing) {
    std::u16string text = u"abc";
    ReplaceInString(text, u"", u"y");
    EXPECT_EQ(text, u"abc");
}

TEST(ReplaceInString, AcceptsPartsOfTheTextItself) {
    std::u16string text = u"ab-ab";
    const std::u16string_view whole = text;
    ReplaceInString(text, whole.substr(0, 1), whole.substr(0, 3));
    EXPECT_EQ(text, u"ab-b-ab-b");
}

}  // namespace
}  // namespace kelcore
