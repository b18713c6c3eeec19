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
using test::ToolPath;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Sessions read from and written to open descriptors. The tool's temporary files go to the folder
/// "temporary".
class StreamsTest : public test::ToolTest {
protected:
    StreamsTest() {
        std::filesystem::create_directory(folder_ / "temporary");
        folder_.Write("a.orvo", kSmallSession);
        folder_.Write("here.wav", "");
    }
    ~StreamsTest() override {
        EXPECT_TRUE(std::filesystem::is_empty(folder_ / "temporary")) << "something was left";
    }

    /// Runs a shell command in which "orvo" is the tool.
    Outcome Shell(const std::string& line,
                  const std::vector<std::pair<std::string, std::string>>& environment = {}) const {
        test::Command command = {
            .arguments = {"sh", "-c", "orvo() { " + ToolPath() + " \"$@\"; }; " + line},
            .folder = folder_.Path().string(),
            .environment = {{"TMPDIR", (folder_ / "temporary").string()}}};
        command.environment.insert(command.environment.end(), environment.begin(),
                                   environment.end());
        return test::Run(command);
    }

    std::string Content(const char* name) const { return ReadFile(folder_ / name); }
};

TEST_F(StreamsTest, ADescriptorIsWrittenToWithoutReplacingItsFile) {
    std::filesystem::create_symlink("/dev/stdout", folder_ / "link");
    std::filesystem::create_directory_symlink("/dev/fd", folder_ / "descriptors");
    ASSERT_EQ(Shell("orvo convert a.orvo b.json").exitCode, 0);
    ASSERT_EQ(Shell("orvo convert a.orvo b.orvo").exitCode, 0);
    for (const std::string name :
         {"/dev/stdout", "/dev/fd/1", "/proc/self/fd/1", "/proc/thread-self/fd/1", "/dev/./stdout",
          "//dev//fd/1", "link", "descriptors/1"}) {
        for (const std::string kind : {"json", "orvo"}) {
            folder_.Write("app.txt", "kept\n");
            std::filesystem::create_hard_link(folder_ / "app.txt", folder_ / "same.txt");
            const Outcome outcome =
                Shell("orvo convert a.orvo " + name + " --to " + kind + " >>app.txt");
            EXPECT_EQ(outcome.exitCode, 0) << name << outcome.errors;
            EXPECT_EQ(Content("same.txt"), "kept\n" + Content(("b." + kind).c_str())) << name;
            std::filesystem::remove(folder_ / "same.txt");
        }
    }
}

TEST_F(StreamsTest, AStreamIsWrittenFromThePositionOfItsDescriptor) {
    const Outcome outcome =
        Shell("{ echo first; orvo convert a.orvo /dev/fd/3 --to json; echo last; } >all.txt 3>&1");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(Content("all.txt"), StartsWith("first\n{"));
    EXPECT_THAT(Content("all.txt"), EndsWith("}\nlast\n"));
}

TEST_F(StreamsTest, StandardErrorIsAStreamToo) {
    const Outcome outcome = Shell("orvo convert a.orvo /dev/stderr --to json");
    EXPECT_EQ(json::parse(outcome.errors).at("bitDepth"), 24);
}

TEST_F(StreamsTest, AGeneratedSessionGoesToAStreamToo) {
    folder_.Write("app.txt", "kept\n");
    EXPECT_EQ(Shell("orvo generate --tracks 1 --clips 0 /dev/stdout >>app.txt").exitCode, 0);
    EXPECT_THAT(Content("app.txt"), StartsWith("kept\n\xEF\xBB\xBF<?xml"));
    EXPECT_THAT(Content("app.txt"), EndsWith("</orvo>\n"));
}

TEST_F(StreamsTest, EveryVerbReadsADescriptorToItsEnd) {
    for (const char* const name : {"-", "/dev/stdin", "/dev/fd/0", "/proc/self/fd/0"}) {
        for (const char* const verb : {"info", "trace", "convert --from orvo --to json"}) {
            const std::string out = std::string(verb).starts_with("convert") ? " -" : "";
            const std::string call = std::string("orvo ") + verb + " " + name + out;
            for (const std::string& line : {"cat a.orvo | " + call, call + " <a.orvo"}) {
                const Outcome outcome = Shell(line);
                EXPECT_EQ(outcome.exitCode, 0) << line << outcome.errors;
                EXPECT_THAT(outcome.output, HasSubstr("Desk")) << line;
            }
        }
    }
}

TEST_F(StreamsTest, ADescriptorIsReadFromItsPosition) {
    folder_.Write("mixed.txt", "a line in front\n" + std::string(kSmallSession));
    const Outcome outcome = Shell("{ read line; orvo info /dev/fd/0; } <mixed.txt");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, StartsWith("/dev/fd/0\n"));
}

TEST_F(StreamsTest, JsonIsReadFromADescriptor) {
    folder_.Write("a.json", R"({"sampleRate": 7})");
    const Outcome outcome = Shell("cat a.json | orvo convert /dev/fd/3 b.json --from json 3<&0");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
    EXPECT_EQ(json::parse(Content("b.json")).at("sampleRate"), 7);
    EXPECT_EQ(Shell("echo [ | orvo convert /dev/stdin b.json --from json").errors.substr(0, 21),
              "orvo: /dev/stdin:2:1:");
}

TEST_F(StreamsTest, AStreamThatIsNotOpenIsRefusedFirst) {
    for (const auto& [line, errors] :
         {std::pair("orvo convert no.orvo /dev/fd/9 --to json", "orvo: /dev/fd/9: is not open: "),
          {"orvo convert no.orvo /proc/self/fd/9 --to orvo",
           "orvo: /proc/self/fd/9: is not open: "},
          {"orvo convert no.orvo - --to json >&-", "orvo: standard output: is not open: "},
          {"orvo convert no.orvo /dev/stdin --to json <a.orvo",
           "orvo: /dev/stdin: is not open for writing: "},
          {"orvo generate /dev/fd/9", "orvo: /dev/fd/9: is not open: "},
          {"orvo convert /dev/fd/9 b.json --from json", "orvo: /dev/fd/9: is not open: "},
          {"orvo convert /dev/fd/3 b.json --from orvo 3>c.txt",
           "orvo: /dev/fd/3: is not open for reading: "}}) {
        const Outcome outcome = Shell(line);
        EXPECT_EQ(outcome.errors, std::string(errors) + "redirect it, or name a file\n");
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(StreamsTest, AnUnreadableStreamDoesNotHideTheOtherFiles) {
    const Outcome outcome = Shell("orvo info /dev/fd/9 a.orvo");
    EXPECT_THAT(outcome.output, StartsWith("a.orvo\n"));
    EXPECT_THAT(outcome.errors, StartsWith("orvo: /dev/fd/9: is not open"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(StreamsTest, TheOpenFileOfAnotherProcessIsNotReplaced) {
    const Outcome outcome =
        Shell("echo kept >app.txt; orvo convert a.orvo /proc/$$/fd/1 --to json >>app.txt");
    EXPECT_THAT(outcome.errors, HasSubstr("is an open file of another process: name the file"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(Content("app.txt"), "kept\n");
}

TEST_F(StreamsTest, AFullStreamIsAFailureThatNamesIt) {
    for (const char* const kind : {"json", "orvo"}) {
        const Outcome outcome =
            Shell(std::string("orvo convert a.orvo /dev/fd/3 3>/dev/full --to ") + kind);
        EXPECT_EQ(outcome.errors, "orvo: /dev/fd/3: cannot be written: No space left on device\n");
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

TEST_F(StreamsTest, PathsCountFromTheWorkingFolderWhateverItsName) {
    for (const std::string name : {"plain", "two words", "\xC3\xA4\xE2\x82\xAC", "odd\xFF",
                                   "back\\slash", "a/b/c/d/e/f/g/h/i/j/k/l/m/n"}) {
        std::filesystem::create_directories(folder_ / name);
        folder_.Write(name + "/here.wav", "RIFF");
        const std::string inFolder = "cd '" + name + "' && ";
        const std::string session =
            "<orvo><files><file id='1' relativePath='here.wav'/></files></orvo>";
        folder_.Write(name + "/a.orvo", session);
        const Outcome info = Shell(inFolder + "orvo info --json - <a.orvo");
        EXPECT_THAT(info.output, HasSubstr("\"mediaMissing\": 0")) << name;
        const Outcome copy =
            Shell(inFolder + "orvo convert --lossy - - --from orvo --to orvo <a.orvo");
        EXPECT_THAT(copy.output, HasSubstr("relativePath=\"here.wav\"")) << name << copy.errors;
    }
}

TEST_F(StreamsTest, PathsCountFromTheFolderOfALinksTargetAsForFiles) {
    std::filesystem::create_directories(folder_ / "far/away");
    std::filesystem::create_directory_symlink("far/away", folder_ / "near");
    folder_.Write("far/away/here.wav", "RIFF");
    const Outcome outcome = Shell("cd near && orvo info --json - <../../a.orvo");
    EXPECT_THAT(outcome.output, HasSubstr("far/away/here.wav\",\n        \"found\": true"));
}

TEST_F(StreamsTest, TheWorkingFolderNeedNotBeWritable) {
    std::filesystem::create_directory(folder_ / "locked");
    folder_.Write("locked/here.wav", "");
    ASSERT_EQ(::chmod((folder_ / "locked").c_str(), 0555), 0);
    const Outcome outcome = Shell(
        "cd locked && cat ../a.orvo | setpriv --bounding-set=-dac_override "
        "--inh-caps=-dac_override " +
        ToolPath() + " convert - - --from orvo --to orvo");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output, HasSubstr("bitDepth=\"24\""));
    ::chmod((folder_ / "locked").c_str(), 0755);
}

TEST_F(StreamsTest, AMissingTemporaryFolderIsAFailureWithAdvice) {
    const std::string advice =
        "cannot create a temporary folder in /nowhere: No such file or directory; set TMPDIR to a "
        "writable folder\n";
    EXPECT_EQ(Shell("orvo info - <a.orvo", {{"TMPDIR", "/nowhere"}}).errors,
              "orvo: standard input: cannot be read: " + advice);
    const Outcome outcome = Shell("orvo convert a.orvo b.orvo", {{"TMPDIR", "/nowhere"}});
    EXPECT_EQ(outcome.errors, "orvo: b.orvo: was not saved: " + advice);
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(StreamsTest, AFullTemporaryFolderIsAFailureWithAdvice) {
    ASSERT_EQ(Shell("orvo generate --tracks 4 big.orvo").exitCode, 0);
    const std::string reason = "cannot write \"" + (folder_ / "temporary").string() +
                               "\": File too large; make room there, or set TMPDIR to another "
                               "folder\n";
    EXPECT_EQ(Shell("cat big.orvo | (ulimit -f 1; orvo info -)").errors,
              "orvo: standard input: cannot be read: " + reason);
    EXPECT_EQ(Shell("ulimit -f 1; orvo convert big.orvo b.orvo").errors,
              "orvo: b.orvo: was not saved: " + reason);
}

TEST_F(StreamsTest, NoMessageShowsTheTemporaryFile) {
    const Outcome outcome = Shell("printf '<orvo>\\n<session></orvo>' | orvo info -");
    EXPECT_THAT(outcome.errors, StartsWith("orvo: standard input:2:"));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("temporary")));
}

TEST_F(StreamsTest, ASignalRemovesTheTemporaryFilesOfStreamsAndSaves) {
    for (const char* const line :
         {"convert --from orvo --to json - - <a.orvo", "convert a.json b.orvo"}) {
        folder_.Write("a.json", "{}");
        const Outcome outcome = Shell("exec " + ToolPath() + " " + line,
                                      {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_ENDS", "yes"}});
        EXPECT_EQ(outcome.exitCode, -1);
        EXPECT_TRUE(std::filesystem::is_empty(folder_ / "temporary")) << line;
    }
}

TEST_F(StreamsTest, TheMainThreadHandlesSignals) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "160", "large.orvo"}, folder_).exitCode, 0);
    const auto run = [&](std::vector<std::string> arguments, bool terminalErrors) {
        arguments.insert(arguments.begin(), ToolPath());
        return test::Run({.arguments = std::move(arguments),
                          .folder = folder_.Path().string(),
                          .environment = {{"ORVO_PLUGIN", IdlePluginPath()}, {"ORVO_ENDS", "yes"}},
                          .terminalErrors = terminalErrors});
    };
    const Outcome besideTheScan = run({"convert", "large.orvo", "b.json"}, false);
    EXPECT_EQ(besideTheScan.output, "the main thread takes the signal\n");
    EXPECT_EQ(besideTheScan.exitCode, -1);
    const Outcome besideTheBar = run({"info", "large.orvo"}, true);
    EXPECT_EQ(besideTheBar.output, "the main thread takes the signal\n");
    EXPECT_EQ(besideTheBar.exitCode, -1);
}

TEST_F(StreamsTest, ABrokenPipeLeavesNoTemporaryFiles) {
    folder_.Write("a.json",
                  R"({"audioTracks":[{"id":1,"name":")" + std::string(200'000, 'n') + R"("}]})");
    EXPECT_THAT(Shell("orvo convert a.json - --to orvo | head -c 10 | wc -c").output,
                HasSubstr("10"));
}

}  // namespace
