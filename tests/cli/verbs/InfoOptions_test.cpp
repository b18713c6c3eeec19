#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/Tool.h"

using test::kSmallSession;
using test::Outcome;
using test::RunTool;
using test::RunToolUnprivileged;
using test::ToolPath;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class InfoOptionsTest : public test::ToolTest {};

TEST_F(InfoOptionsTest, ShowsWhereTheTimecodeStarts) {
    const auto shown = [this](const std::string& format) {
        folder_.Write("a.orvo", "<orvo><session sampleRate='48000'><sessionState smpteStart='" +
                                    std::to_string(3600 * 48000 + 1920) + "'><timeFormatState " +
                                    format + "/></sessionState></session></orvo>");
        return RunTool({"info", "a.orvo"}, folder_).output;
    };
    EXPECT_THAT(shown("timeFormat='timeFormatTimeCode' timeCodeFrameRate='25'"),
                HasSubstr("  Starts at    01:00:00:01 (172801920 samples)\n"));
    EXPECT_THAT(shown("timeFormat='timeFormatTimeCode' timeCodeFrameRate='30' timeCodeNTSC='true' "
                      "timeCodeDropFrame='true'"),
                HasSubstr("  Starts at    01:00:00;01 (172801920 samples)\n"));
    EXPECT_THAT(shown("timeFormat='timeFormatSamples'"),
                HasSubstr("  Starts at    1:00:00.040 (172801920 samples)\n"));
    const auto json = nlohmann::json::parse(RunTool({"info", "--json", "a.orvo"}, folder_).output);
    EXPECT_EQ(json.at(0).at("smpteStartSamples"), 172801920);
    EXPECT_EQ(json.at(0).at("smpteStart"), "1:00:00.040");
    folder_.Write("b.orvo", "<orvo/>");
    EXPECT_THAT(RunTool({"info", "b.orvo"}, folder_).output, Not(HasSubstr("Starts at")));
}

TEST_F(InfoOptionsTest, ShowsWhereAClipBeginsInItsFile) {
    folder_.Write("a.orvo", R"(<orvo><session sampleRate="1000"><tracks>
<audioTrack id="1"><audioClip id="5" fileID="9" startPoint="0" sourceInPoint="2500" sourceOutPoint="2750"/></audioTrack>
<instrumentTrack id="2"><midiClip id="6" startPoint="7"/></instrumentTrack></tracks></session></orvo>)");
    EXPECT_THAT(
        RunTool({"info", "--clips", "a.orvo"}, folder_).output,
        HasSubstr("Media    Source in  Group  Notes\n"
                  "            5        0:00:00.000  0:00:00.250      9  0:00:02.500         "
                  "no media\n"));
    const auto json = nlohmann::json::parse(RunTool({"info", "--json", "a.orvo"}, folder_).output);
    EXPECT_EQ(json.at(0).at("clips").at(0).at("sourceInSamples"), 2500);
    EXPECT_EQ(json.at(0).at("clips").at(1).at("sourceInSamples"), nullptr);
}

constexpr const char* kMissingMedia = R"(<orvo><files>
<file id="1" absolutePath="D:\Jobs\Show\drum.wav" relativePath="Media/drum.wav"/>
<file id="2" absolutePath="/nowhere/here.wav" relativePath="here.wav"/>
</files></orvo>)";

TEST_F(InfoOptionsTest, ShowsBothPathsThatASessionStoresOfMissingMedia) {
    folder_.Write("a.orvo", kMissingMedia);
    folder_.Write("here.wav", "RIFF");
    EXPECT_THAT(RunTool({"info", "a.orvo"}, folder_).output,
                EndsWith("  Id  State    Handler  Path\n"
                         "   1  missing           D:\\Jobs\\Show\\drum.wav\n"
                         "                        relative: Media/drum.wav\n"
                         "   2  found             here.wav\n"));
    const auto json = nlohmann::json::parse(RunTool({"info", "--json", "a.orvo"}, folder_).output);
    EXPECT_EQ(json.at(0).at("media").at(0).at("absolutePath"), "D:\\Jobs\\Show\\drum.wav");
    EXPECT_EQ(json.at(0).at("media").at(0).at("relativePath"), "Media/drum.wav");
    EXPECT_EQ(json.at(0).at("media").at(1).at("relativePath"), nullptr);
}

TEST_F(InfoOptionsTest, ListsOnlyMissingMedia) {
    folder_.Write("a.orvo", kMissingMedia);
    folder_.Write("b.orvo", "<orvo/>");
    folder_.Write("c.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"info", "--missing", "a.orvo", "b.orvo", "c.orvo"}, folder_);
    EXPECT_EQ(outcome.output,
              "a.orvo\n"
              "  Id  State    Handler  Path\n"
              "   1  missing           D:\\Jobs\\Show\\drum.wav\n"
              "                        relative: Media/drum.wav\n"
              "\n"
              "c.orvo\n"
              "  Id  State    Handler  Path\n"
              "  20  missing           /nowhere/gone.wav\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoOptionsTest, ListsOnlyMissingMediaForPrograms) {
    folder_.Write("a.orvo", kMissingMedia);
    folder_.Write("b.orvo", "<orvo/>");
    folder_.Write("here.wav", "RIFF");
    const nlohmann::json expected = nlohmann::json::parse(R"json({
        "file": "a.orvo", "mediaMissing": 1, "media": [
          {"id": 1, "path": "D:\\Jobs\\Show\\drum.wav", "found": false,
           "handler": "", "handlerId": "",
           "absolutePath": "D:\\Jobs\\Show\\drum.wav", "relativePath": "Media/drum.wav"}]})json");
    const Outcome array = RunTool({"info", "--missing", "--json", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(nlohmann::json::parse(array.output), nlohmann::json::array({expected}));
    const Outcome lines = RunTool({"info", "--missing", "--ndjson", "a.orvo", "b.orvo"}, folder_);
    EXPECT_EQ(nlohmann::json::parse(lines.output), expected);
}

TEST_F(InfoOptionsTest, IsSilentIfNothingIsMissingAndFailsOnlyForUnreadableFiles) {
    folder_.Write("b.orvo", "<orvo/>");
    const Outcome text = RunTool({"info", "--missing", "b.orvo"}, folder_);
    EXPECT_EQ(text.output + text.errors, "");
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(RunTool({"info", "--missing", "--json", "b.orvo"}, folder_).output, "[]\n");
    EXPECT_EQ(RunTool({"info", "--missing", "--ndjson", "b.orvo"}, folder_).output, "");
    folder_.Write("c.orvo", "<foo/>");
    const Outcome bad = RunTool({"info", "--missing", "--ndjson", "b.orvo", "c.orvo"}, folder_);
    EXPECT_EQ(nlohmann::json::parse(bad.output).at("errors").at(0).at("line"), 1);
    EXPECT_EQ(bad.exitCode, 1);
}

TEST_F(InfoOptionsTest, MissingMediaExcludeOtherDetails) {
    EXPECT_EQ(RunTool({"info", "--missing", "--clips", "b.orvo"}, folder_).exitCode, 2);
    EXPECT_EQ(RunTool({"info", "--json", "--ndjson", "b.orvo"}, folder_).exitCode, 2);
}

TEST_F(InfoOptionsTest, PrintsALineOfJsonForEachFile) {
    folder_.Write("a.orvo", "<orvo/>");
    folder_.Write("b.orvo", "<foo/>");
    const Outcome outcome = RunTool({"info", "--ndjson", "a.orvo", "b.orvo"}, folder_);
    std::istringstream lines(outcome.output);
    std::string line;
    std::vector<std::string> files;
    while (std::getline(lines, line)) {
        files.push_back(nlohmann::json::parse(line).at("file"));
    }
    EXPECT_EQ(files, (std::vector<std::string>{"a.orvo", "b.orvo"}));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(InfoOptionsTest, IndentsAJsonArrayLikeAWhole) {
    folder_.Write("a.orvo", "<foo/>");
    const Outcome outcome = RunTool({"info", "--json", "a.orvo", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.output, nlohmann::ordered_json::parse(outcome.output).dump(2) + "\n");
}

TEST_F(InfoOptionsTest, PrintsEachFileAsItIsRead) {
    folder_.Write("a.orvo", kSmallSession);
    for (const auto& [option, end] : {std::pair("--tracks", "*/nowhere/gone.wav"),
                                      {"--json", "*groups*"},
                                      {"--ndjson", "*}"}}) {
        // Sends the second file only after the first one has been shown.
        const std::string script = std::string("mkfifo in out; ") + ToolPath() + " info " + option +
                                   " a.orvo - <in >out & exec 3>in 4<out; while IFS= read -r line "
                                   "<&4; do case \"$line\" in " +
                                   end +
                                   ") break;; esac; done; printf '<orvo/>' >&3; exec 3>&-; cat "
                                   "<&4; rm in out";
        const Outcome outcome = test::Run({.arguments = {"bash", "-c", script},
                                           .folder = folder_.Path().string(),
                                           .timeout = std::chrono::seconds(20)});
        EXPECT_FALSE(outcome.timedOut) << option;
        EXPECT_THAT(outcome.output, HasSubstr("standard input"));
        std::filesystem::remove(folder_ / "in");
        std::filesystem::remove(folder_ / "out");
    }
}

TEST_F(InfoOptionsTest, AcceptsFoldersForAllSessionsInThem) {
    std::filesystem::create_directories(folder_ / "top/b");
    folder_.Write("top/z.orvo", "<orvo/>");
    folder_.Write("top/b/a.ORVO", "<orvo/>");
    folder_.Write("top/b/a.json", "{}");
    folder_.Write("c.txt", "<orvo/>");
    std::filesystem::create_symlink("..", folder_ / "top/b/loop");
    const Outcome outcome = RunTool({"info", "--recursive", "--ndjson", "top", "c.txt"}, folder_);
    std::istringstream lines(outcome.output);
    std::string line;
    std::vector<std::string> files;
    while (std::getline(lines, line)) {
        files.push_back(nlohmann::json::parse(line).at("file"));
    }
    EXPECT_EQ(files, (std::vector<std::string>{"top/b/a.ORVO", "top/z.orvo", "c.txt"}));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoOptionsTest, ReportsAFolderThatHasNoSessionsOrCannotBeRead) {
    std::filesystem::create_directories(folder_ / "empty");
    const Outcome empty = RunTool({"info", "--recursive", "empty"}, folder_);
    EXPECT_EQ(empty.errors,
              "orvo: empty: this folder contains no session files: their names end in .orvo\n");
    EXPECT_EQ(empty.exitCode, 1);
    std::filesystem::create_directories(folder_ / "top/closed");
    folder_.Write("top/a.orvo", "<orvo/>");
    ASSERT_EQ(::chmod((folder_ / "top/closed").c_str(), 0), 0);
    const Outcome closed = RunToolUnprivileged({"info", "--recursive", "top"}, folder_);
    EXPECT_EQ(closed.errors, "orvo: top/closed: this folder cannot be read: Permission denied\n");
    EXPECT_THAT(closed.output, StartsWith("top/a.orvo\n"));
    EXPECT_EQ(closed.exitCode, 1);
}

}  // namespace
