#include "cli/terminal/ProgressBar.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <new>
#include <stdexcept>
#include <thread>

#include "cli/files/ReadProgress.h"
#include "tests/support/TemporaryFolder.h"

using cli::FormatProgress;
using cli::Progress;

namespace {

TEST(FormatProgress, FillsTheBarInProportion) {
    EXPECT_EQ(FormatProgress("a", 0, 7, 80), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 1, 7, 80), "[####........................] a");
    EXPECT_EQ(FormatProgress("a", 7, 7, 80), "[############################] a");
}

TEST(FormatProgress, StaysWithinTheBarForAbsurdCounts) {
    EXPECT_EQ(FormatProgress("a", 9, 7, 80), "[############################] a");
    EXPECT_EQ(FormatProgress("a", 3, 0, 80), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 4294967295, 4294967295, 80), "[############################] a");
}

TEST(FormatProgress, LeavesTheLastColumnFreeAndShrinksTheBarBeforeItCutsTheLabel) {
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 7, 46),
              "[####........................] reading a.orvo");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 2, 45),
              "[#############..............] reading a.orvo");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 2, 26), "[####....] reading a.orvo");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 2, 25), "[####....] reading a....");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 2, 16), "[####....] r...");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 2, 15), "[####....]");
}

TEST(FormatProgress, CutsTheLabelBetweenCharactersAndCountsWideOnes) {
    EXPECT_EQ(FormatProgress("\u00e9\u00e9\u00e9\u00e9\u00e9", 0, 7, 16), "[........] \u00e9...");
    EXPECT_EQ(FormatProgress("\u97f3\u97f3\u97f3", 0, 7, 18), "[........] \u97f3\u97f3\u97f3");
    EXPECT_EQ(FormatProgress("\u97f3\u97f3\u97f3", 0, 7, 17), "[........] \u97f3...");
}

TEST(FormatProgress, KeepsCombiningMarksAndEmojiSequencesTogether) {
    EXPECT_EQ(FormatProgress("e\u0301e\u0301e\u0301e\u0301", 0, 7, 16),
              "[........] e\u0301e\u0301e\u0301e\u0301");
    EXPECT_EQ(FormatProgress("\U0001F44D\U0001F3FD\U0001F44D\U0001F3FDab", 0, 7, 17),
              "[........] \U0001F44D\U0001F3FD...");
}

TEST(FormatProgress, MakesTheBarShorterThanItsMinimumOnlyIfThereIsNoRoom) {
    EXPECT_EQ(FormatProgress("a", 1, 2, 11), "[####....]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 8), "[##...]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 3), "[]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 2), "[");
    EXPECT_EQ(FormatProgress("a", 1, 2, 0), "");
}

TEST(Progress, AdvancesThroughItsPhasesByWeight) {
    Progress progress("a.orvo", {{"reading", 3}, {"writing", 1}});
    EXPECT_EQ(progress.Share(), 0);
    {
        const Progress::Phase reading = progress.Begin("reading");
        reading.Update(1, 3);
        EXPECT_DOUBLE_EQ(progress.Share(), 0.25);
    }
    EXPECT_DOUBLE_EQ(progress.Share(), 0.75) << "a phase that has ended is whole";
    const Progress::Phase writing = progress.Begin("writing");
    EXPECT_DOUBLE_EQ(progress.Share(), 0.75);
    writing.Update(1, 2);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.875);
}

TEST(Progress, NeverGoesBackOrBeyondAPhase) {
    Progress progress("a.orvo", {{"reading", 1}, {"writing", 1}});
    const Progress::Phase reading = progress.Begin("reading");
    reading.Update(3, 4);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.375);
    reading.Update(1, 4);
    reading.Update(1, 0);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.375);
    reading.Update(9, 4);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.5);
}

TEST(Progress, SkipsPhasesThatDoNotBegin) {
    Progress progress("a.orvo", {{"reading", 1}, {"scanning", 1}, {"reading", 2}});
    const Progress::Phase first = progress.Begin("reading");
    const Progress::Phase second = progress.Begin("reading", "b.orvo");
    EXPECT_DOUBLE_EQ(progress.Share(), 0.5);
    first.Update(1, 1);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.5) << "the first one is over";
    second.Update(1, 2);
    EXPECT_DOUBLE_EQ(progress.Share(), 0.75);
    EXPECT_THROW(progress.Begin("scanning"), std::logic_error);
}

TEST(Progress, PollsTheSourceOfAPhase) {
    Progress progress("a.orvo", {{"reading", 1}, {"writing", 1}});
    std::optional<double> share = 0.5;
    {
        const Progress::Phase reading = progress.Begin("reading");
        reading.Watch([&share] { return share; });
        EXPECT_DOUBLE_EQ(progress.Share(), 0.25);
        share = std::nullopt;
        EXPECT_DOUBLE_EQ(progress.Share(), 0.25) << "it cannot be told now";
    }
    share = 0;
    EXPECT_DOUBLE_EQ(progress.Share(), 0.5) << "it is not asked any more";
}

TEST(Progress, ContinuesWithoutABarWhenTheTerminalGoesAway) {
    EXPECT_EXIT(
        {
            int controlling = -1;
            int terminal = -1;
            ::signal(SIGHUP, SIG_IGN);
            ::openpty(&controlling, &terminal, nullptr, nullptr, nullptr);
            ::dup2(terminal, STDERR_FILENO);
            {
                Progress progress("a.orvo", {{"reading", 1}});
                ::close(controlling);
                std::this_thread::sleep_for(std::chrono::seconds(1));
            }
            ::_exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(Progress, ContinuesWithoutABarThatCannotBeDrawn) {
    EXPECT_EXIT(
        {
            int controlling = -1;
            int terminal = -1;
            ::openpty(&controlling, &terminal, nullptr, nullptr, nullptr);
            ::dup2(terminal, STDERR_FILENO);
            {
                Progress progress("a.orvo", {{"reading", 1}});
                const Progress::Phase reading = progress.Begin("reading");
                reading.Watch([]() -> std::optional<double> { throw std::bad_alloc(); });
                std::this_thread::sleep_for(std::chrono::seconds(1));
            }
            ::_exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(ShareRead, ReturnsThePositionOfTheReader) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Write("a.orvo", std::string(1000, 'a'));
    const cli::ShareSource share = cli::ShareRead(path);
    EXPECT_EQ(share(), std::nullopt) << "nobody has it open";
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    char block[250];
    ASSERT_EQ(::read(descriptor, block, sizeof block), 250);
    EXPECT_EQ(share(), 0.25);
    ::close(descriptor);
    EXPECT_EQ(cli::ShareRead(folder / "none.orvo")(), std::nullopt);
}

}  // namespace
