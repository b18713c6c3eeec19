#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <numeric>

#include "cli/Workers.h"
#include "tests/cli/Tool.h"

using nlohmann::json;
using test::Outcome;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

constexpr const char* kGood = "<orvo><session sampleRate='48000'/></orvo>";
constexpr const char* kWarned = "<orvo><session sampleRate='48000' mood=''/></orvo>";
constexpr const char* kBad = "<orvo><session sampleRate='0'/></orvo>";
constexpr const char* kWarning =
    "1:35: warning: the attribute mood of <session> is unknown; a save drops it "
    "[unknown-attribute]\n";
constexpr const char* kError = "1:16: error: the session's sample rate is 0 [sample-rate]\n";

class CheckTest : public test::ToolTest {
protected:
    CheckTest() {
        Write("good.orvo", kGood);
        Write("warned.orvo", kWarned);
        Write("bad.orvo", kBad);
    }

    void Write(const std::string& name, const std::string& content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }

    Outcome Check(std::vector<std::string> arguments, const std::string& input = {}) const {
        arguments.insert(arguments.begin(), "check");
        return test::RunTool(std::move(arguments), folder_, input);
    }
};

TEST_F(CheckTest, NothingWrongIsSaidByNothing) {
    RunQuietly({"check", "good.orvo"});
    RunQuietly({"check", "--strict", "-j", "3", "good.orvo", "good.orvo"});
}

TEST_F(CheckTest, OnlyErrorsFailUnlessItIsStrict) {
    const Outcome warned = Check({"warned.orvo"});
    EXPECT_EQ(warned.output, std::string("warned.orvo:") + kWarning);
    EXPECT_EQ(warned.exitCode, 0);
    EXPECT_EQ(Check({"--strict", "warned.orvo"}).exitCode, 1);
    const Outcome bad = Check({"bad.orvo"});
    EXPECT_EQ(bad.output, std::string("bad.orvo:") + kError);
    EXPECT_EQ(bad.exitCode, 1);
}

TEST_F(CheckTest, ResultsComeInTheOrderOfTheCommandLine) {
    std::vector<std::string> arguments = {"-j", "4"};
    std::string expected;
    for (int i = 0; i < 200; ++i) {
        const bool isBad = i % 3 == 0;
        arguments.push_back(isBad ? "bad.orvo" : "warned.orvo");
        expected +=
            isBad ? std::string("bad.orvo:") + kError : std::string("warned.orvo:") + kWarning;
    }
    EXPECT_EQ(Check(arguments).output, expected);
}

TEST_F(CheckTest, FoldersAreSearchedIfAskedFor) {
    std::filesystem::create_directories(folder_ / "in/deep");
    Write("in/deep/a.orvo", kBad);
    Write("in/b.ORVO", kWarned);
    EXPECT_EQ(Check({"-r", "in"}).output,
              std::string("in/b.ORVO:") + kWarning + "in/deep/a.orvo:" + kError);
    const Outcome unasked = Check({"in"});
    EXPECT_THAT(unasked.output, HasSubstr("in: error: "));
    EXPECT_THAT(unasked.output, HasSubstr("[unreadable]"));
    EXPECT_EQ(unasked.exitCode, 1);
}

TEST_F(CheckTest, AFolderWithoutSessionsIsAnError) {
    std::filesystem::create_directory(folder_ / "empty");
    const Outcome outcome = Check({"-r", "empty"});
    EXPECT_THAT(outcome.errors, HasSubstr("this folder contains no session files"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(CheckTest, AFileThatCannotBeReadDoesNotKeepOthersFromBeingChecked) {
    const Outcome outcome = Check({"gone.orvo", "bad.orvo"});
    EXPECT_THAT(outcome.output, StartsWith("gone.orvo: error: "));
    EXPECT_THAT(outcome.output, HasSubstr(std::string("bad.orvo:") + kError));
}

TEST_F(CheckTest, EachFileHasOneVerdictInJson) {
    const json reports =
        json::parse(Check({"--json", "good.orvo", "warned.orvo", "bad.orvo", "gone.orvo"}).output);
    std::vector<std::string> verdicts;
    for (const json& report : reports) {
        verdicts.push_back(report.at("verdict"));
    }
    EXPECT_THAT(verdicts, ElementsAre("good", "warnings", "errors", "errors"));
    EXPECT_EQ(reports[2]["findings"][0],
              json::parse(R"({"severity": "error", "code": "sample-rate", "line": 1, "column": 16,
                              "path": "/sampleRate", "what": "the session's sample rate is 0"})"));
    EXPECT_EQ(Check({"--ndjson", "good.orvo"}).output,
              "{\"file\":\"good.orvo\",\"verdict\":\"good\",\"findings\":[]}\n");
}

TEST_F(CheckTest, ASarifLogHasTheRulesAndThePlaces) {
    Write("a b.orvo", kBad);
    const json log = json::parse(Check({"--sarif", "good.orvo", "a b.orvo", "bad.orvo"}).output);
    EXPECT_EQ(log["version"], "2.1.0");
    const json& run = log["runs"][0];
    ASSERT_EQ(run["results"].size(), 2u);
    const json& place = run["results"][0]["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["artifactLocation"]["uri"], "a%20b.orvo");
    EXPECT_EQ(place["region"], json::parse(R"({"startLine": 1, "startColumn": 16})"));
    bool isRule = false;
    for (const json& rule : run["tool"]["driver"]["rules"]) {
        isRule = isRule || rule["id"] == run["results"][0]["ruleId"];
    }
    EXPECT_TRUE(isRule);
    EXPECT_EQ(json::parse(Check({"--sarif", "good.orvo"}).output)["runs"][0]["results"],
              json::array());
}

TEST_F(CheckTest, StandardInputIsASessionUnlessItsKindIsStated) {
    EXPECT_EQ(Check({"-"}, kBad).output, std::string("standard input:") + kError);
    EXPECT_EQ(Check({"--from", "json", "-"}, "{\"sampleRate\": 0}").output,
              "standard input:/sampleRate: error: the session's sample rate is 0 [sample-rate]\n");
}

TEST_F(CheckTest, ControlCharactersOfNamesAreShown) {
    Write("a\x1b[31m.orvo", "<orvo><x&#27;/></orvo>");
    EXPECT_THAT(Check({"a\x1b[31m.orvo"}).output, StartsWith("a\\x1b[31m.orvo:1:"));
}

TEST_F(CheckTest, ACodeIsExplained) {
    const Outcome outcome = Check({"--explain", "routing-loop"});
    EXPECT_THAT(outcome.output, StartsWith("routing-loop (error)\n"));
    EXPECT_EQ(outcome.exitCode, 0);
    const Outcome unknown = Check({"--explain", "routing-lop"});
    EXPECT_THAT(unknown.errors, HasSubstr("did you mean routing-loop?"));
    EXPECT_EQ(unknown.exitCode, 1);
}

TEST_F(CheckTest, WithoutAFileTheCommandLineMakesNoSense) {
    EXPECT_EQ(Check({}).exitCode, 2);
    EXPECT_EQ(Check({"--explain", "all", "good.orvo"}).exitCode, 2);
    EXPECT_EQ(Check({"-j", "0", "good.orvo"}).exitCode, 2);
}

TEST(Workers, TheResultsComeInOrderWhateverTheyTake) {
    std::vector<std::size_t> items;
    cli::RunInWorkers(
        50, 4,
        [](std::size_t item) {
            ::usleep(item % 4 == 0 ? 3000 : 0);
            return std::string(item * 1000, 'x');
        },
        [&](std::size_t item, std::optional<std::string> result) {
            EXPECT_EQ(result.value().size(), item * 1000);
            items.push_back(item);
        });
    std::vector<std::size_t> expected(50);
    std::iota(expected.begin(), expected.end(), 0u);
    EXPECT_EQ(items, expected);
}

TEST(Workers, AnItemThatKillsItsWorkerCostsNoOther) {
    std::vector<bool> killed;
    cli::RunInWorkers(
        9, 2,
        [](std::size_t item) {
            if (item % 4 == 1) {
                ::kill(::getpid(), SIGKILL);
            }
            return std::string("x");
        },
        [&](std::size_t, const std::optional<std::string>& result) {
            killed.push_back(!result.has_value());
        });
    EXPECT_THAT(killed, ElementsAre(false, true, false, false, false, true, false, false, false));
}

TEST(Workers, NothingToDoNeedsNoWorkers) {
    cli::RunInWorkers(
        0, 4, [](std::size_t) { return std::string(); },
        [](std::size_t, const std::optional<std::string>&) { FAIL(); });
}

TEST(Workers, TheyEndWhenTheResultsAreNotWanted) {
    struct Unwanted {};
    EXPECT_THROW(cli::RunInWorkers(
                     100, 3, [](std::size_t) { return std::string("x"); },
                     [](std::size_t, const std::optional<std::string>&) { throw Unwanted(); }),
                 Unwanted);
}

TEST_F(CheckTest, AFileOrMediaThatMustNotBeReadIsUnreadable) {
    Write("closed.orvo", kGood);
    Write("a.orvo",
          "<orvo><session sampleRate='48000' duration='1'><tracks><audioTrack id='1'>"
          "<audioClip id='1' fileID='1' duration='1'/></audioTrack></tracks></session><files>"
          "<file id='1' relativePath='closed.wav'/></files></orvo>");
    Write("closed.wav", "RIFF");
    for (const char* const name : {"closed.orvo", "closed.wav"}) {
        ASSERT_EQ(::chmod((folder_ / name).c_str(), 0), 0);
    }
    const Outcome session = test::RunToolUnprivileged({"check", "closed.orvo"}, folder_);
    EXPECT_EQ(session.output,
              "closed.orvo: error: you may not read this file: check its permissions and its "
              "folder's [unreadable]\n");
    EXPECT_EQ(session.exitCode, 1);
    const Outcome media = test::RunToolUnprivileged({"check", "a.orvo"}, folder_);
    EXPECT_THAT(media.output, HasSubstr("closed.wav\" must not be read [unreadable-media]\n"));
}

TEST_F(CheckTest, AFolderNeedsAnOption) {
    std::filesystem::create_directory(folder_ / "top");
    const Outcome outcome = Check({"top"});
    EXPECT_EQ(outcome.output,
              "top: error: this is a folder: name a session file in it, or add --recursive "
              "[unreadable]\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

}  // namespace
