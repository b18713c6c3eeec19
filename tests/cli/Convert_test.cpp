#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

using nlohmann::json;
using test::IdlePluginPath;
using test::kSmallSession;
using test::Outcome;
using test::ReadFile;
using test::RunTool;
using test::RunToolUnprivileged;
using test::ToolPath;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ConvertTest : public testing::Test {
protected:
    bool Exists(const char* name) const { return std::filesystem::exists(folder_ / name); }

    test::TemporaryFolder folder_;
};

TEST_F(ConvertTest, WritesTheWholeSessionAsJson) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"convert", "a.orvo", "a.json"}, folder_);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(outcome.output + outcome.errors, "");
    const json session = json::parse(ReadFile(folder_ / "a.json"));
    EXPECT_EQ(session.at("sampleRate"), 48000);
    EXPECT_EQ(session.at("files").size(), 2u);
}

TEST_F(ConvertTest, WritesTheSameBytesForTheSameSession) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    ASSERT_EQ(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).exitCode, 0);
    ASSERT_EQ(RunTool({"convert", "b.orvo", "c.orvo"}, folder_).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), ReadFile(folder_ / "c.orvo"));
}

TEST_F(ConvertTest, GoesToJsonAndBackWithoutAChange) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    ASSERT_EQ(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).exitCode, 0);
    ASSERT_EQ(RunTool({"convert", "b.orvo", "b.json"}, folder_).exitCode, 0);
    ASSERT_EQ(RunTool({"convert", "b.json", "c.orvo"}, folder_).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), ReadFile(folder_ / "c.orvo"));
}

TEST_F(ConvertTest, StreamsNeedTheirKindAndThenWork) {
    folder_.Write("here.wav", "RIFF");
    EXPECT_EQ(RunTool({"convert", "-", "-"}, folder_, kSmallSession).exitCode, 2);
    const Outcome toJson =
        RunTool({"convert", "--from", "orvo", "--to", "json", "-", "-"}, folder_, kSmallSession);
    EXPECT_EQ(toJson.exitCode, 0) << toJson.errors;
    EXPECT_EQ(json::parse(toJson.output).at("bitDepth"), 24);
    const Outcome back =
        RunTool({"convert", "--from", "json", "--to", "orvo", "-", "-"}, folder_, toJson.output);
    EXPECT_EQ(back.exitCode, 0) << back.errors;
    EXPECT_THAT(back.output, HasSubstr("bitDepth=\"24\""));
    std::filesystem::remove(folder_ / "here.wav");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(ConvertTest, ASignalLeavesNothingOfWhatCameFromStandardInput) {
    const Outcome outcome =
        test::Run({.arguments = {ToolPath(), "convert", "--from", "orvo", "--to", "json", "-", "-"},
                   .input = kSmallSession,
                   .folder = folder_.Path().string(),
                   .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_ENDS", "yes"}}});
    EXPECT_EQ(outcome.exitCode, -1);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(ConvertTest, NothingIsLeftWhereNobodyTakesTheOutput) {
    folder_.Write("a.json",
                  R"({"audioTracks":[{"id":1,"name":")" + std::string(200'000, 'n') + R"("}]})");
    const Outcome outcome = test::Run(
        {.arguments = {"sh", "-c", ToolPath() + " convert a.json - --to orvo | head -c 10 | wc -c"},
         .folder = folder_.Path().string()});
    EXPECT_THAT(outcome.output, HasSubstr("10"));
    std::filesystem::remove(folder_ / "a.json");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(ConvertTest, AnUnknownExtensionIsAUsageErrorThatSaysWhatToSay) {
    const Outcome outcome = RunTool({"convert", "a.orvo", "a.txt"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("--to"));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(RunTool({"convert", "--from", "tape", "a", "a.json"}, folder_).exitCode, 2);
}

TEST_F(ConvertTest, AKindIsOrvoOrJsonAndNothingElse) {
    folder_.Write("a.json", "{}");
    for (const char* const option : {"--from", "--to"}) {
        for (const std::string kind : {"1", "JSON", "tape", ""}) {
            const Outcome outcome = RunTool({"convert", option, kind, "a.json", "b.json"}, folder_);
            EXPECT_EQ(outcome.errors, "orvo: " + std::string(option) + ": \"" + kind +
                                          "\" is no kind; say orvo or json: try \"orvo convert "
                                          "--help\"\n");
            EXPECT_EQ(outcome.exitCode, 2);
        }
    }
    EXPECT_FALSE(Exists("b.json"));
}

TEST_F(ConvertTest, ANameThatNoFileCanHaveIsAUsageErrorThatSaysWhatToDo) {
    folder_.Write("a.json", "{}");
    for (const auto& [name, advice] :
         {std::pair("", "name a file"), {"b.orvo/", "name a file in it"}}) {
        const Outcome outcome = RunTool({"convert", "a.json", name, "--to", "orvo"}, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr(advice));
        EXPECT_EQ(outcome.exitCode, 2);
    }
    EXPECT_EQ(RunTool({"generate", "b.orvo/"}, folder_).exitCode, 2);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(ConvertTest, AFileThatCannotBeLookedOverIsNotConverted) {
    folder_.Write("a.orvo", "<orvo><session/>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "convert", "a.orvo", "a.json"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"ORVO_PLUGIN", IdlePluginPath()}}});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: a.orvo:1:"));
    EXPECT_THAT(outcome.errors, HasSubstr("not converted"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, AFileThatIsReplacedWhileItIsReadIsNotConverted) {
    folder_.Write("a.orvo", "<orvo><session/></orvo>");
    folder_.Write("next.orvo", "<orvo><session/></orvo>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "convert", "a.orvo", "a.json"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"ORVO_PLUGIN", IdlePluginPath()},
                                                       {"ORVO_MOVES", "next.orvo"},
                                                       {"ORVO_MOVES_TO", "a.orvo"}}});
    EXPECT_THAT(outcome.errors,
                StartsWith("orvo: a.orvo: was changed while it was read: try again\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("not converted"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, AStepBackLeadsWhereTheSystemGoesForReadingAndForLookingOver) {
    std::filesystem::create_directories(folder_ / "project/takes");
    std::filesystem::create_directory_symlink("project/takes", folder_ / "link");
    folder_.Write("project/a.orvo", "<orvo><session sampleRate='44100'/></orvo>");
    folder_.Write("a.orvo", "<orvo><session sampleRate='48000'/><unknown/></orvo>");
    const Outcome outcome = RunTool({"convert", "link/../a.orvo", "b.json"}, folder_);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(json::parse(ReadFile(folder_ / "b.json")).at("sampleRate"), 44100);
}

TEST_F(ConvertTest, AStepBackLeadsWhereTheSystemGoesForWritingToo) {
    std::filesystem::create_directories(folder_ / "project/takes");
    std::filesystem::create_directory_symlink("project/takes", folder_ / "link");
    folder_.Write("a.orvo", "<orvo><session sampleRate='48000'/></orvo>");
    for (const char* const name : {"b.json", "b.orvo"}) {
        folder_.Write(name, "old");
        const std::string out = std::string("link/../") + name;
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_EQ(ReadFile(folder_ / name), "old");
        EXPECT_THAT(ReadFile(folder_ / "project" / name), HasSubstr("48000"));
    }
}

TEST_F(ConvertTest, ContentThatWouldBeLostIsNamedAndNothingIsWritten) {
    folder_.Write(
        "a.orvo",
        "<orvo>\n <session>\n  <glow><beam/></glow>\n </session>\n <workspaceSettings/>\n</orvo>");
    folder_.Write("b.orvo", "old");
    for (const char* const out : {"b.orvo", "b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_EQ(
            outcome.errors,
            "orvo: a.orvo:3:3: cannot be carried over: <glow> in <session> with 1 element in it\n"
            "orvo: a.orvo:5:2: cannot be carried over: <workspaceSettings> in <orvo>\n"
            "orvo: a.orvo: not converted: nothing was written, because of what is named above; "
            "--lossy converts all the same\n");
        EXPECT_EQ(outcome.exitCode, 1);
    }
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), "old");
    EXPECT_FALSE(Exists("b.json"));
}

TEST_F(ConvertTest, LossyNamesWhatIsLostAndConvertsAllTheSame) {
    folder_.Write("a.orvo", "<orvo><glow/><session sampleRate='7'/></orvo>");
    const Outcome outcome = RunTool({"convert", "--lossy", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "orvo: a.orvo:1:7: cannot be carried over: <glow> in <orvo>\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "b.orvo"), HasSubstr("sampleRate=\"7\""));
}

TEST_F(ConvertTest, ManyLossesAreCounted) {
    std::string document = "<orvo>";
    for (int i = 0; i < 25; ++i) {
        document += "<a/>";
    }
    folder_.Write("a.orvo", document + "</orvo>");
    EXPECT_THAT(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).errors,
                HasSubstr("orvo: a.orvo: and 5 more that cannot be carried over\n"));
}

TEST_F(ConvertTest, BadInputLeavesTheOutputAlone) {
    folder_.Write("a.orvo", "<orvo>");
    folder_.Write("a.json", "{\"sampleRate\": }");
    folder_.Write("b.orvo", "old");
    EXPECT_THAT(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).errors,
                StartsWith("orvo: a.orvo:1:"));
    const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
    EXPECT_THAT(outcome.errors, StartsWith("orvo: a.json:1:16: syntax error"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), "old");
}

TEST_F(ConvertTest, AWrongValueInJsonIsNamedWithItsPath) {
    folder_.Write("a.json", "{\"sampleRate\": true}");
    EXPECT_THAT(RunTool({"convert", "a.json", "b.orvo"}, folder_).errors,
                StartsWith("orvo: a.json: /sampleRate: this is true; give a whole number"));
}

TEST_F(ConvertTest, APipeIsNoSourceOfEitherKind) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const char* const kind : {"orvo", "json"}) {
        const Outcome outcome = RunTool({"convert", "--from", kind, "pipe", "b.orvo"}, folder_);
        EXPECT_FALSE(outcome.timedOut);
        EXPECT_THAT(outcome.errors, StartsWith("orvo: pipe: this is a pipe"));
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, AFailedSaveTellsTheReason) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    for (const char* const out : {"nowhere/b.orvo", "nowhere/b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_THAT(outcome.errors, StartsWith(std::string("orvo: ") + out + ": was not saved: "));
        EXPECT_THAT(outcome.errors, HasSubstr((folder_ / out).string()));
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, ARefusalWithoutAReasonIsSaidToBeThePlugins) {
    folder_.Write("a.json", "{}");
    for (const auto& [out, subject] : {std::pair("b.orvo", "b.orvo"), {"-", "standard output"}}) {
        const Outcome outcome = test::Run(
            {.arguments = {ToolPath(), "convert", "a.json", out, "--to", "orvo"},
             .folder = folder_.Path().string(),
             .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_REFUSES", "WriteSession"}}});
        EXPECT_EQ(outcome.errors, std::string("orvo: ") + subject +
                                      ": was not saved: the plug-in refused to write it\n");
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, JsonBecomesJsonWithoutThePlugin) {
    folder_.Write("a.json", R"({"sampleRate": 7})");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "convert", "a.json", "b.json"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"ORVO_PLUGIN", "/nowhere/OrvoNative.so"}}});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(json::parse(ReadFile(folder_ / "b.json")).at("sampleRate"), 7);
}

TEST_F(ConvertTest, AFolderThatMayNotBeWrittenKeepsTheOldFile) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    std::filesystem::create_directory(folder_ / "locked");
    folder_.Write("locked/b.orvo", "old");
    ASSERT_EQ(::chmod((folder_ / "locked").c_str(), 0555), 0);
    const Outcome outcome = RunToolUnprivileged({"convert", "a.orvo", "locked/b.orvo"}, folder_);
    EXPECT_THAT(outcome.errors, StartsWith("orvo: locked/b.orvo: was not saved: "));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "locked/b.orvo"), "old");
    ::chmod((folder_ / "locked").c_str(), 0755);
}

TEST_F(ConvertTest, ACharacterThatASessionFileCannotHoldIsReplacedAndSaidOnce) {
    folder_.Write("a.json",
                  R"({"files": [{"id": 1, "path": "/a\ud800b", "recoveryId": "\ud800"}]})");
    const Outcome outcome = RunTool({"convert", "a.json", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: saved: characters that XML cannot carry were replaced by U+FFFD\n"
              "orvo: a.orvo: saved, but not as it was: /files/0/path: \"/a\\ud800b\" became "
              "\"/a\uFFFDb\"\n"
              "orvo: a.orvo: saved, but not as it was: /files/0/recoveryId: \"\\ud800\" became "
              "\"\uFFFD\"\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(ConvertTest, WhatASessionFileCannotHoldIsNamed) {
    folder_.Write("a.json", R"({"audioTracks": [{"id": 1, "name": "  lead  ", "kind": 2}],
                                "videoTracks": [{"id": 2, "index": 7}]})");
    const Outcome outcome = RunTool({"convert", "a.json", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: saved, but not as it was: /videoTracks/0/index: 7 became 0\n"
              "orvo: a.orvo: saved, but not as it was: /audioTracks/0/name: \"  lead  \" became "
              "\"lead\"\n");
    EXPECT_EQ(outcome.exitCode, 0);
    const Outcome stream = RunTool({"convert", "a.json", "-", "--to", "orvo"}, folder_);
    EXPECT_THAT(stream.errors, HasSubstr("orvo: standard output: saved, but not as it was: "));
    EXPECT_EQ(stream.output, ReadFile(folder_ / "a.orvo"));
}

TEST_F(ConvertTest, WhatOnlySavingLosesOfASessionFileIsNamed) {
    folder_.Write("a.orvo",
                  "<orvo><session><tracks><videoTrack id='1' index='3'/><busTrack id='0'/>"
                  "<busTrack id='2'><trackAudioParameters><trackOutput type='trackID' "
                  "outputID='0'/></trackAudioParameters></busTrack></tracks></session></orvo>");
    const Outcome outcome = RunTool({"convert", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(
        outcome.errors,
        "orvo: b.orvo: saved, but not as it was: /videoTracks/0/index: 3 became 0\n"
        "orvo: b.orvo: saved, but not as it was: /audioTracks/1/outputTrackId: 0 became -1\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(ConvertTest, WhatTheReadEndedInsideOfIsNotMissedInWhatWasSaved) {
    folder_.Write("a.orvo", "<orvo><session sampleRate='8000'/><orvo/></orvo>");
    const Outcome outcome = RunTool({"convert", "--lossy", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "orvo: a.orvo:1:35: cannot be carried over: <orvo> in <orvo>\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(ConvertTest, ValuesThatAReaderTakesOtherwiseAreNamed) {
    folder_.Write("a.orvo",
                  "<orvo><session><metronome soundSet='gong'/><tracks><busTrack id='1' "
                  "select='TRUE'><trackParameters trackHue='red'/></busTrack></tracks>"
                  "</session></orvo>");
    const Outcome outcome = RunTool({"convert", "a.orvo", "b.json"}, folder_);
    EXPECT_THAT(outcome.errors,
                AllOf(HasSubstr("1:16: cannot be carried over: the value \"gong\" of the attribute "
                                "soundSet of <metronome>\n"),
                      HasSubstr("the value \"TRUE\" of the attribute select of <busTrack>\n"),
                      HasSubstr("the value \"red\" of the attribute trackHue")));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "b.json"));
}

TEST_F(ConvertTest, ASavedFileThatCannotBeReadAgainIsAFailure) {
    folder_.Write("a.json", "{}");
    const Outcome outcome = test::Run(
        {.arguments = {ToolPath(), "convert", "a.json", "a.orvo"},
         .folder = folder_.Path().string(),
         .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_REFUSES", "ReadSession"}}});
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: what was saved cannot be read again: keep what it was made of\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(ConvertTest, OfManyThingsThatASessionFileCannotHoldSomeAreNamedAndTheOthersCounted) {
    std::string tracks;
    for (int id = 0; id < 30; ++id) {
        tracks += R"({"kind": 2, "name": " ", "id": )" + std::to_string(id) + "},";
    }
    tracks.pop_back();
    folder_.Write("a.json", R"({"audioTracks": [)" + tracks + "]}");
    const Outcome outcome = RunTool({"convert", "a.json", "a.orvo"}, folder_);
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 21);
    EXPECT_THAT(outcome.errors, EndsWith("orvo: a.orvo: saved, but not as it was: and 10 more\n"));
}

TEST_F(ConvertTest, NothingIsNamedWhereASessionFileHoldsEverything) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "12", "a.orvo"}, folder_).exitCode, 0);
    ASSERT_EQ(RunTool({"convert", "a.orvo", "a.json"}, folder_).exitCode, 0);
    const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), ReadFile(folder_ / "a.orvo"));
}

TEST_F(ConvertTest, MediaAreFoundFromACopyInAnotherFolder) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    std::filesystem::create_directory(folder_ / "deeper");
    ASSERT_EQ(RunTool({"convert", "a.orvo", "deeper/b.orvo"}, folder_).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "deeper/b.orvo"), HasSubstr("relativePath=\"../here.wav\""));
}

}  // namespace
