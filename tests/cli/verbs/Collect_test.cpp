#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/cli/Tool.h"
#include "tests/support/SourceFolder.h"

using test::kSmallSession;
using test::Outcome;
using test::RunTool;
using test::RunToolUnprivileged;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

class CollectToolTest : public test::ToolTest {
protected:
    CollectToolTest() {
        folder_.Write("s.orvo",
                      "<orvo><files><file id=\"1\" relativePath=\"a.wav\"/></files></orvo>");
        folder_.Write("a.wav", "sound");
    }
};

TEST_F(CollectToolTest, SaysSizeAndSpaceAndThenWhatWasDone) {
    const Outcome outcome = RunTool({"collect", "s.orvo", "c"}, folder_);
    EXPECT_THAT(outcome.output, MatchesRegex("s\\.orvo: 1 media file, 5 bytes\n"
                                             "c: 5 bytes to copy, .* free\n"
                                             "c: complete; 1 (copied|cloned)\n"));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(Exists("c/media/a.wav"));
    const Outcome again = RunTool({"collect", "s.orvo", "c"}, folder_);
    EXPECT_THAT(again.output, HasSubstr("c: complete; 1 there already\n"));
    EXPECT_EQ(again.exitCode, 0);
}

TEST_F(CollectToolTest, OnlyShowsThePlan) {
    const Outcome outcome = RunTool({"collect", "s.orvo", "c", "--dry-run", "--link"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("c: 0 bytes to copy"));
    EXPECT_THAT(outcome.output, HasSubstr("  media/a.wav  5 bytes  a.wav\n"));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_FALSE(Exists("c"));
}

TEST_F(CollectToolTest, RefusesASessionThatMissesMedia) {
    folder_.Write("t.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome refused = RunTool({"collect", "t.orvo", "c"}, folder_);
    EXPECT_THAT(refused.output, HasSubstr("; 1 missing\n  missing  /nowhere/gone.wav\n"));
    EXPECT_EQ(refused.errors,
              "orvo: t.orvo: one media file is missing: find them with \"orvo "
              "relink\", or add --without-missing\n");
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_FALSE(Exists("c"));
    EXPECT_EQ(RunTool({"collect", "t.orvo", "c", "--without-missing"}, folder_).exitCode, 0);
    EXPECT_TRUE(Exists("c/media/here.wav"));
}

TEST_F(CollectToolTest, PrintsJson) {
    const Outcome outcome = RunTool({"collect", "s.orvo", "c", "--json"}, folder_);
    auto report = nlohmann::json::parse(outcome.output);
    EXPECT_TRUE(report.at("bytesFree").is_number());
    EXPECT_EQ(report.at("copied").get<int>() + report.at("cloned").get<int>(), 1);
    for (const char* const varying : {"bytesFree", "copied", "cloned"}) {
        report.erase(varying);
    }
    EXPECT_EQ(report, nlohmann::json({{"file", "s.orvo"},
                                      {"folder", "c"},
                                      {"session", "s.orvo"},
                                      {"media",
                                       {{{"ids", {1}},
                                         {"source", (folder_ / "a.wav").string()},
                                         {"name", "media/a.wav"},
                                         {"size", 5}}}},
                                      {"missing", 0},
                                      {"bytes", 5},
                                      {"bytesToCopy", 5},
                                      {"complete", true},
                                      {"linked", 0},
                                      {"kept", 0},
                                      {"errors", nlohmann::json::array()}}));
}

TEST_F(CollectToolTest, VerifiesAFolder) {
    RunTool({"collect", "s.orvo", "c"}, folder_);
    EXPECT_EQ(RunTool({"collect", "--verify", "c"}, folder_).output, "c: 2 good\n");
    folder_.Write("c/media/a.wav", "noise");
    folder_.Write("c/\x1b.txt", "");
    const Outcome changed = RunTool({"collect", "--verify", "c"}, folder_);
    EXPECT_EQ(changed.output,
              "c: 1 good, 1 changed, 1 unlisted\n"
              "  changed     media/a.wav\n"
              "  unlisted    \\x1b.txt\n");
    EXPECT_EQ(changed.exitCode, 1);
    const auto report =
        nlohmann::json::parse(RunTool({"collect", "--verify", "c", "--json"}, folder_).output);
    EXPECT_EQ(report.at("good"), false);
    EXPECT_EQ(report.at("files").at(0),
              nlohmann::json({{"name", "media/a.wav"}, {"state", "changed"}, {"why", ""}}));
    const Outcome none = RunTool({"collect", "--verify", "."}, folder_);
    EXPECT_THAT(none.errors, HasSubstr("it has no manifest-sha256.txt"));
    EXPECT_EQ(none.output, "");
    EXPECT_EQ(none.exitCode, 1);
}

TEST_F(CollectToolTest, CollectsEveryExample) {
    const std::filesystem::path examples = test::SourceFolder() / "examples";
    int collected = 0;
    for (const auto& entry : std::filesystem::directory_iterator(examples)) {
        const std::string name = entry.path().filename().string();
        const std::string session = (entry.path() / (name + ".orvo")).string();
        if (!std::filesystem::exists(session)) {
            continue;
        }
        EXPECT_EQ(RunTool({"collect", session, name, "--without-missing"}, folder_).exitCode, 0);
        EXPECT_EQ(RunTool({"collect", "--verify", name}, folder_).exitCode, 0);
        const auto info = nlohmann::json::parse(
            RunTool({"info", "--ndjson", name + "/" + name + ".orvo"}, folder_).output);
        for (const auto& media : info.at("media")) {
            const std::string path = media.at("path");
            EXPECT_EQ(media.at("found").get<bool>(), path.starts_with((folder_ / name).string()))
                << path;
        }
        ++collected;
    }
    EXPECT_EQ(collected, 5);
}

TEST_F(CollectToolTest, StopsWhenTheDiskIsFullAndLeavesNoHalfOfAFile) {
    folder_.Write("a.wav", std::string(100'000, 'a'));
    const std::string collect = "ulimit -f 50; exec " + test::ToolPath() + " collect s.orvo c";
    const Outcome outcome =
        test::Run({.arguments = {"bash", "-c", collect}, .folder = folder_.Path().string()});
    EXPECT_EQ(outcome.errors, "orvo: c/media/a.wav: cannot be written: File too large\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("c/media/a.wav"));
    EXPECT_FALSE(Exists("c/.orvo-part"));
    EXPECT_FALSE(Exists("c/s.orvo"));
}

TEST_F(CollectToolTest, ReportsWhatCannotBeReadOrWritten) {
    std::filesystem::create_directory(folder_ / "locked");
    std::filesystem::permissions(folder_ / "locked", std::filesystem::perms(0555));
    EXPECT_THAT(RunToolUnprivileged({"collect", "s.orvo", "locked/c"}, folder_).errors,
                HasSubstr("locked/c: this folder cannot be made: Permission denied"));
    std::filesystem::permissions(folder_ / "locked", std::filesystem::perms(0755));
    EXPECT_THAT(RunTool({"collect", "s.orvo", "x/y"}, folder_).errors,
                HasSubstr("x: is not a folder"));
    EXPECT_THAT(RunTool({"collect", "s.orvo", "a.wav"}, folder_).errors,
                HasSubstr("a.wav: is not a folder: make it, or choose another one"));
    EXPECT_THAT(RunTool({"collect", "-", "c"}, folder_).errors,
                HasSubstr("standard input: a stream cannot be collected"));
    EXPECT_THAT(RunTool({"collect", "a.wav", "c"}, folder_).errors, HasSubstr("orvo: a.wav:"));

    std::filesystem::permissions(folder_ / "a.wav", std::filesystem::perms::none);
    std::filesystem::create_directory(folder_ / "d");
    std::filesystem::permissions(folder_ / "d", std::filesystem::perms::all);
    const Outcome unread = RunToolUnprivileged({"collect", "s.orvo", "d"}, folder_);
    EXPECT_THAT(unread.errors, HasSubstr("a.wav: cannot be read: Permission denied"));
    EXPECT_EQ(unread.exitCode, 1);
    EXPECT_FALSE(Exists("d/s.orvo"));
}

TEST_F(CollectToolTest, RefusesACommandLineThatMakesNoSense) {
    EXPECT_EQ(RunTool({"collect", "s.orvo"}, folder_).exitCode, 2);
    EXPECT_EQ(RunTool({"collect"}, folder_).exitCode, 2);
    EXPECT_EQ(RunTool({"collect", "--verify", "c", "s.orvo", "d"}, folder_).exitCode, 2);
}

TEST_F(CollectToolTest, NamesFilesInTheFolderAsTheUserNamesIt) {
    std::filesystem::create_directories(folder_ / "c/media");
    folder_.Write("c/media/a.wav", "other");
    const Outcome outcome = RunTool({"collect", "s.orvo", "./c/"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: ./c/media/a.wav: exists with another content, and nothing is replaced: choose "
              "another folder, or move it away\n");
    const Outcome verified = RunTool({"collect", "--verify", "c/media"}, folder_);
    EXPECT_EQ(verified.errors,
              "orvo: c/media: is no collection: it has no manifest-sha256.txt: name a folder with "
              "a collected session\n");
    EXPECT_EQ(verified.exitCode, 1);
}

}  // namespace
