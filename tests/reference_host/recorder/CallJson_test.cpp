#include "reference_host/recorder/CallJson.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace refhost {
namespace {

CallRecord SomeCall(std::vector<TraceValue> arguments = {}) {
    CallRecord call;
    call.sequence = 12;
    call.interfaceName = "IEditSession";
    call.objectNumber = 1;
    call.operation = "SetSampleRate";
    call.arguments = std::move(arguments);
    return call;
}

std::string JsonOf(TraceValue value) {
    const std::string json = FormatCallAsJson(SomeCall({std::move(value)}));
    const std::string start =
        R"({"seq": 12, "object": "IEditSession#1", "call": "SetSampleRate", "args": [)";
    EXPECT_EQ(json.substr(0, start.size()), start);
    EXPECT_TRUE(json.ends_with("]}"));
    return json.substr(start.size(), json.size() - start.size() - 2);
}

TEST(CallJson, ACallIsOneLineInAFixedForm) {
    EXPECT_EQ(
        FormatCallAsJson(SomeCall({std::uint64_t{48000}})),
        R"({"seq": 12, "object": "IEditSession#1", "call": "SetSampleRate", "args": [48000]})");
}

TEST(CallJson, ACallWithoutArgumentsHasAnEmptyList) {
    EXPECT_EQ(FormatCallAsJson(SomeCall()),
              R"({"seq": 12, "object": "IEditSession#1", "call": "SetSampleRate", "args": []})");
}

TEST(CallJson, ArgumentsAreSeparatedByACommaAndABlank) {
    EXPECT_EQ(
        FormatCallAsJson(SomeCall({true, std::int64_t{-3}})),
        R"({"seq": 12, "object": "IEditSession#1", "call": "SetSampleRate", "args": [true, -3]})");
}

TEST(CallJson, AReturnedObjectIsNamedByInterfaceAndNumber) {
    CallRecord call = SomeCall();
    call.operation = "GetFile";
    call.returned = ObjectResult{"IEditFile", 3};
    EXPECT_EQ(
        FormatCallAsJson(call),
        R"({"seq": 12, "object": "IEditSession#1", "call": "GetFile", "args": [], "returns": "IEditFile#3"})");
}

TEST(CallJson, AReturnedNullIsNull) {
    CallRecord call = SomeCall();
    call.returned = ObjectResult{"IEditFile", 0};
    EXPECT_TRUE(FormatCallAsJson(call).ends_with(R"("args": [], "returns": null})"));
}

TEST(CallJson, AResultThatIsNotAnObjectIsNotShown) {
    CallRecord call = SomeCall();
    call.value = TraceValue(true);
    EXPECT_EQ(FormatCallAsJson(call), FormatCallAsJson(SomeCall()));
}

TEST(CallJson, NullAndTruthValuesAreAsInJson) {
    EXPECT_EQ(JsonOf(std::monostate()), "null");
    EXPECT_EQ(JsonOf(true), "true");
    EXPECT_EQ(JsonOf(false), "false");
}

TEST(CallJson, WholeNumbersKeepTheirWholeRange) {
    EXPECT_EQ(JsonOf(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(JsonOf(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(CallJson, RealNumbersAreTheShortestTextOfTheirWidth) {
    EXPECT_EQ(JsonOf(0.1F), "0.1");
    EXPECT_EQ(JsonOf(0.1), "0.1");
    EXPECT_EQ(JsonOf(double{0.1F}), "0.10000000149011612");
    EXPECT_EQ(JsonOf(-1.0), "-1");
    EXPECT_EQ(JsonOf(1e300), "1e+300");
}

TEST(CallJson, RealNumbersThatJsonLacksAreStrings) {
    EXPECT_EQ(JsonOf(std::numeric_limits<float>::quiet_NaN()), R"("NaN")");
    EXPECT_EQ(JsonOf(std::numeric_limits<double>::infinity()), R"("Infinity")");
    EXPECT_EQ(JsonOf(-std::numeric_limits<double>::infinity()), R"("-Infinity")");
}

TEST(CallJson, QuotesBackslashesAndControlCharactersAreEscaped) {
    EXPECT_EQ(JsonOf(std::u16string(u"a\"b\\c/\b\f\n\r\t\u0001\u001F\u007F")),
              "\"a\\\"b\\\\c/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F\"");
}

TEST(CallJson, AZeroInATextDoesNotEndIt) {
    EXPECT_EQ(JsonOf(std::u16string(u"a\0b", 3)), R"("a\u0000b")");
}

TEST(CallJson, OtherCharactersAreUtf8) {
    EXPECT_EQ(JsonOf(std::u16string(u"\u00E9\u07FF\u0800\uFFFF\U0001F3B5\U0010FFFF")),
              "\"\xC3\xA9\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x9F\x8E\xB5\xF4\x8F\xBF\xBF\"");
}

TEST(CallJson, UnpairedSurrogatesAreEscaped) {
    EXPECT_EQ(JsonOf(std::u16string{0xD83C, u'x', 0xDFB5}), R"("\ud83cx\udfb5")");
    EXPECT_EQ(JsonOf(std::u16string{0xDFB5, 0xD83C}), R"("\udfb5\ud83c")");
    EXPECT_EQ(JsonOf(std::u16string{0xD83C, 0xD83C, 0xDFB5}), "\"\\ud83c\xF0\x9F\x8E\xB5\"");
}

TEST(CallJson, AListOfNumbersIsAnArray) {
    EXPECT_EQ(JsonOf(std::vector<kelcore::uint32>{1, 2, 2}), "[1, 2, 2]");
    EXPECT_EQ(JsonOf(std::vector<kelcore::uint32>{}), "[]");
}

TEST(CallJson, ABlockOfBytesIsItsSizeAndItsBase64) {
    EXPECT_EQ(JsonOf(std::vector<kelcore::byte>{0, 1, 2}), R"({"bytes": 3, "base64": "AAEC"})");
    EXPECT_EQ(JsonOf(std::vector<kelcore::byte>{0xFF}), R"({"bytes": 1, "base64": "/w=="})");
    EXPECT_EQ(JsonOf(std::vector<kelcore::byte>{0xFB, 0xEF}), R"({"bytes": 2, "base64": "++8="})");
    EXPECT_EQ(JsonOf(std::vector<kelcore::byte>{}), R"({"bytes": 0, "base64": ""})");
}

TEST(CallJson, ALongBlockStaysOnOneLine) {
    const std::string json = JsonOf(std::vector<kelcore::byte>(300, 0));
    EXPECT_EQ(json, R"({"bytes": 300, "base64": ")" + std::string(400, 'A') + "\"}");
}

}  // namespace
}  // namespace refhost
