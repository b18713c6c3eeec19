#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::kSmallSession;
using test::Outcome;
using test::RunTool;
using test::ToolPath;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

class TraceTest : public test::ToolTest {
protected:
    /// The lines of standard output. Each one must be JSON.
    static std::vector<json> Lines(const Outcome& outcome) {
        std::vector<json> lines;
        std::istringstream stream(outcome.output);
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(json::parse(line));
        }
        return lines;
    }

    static std::vector<std::string> Calls(const std::vector<json>& lines) {
        std::vector<std::string> calls;
        for (const json& line : lines) {
            calls.push_back(line.value("call", ""));
        }
        return calls;
    }
};

TEST_F(TraceTest, ShowsEveryCallOfAReadInOrder) {
    folder_.Write(
        "a.orvo",
        "<orvo><session sampleRate='44100'/><files><file id='3' absolutePath='/a'/></files>"
        "</orvo>");
    const Outcome outcome = RunTool({"trace", "a.orvo"}, folder_);
    const std::vector<json> lines = Lines(outcome);
    EXPECT_THAT(Calls(lines),
                testing::ElementsAre("SetProgress", "SetSampleRate", "SetDuration", "SetBitDepth",
                                     "SetFormatDescription", "SetVersionDependentValue",
                                     "SetProgress", "GetFile", "SetPath", "SetProgress", ""));
    EXPECT_EQ(lines[1],
              json::parse(R"({"seq": 2, "object": "IEditSession#1", "call": "SetSampleRate",
                                        "args": [44100]})"));
    EXPECT_EQ(lines[7], json::parse(R"({"seq": 8, "object": "IEditSession#1", "call": "GetFile",
                                        "args": [3], "returns": "IEditFile#2"})"));
    EXPECT_EQ(lines[8], json::parse(R"({"seq": 9, "object": "IEditFile#2", "call": "SetPath",
                                        "args": ["/a"]})"));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(TraceTest, EndsEachFileWithTheResultAndRestartsTheCount) {
    folder_.Write("a.orvo", "<orvo/>");
    folder_.Write("b.orvo", "<foo/>");
    const Outcome outcome = RunTool({"trace", "a.orvo", "b.orvo", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.output,
              "{\"seq\": 1, \"object\": \"IEditSession#1\", \"call\": \"SetProgress\", \"args\": "
              "[0, 7, 0, 0]}\n"
              "{\"file\": \"a.orvo\", \"result\": 0}\n"
              "{\"seq\": 1, \"object\": \"IEditSession#1\", \"call\": \"SetProgress\", \"args\": "
              "[0, 7, 0, 0]}\n"
              "{\"file\": \"b.orvo\", \"result\": -4}\n"
              "{\"seq\": 1, \"object\": \"IEditSession#1\", \"call\": \"SetProgress\", \"args\": "
              "[0, 7, 0, 0]}\n"
              "{\"file\": \"a.orvo\", \"result\": 0}\n");
    EXPECT_THAT(outcome.errors, HasSubstr("b.orvo:1:1: the root element is <foo>"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(TraceTest, AFileGivesTheSameCallsAfterOneThatEndsInsideAnUnknownElement) {
    folder_.Write("b.orvo", kSmallSession);
    const std::string alone = RunTool({"trace", "b.orvo"}, folder_).output;
    for (const char* const bad : {"<orvo><session sampleRate='8000'><zz><yy><x></session>",
                                  "<orvo><session><a><b></orvo>", "<orvo><orvo/></orvo>"}) {
        folder_.Write("bad.orvo", bad);
        EXPECT_THAT(RunTool({"trace", "bad.orvo", "b.orvo"}, folder_).output, EndsWith(alone));
    }
}

TEST_F(TraceTest, TheResultNamesAFileWhateverItIsCalled) {
    folder_.Write("a\"\xFF.orvo", "<orvo/>");
    const std::vector<json> lines = Lines(RunTool({"trace", "a\"\xFF.orvo"}, folder_));
    EXPECT_EQ(lines.back().at("file"), "a\"\uFFFD.orvo");
}

TEST_F(TraceTest, ARefusalIsALine) {
    folder_.Write("a.orvo", "<!DOCTYPE orvo><orvo/>");
    EXPECT_EQ(RunTool({"trace", "a.orvo"}, folder_).errors,
              "orvo: a.orvo:1:1: refused: a session has no document type declaration: remove it to "
              "read the file\n");
}

TEST_F(TraceTest, AMissingFileIsAReadThatFails) {
    const Outcome outcome = RunTool({"trace", "none.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("{\"file\": \"none.orvo\", \"result\": -4}\n"));
    EXPECT_EQ(outcome.errors, "orvo: none.orvo: no such file: check the path\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(TraceTest, ANullOperationReturnsNullEachTime) {
    folder_.Write("a.orvo", kSmallSession);
    const std::vector<json> lines =
        Lines(RunTool({"trace", "--null", "IEditSession.GetFile", "a.orvo"}, folder_));
    int nulls = 0;
    for (const json& line : lines) {
        nulls += line.value("call", "") == "GetFile" && line.at("returns").is_null() ? 1 : 0;
    }
    EXPECT_EQ(nulls, 2);
    EXPECT_THAT(Calls(lines), Not(Contains("SetPath")));
}

TEST_F(TraceTest, AnUnknownNullOperationIsAUsageErrorThatListsNearOnes) {
    const Outcome outcome =
        RunTool({"trace", "--null", "IEditSession.GetFiles", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("IEditSession.GetFile"));
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(TraceTest, AnUnknownNullOperationUnlikeAnyOtherIsAUsageErrorWithoutAdvice) {
    const Outcome outcome = RunTool({"trace", "--null", "Zanzibar", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.errors,
                HasSubstr("no operation of a read called \"Zanzibar\" returns an object"));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("did you mean")));
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(TraceTest, AnOperationThatReturnsNothingCannotReturnNull) {
    const Outcome outcome =
        RunTool({"trace", "--null", "IEditSession.SetSampleRate", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(TraceTest, AFeatureIsSwitchedOnOrOffOnly) {
    EXPECT_EQ(RunTool({"trace", "--feature", "Tembra.InstrumentTracks=maybe", "a.orvo"}, folder_)
                  .exitCode,
              2);
    EXPECT_EQ(RunTool({"trace", "--feature", "=on", "a.orvo"}, folder_).exitCode, 2);
    EXPECT_EQ(
        RunTool({"trace", "--feature", "Tembra.InstrumentTracks", "a.orvo"}, folder_).exitCode, 2);
    folder_.Write("a.orvo", "<orvo/>");
    for (const char* const feature :
         {"Tembra.InstrumentTracks=off", "Tembra.InstrumentTracks=on"}) {
        EXPECT_EQ(RunTool({"trace", "--feature", feature, "a.orvo"}, folder_).exitCode, 0);
    }
}

TEST_F(TraceTest, AFeatureThatIsNotSwitchedIsNamedOnce) {
    EXPECT_EQ(RunTool({"trace", "--feature", "foo", "a.orvo"}, folder_).errors,
              "orvo: --feature: \"foo\" is not NAME=on or NAME=off: try \"orvo trace --help\"\n");
}

TEST_F(TraceTest, OptionsTakeOneValueSoThatFilesMayFollow) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome = RunTool({"trace", "--null", "IEditSession.GetFile", "--null",
                                     "IEditSession.GetLogTarget", "a.orvo"},
                                    folder_);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
}

TEST_F(TraceTest, MessagesOfTheParserGoToTheLogTarget) {
    folder_.Write("a.orvo", "<orvo>\n<files>\n</orvo>");
    EXPECT_THAT(Calls(Lines(RunTool({"trace", "a.orvo"}, folder_))), Contains("LogMessage"));
    const std::vector<json> without =
        Lines(RunTool({"trace", "--no-log-target", "a.orvo"}, folder_));
    EXPECT_THAT(Calls(without), Contains("GetLogTarget"));
    EXPECT_THAT(Calls(without), Not(Contains("LogMessage")));
    EXPECT_EQ(without.back(), json::parse(R"({"file": "a.orvo", "result": -4})"));
}

TEST_F(TraceTest, ReferencesBalance) {
    folder_.Write("a.orvo", kSmallSession);
    EXPECT_THAT(Calls(Lines(RunTool({"trace", "a.orvo"}, folder_))), Not(Contains("AddReference")));
    std::map<std::string, int> balance;
    for (const json& line : Lines(RunTool({"trace", "--references", "a.orvo"}, folder_))) {
        const std::string call = line.value("call", "");
        const std::string object = line.value("object", "");
        balance[object] += call == "AddReference" ? 1 : call == "Release" ? -1 : 0;
    }
    EXPECT_THAT(balance, testing::Contains(testing::Key("IEditFile#2")));
    EXPECT_THAT(balance, testing::Each(testing::Pair(testing::_, 0)));
}

TEST_F(TraceTest, ShowsNoProgressIfTheCallsGoToATerminal) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome =
        test::Run({.arguments = {"sh", "-c", "exec " + ToolPath() + " trace a.orvo >&2"},
                   .folder = folder_.Path().string(),
                   .terminalErrors = true});
    EXPECT_THAT(outcome.errors, HasSubstr("{\"file\": \"a.orvo\", \"result\": 0}"));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(TraceTest, ReadsStandardInput) {
    const Outcome outcome = RunTool({"trace", "-"}, folder_, "<orvo/>");
    EXPECT_THAT(outcome.output, HasSubstr("{\"file\": \"standard input\", \"result\": 0}\n"));
}

TEST_F(TraceTest, ABrokenPipeLeavesNoCopyOfStandardInput) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "8", "a.orvo"}, folder_).exitCode, 0);
    const Outcome outcome =
        test::Run({.arguments = {"sh", "-c", ToolPath() + " trace - <a.orvo | head -n 1"},
                   .folder = folder_.Path().string()});
    EXPECT_THAT(outcome.output, HasSubstr("\"seq\": 1,"));
    std::filesystem::remove(folder_ / "a.orvo");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

}  // namespace
