#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "tests/cli/Tool.h"
#include "tests/support/TemporaryFolder.h"

using test::Outcome;
using test::RunTool;
using testing::HasSubstr;

namespace {

class MergeTest : public test::ToolTest {
protected:
    MergeTest() {
        base_.files = {{.id = 1, .path = "/nowhere/line.wav"}};
        orvo::AudioTrack& track = base_.audioTracks.emplace_back();
        track.id = 2;
        track.name = "Bass";
        track.clips = {{.id = 3, .fileId = 1, .duration = 48000, .name = "Line"}};
        ours_ = theirs_ = base_;
        ours_.audioTracks[0].clips[0].name = "Riff";
        theirs_.audioTracks[0].name = "Low";
    }

    Outcome Merge(std::vector<std::string> options = {}) const {
        folder_.Write("base.json", orvo::ToJson(base_));
        folder_.Write("ours.json", orvo::ToJson(ours_));
        folder_.Write("theirs.json", orvo::ToJson(theirs_));
        options.insert(options.begin(),
                       {"merge", "base.json", "ours.json", "theirs.json", "-o", "out.json"});
        return RunTool(options, folder_);
    }

    orvo::Session Merged() const {
        return orvo::FromJson(test::ReadFile(folder_ / "out.json")).session;
    }

    orvo::Session base_;
    orvo::Session ours_;
    orvo::Session theirs_;
};

TEST_F(MergeTest, WritesBothChanges) {
    const Outcome outcome = Merge();
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(Merged().audioTracks[0].name, "Low");
    EXPECT_EQ(Merged().audioTracks[0].clips[0].name, "Riff");
}

TEST_F(MergeTest, NamesAConflictAndWritesNothing) {
    theirs_.audioTracks[0].clips[0].name = "Hook";
    const Outcome outcome = Merge();
    EXPECT_EQ(outcome.errors,
              "orvo: out.json: conflict: ours: clip \"Line\" on track \"Low\" renamed to \"Riff\"; "
              "theirs: clip \"Line\" on track \"Low\" renamed to \"Hook\"\n"
              "orvo: out.json: not merged: 1 conflict: nothing was written; --ours or --theirs "
              "decides\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("out.json"));
}

TEST_F(MergeTest, LetsTheUserDecide) {
    theirs_.audioTracks[0].clips[0].name = "Hook";
    EXPECT_EQ(Merge({"--theirs"}).exitCode, 0);
    EXPECT_EQ(Merged().audioTracks[0].clips[0].name, "Hook");
    const Outcome outcome = Merge({"--ours"});
    EXPECT_THAT(outcome.errors, HasSubstr("out.json: conflict: ours: clip \"Line\""));
    EXPECT_EQ(Merged().audioTracks[0].clips[0].name, "Riff");
    EXPECT_EQ(Merge({"--ours", "--theirs"}).exitCode, 2);
}

TEST_F(MergeTest, SaysThatTheCursorStays) {
    ours_.ctiPosition = 1;
    theirs_.ctiPosition = 2;
    const Outcome outcome = Merge();
    EXPECT_EQ(outcome.errors,
              "orvo: out.json: both sides moved the cursor, the selection or the view: it stays as "
              "in the base\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(MergeTest, RefusesToLoseWhatASessionCannotHold) {
    folder_.Write("a.orvo", "<orvo><session sampleRate=\"44100\"/><unknown/></orvo>");
    const std::vector<std::string> merge = {"merge", "a.orvo", "a.orvo", "a.orvo", "-o", "b.orvo"};
    const Outcome outcome = RunTool(merge, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("a.orvo:1:36: cannot be carried over"));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(MergeTest, ResolvesRelativePathsFromTheStatedPlace) {
    std::filesystem::create_directory(folder_ / "songs");
    folder_.Write("songs/here.wav", "RIFF");
    folder_.Write(".ours", R"(<orvo><session sampleRate="44100"/><files>)"
                           R"(<file id="1" absolutePath="/gone/here.wav" relativePath="here.wav"/>)"
                           "</files></orvo>");
    const Outcome outcome = RunTool(
        {"merge", ".ours", ".ours", ".ours", "-o", ".ours", "--at", "songs/song.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(test::ReadFile(folder_ / ".ours"), HasSubstr(R"(relativePath="here.wav")"));
}

TEST_F(MergeTest, HasAnExitStatusOfItsOwnForTrouble) {
    const Outcome outcome = RunTool({"merge", "a", "b", "c", "-o", "d"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: a: no such file: check the path\n"));
    EXPECT_EQ(outcome.exitCode, 2);
    folder_.Write("ours.json", "{");
    EXPECT_EQ(
        RunTool({"merge", "ours.json", "ours.json", "ours.json", "-o", "d"}, folder_).exitCode, 2);
}

}  // namespace
