#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "tests/cli/Tool.h"

using test::IdlePluginPath;
using test::Outcome;
using test::ReadFile;
using test::RunTool;
using test::ToolPath;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char* kNotConverted =
    "not converted: nothing was written, because of the problems above; --lossy converts anyway\n";

/// How `orvo convert` treats content that the other file cannot hold.
class LossesTest : public test::ToolTest {};

TEST_F(LossesTest, ContentThatWouldBeLostIsNamedAndNothingIsWritten) {
    folder_.Write(
        "a.orvo",
        "<orvo>\n <session>\n  <glow><beam/></glow>\n </session>\n <workspaceSettings/>\n</orvo>");
    folder_.Write("b.orvo", "old");
    for (const char* const out : {"b.orvo", "b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_EQ(
            outcome.errors,
            std::string(
                "orvo: a.orvo:3:3: cannot be carried over: <glow> in <session> with 1 element in "
                "it\norvo: a.orvo:5:2: cannot be carried over: <workspaceSettings> in <orvo>\n"
                "orvo: a.orvo: ") +
                kNotConverted);
        EXPECT_EQ(outcome.exitCode, 1);
    }
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), "old");
    EXPECT_FALSE(Exists("b.json"));
}

TEST_F(LossesTest, LossyListsTheLossesAndConvertsAnyway) {
    folder_.Write("a.orvo", "<orvo><glow/><session sampleRate='7'/></orvo>");
    const Outcome outcome = RunTool({"convert", "--lossy", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "orvo: a.orvo:1:7: cannot be carried over: <glow> in <orvo>\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "b.orvo"), HasSubstr("sampleRate=\"7\""));
}

TEST_F(LossesTest, ManyLossesOfASessionFileAreListedInPartAndCounted) {
    std::string document = "<orvo>";
    for (int i = 0; i < 25; ++i) {
        document += "<a/>";
    }
    folder_.Write("a.orvo", document + "</orvo>");
    EXPECT_THAT(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).errors,
                HasSubstr("orvo: a.orvo: and 5 more: --all lists all of them\n"));
    const std::string all = RunTool({"convert", "--all", "a.orvo", "b.orvo"}, folder_).errors;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 26);
    EXPECT_THAT(all, HasSubstr("orvo: a.orvo:1:103: cannot be carried over: <a> in <orvo>\n"));
}

TEST_F(LossesTest, ManyLossesOfJsonAreListedInPartAndCounted) {
    std::string tracks;
    for (int id = 0; id < 30; ++id) {
        tracks += R"({"kind": "bus", "name": " ", "id": )" + std::to_string(id) + "},";
    }
    tracks.pop_back();
    folder_.Write("a.json", R"({"audioTracks": [)" + tracks + "]}");
    const std::string some = RunTool({"convert", "--lossy", "a.json", "a.orvo"}, folder_).errors;
    EXPECT_EQ(std::count(some.begin(), some.end(), '\n'), 21);
    EXPECT_THAT(some, EndsWith("orvo: a.json: and 10 more: --all lists all of them\n"));
    const std::string all =
        RunTool({"convert", "--lossy", "--all", "a.json", "a.orvo"}, folder_).errors;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 30);
    EXPECT_THAT(all, EndsWith("/audioTracks/29/name: \" \" became \"\"\n"));
}

TEST_F(LossesTest, WhatASessionFileCannotHoldIsNamedAndNothingIsWritten) {
    folder_.Write("a.json", R"({"audioTracks": [{"id": 1, "name": "  lead  ", "kind": "bus"}],
                                "videoTracks": [{"id": 2, "index": 7}]})");
    folder_.Write("a.orvo", "old");
    const std::string losses =
        "orvo: a.json: cannot be carried over: /videoTracks/0/index: 7 became 0\n"
        "orvo: a.json: cannot be carried over: /audioTracks/0/name: \"  lead  \" became \"lead\"\n";
    for (const char* const out : {"a.orvo", "-"}) {
        const Outcome refused = RunTool({"convert", "a.json", out, "--to", "orvo"}, folder_);
        EXPECT_EQ(refused.errors, losses + "orvo: a.json: " + kNotConverted);
        EXPECT_EQ(refused.output, "");
        EXPECT_EQ(refused.exitCode, 1);
    }
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), "old");

    const Outcome lossy = RunTool({"convert", "--lossy", "a.json", "a.orvo"}, folder_);
    EXPECT_EQ(lossy.errors, losses);
    EXPECT_EQ(lossy.exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "a.orvo"), HasSubstr("<name>  lead  </name>"));
    const Outcome stream = RunTool({"convert", "--lossy", "a.json", "-", "--to", "orvo"}, folder_);
    EXPECT_EQ(stream.errors, losses);
    EXPECT_EQ(stream.output, ReadFile(folder_ / "a.orvo"));
}

TEST_F(LossesTest, ThePositionThatAHostGetsOfVersion40IsLostThroughJsonToo) {
    for (const std::string position : {"5", "0"}) {
        folder_.Write("a.orvo",
                      "<orvo><session appVersion='4.0'><sessionState ctiPosition='" + position +
                          "'><selectionState selectionStart='9'/></sessionState></session></orvo>");
        ASSERT_EQ(RunTool({"convert", "a.orvo", "a.json"}, folder_).errors, "");
        const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
        EXPECT_EQ(outcome.errors, "orvo: a.json: cannot be carried over: /versionDependentValue: " +
                                      position + " became 9\norvo: a.json: " + kNotConverted);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_FALSE(Exists("b.orvo"));
    }
}

TEST_F(LossesTest, APositionThatEveryFileComputesIsNotALoss) {
    for (const char* const version : {"0.1.0", "4.0.1", "14.0"}) {
        for (const char* const value : {"0", "5", "9", "7"}) {
            folder_.Write("a.json", R"({"ctiPosition": 5, "selectionState": {"selectionStart": 9},
                                        "formatDescription": "Vantor Tembra )" +
                                        std::string(version) +
                                        R"( Multitrack Session", "versionDependentValue": )" +
                                        value + "}");
            EXPECT_EQ(RunTool({"convert", "a.json", "a.orvo"}, folder_).errors, "") << value;
        }
    }
}

TEST_F(LossesTest, LossesThatOccurOnlyOnSavingAreListedAndNothingIsWritten) {
    folder_.Write("a.orvo",
                  "<orvo><session><tracks><videoTrack id='1' index='3'/><busTrack id='0'/>"
                  "<busTrack id='2'><trackAudioParameters><trackOutput type='trackID' "
                  "outputID='0'/></trackAudioParameters></busTrack></tracks></session></orvo>");
    const Outcome outcome = RunTool({"convert", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(
        outcome.errors,
        std::string("orvo: a.orvo: cannot be carried over: /videoTracks/0/index: 3 became 0\n"
                    "orvo: a.orvo: cannot be carried over: /audioTracks/1/outputTrackID: 0 became "
                    "-1\norvo: a.orvo: ") +
            kNotConverted);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(LossesTest, ACharacterThatASessionFileCannotHoldIsNamedOnce) {
    folder_.Write("a.json",
                  R"({"files": [{"id": 1, "path": "/a\ud800b", "recoveryID": "\ud800"}]})");
    const Outcome outcome = RunTool({"convert", "--lossy", "a.json", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: a.json: cannot be carried over: /files/0/path: \"/a\\ud800b\" became "
              "\"/a\uFFFDb\"\n"
              "orvo: a.json: cannot be carried over: /files/0/recoveryID: \"\\ud800\" became "
              "\"\uFFFD\"\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(LossesTest, ACharacterThatWasReplacedAndIsFoundAgainIsStillALoss) {
    // The path comes back unchanged, because the relative one leads to the file.
    const std::string folder = "odd\xff";
    std::filesystem::create_directory(folder_ / folder);
    folder_.Write(folder + "/here.wav", "RIFF");
    folder_.Write(folder + "/a.orvo",
                  "<orvo><files><file id='1' relativePath='here.wav'/></files></orvo>");
    const Outcome outcome = RunTool({"convert", folder + "/a.orvo", folder + "/b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: odd\\xff/a.orvo: cannot be carried over: characters that XML cannot carry "
              "were replaced by U+FFFD\norvo: odd\\xff/a.orvo: " +
                  std::string(kNotConverted));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(LossesTest, APlugInThatSavesNothingIsAFailure) {
    folder_.Write("a.json", "{}");
    folder_.Write("a.orvo", "old");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "convert", "a.json", "a.orvo"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"ORVO_PLUGIN", IdlePluginPath()}}});
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: was not saved: the temporary file cannot be read back\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), "old");
}

TEST_F(LossesTest, ASavedFileThatCannotBeReadBackIsNotWritten) {
    folder_.Write("a.json", "{}");
    folder_.Write("a.orvo", "old");
    const Outcome outcome = test::Run(
        {.arguments = {ToolPath(), "convert", "--lossy", "a.json", "a.orvo"},
         .folder = folder_.Path().string(),
         .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_REFUSES", "ReadSession"}}});
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: was not saved: the plug-in cannot read back what it wrote\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(ReadFile(folder_ / "a.orvo"), "old");
}

TEST_F(LossesTest, AReadThatEndsInsideAnUnknownElementDoesNotAffectTheComparison) {
    folder_.Write("a.orvo", "<orvo><session sampleRate='8000'/><orvo/></orvo>");
    const Outcome outcome = RunTool({"convert", "--lossy", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "orvo: a.orvo:1:35: cannot be carried over: <orvo> in <orvo>\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(LossesTest, ValuesThatAReaderInterpretsDifferentlyAreListed) {
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

TEST_F(LossesTest, NothingIsListedIfASessionFileHoldsEverything) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "12", "a.orvo"}, folder_).exitCode, 0);
    ASSERT_EQ(RunTool({"convert", "a.orvo", "a.json"}, folder_).exitCode, 0);
    const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(ReadFile(folder_ / "b.orvo"), ReadFile(folder_ / "a.orvo"));
}

TEST_F(LossesTest, AListThatIsTooLongForASessionFileIsNamedWithItsPlace) {
    const auto refusal = [&](const std::string& track) {
        folder_.Write("a.json", R"({"audioTracks": [{"id": 1, )" + track + "}]}");
        const Outcome outcome = RunTool({"convert", "a.json", "a.orvo"}, folder_);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_FALSE(Exists("a.orvo"));
        return outcome.errors;
    };
    EXPECT_EQ(refusal(R"("trackFader": {"parameters": {"4294967295": {"parameterValue": 1}}})"),
              "orvo: a.orvo: was not saved: the lists of the session have more than 16777216 "
              "entries\norvo: a.json: /audioTracks/0/trackFader/parameters/4294967295: this makes "
              "4294967296 entries, but a session file has room for 16777216: use lower numbers, or "
              "fewer of them\n");
    EXPECT_THAT(
        refusal(R"("audioClips": [{}, {"channelMap": {"0": 1, "1024": 0}}])"),
        EndsWith("/audioTracks/0/audioClips/1/channelMap/1024: this makes 1025 channels, but a "
                 "session file has room for 1024: use lower numbers, or fewer of them\n"));
    std::string routes = "{}";
    for (int i = 0; i < 1024; ++i) {
        routes += ",{}";
    }
    EXPECT_THAT(refusal(R"("effectsRack": {"slots": [{"component": {}, "inputChannels": [)" +
                        routes + "]}]}"),
                HasSubstr("/audioTracks/0/effectsRack/slots/0/inputChannels: this makes 1025 "));
}

TEST_F(LossesTest, NoListIsBlamedForASaveThatFailsForAnotherReason) {
    folder_.Write("a.json", R"({"audioTracks": [{"audioClips": [{"channelMap": {"1023": 0}}]}]})");
    EXPECT_THAT(RunTool({"convert", "a.json", std::string(256, 'n') + ".orvo"}, folder_).errors,
                Not(HasSubstr("a.json")));
}

TEST_F(LossesTest, AnOmittedChannelIsNotALossIfItFeedsItself) {
    folder_.Write("a.orvo",
                  "<orvo><session><tracks><audioTrack id='1'><audioClip id='2'><channelMap>"
                  "<channel index='1' sourceIndex='0'/></channelMap></audioClip></audioTrack>"
                  "</tracks></session></orvo>");
    EXPECT_EQ(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).errors, "");
    EXPECT_THAT(ReadFile(folder_ / "b.orvo"),
                AllOf(HasSubstr(R"(<channel index="0" sourceIndex="0"/>)"),
                      HasSubstr(R"(<channel index="1" sourceIndex="0"/>)")));
}

TEST_F(LossesTest, ALongValueIsCutInTheMiddleWithoutAll) {
    folder_.Write("a.orvo",
                  "<orvo><files><file id='1' mediaHandler='/a/folder/with/a/long/name/and/media/"
                  "one.wav'/></files></orvo>");
    EXPECT_THAT(RunTool({"convert", "a.orvo", "b.orvo"}, folder_).errors,
                HasSubstr("the value \"/a/folder/.../a/long/name/and/media/one.wav\" of"));
    EXPECT_THAT(RunTool({"convert", "--all", "a.orvo", "b.orvo"}, folder_).errors,
                HasSubstr("\"/a/folder/with/a/long/name/and/media/one.wav\" of"));
}

TEST_F(LossesTest, RelativePathsCountFromTheRealFolderOfTheNewFile) {
    const auto& top = folder_.Path();
    std::filesystem::create_directories(top / "far/away");
    folder_.Write("far/away/old.orvo", "old");
    std::filesystem::create_symlink("far/away/old.orvo", top / "link.orvo");
    std::filesystem::create_symlink("far/away/none.orvo", top / "dangling.orvo");
    std::filesystem::create_symlink(top / "link.orvo", top / "far/twice.orvo");
    std::filesystem::create_directory_symlink("far/away", top / "folder");
    folder_.Write("a.orvo", "<orvo><files><file id='1' absolutePath='" +
                                (top / "media/a.wav").string() +
                                "' relativePath='media/a.wav'/></files></orvo>");
    for (const char* const name :
         {"link.orvo", "dangling.orvo", "far/twice.orvo", "folder/new.orvo"}) {
        EXPECT_EQ(RunTool({"convert", "a.orvo", name}, folder_).errors, "") << name;
        EXPECT_THAT(ReadFile(top / name), HasSubstr("relativePath=\"../../media/a.wav\"")) << name;
        std::filesystem::remove(top / "far/away/old.orvo");
    }
}

TEST_F(LossesTest, TheFileThatIsReplacedKeepsItsPermissionsAndTheLinkToIt) {
    folder_.Write("a.json", R"({"sampleRate": 7})");
    folder_.Write("real.orvo", "old");
    ASSERT_EQ(::chmod((folder_ / "real.orvo").c_str(), 0640), 0);
    std::filesystem::create_symlink("real.orvo", folder_ / "link.orvo");
    ASSERT_EQ(RunTool({"convert", "a.json", "link.orvo"}, folder_).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_ / "link.orvo"));
    EXPECT_THAT(ReadFile(folder_ / "real.orvo"), HasSubstr("sampleRate=\"7\""));
    EXPECT_EQ(std::filesystem::status(folder_ / "real.orvo").permissions(),
              std::filesystem::perms(0640));
}

}  // namespace
