#include "cli/ProgressBar.h"

#include <gtest/gtest.h>

using cli::FormatProgress;

namespace {

TEST(FormatProgress, FillsTheBarByTheShareThatIsDone) {
    EXPECT_EQ(FormatProgress("a", 0, 7), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 1, 7), "[####........................] a");
    EXPECT_EQ(FormatProgress("a", 7, 7), "[############################] a");
}

TEST(FormatProgress, StaysWithinTheBarForAbsurdCounts) {
    EXPECT_EQ(FormatProgress("a", 9, 7), "[############################] a");
    EXPECT_EQ(FormatProgress("a", 3, 0), "[............................] a");
    EXPECT_EQ(FormatProgress("a", 4294967295, 4294967295), "[############################] a");
}

}  // namespace
