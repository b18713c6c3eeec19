#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using test::RunTool;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

class DiffTest : public test::ToolTest {
protected:
    DiffTest() {
        before_.files = {{.id = 1, .path = "/nowhere/line.wav"}};
        orvo::AudioTrack& track = before_.audioTracks.emplace_back();
        track.id = 2;
        track.name = "Bass";
        track.clips = {{.id = 3, .fileId = 1, .duration = 48000, .name = "Line"}};
        after_ = before_;
        after_.audioTracks[0].clips[0].startPoint = 24000;
    }

    /// Writes a.json and b.json.
    void WriteSessions() const {
        folder_.Write("a.json", orvo::ToJson(before_));
        folder_.Write("b.json", orvo::ToJson(after_));
    }

    Outcome Diff(std::vector<std::string> options = {}) const {
        WriteSessions();
        options.insert(options.begin(), {"diff", "a.json", "b.json"});
        return RunTool(options, folder_);
    }

    orvo::Session before_;
    orvo::Session after_;
};

TEST_F(DiffTest, TellsEachChangeOnALine) {
    after_.bitDepth = 24;
    const Outcome outcome = Diff();
    EXPECT_EQ(outcome.output,
              "session: bit depth from 32 to 24\n"
              "clip \"Line\" on track \"Bass\" moved by +0:00:00.500, from 0:00:00.000 to "
              "0:00:00.500\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(DiffTest, PrintsNothingForSessionsThatDifferInIdsOnly) {
    after_ = before_;
    after_.files[0].id = after_.audioTracks[0].clips[0].fileId = 9;
    after_.audioTracks[0].id = 8;
    const Outcome outcome = Diff();
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(DiffTest, ComparesASessionFileWithJson) {
    WriteSessions();
    RunQuietly({"convert", "a.json", "a.orvo"});
    EXPECT_THAT(RunTool({"diff", "--times", "samples", "a.orvo", "b.json"}, folder_).output,
                EndsWith("\nclip \"Line\" on track \"Bass\" moved by +24000, from 0 to 24000\n"));
}

TEST_F(DiffTest, TakesMediaBesideBothSessionsAsTheSame) {
    for (const char* const name : {"one", "two"}) {
        std::filesystem::create_directory(folder_ / name);
        before_.files[0].path = (folder_ / name / "line.wav").string();
        folder_.Write((std::string(name) + "/song.json").c_str(), orvo::ToJson(before_));
    }
    const Outcome outcome = RunTool({"diff", "one/song.json", "two/song.json"}, folder_);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(DiffTest, ReadsStandardInput) {
    WriteSessions();
    const Outcome outcome =
        RunTool({"diff", "--from", "json", "a.json", "-"}, folder_, orvo::ToJson(before_));
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(DiffTest, CountsChanges) {
    after_.audioTracks[0].clips[0].name = "Riff";
    EXPECT_EQ(Diff({"--stat"}).output,
              "clip  moved    1\n"
              "clip  renamed  1\n");
}

TEST_F(DiffTest, GivesAPatchThatTurnsOneSessionIntoTheOther) {
    after_.audioTracks[0].clips.push_back({.id = 4, .fileId = 1, .duration = 10});
    const Outcome outcome = Diff({"--json"});
    const json told = json::parse(outcome.output);
    EXPECT_EQ(told["before"], "a.json");
    EXPECT_EQ(told["after"], "b.json");
    EXPECT_EQ(told["same"], false);
    ASSERT_EQ(told["changes"].size(), 2U);
    EXPECT_EQ(told["changes"][0]["kind"], "added");
    EXPECT_EQ(told["changes"][0]["thing"], "clip");
    EXPECT_EQ(told["changes"][0]["after"], json({"/audioTracks/0/audioClips/1"}));
    const json patched = json::parse(orvo::ToJson(before_)).patch(told["patch"]);
    EXPECT_EQ(orvo::FromJson(patched.dump()).session, after_);
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(DiffTest, SaysAsJsonThatNothingChanged) {
    after_ = before_;
    const Outcome outcome = Diff({"--json"});
    EXPECT_EQ(outcome.output,
              "{\n\"before\": \"a.json\",\n\"after\": \"b.json\",\n\"same\": true,\n"
              "\"changes\": [],\n\"patch\": []\n}\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(DiffTest, MakesNamesPrintable) {
    after_.audioTracks[0].clips[0].name = "a\x1b[31m\n";
    EXPECT_THAT(Diff().output, HasSubstr(R"(renamed to "a\x1b[31m\x0a")"));
}

TEST_F(DiffTest, HasAnExitStatusOfItsOwnForTrouble) {
    WriteSessions();
    folder_.Write("bad.orvo", "<orvo>");
    const Outcome missing = RunTool({"diff", "a.json", "gone.json"}, folder_);
    EXPECT_EQ(missing.errors, "orvo: gone.json: no such file: check the path\n");
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(RunTool({"diff", "bad.orvo", "a.json"}, folder_).exitCode, 2);
    EXPECT_EQ(RunTool({"diff", "-", "-"}, folder_).exitCode, 2);
    const Outcome form = RunTool({"diff", "--times", "days", "a.json", "b.json"}, folder_);
    EXPECT_THAT(form.errors,
                HasSubstr("--times: \"days\" is not one of samples, seconds, timecode, bars"));
    EXPECT_EQ(form.exitCode, 2);
}

}  // namespace
