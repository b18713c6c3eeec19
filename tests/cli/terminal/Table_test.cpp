#include "cli/terminal/Table.h"

#include <gtest/gtest.h>

using cli::Align;
using cli::FormatTable;

namespace {

TEST(FormatTable, SeparatesAlignedColumnsByTwoSpaces) {
    EXPECT_EQ(
        FormatTable({{"Id", "Name"}, {"7", "a"}, {"110", "bb"}}, {Align::Right, Align::Left}, " "),
        "  Id  Name\n   7  a\n 110  bb\n");
}

TEST(FormatTable, CountsCharactersAndNotBytes) {
    EXPECT_EQ(FormatTable({{"\xC3\xA4", "x"}, {"ab", "y"}}, {Align::Left, Align::Left}, ""),
              "\xC3\xA4   x\nab  y\n");
}

TEST(FormatTable, AlignsWideCharactersCombiningMarksAndEmoji) {
    EXPECT_EQ(FormatTable({{"\u97f3\u697d", "x"},
                           {"e\u0301t\u00e9", "y"},
                           {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "z"}},
                          {Align::Right, Align::Left}, ""),
              "\u97f3\u697d  x\n e\u0301t\u00e9  y\n"
              "  \U0001F468\u200D\U0001F469\u200D\U0001F467  z\n");
}

TEST(FormatTable, LeavesNoTrailingSpaces) {
    EXPECT_EQ(FormatTable({{"a", ""}, {"b"}, {"", "c"}}, {Align::Left, Align::Left}, ""),
              "a\nb\n   c\n");
}

}  // namespace
