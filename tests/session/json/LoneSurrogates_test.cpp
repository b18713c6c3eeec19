#include "session/json/LoneSurrogates.h"

#include <gtest/gtest.h>

#include "session/json/MarkedBlocks.h"

namespace orvo::json {
namespace {

const std::string kLoneHigh = "\xED\xA0\x80";
const std::string kLoneLow = "\xED\xBF\xBF";
const std::string kMarkCharacter = "\uFDD0";

/// A document with marks, of one block.
std::string MarkedDocument(std::string_view json) {
    MarkedBlocks blocks;
    const MarkedBlocks::Block block = blocks.Make(json, true);
    EXPECT_EQ(block.origin, json.size());
    return std::string(block.text);
}

/// A text as the library reads it in a marked document that has no other escapes.
std::string MarkedText(const std::string& escaped) {
    const std::string document = MarkedDocument("\"" + escaped + "\"");
    return document.substr(1, document.size() - 2);
}

TEST(LoneSurrogatesTest, AnyTextComesBack) {
    const std::string mark = "\uFDD0";
    for (const auto& [escaped, text] : std::vector<std::pair<std::string, std::string>>{
             {"plain", "plain"},
             {"\u00e9 \U0001F3B5", "\u00e9 \U0001F3B5"},
             {"\\ud800", kLoneHigh},
             {"\\udfff", kLoneLow},
             {"\\udfff\\ud800", kLoneLow + kLoneHigh},
             {mark, kMarkCharacter},
             {mark + "fff\\ud8007ff", kMarkCharacter + "fff" + kLoneHigh + "7ff"},
             {"\\ud800\uD7FF", kLoneHigh + "\uD7FF"},
             {"\\ud800\U0001F3B5", kLoneHigh + "\U0001F3B5"}}) {
        EXPECT_EQ(UnmarkedText(MarkedText(escaped)), text);
    }
}

TEST(LoneSurrogatesTest, AnEscapeOfALoneSurrogateBecomesAMark) {
    EXPECT_EQ(MarkedDocument(R"(["\ud800","\uDFFF"])"),
              "[\"\xEF\xB7\x90"
              "000\",\"\xEF\xB7\x90"
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

TEST(LoneSurrogatesTest, OfTwoHighSurrogatesBeforeALowOneTheFirstIsAlone) {
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

TEST(LoneSurrogatesTest, AMarkBecomesAnEscape) {
    EXPECT_EQ(UnmarkedDocument(MarkedDocument(R"("\ud8000")")), R"("\ud8000")");
    EXPECT_EQ(UnmarkedDocument(MarkedText("\uFDD0")), "\uFDD0");
}

}  // namespace
}  // namespace orvo::json
