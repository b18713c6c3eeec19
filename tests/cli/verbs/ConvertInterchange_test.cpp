#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <vector>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using test::ReadFile;
using test::RunTool;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ConvertInterchangeTest : public test::ToolTest {
protected:
    ConvertInterchangeTest() {
        folder_.Write("a.json", R"({"ctiPosition": 7, "audioTracks": [{"id": 1, "name": "Voice",
            "audioClips": [{"id": 2, "name": "=1", "duration": 10}]}]})");
    }
};

TEST_F(ConvertInterchangeTest, SaysWhatIsLostAndConverts) {
    const Outcome outcome = RunTool({"convert", "a.json", "a.csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors,
              "orvo: a.json: /audioTracks/0/audioClips/0/name: approximated: got an apostrophe, so "
              "that no spreadsheet takes it for a formula: =1\n"
              "orvo: a.json: values: 1 approximated, 1 without a place in such a file\n");
    EXPECT_THAT(ReadFile(folder_ / "a.csv"), HasSubstr("audio,Voice,'=1,0,10,"));
}

TEST_F(ConvertInterchangeTest, AlwaysSaysHowMuchIsLost) {
    folder_.Write("a.json", "{}");
    EXPECT_EQ(RunTool({"convert", "a.json", "a.csv"}, folder_).errors,
              "orvo: a.json: nothing lost\n");
}

TEST_F(ConvertInterchangeTest, ReportsToAFile) {
    const Outcome outcome = RunTool({"convert", "a.json", "a.csv", "--report", "a.txt"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.json: values: 1 approximated, 1 without a place in such a file\n");
    EXPECT_THAT(ReadFile(folder_ / "a.txt"), StartsWith("/audioTracks/0/audioClips/0/name: "));
    EXPECT_THAT(ReadFile(folder_ / "a.txt"),
                EndsWith("no place in such a file: 1 positions of the current-time indicator\n"));
}

TEST_F(ConvertInterchangeTest, NeverReplacesTheSessionByAnotherKindOfFile) {
    const std::string before = ReadFile(folder_ / "a.json");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"convert", "a.json", "a.json", "--to", "csv"},
          {"convert", "a.json", "a.csv", "--report", "a.json"}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.errors,
                  "orvo: a.json: the session is there, and a file of another kind would "
                  "replace it: choose another name\n");
        EXPECT_EQ(ReadFile(folder_ / "a.json"), before);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.csv"));
}

TEST_F(ConvertInterchangeTest, NeverReplacesTheOutputByItsReport) {
    const Outcome outcome = RunTool({"convert", "a.json", "a.csv", "--report", "./a.csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("replace it: choose another name"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.csv"));
}

TEST_F(ConvertInterchangeTest, ReportsAsJson) {
    const Outcome outcome = RunTool({"convert", "a.json", "a.csv", "--json"}, folder_);
    const json report = json::parse(outcome.output);
    EXPECT_EQ(report.at("counts"),
              (json{{"lost", 0}, {"approximated", 1}, {"guessed", 0}, {"moved", 0}}));
    EXPECT_EQ(report.at("facts").at(0).at("place"), "/audioTracks/0/audioClips/0/name");
    EXPECT_EQ(report.at("facts").at(0).at("fidelity"), "approximated");
    EXPECT_EQ(report.at("lostByNature").at("positions of the current-time indicator"), 1);
}

TEST_F(ConvertInterchangeTest, WritesNothingIfStrictAndSomethingIsLost) {
    folder_.Write("a.csv", "old");
    const Outcome outcome = RunTool({"convert", "a.json", "a.csv", "--strict"}, folder_);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: a.csv: was not written, because something would "
                                          "be lost: see the report"));
    EXPECT_EQ(ReadFile(folder_ / "a.csv"), "old");
    folder_.Write("a.json", R"({"ctiPosition": 7})");
    EXPECT_EQ(RunTool({"convert", "a.json", "a.csv", "--strict"}, folder_).exitCode, 0);
}

TEST_F(ConvertInterchangeTest, WritesToAStream) {
    const Outcome outcome = RunTool({"convert", "a.json", "-", "--to", "csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, StartsWith("type,track,name,"));
}

TEST_F(ConvertInterchangeTest, ASessionFileThatCannotBeReadIsRefused) {
    folder_.Write("b.orvo", "<orvo>");
    const Outcome outcome = RunTool({"convert", "b.orvo", "b.csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("b.orvo:1:"));
    EXPECT_FALSE(Exists("b.csv"));
}

TEST_F(ConvertInterchangeTest, WhatASessionFileLosesBeforeIsNoReasonToRefuse) {
    folder_.Write("b.orvo", "<orvo><session><odd/></session></orvo>");
    const Outcome outcome = RunTool({"convert", "b.orvo", "b.csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.errors, HasSubstr("<odd>"));
    EXPECT_EQ(RunTool({"convert", "b.orvo", "c.csv", "--strict"}, folder_).exitCode, 1);
    EXPECT_FALSE(Exists("c.csv"));
}

TEST_F(ConvertInterchangeTest, WhatMakesNoSenseIsAUsageError) {
    const std::vector<std::pair<std::vector<std::string>, const char*>> cases = {
        {{"a.csv", "a.orvo"}, "csv files are only written, not read"},
        {{"a.json", "a.orvo", "--strict"}, "are about files of other programs"},
        {{"a.json", "-", "--to", "csv", "--json"}, "would both go to standard output"},
        {{"a.json", "a.bin"},
         "does not end in a known kind; say --to KIND, which is one of orvo, json, dawproject"},
        {{"a.json", "a.csv", "--full"}, "--full is about JSON"},
        {{"a.json", "a.csv", "--to", "wav"}, "csv"},
    };
    for (const auto& [arguments, reason] : cases) {
        std::vector<std::string> all = {"convert"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Outcome outcome = RunTool(all, folder_);
        EXPECT_EQ(outcome.exitCode, 2) << reason;
        EXPECT_THAT(outcome.errors, HasSubstr(reason));
    }
}

TEST_F(ConvertInterchangeTest, AFailedSaveIsReported) {
    const Outcome outcome = RunTool({"convert", "a.json", "no/a.csv"}, folder_);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors, StartsWith("orvo: no/a.csv: "));
}

TEST_F(ConvertInterchangeTest, AFailureSaysOnlyItsReason) {
    folder_.Write("bad.dawproject", "garbage");
    for (const auto& [arguments, errors] :
         {std::pair(std::vector<std::string>{"convert", "no.otio", "b.json"},
                    "orvo: no.otio: no such file: check the path\n"),
          {{"convert", "bad.dawproject", "b.json", "--strict"},
           "orvo: bad.dawproject: is no ZIP archive, or is damaged: Not a zip archive\n"}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_EQ(outcome.errors, errors);
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertInterchangeTest, MediaAreFoundBesideAFileOfTheWorkingFolder) {
    folder_.Write("b.otio", R"({"OTIO_SCHEMA": "Timeline.1", "tracks": {"OTIO_SCHEMA": "Stack.1",
        "children": [{"OTIO_SCHEMA": "Track.1", "kind": "Audio", "children": [
            {"OTIO_SCHEMA": "Clip.1", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
              "start_time": {"OTIO_SCHEMA": "RationalTime.1", "value": 0, "rate": 48000},
              "duration": {"OTIO_SCHEMA": "RationalTime.1", "value": 10, "rate": 48000}},
             "media_reference": {"OTIO_SCHEMA": "ExternalReference.1",
              "target_url": "media/a.wav"}}]}]}})");
    const Outcome outcome = RunTool({"convert", "b.otio", "b.json"}, folder_);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(json::parse(ReadFile(folder_ / "b.json")).at("files").at(0).at("path"),
              (folder_ / "media/a.wav").string());
}

}  // namespace
