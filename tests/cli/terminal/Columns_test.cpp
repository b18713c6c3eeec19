#include "cli/terminal/Columns.h"

#include <gtest/gtest.h>

using cli::ColumnsOf;
using cli::FirstShownCharacter;

namespace {

TEST(Columns, ALetterTakesOneAndAnIdeographTwo) {
    EXPECT_EQ(ColumnsOf(""), 0u);
    EXPECT_EQ(ColumnsOf("a\u00e4\u03a9"), 3u);
    EXPECT_EQ(ColumnsOf("\u97f3\u697d"), 4u);
    EXPECT_EQ(ColumnsOf("\uff21"), 2u) << "a full-width letter";
    EXPECT_EQ(ColumnsOf("\uff71"), 1u) << "a half-width one";
    EXPECT_EQ(ColumnsOf("\uac00"), 2u) << "a syllable of Hangul";
}

TEST(Columns, CombiningMarksTakeNone) {
    EXPECT_EQ(ColumnsOf("a\u0308"), 1u);
    EXPECT_EQ(ColumnsOf("e\u0301\u0323x"), 2u);
    EXPECT_EQ(ColumnsOf("\u1112\u1161\u11ab"), 2u) << "a syllable of Hangul in its parts";
}

TEST(Columns, AnEmojiSequenceIsOneCharacter) {
    EXPECT_EQ(ColumnsOf("\U0001F600"), 2u);
    EXPECT_EQ(ColumnsOf("\U0001F44D\U0001F3FD"), 2u) << "with the colour of the skin";
    EXPECT_EQ(ColumnsOf("\U0001F468\u200D\U0001F469\u200D\U0001F467"), 2u) << "a family";
    EXPECT_EQ(ColumnsOf("\U0001F1E9\U0001F1EA"), 2u) << "a flag";
    EXPECT_EQ(ColumnsOf("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), 4u) << "two flags";
    EXPECT_EQ(ColumnsOf("\u2764\uFE0F"), 2u) << "a heart in the style of emoji";
    EXPECT_EQ(ColumnsOf("\u2764"), 1u) << "and as text";
    EXPECT_EQ(ColumnsOf("1\uFE0F\u20E3"), 2u) << "a key";
}

TEST(Columns, AStrayByteTakesOneColumn) {
    EXPECT_EQ(ColumnsOf("a\xFFz"), 3u);
    EXPECT_EQ(ColumnsOf("\xE9\x9F"), 2u);
}

TEST(Columns, TheFirstCharacterHasAllItsParts) {
    EXPECT_EQ(FirstShownCharacter("a\u0308b").size, 3u);
    EXPECT_EQ(FirstShownCharacter("\U0001F44D\U0001F3FDx").size, 8u);
}

}  // namespace
