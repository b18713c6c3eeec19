#include <gmock/gmock.h>

#include "tests/session/json/JsonErrors.h"

// Texts that are no JSON: each error names its line and column.

namespace orvo::json {
namespace {

using test::ErrorOf;
using test::PlaceOfError;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(MalformedJsonTest, MalformedJsonIsNamedWithLineAndColumn) {
    EXPECT_EQ(PlaceOfError("{\n  \"files\": [,]\n}"), (TextPlace{2, 13}));
    EXPECT_EQ(PlaceOfError(""), (TextPlace{1, 1}));
    EXPECT_EQ(PlaceOfError("{} x"), (TextPlace{1, 4}));
    EXPECT_EQ(PlaceOfError("{\"formatDescription\": \"\xFF\"}"), (TextPlace{1, 24}));
    EXPECT_EQ(PlaceOfError("[\n\n"), (TextPlace{3, 1}));
    EXPECT_THAT(ErrorOf("{\n  \"files\": [,]\n}"),
                AllOf(StartsWith("syntax error while parsing value"),
                      EndsWith("; correct the text there")));
}

TEST(MalformedJsonTest, ALineEndInATextIsNamedInItsPlace) {
    EXPECT_EQ(PlaceOfError("{\"formatDescription\": \"a\n\"}"), (TextPlace{1, 25}));
}

TEST(MalformedJsonTest, AnInvalidEscapeIsNamedWhereItBreaks) {
    EXPECT_EQ(PlaceOfError(R"({"\i": 1})"), (TextPlace{1, 4}));
    EXPECT_EQ(PlaceOfError(R"({"\u12x4": 1})"), (TextPlace{1, 7}));
}

TEST(MalformedJsonTest, ColumnsOfMalformedJsonCountTheCharactersOfTheFile) {
    for (const std::string text : {"a", "\u00e9", "\U0001F3B5", "\uFDD0", "\uFDD1"}) {
        EXPECT_EQ(PlaceOfError("{\"" + text + text + "\": ]"), (TextPlace{1, 8})) << text;
    }
    for (const std::string escape : {"\\ud800", "\\ufdd0", "\\u00e9"}) {
        EXPECT_EQ(PlaceOfError("{\"" + escape + "\": ]"), (TextPlace{1, 12})) << escape;
    }
    EXPECT_EQ(PlaceOfError("\xEF\xBB\xBF[,]"), (TextPlace{1, 2})) << "a byte order mark";
}

TEST(MalformedJsonTest, AnErrorShowsAnUnpairedSurrogateAsItsEscape) {
    EXPECT_THAT(ErrorOf("{\"\\ud800\x01\"}"), HasSubstr("last read: '\"\\ud800<U+0001>'"));
    EXPECT_THAT(ErrorOf(R"({"\ud800": 1})"), StartsWith("/\\ud800: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"\udfff": 1, "\udfff": 1})"), StartsWith("/\\udfff: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"\ufdd0": 1})"), StartsWith("/\uFDD0: unknown key"));
}

TEST(MalformedJsonTest, ANulCharacterIsNotTakenForTheEnd) {
    const std::string text("{}\n \0{\"sampleRate\": 1}", 21);
    EXPECT_EQ(ErrorOf(text), "a NUL character; remove it");
    EXPECT_EQ(PlaceOfError(text), (TextPlace{2, 2}));
}

TEST(MalformedJsonTest, AnErrorIsNotAsLongAsTheNumberThatItNames) {
    const std::string text = R"({"sampleRate": )" + std::string(100'000, '9') + "}";
    const std::string error = ErrorOf(text);
    EXPECT_THAT(error, StartsWith("number overflow"));
    EXPECT_EQ(PlaceOfError(text), (TextPlace{1, 100'015}));
    EXPECT_LT(error.size(), 400U);
}

TEST(MalformedJsonTest, AnErrorThatQuotesALongTextEndsAfterAWholeCharacter) {
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += "\u00e9";
    }
    for (const std::string begin : {"", "x"}) {
        EXPECT_THAT(ErrorOf("{\"" + begin + text + "\x01\"}"),
                    EndsWith("\u00e9...; correct the text there"));
    }
}

TEST(MalformedJsonTest, ANumberTooLargeForAnyFieldIsAnError) {
    EXPECT_THAT(ErrorOf("{\n  \"duration\": 1e999}"), HasSubstr("1e999"));
    EXPECT_EQ(PlaceOfError("{\n  \"duration\": 1e999}"), (TextPlace{2, 19}));
}

TEST(MalformedJsonTest, MalformedJsonIsNamedRatherThanAWrongValue) {
    EXPECT_THAT(ErrorOf(R"({"sampleRate": -1, "files": ])"), StartsWith("syntax error"));
    EXPECT_THAT(ErrorOf(R"({"x": {"y": [1, }})"), StartsWith("syntax error"));
    EXPECT_EQ(ErrorOf(std::string("{\"x\": 1}\0", 9)), "a NUL character; remove it");
}

TEST(MalformedJsonTest, AnErrorQuotesTheTextAsItIs) {
    EXPECT_EQ(ErrorOf("{\"files\":  \n  nul, \"sampleRate\": 1}"),
              "syntax error while parsing value - invalid literal; last read: "
              "'\"files\":  <U+000A>  nul,'; correct the text there");
    EXPECT_EQ(ErrorOf("{\"files\": tru  \"\"}"),
              "syntax error while parsing value - invalid literal; last read: '\"files\": tru '; "
              "correct the text there");
}

TEST(MalformedJsonTest, BlanksKeepNumbersAndWordsApart) {
    EXPECT_THAT(ErrorOf("{\"sampleRate\": 1 \n 2}"),
                HasSubstr("unexpected number literal; expected '}'"));
    EXPECT_THAT(ErrorOf("{\"sampleRate\": 1  \n\n  \"x\"}"),
                HasSubstr("unexpected string literal; expected '}'"));
}

TEST(MalformedJsonTest, BlanksBetweenValuesAreCountedInPlaces) {
    EXPECT_EQ(PlaceOfError("{\n \t \"sampleRate\" \n : \r\n  1  ,\n\n  \"duration\"  : 1 2}"),
              (TextPlace{6, 19}));
}

}  // namespace
}  // namespace orvo::json
