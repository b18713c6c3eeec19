#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "tests/cli/Tool.h"

using test::Outcome;
using test::RunTool;
using test::ToolPath;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

class CommandLineTest : public test::ToolTest {};

/// The verbs that a help lists, each on a line of its own.
std::vector<std::string> VerbsIn(const std::string& help) {
    std::vector<std::string> verbs;
    std::istringstream lines(help.substr(help.find("Subcommands:\n")));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && line.starts_with("  ")) {
        if (line[2] != ' ') {
            verbs.push_back(line.substr(2, line.find(' ', 2) - 2));
        }
    }
    return verbs;
}

TEST_F(CommandLineTest, EveryHelpShowsExamplesOnStandardOutput) {
    const Outcome whole = RunTool({"--help"}, folder_);
    std::vector<Outcome> outcomes = {whole, RunTool({"-h"}, folder_)};
    const std::vector<std::string> verbs = VerbsIn(whole.output);
    EXPECT_THAT(verbs, testing::IsSupersetOf({"info", "convert"}));
    for (const std::string& verb : verbs) {
        outcomes.push_back(RunTool({verb, "--help"}, folder_));
    }
    for (const Outcome& outcome : outcomes) {
        EXPECT_THAT(outcome.output, HasSubstr("Examples:"));
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.exitCode, 0);
    }
}

TEST_F(CommandLineTest, HelpAndVersionNeedNoPlugIn) {
    const test::Command help = {.arguments = {ToolPath(), "--version"},
                                .environment = {{"ORVO_PLUGIN", "/nowhere/OrvoNative.so"}}};
    const Outcome outcome = test::Run(help);
    EXPECT_THAT(outcome.output, MatchesRegex("orvo [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(CommandLineTest, AMissingPlugInIsAFailureThatNamesIt) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "info", "a.orvo"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"ORVO_PLUGIN", "/nowhere/OrvoNative.so"}}});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: "));
    EXPECT_THAT(outcome.errors, HasSubstr("/nowhere/OrvoNative.so"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(CommandLineTest, InvalidCommandLinesAreUsageErrors) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                      {"sing"},
                                                      {"info"},
                                                      {"info", "--loud", "a.orvo"},
                                                      {"convert", "a.orvo"}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_THAT(outcome.errors, StartsWith("orvo: "));
        EXPECT_THAT(outcome.errors, HasSubstr("--help"));
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.exitCode, 2);
    }
}

TEST_F(CommandLineTest, AnUnknownVerbIsNamed) {
    for (const auto& [arguments, errors] :
         {std::pair(std::vector<std::string>{}, "no verb was given"),
          {{"sing", "a.orvo"}, "there is no verb \"sing\""},
          {{"--", "sing"}, "there is no verb \"sing\""},
          {{"inof", "a.orvo"}, "there is no verb \"inof\"; did you mean info?"},
          {{"Convert"}, "there is no verb \"Convert\"; did you mean convert?"},
          {{"--nope"}, "there is no option \"--nope\""},
          {{"-x", "a.orvo"}, "there is no option \"-x\""}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_EQ(outcome.errors, std::string("orvo: ") + errors + ": try \"orvo --help\"\n");
        EXPECT_EQ(outcome.exitCode, 2);
    }
}

TEST_F(CommandLineTest, AnUnknownOptionIsNamedWithSimilarOnes) {
    for (const auto& [arguments, errors] :
         {std::pair(std::vector<std::string>{"info", "--loud", "a.orvo"},
                    "there is no option \"--loud\": try \"orvo info --help\""),
          {{"info", "--track", "a.orvo"},
           "there is no option \"--track\"; did you mean --tracks?: try \"orvo info --help\""},
          {{"info", "--track"},
           "there is no option \"--track\"; did you mean --tracks?: try \"orvo info --help\""},
          {{"generate", "--trakcs=4", "a.orvo"},
           "there is no option \"--trakcs\"; did you mean --tracks?: try \"orvo generate "
           "--help\""},
          {{"convert", "--form", "json", "a", "b"},
           "there is no option \"--form\"; did you mean --from or --to or --full?: try \"orvo "
           "convert "
           "--help\""},
          {{"--verison"},
           "there is no option \"--verison\"; did you mean --version?: try \"orvo --help\""}}) {
        const Outcome outcome = RunTool(arguments, folder_);
        EXPECT_EQ(outcome.errors, std::string("orvo: ") + errors + "\n");
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.exitCode, 2);
    }
}

TEST_F(CommandLineTest, MessagesAreColouredOnlyOnATerminalAndNotWithNoColor) {
    const std::vector<std::string> arguments = {ToolPath(), "info", "/nowhere/a.orvo"};
    const Outcome plain = test::Run({.arguments = arguments});
    EXPECT_THAT(plain.errors, Not(HasSubstr("\x1b")));
    const Outcome terminal = test::Run(
        {.arguments = arguments, .environment = {{"NO_COLOR", ""}}, .terminalErrors = true});
    EXPECT_THAT(terminal.errors, HasSubstr("\x1b["));
    const Outcome refused = test::Run(
        {.arguments = arguments, .environment = {{"NO_COLOR", "1"}}, .terminalErrors = true});
    EXPECT_THAT(refused.errors, Not(HasSubstr("\x1b")));
}

TEST_F(CommandLineTest, MessagesAreColouredOnATerminalByDefault) {
    const Outcome outcome =
        test::Run({.arguments = {"env", "-u", "NO_COLOR", ToolPath(), "info", "/nowhere/a.orvo"},
                   .terminalErrors = true});
    EXPECT_THAT(outcome.errors, HasSubstr("\x1b["));
}

TEST_F(CommandLineTest, ChangesAndFindingsAreColouredOnATerminal) {
    folder_.Write("a.json", R"({"properties": [{"key": "take", "value": "3"}], "bitDepth": 16})");
    folder_.Write("b.json",
                  R"({"properties": [{"key": "client", "value": "us"}], "bitDepth": 24})");
    folder_.Write("c.json", R"({"sampleRate": 0})");
    // Standard output is the terminal that standard error is.
    const auto run = [this](const std::string& environment, const std::string& arguments) {
        return test::Run({.arguments = {"sh", "-c",
                                        environment + " " + ToolPath() + " " + arguments + " >&2"},
                          .folder = folder_.Path().string(),
                          .terminalErrors = true})
            .errors;
    };
    EXPECT_EQ(run("NO_COLOR=", "diff a.json b.json"),
              "\x1b[33msession: bit depth from 16 to 24\x1b[0m\r\n"
              "\x1b[31msession: property \"take\" removed\x1b[0m\r\n"
              "\x1b[32msession: property \"client\" added\x1b[0m\r\n");
    EXPECT_THAT(run("NO_COLOR=1", "diff a.json b.json"), Not(HasSubstr("\x1b")));
    EXPECT_THAT(run("NO_COLOR=", "diff --json a.json b.json"), Not(HasSubstr("\x1b")));
    EXPECT_THAT(run("NO_COLOR=", "check c.json"), HasSubstr("\x1b["));
    EXPECT_EQ(RunTool({"diff", "a.json", "b.json"}, folder_).output,
              "session: bit depth from 16 to 24\nsession: property \"take\" removed\nsession: "
              "property \"client\" added\n");
}

/// Long enough for a progress bar to appear.
std::string LongText() {
    return std::string(150'000'000, '\n');
}

TEST_F(CommandLineTest, LongWorkShowsAProgressBarOnATerminalAndErasesItAtTheEnd) {
    const std::string session = "<orvo><session/><files>\n" + LongText();
    folder_.Write("a.orvo", session + "</files></orvo>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "info", "a.orvo"},
                                       .folder = folder_.Path().string(),
                                       .terminalErrors = true});
    EXPECT_THAT(outcome.errors, HasSubstr("] reading a.orvo"));
    EXPECT_TRUE(outcome.errors.ends_with("\r\x1b[K")) << outcome.errors;
    EXPECT_EQ(RunTool({"info", "a.orvo"}, folder_).errors, "") << "not into a file or a pipe";
}

/// How many characters the bar had filled each time that it was drawn.
std::vector<std::size_t> FillsOf(const std::string& errors) {
    std::vector<std::size_t> fills;
    for (std::size_t bar = errors.find('['); bar != std::string::npos;
         bar = errors.find('[', bar + 1)) {
        const std::size_t end = errors.find_first_not_of('#', bar + 1);
        if (end != std::string::npos && (errors[end] == '.' || errors[end] == ']')) {
            fills.push_back(end - bar - 1);
        }
    }
    return fills;
}

TEST_F(CommandLineTest, TheProgressBarMovesThroughALongElementThatReportsNothing) {
    folder_.Write("a.orvo", "<orvo><session/><files>\n" + LongText() + "</files></orvo>");
    for (const char* const verb : {"info", "trace"}) {
        const Outcome outcome = test::Run({.arguments = {ToolPath(), verb, "a.orvo"},
                                           .folder = folder_.Path().string(),
                                           .terminalErrors = true});
        const std::vector<std::size_t> fills = FillsOf(outcome.errors);
        EXPECT_TRUE(std::is_sorted(fills.begin(), fills.end())) << "it never goes back";
        EXPECT_GE(std::set(fills.begin(), fills.end()).size(), 3u) << outcome.errors;
    }
}

TEST_F(CommandLineTest, OneProgressBarCoversAllFiles) {
    const std::string session = "<orvo><session/><files>\n" + std::string(36000000, '\n');
    folder_.Write("a.orvo", session + "</files></orvo>");
    std::vector<std::string> arguments = {ToolPath(), "info"};
    arguments.insert(arguments.end(), 6, "a.orvo");
    const Outcome outcome = test::Run(
        {.arguments = arguments, .folder = folder_.Path().string(), .terminalErrors = true});
    const std::vector<std::size_t> fills = FillsOf(outcome.errors);
    EXPECT_TRUE(std::is_sorted(fills.begin(), fills.end())) << outcome.errors;
    EXPECT_GE(std::set(fills.begin(), fills.end()).size(), 3u) << outcome.errors;
}

TEST_F(CommandLineTest, OneProgressBarCoversAllPhasesOfAConversion) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "1600", "a.orvo"}, folder_).exitCode, 0);
    const std::pair<const char*, std::vector<const char*>> phases[] = {
        {"b.json", {"writing"}}, {"b.orvo", {"writing", "checking"}}};
    for (const auto& [name, verbs] : phases) {
        const Outcome outcome = test::Run({.arguments = {ToolPath(), "convert", "a.orvo", name},
                                           .folder = folder_.Path().string(),
                                           .terminalErrors = true});
        const std::vector<std::size_t> fills = FillsOf(outcome.errors);
        EXPECT_TRUE(std::is_sorted(fills.begin(), fills.end())) << outcome.errors;
        EXPECT_GE(std::set(fills.begin(), fills.end()).size(), 3u) << outcome.errors;
        for (const char* const verb : verbs) {
            EXPECT_THAT(outcome.errors, HasSubstr(std::string("] ") + verb + " " + name));
        }
    }
}

TEST_F(CommandLineTest, EveryVerbThatReadsSessionsShowsProgress) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "500", "a.orvo"}, folder_).exitCode, 0);
    folder_.Write("s.orvo", "<orvo><files><file id='1' relativePath='a.wav'/></files></orvo>");
    folder_.Write("a.wav", "");
    std::filesystem::resize_file(folder_ / "a.wav", 1'500'000'000);  // takes no space
    for (const auto& [arguments, label] :
         {std::pair(std::vector<std::string>{"info", "--format", "csv", "--media", "a.orvo"},
                    "reading a.orvo"),
          {{"check", "a.orvo", "a.orvo"}, "checking a.orvo"},
          {{"diff", "a.orvo", "a.orvo"}, "reading a.orvo"},
          {{"merge", "a.orvo", "a.orvo", "a.orvo", "-o", "b.orvo"}, "writing b.orvo"},
          {{"relink", "a.orvo", "a.orvo", "--search", ".", "--dry-run"}, "relinking a.orvo"},
          {{"redact", "a.orvo", "a.orvo", "--in-place"}, "redacting a.orvo"},
          {{"collect", "--link", "s.orvo", "c"}, "collecting"}}) {
        std::vector<std::string> whole = {ToolPath()};
        whole.insert(whole.end(), arguments.begin(), arguments.end());
        const Outcome outcome = test::Run(
            {.arguments = whole, .folder = folder_.Path().string(), .terminalErrors = true});
        const std::vector<std::size_t> fills = FillsOf(outcome.errors);
        EXPECT_THAT(outcome.errors, HasSubstr(std::string("] ") + label)) << arguments[0];
        EXPECT_TRUE(std::is_sorted(fills.begin(), fills.end())) << outcome.errors;
        EXPECT_FALSE(fills.empty()) << outcome.errors;
        EXPECT_TRUE(outcome.errors.ends_with("\r\x1b[K")) << outcome.errors;
    }
}

/// The bars in the output that have this label.
std::string BarsLabelled(const std::string& label, const std::string& errors) {
    std::string bars;
    for (std::size_t end = errors.find("] " + label); end != std::string::npos;
         end = errors.find("] " + label, end + 1)) {
        const std::size_t begin = errors.rfind('[', end);
        bars += errors.substr(begin, end + 1 - begin);
    }
    return bars;
}

TEST_F(CommandLineTest, TheProgressBarMovesWhileJsonOfUnknownSizeIsWritten) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "1000", "a.orvo"}, folder_).exitCode, 0);
    const Outcome outcome = test::Run(
        {.arguments = {"sh", "-c",
                       "exec " + ToolPath() + " convert --full --from orvo - b.json <a.orvo"},
         .folder = folder_.Path().string(),
         .terminalErrors = true});
    const std::vector<std::size_t> fills = FillsOf(BarsLabelled("writing b.json", outcome.errors));
    EXPECT_GE(std::set(fills.begin(), fills.end()).size(), 2u) << outcome.errors;
}

TEST_F(CommandLineTest, AMessageGetsItsOwnLineDuringAProgressBar) {
    folder_.Write("a.orvo", "<orvo><session/><files>\n" + LongText() + "</files></orvo>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "info", "a.orvo", "none.orvo"},
                                       .folder = folder_.Path().string(),
                                       .environment = {{"NO_COLOR", "1"}},
                                       .terminalErrors = true});
    EXPECT_THAT(outcome.errors,
                HasSubstr("\r\x1b[Korvo: none.orvo: no such file: check the path\r\n"));
}

TEST_F(CommandLineTest, TheProgressBarFitsTheTerminal) {
    const std::string session = "<orvo><session/><files>\n" + LongText();
    const std::string name = std::string(60, 'a') + ".orvo";
    folder_.Write(name, session + "</files></orvo>");
    for (const auto& [columns, label] : {std::pair(40, "] reading " + std::string(17, 'a') + "..."),
                                         {0, "] reading " + std::string(57, 'a') + "..."}}) {
        const Outcome outcome =
            test::Run({.arguments = {ToolPath(), "info", name},
                       .folder = folder_.Path().string(),
                       .terminalErrors = true,
                       .terminalColumns = static_cast<unsigned short>(columns)});
        EXPECT_THAT(outcome.errors, HasSubstr(label + "\r"));
    }
}

TEST_F(CommandLineTest, QuickWorkShowsNoProgressBar) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome = test::Run({.arguments = {ToolPath(), "info", "a.orvo"},
                                       .folder = folder_.Path().string(),
                                       .terminalErrors = true});
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsAFailure) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome =
        test::Run({.arguments = {"sh", "-c", "exec " + ToolPath() + " info a.orvo >/dev/full"},
                   .folder = folder_.Path().string()});
    EXPECT_THAT(outcome.errors, StartsWith("orvo: standard output: cannot be written"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(CommandLineTest, MessagesThatCannotBeWrittenDoNotChangeTheExitStatus) {
    for (const char* const where : {"2>/dev/full", "2>&-"}) {
        const auto run = [&](const std::string& arguments) {
            return test::Run(
                {.arguments = {"sh", "-c", "exec " + ToolPath() + " " + arguments + " " + where}});
        };
        EXPECT_EQ(run("info /nowhere/a.orvo").exitCode, 1) << where;
        EXPECT_EQ(run("inf").exitCode, 2) << where;
    }
}

TEST_F(CommandLineTest, AFailedWriteOfOutputReportsOnlyTheReason) {
    ASSERT_EQ(RunTool({"generate", "--tracks", "40", "a.orvo"}, folder_).exitCode, 0);
    for (const char* const verb :
         {"--help", "info --clips a.orvo", "info --json a.orvo", "trace a.orvo a.orvo",
          "relink --search . --dry-run a.orvo", "collect --dry-run a.orvo b"}) {
        const Outcome outcome =
            test::Run({.arguments = {"sh", "-c", "exec " + ToolPath() + " " + verb + " >/dev/full"},
                       .folder = folder_.Path().string()});
        EXPECT_EQ(outcome.errors,
                  "orvo: standard output: cannot be written: No space left on device\n")
            << verb;
        EXPECT_EQ(outcome.exitCode, 1);
    }
}

}  // namespace
