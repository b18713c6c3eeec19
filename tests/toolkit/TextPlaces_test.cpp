#include "toolkit/TextPlaces.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;
using toolkit::FindMalformedUtf8;

namespace {

TEST(TextPlaces, ColumnsCountCharactersOfTheLine) {
    EXPECT_EQ(toolkit::ColumnOf("ab\n\xC3\xA4x", 5), 2u);
    EXPECT_EQ(toolkit::ColumnOf("abc", 0), 1u);
}

TEST(TextPlaces, AByteOrderMarkIsNotAColumn) {
    EXPECT_EQ(toolkit::ColumnOf("\xEF\xBB\xBF<a/>", 3), 1u);
}

TEST(TextPlaces, EachKindOfLineEndIsOne) {
    EXPECT_EQ(toolkit::CountLineEnds("a\nb\rc\r\nd\n\r"), 5u);
}

TEST(TextPlaces, WideEncodingsHaveNoByteSizedMarkup) {
    EXPECT_TRUE(toolkit::HasByteSizedMarkup("<a/>"));
    EXPECT_FALSE(toolkit::HasByteSizedMarkup("\xFF\xFE<\0"sv));
    EXPECT_FALSE(toolkit::HasByteSizedMarkup("<\0a\0"sv));
    EXPECT_FALSE(toolkit::HasByteSizedMarkup("\xFF\xFENN"));
    EXPECT_FALSE(toolkit::HasByteSizedMarkup("\xFE\xFFNN"));
    EXPECT_EQ(FindMalformedUtf8("\xFE\xFFNN"), std::nullopt);
}

TEST(TextPlaces, WellFormedUtf8HasNoMalformedByte) {
    EXPECT_EQ(
        FindMalformedUtf8("a\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEF\xBF\xBF\xF0\x90\x80\x80"
                          "\xF4\x8F\xBF\xBF"),
        std::nullopt);
}

TEST(TextPlaces, EveryMalformedSequenceIsFoundAtItsFirstByte) {
    for (const std::string_view text :
         {"ab\x80", "ab\xC0\x80", "ab\xC1\xBF", "ab\xE0\x9F\xBF", "ab\xED\xA0\x80",
          "ab\xF0\x8F\xBF\xBF", "ab\xF4\x90\x80\x80", "ab\xF5\x80\x80\x80", "ab\xFF", "ab\xC3",
          "ab\xE2\x82", "ab\xC3("}) {
        EXPECT_EQ(FindMalformedUtf8(text), 2u) << testing::PrintToString(text);
    }
}

TEST(TextPlaces, ADocumentInAnotherStatedEncodingHasNoMalformedUtf8) {
    EXPECT_EQ(FindMalformedUtf8("<?xml version='1.0' encoding='ISO-8859-1'?>\xFF"), std::nullopt);
    EXPECT_EQ(FindMalformedUtf8("<?xml version='1.0' encoding='UTF-8'?>\xFF"), 38u);
    EXPECT_EQ(FindMalformedUtf8("<a encoding='ISO-8859-1'>\xFF"), 25u);
    EXPECT_EQ(FindMalformedUtf8("\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>\xFF"),
              std::nullopt);
}

TEST(TextPlaces, AnEncodingThatIsNotInQuotesIsNotStated) {
    EXPECT_EQ(FindMalformedUtf8("<?xml encoding=ISO-8859-1?>\xFF"), 27u);
    EXPECT_EQ(FindMalformedUtf8("<?xml encoding='ISO-8859-1?>\xFF"), 28u);
}

}  // namespace
