#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/Tool.h"

using test::Outcome;
using test::ToolPath;
using testing::HasSubstr;
using testing::IsSubsetOf;
using testing::StartsWith;

namespace {

/// A call of a verb that reads a.orvo.
struct Use {
    const char* arguments;
    int trouble = 1;  ///< the exit status if that fails
};

/// What prints something.
const std::vector<Use> kShowing = {
    {"info a.orvo"},
    {"info --format csv --clips a.orvo"},
    {"info --format json --automation a.orvo"},
    {"check a.orvo"},
    {"check --json -j 2 a.orvo a.orvo"},
    {"check --sarif a.orvo"},
    {"trace a.orvo"},
    {"relink a.orvo --search . --dry-run"},
    {"relink a.orvo --search . -o out.orvo"},
    {"collect a.orvo out --without-missing"},
    {"redact a.orvo -o out.orvo"},
    {"diff a.orvo b.orvo", 2},
    {"diff --json a.orvo b.orvo", 2},
    {"diff --stat a.orvo b.orvo", 2},
};

/// What saves something and prints nothing.
const std::vector<Use> kSilent = {
    {"convert a.orvo out.json"},
    {"merge b.orvo b.orvo a.orvo -o out.orvo", 2},
};

/// Conversions to the files of other programs.
const std::vector<Use> kForOthers = {
    {"convert a.orvo out.dawproject"}, {"convert a.orvo out.otio"}, {"convert a.orvo out.csv"},
    {"convert a.orvo out.rpp"},        {"convert a.orvo out.edl"},  {"convert a.orvo out.ardour"},
};

std::vector<Use> AllUses() {
    std::vector<Use> uses = kShowing;
    uses.insert(uses.end(), kSilent.begin(), kSilent.end());
    uses.insert(uses.end(), kForOthers.begin(), kForOthers.end());
    return uses;
}

/// Verbs run in a shell, in a folder with two sessions.
class EveryVerb : public test::ToolTest {
protected:
    void MakeSessions(const std::string& tracks) const {
        RunQuietly({"generate", "--tracks", tracks, "a.orvo"});
        RunQuietly({"generate", "--tracks", tracks, "--seed", "2", "b.orvo"});
        std::filesystem::create_directory(folder_ / "tmp");
    }

    /// @param before, after  what stands around the call
    Outcome InShell(const std::string& before, const Use& use,
                    const std::string& after = {}) const {
        const std::string script =
            before + " " + ToolPath() + " " + use.arguments + (after.empty() ? "" : " " + after);
        return test::Run({.arguments = {"bash", "-c", script},
                          .folder = folder_.Path().string(),
                          .environment = {{"TMPDIR", (folder_ / "tmp").string()}}});
    }

    /// The contents of the files whose names begin with "out", which it removes.
    std::map<std::string, std::string> TakeOutputs() const {
        std::map<std::string, std::string> contents;
        for (const std::string& name : Names()) {
            if (name.starts_with("out") && std::filesystem::is_regular_file(folder_ / name)) {
                contents.emplace(name, test::ReadFile(folder_ / name));
            }
        }
        for (const std::string& name : Names()) {
            if (name.starts_with("out")) {
                std::filesystem::remove_all(folder_ / name);
            }
        }
        return contents;
    }

    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.Path())) {
            names.insert(entry.path().lexically_relative(folder_.Path()).string());
        }
        return names;
    }
};

TEST_F(EveryVerb, NamesAPlugInThatIsMissing) {
    MakeSessions("4");
    for (const Use& use : AllUses()) {
        const Outcome outcome = InShell("ORVO_PLUGIN=/nowhere/OrvoNative.so", use);
        EXPECT_THAT(outcome.errors, StartsWith("orvo: ")) << use.arguments;
        EXPECT_THAT(outcome.errors, HasSubstr("/nowhere/OrvoNative.so")) << use.arguments;
        EXPECT_EQ(outcome.exitCode, use.trouble) << use.arguments;
        EXPECT_THAT(Names(), IsSubsetOf({"a.orvo", "b.orvo", "tmp"})) << use.arguments;
    }
}

TEST_F(EveryVerb, NamesAFileThatMustNotBeRead) {
    MakeSessions("4");
    ASSERT_EQ(::chmod((folder_ / "a.orvo").c_str(), 0), 0);
    for (const Use& use : AllUses()) {
        std::vector<std::string> arguments;
        std::istringstream words(use.arguments);
        for (std::string word; words >> word;) {
            arguments.push_back(word);
        }
        const Outcome outcome = test::RunToolUnprivileged(arguments, folder_);
        EXPECT_THAT(outcome.output + outcome.errors, HasSubstr("a.orvo")) << use.arguments;
        EXPECT_THAT(outcome.output + outcome.errors, HasSubstr("you may not read this file"))
            << use.arguments;
        EXPECT_EQ(outcome.exitCode, use.trouble) << use.arguments;
        EXPECT_THAT(Names(), IsSubsetOf({"a.orvo", "b.orvo", "tmp"})) << use.arguments;
    }
}

TEST_F(EveryVerb, SaysOnlyTheReasonIfOutputCannotBeWritten) {
    MakeSessions("4");
    for (const Use& use : kShowing) {
        const Outcome outcome = InShell("exec", use, ">/dev/full");
        EXPECT_EQ(outcome.errors,
                  "orvo: standard output: cannot be written: No space left on device\n")
            << use.arguments;
        EXPECT_EQ(outcome.exitCode, use.trouble) << use.arguments;
    }
}

TEST_F(EveryVerb, EndsSilentlyIfNobodyReadsItsOutput) {
    MakeSessions("4");
    for (const Use& use : kShowing) {
        // Descriptor 4 is a pipe whose only reader has closed it.
        const Outcome outcome =
            InShell("rm -f p; mkfifo p; exec 3<>p 4>p 3<&-; rm p;", use, ">&4; echo $?");
        EXPECT_EQ(outcome.output, "141\n") << use.arguments << ": killed by SIGPIPE";
        EXPECT_EQ(outcome.errors, "") << use.arguments;
        EXPECT_TRUE(std::filesystem::is_empty(folder_ / "tmp")) << use.arguments;
    }
}

TEST_F(EveryVerb, LeavesNothingHalfWrittenIfItIsInterrupted) {
    MakeSessions("40");
    folder_.Write("c.orvo", test::ReadFile(folder_ / "a.orvo"));
    std::vector<Use> uses = kShowing;
    uses.insert(uses.end(), kSilent.begin(), kSilent.end());
    uses.push_back({"redact c.orvo --in-place"});
    uses.push_back({"check - <a.orvo"});
    for (const Use& use : uses) {
        bool isInterrupted = false;
        for (const char* const seconds : {"0.02", "0.1", "0.25"}) {
            const Outcome outcome = InShell("timeout -s INT " + std::string(seconds), use);
            isInterrupted = isInterrupted || outcome.exitCode == 124;
            EXPECT_TRUE(std::filesystem::is_empty(folder_ / "tmp")) << use.arguments;
            EXPECT_THAT(Names(), IsSubsetOf({"a.orvo", "b.orvo", "c.orvo", "tmp", "out",
                                             "out/media", "out/.orvo-journal", "out/a.orvo",
                                             "out/manifest-sha256.txt", "out.orvo", "out.json"}))
                << use.arguments;
            for (const char* const whole : {"out.orvo", "out.json", "c.orvo"}) {
                if (Exists(whole)) {
                    EXPECT_EQ(test::RunTool({"diff", whole, whole}, folder_).exitCode, 0)
                        << use.arguments << " left half of " << whole;
                }
            }
        }
        EXPECT_TRUE(isInterrupted) << use.arguments << " was always faster";
    }
}

TEST_F(EveryVerb, LeavesAWholeConversionOrNothingIfItIsInterrupted) {
    MakeSessions("40");
    for (const Use& use : kForOthers) {
        ASSERT_EQ(InShell("", use).exitCode, 0) << use.arguments;
        const std::map<std::string, std::string> whole = TakeOutputs();
        EXPECT_FALSE(whole.empty()) << use.arguments;
        for (const char* const seconds : {"0.1", "0.2"}) {
            InShell("timeout -s INT " + std::string(seconds), use);
            const std::map<std::string, std::string> left = TakeOutputs();
            EXPECT_TRUE(left.empty() || left == whole) << use.arguments;
            EXPECT_THAT(Names(), IsSubsetOf({"a.orvo", "b.orvo", "tmp"})) << use.arguments;
        }
    }
}

TEST_F(EveryVerb, LeavesNoConversionForWhichThereIsNoRoom) {
    MakeSessions("4");
    for (const Use& use : kForOthers) {
        const Outcome outcome = InShell("ulimit -f 1;", use);
        EXPECT_THAT(outcome.errors, HasSubstr("File too large")) << use.arguments;
        EXPECT_EQ(outcome.exitCode, 1) << use.arguments;
        EXPECT_THAT(Names(), IsSubsetOf({"a.orvo", "b.orvo", "tmp"})) << use.arguments;
    }
}

}  // namespace
