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

class ConvertTest : public test::ToolTest {
protected:
    /// Converts "a.orvo" to "a.json" with a plug-in that reads nothing.
    Outcome ConvertIdly(std::vector<std::string> options,
                        std::vector<std::pair<std::string, std::string>> environment = {}) const {
        options.insert(options.begin(), {ToolPath(), "convert", "a.orvo", "a.json"});
        environment.emplace_back("ORVO_PLUGIN", IdlePluginPath());
        return test::Run({.arguments = std::move(options),
                          .folder = folder_.Path().string(),
                          .environment = std::move(environment)});
    }
};

TEST_F(ConvertTest, WritesTheWholeSessionAsJson) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"convert", "a.orvo", "a.json"}, folder_);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(outcome.output + outcome.errors, "");
    const json session = json::parse(ReadFile(folder_ / "a.json"));
    EXPECT_EQ(session.at("bitDepth"), 24);
    EXPECT_EQ(session.at("files").size(), 2u);
}

TEST_F(ConvertTest, LeavesOutKeysAtTheirDefaultUnlessFull) {
    folder_.Write("a.orvo", "<orvo><session><tracks><busTrack id='1'/></tracks></session></orvo>");
    ASSERT_EQ(RunTool({"convert", "a.orvo", "a.json"}, folder_).exitCode, 0);
    const json track = json::parse(ReadFile(folder_ / "a.json")).at("audioTracks").at(0);
    EXPECT_EQ(track, (json{{"id", 1}, {"kind", "bus"}}));
    ASSERT_EQ(RunTool({"convert", "--full", "a.json", "full.json"}, folder_).exitCode, 0);
    const json full = json::parse(ReadFile(folder_ / "full.json"));
    EXPECT_EQ(full.at("sampleRate"), 48000);
    EXPECT_EQ(full.at("audioTracks").at(0).at("audioChannelType"), "notSaid");
    ASSERT_EQ(RunTool({"convert", "full.json", "b.json"}, folder_).exitCode, 0);
    EXPECT_EQ(ReadFile(folder_ / "b.json"), ReadFile(folder_ / "a.json"));
}

TEST_F(ConvertTest, FullIsAboutJson) {
    folder_.Write("a.json", "{}");
    const Outcome outcome = RunTool({"convert", "--full", "a.json", "b.orvo"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: --full is about JSON, and OUT is of another kind; leave it out: try \"orvo "
              "convert --help\"\n");
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_FALSE(Exists("b.orvo"));
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

TEST_F(ConvertTest, AnUnknownExtensionIsAUsageErrorWithAdvice) {
    const Outcome outcome = RunTool({"convert", "a.orvo", "a.txt"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("--to"));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(RunTool({"convert", "--from", "tape", "a", "a.json"}, folder_).exitCode, 2);
}

TEST_F(ConvertTest, AKindIsOneOfTheKnownOnesAndNothingElse) {
    folder_.Write("a.json", "{}");
    for (const char* const option : {"--from", "--to"}) {
        for (const std::string kind : {"1", "JSON", "tape", ""}) {
            const Outcome outcome = RunTool({"convert", option, kind, "a.json", "b.json"}, folder_);
            EXPECT_THAT(outcome.errors, StartsWith("orvo: " + std::string(option) + ": \"" + kind +
                                                   "\" is not one of orvo, json"));
            EXPECT_THAT(outcome.errors, EndsWith(": try \"orvo convert --help\"\n"));
            EXPECT_EQ(outcome.exitCode, 2);
        }
    }
    EXPECT_FALSE(Exists("b.json"));
}

TEST_F(ConvertTest, AnExtensionInCapitalsTellsTheKindToo) {
    folder_.Write("A.ORVO", kSmallSession);
    folder_.Write("here.wav", "");
    for (const auto& [in, out] : {std::pair("A.ORVO", "B.JSON"), {"B.JSON", "C.Orvo"}}) {
        const Outcome outcome = RunTool({"convert", in, out}, folder_);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    }
    EXPECT_EQ(json::parse(ReadFile(folder_ / "B.JSON")).at("bitDepth"), 24);
    EXPECT_THAT(ReadFile(folder_ / "C.Orvo"), HasSubstr("bitDepth=\"24\""));
}

TEST_F(ConvertTest, AFileNamedLikeAFolderIsNotRead) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("a.json", "{}");
    for (const char* const kind : {"orvo", "json"}) {
        for (const char* const end : {"/", "/.", "//"}) {
            const std::string name = "a." + std::string(kind) + end;
            const Outcome outcome = RunTool({"convert", "--from", kind, name, "b.json"}, folder_);
            EXPECT_EQ(outcome.errors, "orvo: " + name +
                                          ": this is a file, not a folder: leave out the slash "
                                          "at the end\n");
            EXPECT_EQ(outcome.exitCode, 1);
        }
    }
    EXPECT_FALSE(Exists("b.json"));
}

TEST_F(ConvertTest, AnImpossibleFileNameIsAUsageErrorWithAdvice) {
    folder_.Write("a.json", "{}");
    for (const auto& [name, advice] : {std::pair("", "name a file"),
                                       {"b.orvo/", "name a file in it"},
                                       {"b.orvo/.", "name a file in it"}}) {
        const Outcome outcome = RunTool({"convert", "a.json", name, "--to", "orvo"}, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr(advice));
        EXPECT_EQ(outcome.exitCode, 2);
    }
    EXPECT_EQ(RunTool({"generate", "b.orvo/"}, folder_).exitCode, 2);
    EXPECT_FALSE(Exists("b.orvo"));
}

TEST_F(ConvertTest, AFileThatCannotBeScannedIsNotConverted) {
    folder_.Write("a.orvo", "<orvo><session/>");
    const Outcome outcome = ConvertIdly({});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: a.orvo:1:"));
    EXPECT_THAT(outcome.errors, HasSubstr("not converted"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, AFileThatCannotBeScannedIsNotConvertedWithLossyEither) {
    folder_.Write("a.orvo", "<orvo><session/>");
    const Outcome outcome = ConvertIdly({"--lossy"});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: a.orvo:1:"));
    EXPECT_THAT(
        outcome.errors,
        EndsWith(
            "orvo: a.orvo: not converted: nothing was written, because of the problems above\n"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, AFileThatIsReplacedDuringTheReadIsNotConverted) {
    folder_.Write("a.orvo", "<orvo><session/></orvo>");
    folder_.Write("next.orvo", "<orvo><session/></orvo>");
    const Outcome outcome =
        ConvertIdly({}, {{"ORVO_MOVES", "next.orvo"}, {"ORVO_MOVES_TO", "a.orvo"}});
    EXPECT_THAT(outcome.errors,
                StartsWith("orvo: a.orvo: was changed while it was read: try again\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("not converted"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, AFileThatIsReplacedDuringTheReadIsNotConvertedWithLossyEither) {
    folder_.Write("a.orvo", "<orvo><session/></orvo>");
    folder_.Write("next.orvo", "<orvo><session/></orvo>");
    const Outcome outcome =
        ConvertIdly({"--lossy"}, {{"ORVO_MOVES", "next.orvo"}, {"ORVO_MOVES_TO", "a.orvo"}});
    EXPECT_EQ(outcome.errors,
              "orvo: a.orvo: was changed while it was read: try again\n"
              "orvo: a.orvo: not converted: nothing was written, because of the problems above\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("a.json"));
}

TEST_F(ConvertTest, DotDotLeadsWhereTheSystemGoesForReadingAndScanning) {
    std::filesystem::create_directories(folder_ / "project/takes");
    std::filesystem::create_directory_symlink("project/takes", folder_ / "link");
    folder_.Write("project/a.orvo", "<orvo><session sampleRate='44100'/></orvo>");
    folder_.Write("a.orvo", "<orvo><session sampleRate='48000'/><unknown/></orvo>");
    const Outcome outcome = RunTool({"convert", "link/../a.orvo", "b.json"}, folder_);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(json::parse(ReadFile(folder_ / "b.json")).at("sampleRate"), 44100);
}

TEST_F(ConvertTest, DotDotLeadsWhereTheSystemGoesForWritingToo) {
    std::filesystem::create_directories(folder_ / "project/takes");
    std::filesystem::create_directory_symlink("project/takes", folder_ / "link");
    folder_.Write("a.orvo", "<orvo><session sampleRate='44100'/></orvo>");
    for (const char* const name : {"b.json", "b.orvo"}) {
        folder_.Write(name, "old");
        const std::string out = std::string("link/../") + name;
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        ASSERT_EQ(outcome.exitCode, 0) << outcome.errors;
        EXPECT_EQ(ReadFile(folder_ / name), "old");
        EXPECT_THAT(ReadFile(folder_ / "project" / name), HasSubstr("44100"));
    }
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

TEST_F(ConvertTest, AMessageSaysWhatAFileIsInsteadOfJson) {
    const auto refusal = [&](const std::string& content) {
        folder_.Write("a.json", content);
        const Outcome outcome = RunTool({"convert", "a.json", "b.orvo"}, folder_);
        const Outcome stream =
            RunTool({"convert", "--from", "json", "-", "b.orvo"}, folder_, content);
        EXPECT_EQ(stream.errors, "orvo: standard input" + outcome.errors.substr(12));
        EXPECT_EQ(outcome.exitCode, 1);
        return outcome.errors;
    };
    EXPECT_EQ(refusal("\x1F\x8B\x08 and so on"),
              "orvo: a.json: this is a gzip file: unpack it first (gunzip)\n");
    EXPECT_EQ(refusal("RIFF....WAVEfmt "),
              "orvo: a.json: this is a WAV file: name the session that uses it\n");
    for (const char* const xml : {"<orvo/>", "\xEF\xBB\xBF\n <?xml version='1.0'?>"}) {
        EXPECT_EQ(refusal(xml), "orvo: a.json: this is XML, perhaps a session: say --from orvo\n");
    }
    for (const std::string& text : {std::string("\xFF\xFE{\0}\0", 6), std::string("\xFE\xFF\0{", 4),
                                    std::string("{\0}\0", 4), std::string("\0{\0}", 4)}) {
        EXPECT_EQ(refusal(text), "orvo: a.json: this is a text in UTF-16: save it as UTF-8\n");
    }
    EXPECT_THAT(refusal("once upon a time"), StartsWith("orvo: a.json:1:1: syntax error"));
}

TEST_F(ConvertTest, AFileNamedLikeAFolderIsNotASourceOfEitherKind) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("a.json", "{}");
    for (const std::string name : {"a.orvo/", "a.json/"}) {
        const Outcome outcome = RunTool({"convert", name, "b.json"}, folder_);
        EXPECT_EQ(outcome.errors, "orvo: " + name +
                                      ": this is a file, not a folder: leave out the slash at "
                                      "the end\n");
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, AnEmptyNameIsNotASource) {
    const Outcome outcome = RunTool({"convert", "", "b.json", "--from", "orvo"}, folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("the name is empty; name a file"));
    EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(ConvertTest, ANameThatIsTooLongIsNotBlamedOnThePlaceForTemporaryFiles) {
    folder_.Write("a.json", "{}");
    const std::string name = std::string(251, 'n') + ".orvo";
    const Outcome outcome = RunTool({"convert", "a.json", name}, folder_);
    EXPECT_THAT(outcome.errors,
                AllOf(HasSubstr(name + "\": File name too long\n"), Not(HasSubstr("TMPDIR"))));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(ConvertTest, AWrongValueInJsonIsNamedWithItsPath) {
    folder_.Write("a.json", "{\"sampleRate\": true}");
    EXPECT_THAT(RunTool({"convert", "a.json", "b.orvo"}, folder_).errors,
                StartsWith("orvo: a.json: /sampleRate: this is true; give a whole number"));
}

TEST_F(ConvertTest, APipeIsNotASourceOfEitherKind) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    for (const char* const kind : {"orvo", "json"}) {
        const Outcome outcome = RunTool({"convert", "--from", kind, "pipe", "b.orvo"}, folder_);
        EXPECT_FALSE(outcome.timedOut);
        EXPECT_THAT(outcome.errors, StartsWith("orvo: pipe: this is a pipe"));
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, AFailedSaveReportsTheReason) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    for (const char* const out : {"nowhere/b.orvo", "nowhere/b.json"}) {
        const Outcome outcome = RunTool({"convert", "a.orvo", out}, folder_);
        EXPECT_THAT(outcome.errors, StartsWith(std::string("orvo: ") + out + ": was not saved: "));
        EXPECT_THAT(outcome.errors, HasSubstr((folder_ / out).string()));
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(ConvertTest, ARefusalWithoutAReasonIsAttributedToThePlugIn) {
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

TEST_F(ConvertTest, AReadOnlyFolderKeepsTheOldFile) {
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

TEST_F(ConvertTest, MediaAreFoundFromACopyInAnotherFolder) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    std::filesystem::create_directory(folder_ / "deeper");
    ASSERT_EQ(RunTool({"convert", "a.orvo", "deeper/b.orvo"}, folder_).exitCode, 0);
    EXPECT_THAT(ReadFile(folder_ / "deeper/b.orvo"), HasSubstr("relativePath=\"../here.wav\""));
}

}  // namespace
