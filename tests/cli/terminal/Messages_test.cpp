#include "cli/terminal/Messages.h"

#include <gtest/gtest.h>

using cli::FormatMessage;

namespace {

TEST(FormatMessage, OmitsMissingParts) {
    EXPECT_EQ(
        FormatMessage({.subject = "a.orvo", .place = {2, 7}, .what = "odd", .advice = "mend it"}),
        "orvo: a.orvo:2:7: odd: mend it");
    EXPECT_EQ(FormatMessage({.subject = "a.orvo", .what = "odd"}), "orvo: a.orvo: odd");
    EXPECT_EQ(FormatMessage({.subject = {}, .what = "odd"}), "orvo: odd");
}

TEST(FormatMessage, StaysOnOneLine) {
    EXPECT_EQ(FormatMessage({.subject = "a\nb", .what = "odd\x1b[1m"}),
              "orvo: a\\x0ab: odd\\x1b[1m");
    EXPECT_EQ(FormatMessage({.subject = "a\x7F", .what = "odd"}), "orvo: a\\x7f: odd");
}

TEST(FormatMessage, ShowsControlCharactersAboveAsciiAsText) {
    EXPECT_EQ(FormatMessage({.subject = "\u009b1m\u0080\u009f\u00a0\u0120", .what = "odd"}),
              "orvo: \\xc2\\x9b1m\\xc2\\x80\\xc2\\x9f\u00a0\u0120: odd");
}

TEST(FormatMessage, ShowsStrayBytesAsText) {
    EXPECT_EQ(FormatMessage({.subject = "\xff\u00e9\xc3", .what = "\xed\xa0\x80"}),
              "orvo: \\xff\u00e9\\xc3: \\xed\\xa0\\x80");
}

}  // namespace
