#include "reference_host/json/LoneSurrogates.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

const std::u16string kLoneHigh{0xD800};
const std::u16string kLoneLow{0xDFFF};
const std::u16string kMarkCharacter{0xFDD0};

TEST(LoneSurrogatesTest, AnyTextComesBack) {
    for (const std::u16string& text :
         {std::u16string(u"plain"), std::u16string(u"\u00e9 \U0001F3B5"), kLoneHigh, kLoneLow,
          kLoneLow + kLoneHigh, kMarkCharacter, kMarkCharacter + u"fff" + kLoneHigh + u"7ff",
          kLoneHigh + u"\uD7FF", std::u16string{u'a', 0, u'b'}, kLoneHigh + u"\U0001F3B5"}) {
        EXPECT_EQ(UnmarkedText(MarkedText(text)), text);
    }
}

TEST(LoneSurrogatesTest, AnEscapeOfALoneSurrogateBecomesAMark) {
    EXPECT_EQ(MarkedDocument(R"(["\ud800", "\uDFFF"])"),
              "[\"\xEF\xB7\x90"
              "000\", \"\xEF\xB7\x90"
              "7ff\"]");
}

TEST(LoneSurrogatesTest, AnEscapeOfTheMarksOwnCharacterBecomesAMark) {
    EXPECT_EQ(MarkedDocument(R"("\uFDD0")"),
              "\"\xEF\xB7\x90"
              "fff\"");
}

TEST(LoneSurrogatesTest, APairOfEscapesStays) {
    EXPECT_EQ(MarkedDocument(R"(["\ud83c\udfb5"])"), R"(["\ud83c\udfb5"])");
}

TEST(LoneSurrogatesTest, AnEscapedBackslashBeginsNoEscape) {
    EXPECT_EQ(MarkedDocument(R"(["\\ud800"])"), R"(["\\ud800"])");
}

TEST(LoneSurrogatesTest, TwoHighSurrogatesAndALowOneAreOneAloneAndAPair) {
    EXPECT_EQ(MarkedDocument(R"("\ud800\ud83c\udfb5")"),
              "\"\xEF\xB7\x90"
              "000\\ud83c\\udfb5\"");
}

TEST(LoneSurrogatesTest, ABrokenEscapeStaysForTheParserToRefuse) {
    for (const char* const text :
         {R"("\u12")", R"("\ud8")", R"("\)", R"("\ud800\u)", R"("\uzzzz")"}) {
        EXPECT_NO_THROW(MarkedDocument(text));
    }
    EXPECT_EQ(MarkedDocument(R"("\u12")"), R"("\u12")");
    EXPECT_EQ(MarkedDocument(R"("\ud8zz")"), R"("\ud8zz")");
}

TEST(LoneSurrogatesTest, EveryByteBehindAMarkIsFoundAgainInTheDocument) {
    const std::string json = "[\"\\ud800\xEF\xB7\x90\\ufdd0\xEF\xB7\x90\xEF\xB7\x90x\"] y";
    const std::string marked = MarkedDocument(json);
    ASSERT_EQ(marked.size(), json.size() + 9);
    for (const char character : {'x', 'y', ']'}) {
        EXPECT_EQ(UnmarkedOffset(json, marked.find(character)), json.find(character));
    }
    EXPECT_EQ(UnmarkedOffset(json, marked.size()), json.size());
    EXPECT_EQ(UnmarkedOffset(json, 0), 0U);
    EXPECT_EQ(UnmarkedOffset("\xEF\xB7\x90]", 0), 0U);
    EXPECT_EQ(UnmarkedOffset("\xEF\xB7\x90]", 6), 3U);
    EXPECT_EQ(UnmarkedOffset("\xEF\xB7\x90]", 5), 3U) << "inside of a mark";
}

TEST(LoneSurrogatesTest, AMarkBecomesAnEscape) {
    EXPECT_EQ(UnmarkedDocument("\"" + MarkedText(kLoneHigh + u"0") + "\""), R"("\ud8000")");
    EXPECT_EQ(UnmarkedDocument(MarkedText(kMarkCharacter)), "\xEF\xB7\x90");
}

}  // namespace
}  // namespace refhost
