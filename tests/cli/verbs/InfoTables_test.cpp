#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr const char* kTwoClips = R"(<orvo><session sampleRate="1000"><tracks>
<audioTrack id="1"><trackParameters><name>A, B</name></trackParameters>
<audioClip id="5" name="He said &quot;no&quot;" fileID="9" startPoint="2500" sourceInPoint="0"
 sourceOutPoint="250"/>
<audioClip id="6" name="=SUM(A1)&#9;x" startPoint="0" sourceInPoint="0"
 sourceOutPoint="0"/></audioTrack></tracks></session></orvo>)";

class InfoTables : public test::ToolTest {
protected:
    InfoTables() { folder_.Write("a.orvo", kTwoClips); }

    Outcome Info(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "info");
        return test::RunTool(std::move(arguments), folder_);
    }
};

TEST_F(InfoTables, CsvQuotesWhatWouldBreakALine) {
    const Outcome outcome = Info({"--format", "csv", "--clips", "a.orvo"});
    EXPECT_EQ(outcome.output,
              "session,trackID,track,id,name,start,startSeconds,duration,durationSeconds,fileID,"
              "media,sourceIn,group,notes\r\n"
              "a.orvo,1,\"A, B\",6,=SUM(A1)\tx,0,0,0,0,,,0,,no media\r\n"
              "a.orvo,1,\"A, B\",5,\"He said \"\"no\"\"\",2500,2.5,250,0.25,9,,0,,no media\r\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoTables, TsvEscapesATab) {
    EXPECT_THAT(Info({"--format", "tsv", "--clips", "a.orvo"}).output,
                HasSubstr("\na.orvo\t1\tA, B\t6\t=SUM(A1)\\tx\t0\t"));
}

TEST_F(InfoTables, JsonHasAnObjectForEachRowOfAllFiles) {
    folder_.Write("b.orvo", kTwoClips);
    const Outcome outcome = Info({"--format", "json", "--clips", "a.orvo", "b.orvo"});
    const json rows = json::parse(outcome.output);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[1].at("session"), "a.orvo");
    EXPECT_EQ(rows[1].at("startSeconds"), 2.5);
    EXPECT_EQ(rows[1].at("media"), nullptr);
    EXPECT_EQ(rows[3].at("session"), "b.orvo");
}

TEST_F(InfoTables, NdjsonHasALineForEachRow) {
    const std::string output = Info({"--format", "ndjson", "--tracks", "a.orvo"}).output;
    EXPECT_EQ(json::parse(output).at("name"), "A, B");
    EXPECT_EQ(std::ranges::count(output, '\n'), 1);
}

TEST_F(InfoTables, ATableWithoutRowsStillHasItsHeader) {
    EXPECT_EQ(Info({"--format", "csv", "--sends", "a.orvo"}).output,
              "session,trackID,track,slot,toID,to,component,preFader,level,pan\r\n");
    EXPECT_EQ(json::parse(Info({"--format", "json", "--sends", "a.orvo"}).output), json::array());
}

TEST_F(InfoTables, AFileThatCannotBeReadIsReportedAndTheOthersAreShown) {
    folder_.Write("bad.orvo", "<orvo>");
    const Outcome outcome = Info({"--format", "csv", "--clips", "bad.orvo", "a.orvo"});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: bad.orvo:1:7:"));
    EXPECT_THAT(outcome.output, HasSubstr("a.orvo,1,"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(InfoTables, ATableNeedsExactlyOnePart) {
    const char* const advice =
        "--format shows one table: add one of --tracks, --clips, --media, --effects, --sends, "
        "--automation";
    for (const Outcome& outcome : {Info({"--format", "csv", "a.orvo"}),
                                   Info({"--format", "csv", "--clips", "--tracks", "a.orvo"})}) {
        EXPECT_THAT(outcome.errors, HasSubstr(advice));
        EXPECT_EQ(outcome.exitCode, 2);
    }
}

TEST_F(InfoTables, AnUnknownFormIsAUsageErrorThatListsTheForms) {
    const Outcome outcome = Info({"--format", "xls", "--clips", "a.orvo"});
    EXPECT_THAT(outcome.errors,
                HasSubstr("--format: \"xls\" is not one of csv, tsv, json, ndjson"));
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(InfoTables, APartWithoutATextReportNeedsAForm) {
    const Outcome outcome = Info({"--sends", "a.orvo"});
    EXPECT_THAT(outcome.errors, HasSubstr("--sends is shown as a table only: add --format csv"));
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(InfoTables, ColumnsAreListedWithoutAFile) {
    const Outcome outcome = Info({"--columns"});
    EXPECT_THAT(outcome.output,
                HasSubstr("--clips\n  session          the file as it was named\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n  startSeconds     the same in seconds\n"));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(Info({}).exitCode, 2);
}

}  // namespace
