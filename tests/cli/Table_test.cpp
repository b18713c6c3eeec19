#include "cli/Table.h"

#include <gtest/gtest.h>

using cli::Align;
using cli::FormatTable;

namespace {

TEST(FormatTable, AlignsColumnsWithTwoBlanksBetween) {
    EXPECT_EQ(
        FormatTable({{"Id", "Name"}, {"7", "a"}, {"110", "bb"}}, {Align::Right, Align::Left}, " "),
        "  Id  Name\n   7  a\n 110  bb\n");
}

TEST(FormatTable, CountsCharactersAndNotBytes) {
    EXPECT_EQ(FormatTable({{"\xC3\xA4", "x"}, {"ab", "y"}}, {Align::Left, Align::Left}, ""),
              "\xC3\xA4   x\nab  y\n");
}

TEST(FormatTable, LeavesNoBlanksAtLineEnds) {
    EXPECT_EQ(FormatTable({{"a", ""}, {"b"}, {"", "c"}}, {Align::Left, Align::Left}, ""),
              "a\nb\n   c\n");
}

}  // namespace
