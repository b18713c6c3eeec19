#include "cli/ProgressBar.h"

#include <gtest/gtest.h>

using cli::FormatProgress;

namespace {

TEST(FormatProgress, FillsTheBarByTheShareThatIsDone) {
    EXPECT_EQ(FormatProgress("a", 0, 7, 80), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 1, 7, 80), "[####........................] a");
    EXPECT_EQ(FormatProgress("a", 7, 7, 80), "[############################] a");
}

TEST(FormatProgress, StaysWithinTheBarForAbsurdCounts) {
    EXPECT_EQ(FormatProgress("a", 9, 7, 80), "[############################] a");
    EXPECT_EQ(FormatProgress("a", 3, 0, 80), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 4294967295, 4294967295, 80), "[############################] a");
}

TEST(FormatProgress, LeavesTheLastColumnFreeAndCutsTheLabel) {
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 7, 46),
              "[####........................] reading a.orvo");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 7, 45),
              "[####........................] reading a....");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 7, 36), "[####........................] r...");
    EXPECT_EQ(FormatProgress("reading a.orvo", 1, 7, 35), "[####........................]");
}

TEST(FormatProgress, CutsTheLabelBehindAWholeCharacterAndTakesWideOnesForWide) {
    EXPECT_EQ(FormatProgress("\u00e9\u00e9\u00e9\u00e9\u00e9", 0, 7, 36),
              "[............................] \u00e9...");
    EXPECT_EQ(FormatProgress("\u97f3\u97f3\u97f3", 0, 7, 38),
              "[............................] \u97f3\u97f3\u97f3");
    EXPECT_EQ(FormatProgress("\u97f3\u97f3\u97f3", 0, 7, 37),
              "[............................] \u97f3...");
}

TEST(FormatProgress, MakesTheBarShorterOnlyWhereThereIsNoRoomForIt) {
    EXPECT_EQ(FormatProgress("a", 1, 2, 31), "[##############..............]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 11), "[####....]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 3), "[]");
    EXPECT_EQ(FormatProgress("a", 1, 2, 2), "[");
    EXPECT_EQ(FormatProgress("a", 1, 2, 0), "");
}

}  // namespace
