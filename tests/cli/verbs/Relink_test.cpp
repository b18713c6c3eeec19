#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/cli/Tool.h"
#include "tests/support/SourceFolder.h"

using test::Outcome;
using test::RunTool;
using test::RunToolUnprivileged;
using testing::HasSubstr;

namespace {

constexpr const char* kSession =
    "<orvo><files><file id=\"1\" absolutePath=\"D:\\Jobs\\a.wav\"/>"
    "<file id=\"2\" absolutePath=\"/old/b.wav\"/></files></orvo>";

class RelinkToolTest : public test::ToolTest {
protected:
    RelinkToolTest() {
        std::filesystem::create_directories(folder_ / "m/1");
        std::filesystem::create_directories(folder_ / "m/2");
        folder_.Write("s.orvo", kSession);
        folder_.Write("m/a.wav", "");
    }

    std::string Path(const char* name) const { return (folder_ / name).string(); }
    std::string Content(const char* name) const { return test::ReadFile(folder_ / name); }

    /// kSession with the paths of its first file as seen from a folder.
    std::string Linked(const std::string& relative) const {
        return "<orvo><files><file id=\"1\" absolutePath=\"" + Path("m/a.wav") +
               "\" relativePath=\"" + relative +
               "\"/><file id=\"2\" absolutePath=\"/old/b.wav\"/></files></orvo>";
    }
};

TEST_F(RelinkToolTest, SaysWhatWasFoundWhatIsAmbiguousAndWhatIsMissing) {
    folder_.Write("m/1/b.wav", "1");
    folder_.Write("m/2/b.wav", "2");
    folder_.Write("t.orvo",
                  "<orvo><files><file id=\"7\" absolutePath=\"/x/&#x9b;.wav\"/></files></orvo>");
    folder_.Write("u.orvo", "<orvo/>");
    const Outcome outcome =
        RunTool({"relink", "s.orvo", "u.orvo", "t.orvo", "--search", "m", "--dry-run"}, folder_);
    EXPECT_EQ(outcome.output,
              "s.orvo\n"
              "  found      D:\\Jobs\\a.wav\n"
              "               m/a.wav\n"
              "  ambiguous  /old/b.wav\n"
              "               (2 files have this name)\n"
              "               m/1/b.wav\n"
              "               m/2/b.wav\n"
              "\n"
              "t.orvo\n"
              "  missing    /x/\\xc2\\x9b.wav\n"
              "               (no searched folder has a file of this name)\n"
              "\n"
              "3 sessions: 1 found, 1 ambiguous, 1 still missing; 1 would change\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(Content("s.orvo"), kSession);
}

TEST_F(RelinkToolTest, ChangesFilesInPlaceAndKeepsEachOldOne) {
    folder_.Write("s.orvo.bak", "older");
    const Outcome outcome =
        RunTool({"relink", "s.orvo", "--search", "m", "--in-place", "--backup"}, folder_);
    EXPECT_EQ(Content("s.orvo"), Linked("m/a.wav"));
    EXPECT_EQ(Content("s.orvo.bak"), "older");
    EXPECT_EQ(Content("s.orvo.bak2"), kSession);
    EXPECT_EQ(outcome.exitCode, 1) << "b.wav is still missing";
    RunTool({"relink", "s.orvo", "--search", "m", "--in-place", "--backup"}, folder_);
    EXPECT_FALSE(Exists("s.orvo.bak3")) << "nothing changed";
}

TEST_F(RelinkToolTest, SavesToAFileOrToAFolder) {
    RunTool({"relink", "s.orvo", "--search", "m", "-o", "m/out.orvo"}, folder_);
    EXPECT_EQ(Content("m/out.orvo"), Linked("a.wav"));
    RunTool({"relink", "s.orvo", "m/out.orvo", "--search", "m", "-o", "m/1"}, folder_);
    EXPECT_EQ(Content("m/1/s.orvo"), Linked("../a.wav"));
    EXPECT_EQ(Content("m/1/out.orvo"), Linked("../a.wav"));
    EXPECT_EQ(Content("s.orvo"), kSession);
}

TEST_F(RelinkToolTest, CopiesASessionThatNeedsNoChange) {
    folder_.Write("u.orvo", "<orvo><!-- mine --></orvo>");
    const Outcome outcome = RunTool({"relink", "u.orvo", "--search", "m", "-o", "v.orvo"}, folder_);
    EXPECT_EQ(Content("v.orvo"), "<orvo><!-- mine --></orvo>");
    EXPECT_EQ(outcome.output, "1 session: no media are missing; 0 changed\n");
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(RelinkToolTest, DoesNotSaveToAStream) {
    for (const char* const out : {"-", "/dev/stdout"}) {
        const Outcome outcome = RunTool({"relink", "s.orvo", "--search", "m", "-o", out}, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr(": a changed session is not saved to a stream: name "
                                              "a file or a folder\n"));
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.exitCode, 1);
    }
    EXPECT_FALSE(Exists("stream.orvo"));
}

TEST_F(RelinkToolTest, RefusesToSaveTwoSessionsUnderOneName) {
    folder_.Write("m/s.orvo", kSession);
    const Outcome outcome =
        RunTool({"relink", "s.orvo", "m/s.orvo", "--search", "m", "-o", "m/1"}, folder_);
    EXPECT_EQ(outcome.errors,
              "orvo: m/s.orvo: would be saved to m/1/s.orvo, as would s.orvo: name "
              "them in two calls, with a folder for each\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_FALSE(Exists("m/1/s.orvo"));
    EXPECT_THAT(
        RunTool({"relink", "s.orvo", "m/s.orvo", "--search", "m", "-o", "x"}, folder_).errors,
        HasSubstr("x: this is not a folder"));
}

TEST_F(RelinkToolTest, PrintsJson) {
    const Outcome outcome = RunTool(
        {"relink", "s.orvo", "none.orvo", "--map", "d:\\JOBS=m", "--in-place", "--json"}, folder_);
    const auto reports = nlohmann::json::parse(outcome.output);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0], nlohmann::json({{"file", "s.orvo"},
                                          {"present", 0},
                                          {"found", 1},
                                          {"ambiguous", 0},
                                          {"missing", 1},
                                          {"media",
                                           {{{"id", 1},
                                             {"path", "D:\\Jobs\\a.wav"},
                                             {"outcome", "found"},
                                             {"newPath", Path("m/a.wav")},
                                             {"why", "d:\\JOBS is now m"},
                                             {"candidates", nlohmann::json::array()}},
                                            {{"id", 2},
                                             {"path", "/old/b.wav"},
                                             {"outcome", "missing"},
                                             {"newPath", nullptr},
                                             {"why", "its path begins with none that was mapped"},
                                             {"candidates", nlohmann::json::array()}}}},
                                          {"changes", true},
                                          {"saved", "s.orvo"},
                                          {"backup", nullptr},
                                          {"errors", nlohmann::json::array()}}));
    ASSERT_EQ(reports[1].at("errors").size(), 1U);
    EXPECT_EQ(
        reports[1].at("errors")[0],
        nlohmann::json(
            {{"line", 0}, {"column", 0}, {"what", "no such file"}, {"advice", "check the path"}}));
    EXPECT_EQ(Content("s.orvo"), Linked("m/a.wav"));
    const Outcome lines =
        RunTool({"relink", "s.orvo", "--search", "m", "--dry-run", "--ndjson"}, folder_);
    EXPECT_EQ(nlohmann::json::parse(lines.output).at("present"), 1);
}

/// The session's media, as the tool shows them.
nlohmann::json MediaOf(const std::string& session, const test::TemporaryFolder& folder) {
    return nlohmann::json::parse(RunTool({"info", "--ndjson", session}, folder).output).at("media");
}

TEST_F(RelinkToolTest, FindsTheMediaOfEveryExample) {
    std::filesystem::copy(test::SourceFolder() / "examples", folder_ / "examples",
                          std::filesystem::copy_options::recursive);
    std::vector<std::string> sessions;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ / "examples")) {
        const std::string name = entry.path().filename().string();
        if (Exists(("examples/" + name + "/media").c_str())) {
            std::filesystem::rename(entry.path() / "media", folder_ / ("m/" + name));
        }
        if (Exists(("examples/" + name + "/" + name + ".orvo").c_str())) {
            sessions.push_back("examples/" + name + "/" + name + ".orvo");
        }
    }
    ASSERT_EQ(sessions.size(), 5U);
    const Outcome outcome = RunTool(
        {"relink", "-r", "examples", "--search", "m", "--match", "name+length", "--in-place"},
        folder_);
    EXPECT_THAT(outcome.output, HasSubstr("\n5 sessions: 21 found, 0 ambiguous, 2 still missing; 5 "
                                          "changed\n"));
    for (const std::string& session : sessions) {
        for (const auto& media : MediaOf(session, folder_)) {
            const bool isAway =
                media.at("path").get<std::string>().find("rushes") != std::string::npos;
            EXPECT_NE(media.at("found").get<bool>(), isAway) << session << media;
        }
    }
}

TEST_F(RelinkToolTest, GoesOnAfterFilesThatAreNoSessions) {
    ASSERT_EQ(::mkfifo(Path("pipe.orvo").c_str(), 0600), 0);
    folder_.Write("bad.orvo", "<orvo>");
    const Outcome outcome = RunTool(
        {"relink", "pipe.orvo", "bad.orvo", "m", "-", "s.orvo", "--search", "m", "--in-place"},
        folder_);
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: pipe.orvo: this is a pipe"));
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: bad.orvo:1:"));
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: m: this is a folder"));
    EXPECT_THAT(outcome.errors, HasSubstr("orvo: standard input: a stream cannot be relinked"));
    EXPECT_THAT(outcome.output, HasSubstr("5 sessions: 1 found, 0 ambiguous, 1 still missing; 1 "
                                          "changed, 4 failed\n"));
    EXPECT_EQ(Content("s.orvo"), Linked("m/a.wav"));
}

TEST_F(RelinkToolTest, ReportsFoldersThatCannotBeSearched) {
    const Outcome gone = RunTool({"relink", "s.orvo", "--search", "gone", "--in-place"}, folder_);
    EXPECT_EQ(gone.errors, "orvo: gone: this folder cannot be read: No such file or directory\n");
    EXPECT_EQ(gone.output, "");
    EXPECT_EQ(gone.exitCode, 1);

    std::filesystem::permissions(folder_ / "m/1", std::filesystem::perms::none);
    const Outcome closed =
        RunToolUnprivileged({"relink", "s.orvo", "--search", "m", "--dry-run"}, folder_);
    EXPECT_EQ(closed.errors,
              "orvo: " + Path("m/1") + ": this folder cannot be read: Permission denied\n");
    EXPECT_THAT(closed.output, HasSubstr("1 found"));
    std::filesystem::permissions(folder_ / "m/1", std::filesystem::perms::all);
}

TEST_F(RelinkToolTest, KeepsTheSessionWhereItCannotBeSaved) {
    std::filesystem::create_directory(folder_ / "locked");
    std::filesystem::copy(folder_ / "s.orvo", folder_ / "locked/s.orvo");
    std::filesystem::permissions(folder_ / "locked", std::filesystem::perms(0555));
    for (const bool backup : {false, true}) {
        std::vector<std::string> arguments = {"relink", "locked/s.orvo", "--search", "m",
                                              "--in-place"};
        if (backup) {
            arguments.emplace_back("--backup");
        }
        const Outcome outcome = RunToolUnprivileged(arguments, folder_);
        EXPECT_THAT(outcome.errors, HasSubstr("orvo: locked/s.orvo: "));
        EXPECT_THAT(outcome.errors, HasSubstr("Permission denied"));
        EXPECT_THAT(outcome.output, HasSubstr("0 changed, 1 failed"));
        EXPECT_EQ(outcome.exitCode, 1);
    }
    EXPECT_EQ(Content("locked/s.orvo"), kSession);
    EXPECT_FALSE(Exists("locked/s.orvo.bak"));
    std::filesystem::permissions(folder_ / "locked", std::filesystem::perms(0755));
}

TEST_F(RelinkToolTest, RefusesACommandLineThatMakesNoSense) {
    const auto errorsOf = [this](std::vector<std::string> arguments) {
        const Outcome outcome = RunTool(std::move(arguments), folder_);
        EXPECT_EQ(outcome.exitCode, 2);
        return outcome.errors;
    };
    EXPECT_THAT(errorsOf({"relink", "s.orvo", "--in-place"}), HasSubstr("say where to look"));
    EXPECT_THAT(errorsOf({"relink", "s.orvo", "--search", "m"}), HasSubstr("say where to save"));
    EXPECT_THAT(errorsOf({"relink", "s.orvo", "--map", "x", "--in-place"}),
                HasSubstr("\"x\" is not FROM=TO"));
    EXPECT_THAT(errorsOf({"relink", "s.orvo", "--search", "m", "--match", "size", "--in-place"}),
                HasSubstr("size"));
    EXPECT_THAT(errorsOf({"relink", "s.orvo", "--search", "m", "--backup", "-o", "x"}),
                HasSubstr("--in-place"));
}

TEST_F(RelinkToolTest, DoesNotSayOfSessionsThatWereNotReadThatNothingIsMissing) {
    folder_.Write("bad.orvo", "<orvo>");
    const Outcome outcome = RunTool({"relink", "bad.orvo", "--search", "m", "--dry-run"}, folder_);
    EXPECT_EQ(outcome.output, "1 session: none could be relinked\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

}  // namespace
