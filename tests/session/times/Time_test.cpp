#include <orvo/Times.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "tests/session/times/Results.h"

namespace orvo {
namespace {

using test::kFirst;
using test::kLast;
using test::kRate;

std::int64_t Parsed(std::string_view text, std::uint32_t sampleRate = kRate) {
    return test::PositionIn(ParseTime(text, sampleRate));
}

Message Refused(std::string_view text, std::uint32_t sampleRate = kRate) {
    return test::RefusalIn(ParseTime(text, sampleRate));
}

TEST(FormatTime, ShowsHoursMinutesSecondsAndMilliseconds) {
    EXPECT_EQ(FormatTime(0, kRate), "0:00:00.000");
    EXPECT_EQ(FormatTime(48000LL * 3723 + 24000, kRate), "1:02:03.500");
}

TEST(FormatTime, RoundsToTheNearestMillisecondAcrossTheSecond) {
    EXPECT_EQ(FormatTime(47999, kRate), "0:00:01.000");
    EXPECT_EQ(FormatTime(23, kRate), "0:00:00.000");
    EXPECT_EQ(FormatTime(24, kRate), "0:00:00.001");
}

TEST(FormatTime, KeepsTheSign) {
    EXPECT_EQ(FormatTime(-48000, kRate), "-0:00:01.000");
    EXPECT_EQ(FormatTime(-24, kRate), "-0:00:00.001") << "away from 0";
    EXPECT_EQ(FormatTime(-1, kRate), "0:00:00.000");
}

TEST(FormatTime, HoldsForEveryCountOfSamples) {
    EXPECT_EQ(FormatTime(kFirst, 1), "-2562047788015215:30:08.000");
    EXPECT_EQ(FormatTime(kLast, 4294967295), "596523:14:08.500");
    EXPECT_EQ(FormatTime(kFirst, 1, 9), "-2562047788015215:30:08.000000000");
}

TEST(FormatTime, HasNoTimeWithoutARate) {
    EXPECT_EQ(FormatTime(1, 0), std::nullopt);
    EXPECT_EQ(FormatSeconds(1, 0), std::nullopt);
}

TEST(FormatTime, HasAsManyDecimalsAsAreWanted) {
    EXPECT_EQ(FormatTime(kRate / 2, kRate, 0), "0:00:01");
    EXPECT_EQ(FormatTime(1, kRate, 6), "0:00:00.000021");
    EXPECT_EQ(FormatTime(1, kRate, 10), "0:00:00.000020833") << "no more than nine";
}

TEST(FormatSeconds, ShowsSecondsAlone) {
    EXPECT_EQ(FormatSeconds(kRate * 3723LL + 24000, kRate), "3723.500");
    EXPECT_EQ(FormatSeconds(-90LL * kRate, kRate, 0), "-90");
    EXPECT_EQ(FormatSeconds(-1, kRate), "0.000");
}

TEST(ParseTime, ReadsHoursMinutesAndSecondsOrLess) {
    EXPECT_EQ(Parsed("1:02:03.500"), 48000LL * 3723 + 24000);
    EXPECT_EQ(Parsed("62:03.5"), 48000LL * 3723 + 24000);
    EXPECT_EQ(Parsed("3723.5"), 48000LL * 3723 + 24000);
    EXPECT_EQ(Parsed("-0:00:01"), -48000);
    EXPECT_EQ(Parsed("-0"), 0);
}

TEST(ParseTime, TakesTheNearestSample) {
    EXPECT_EQ(Parsed("0.00001", 50000), 1) << "half a sample, away from 0";
    EXPECT_EQ(Parsed("-0.00001", 50000), -1);
    EXPECT_EQ(Parsed("0.000009999999999999", 50000), 0);
    EXPECT_EQ(Parsed("0.000020833"), 1);
}

TEST(ParseTime, OtherTextsAreRefusedWithTheForms) {
    for (const char* const text : {"",
                                   "-",
                                   ".",
                                   "1.",
                                   ".5",
                                   "1:",
                                   ":1",
                                   "1:60",
                                   "1:60:00",
                                   "1:00:60",
                                   "1:00:00:00",
                                   "1,5",
                                   "1e3",
                                   " 1",
                                   "1 ",
                                   "+1",
                                   "--1",
                                   "1:-1",
                                   "0.0000000000000000000",
                                   "0x1",
                                   "18446744073709551616"}) {
        const Message message = Refused(text);
        EXPECT_EQ(message.what, "this is not a time") << text;
        EXPECT_EQ(message.advice, "write h:mm:ss.mmm, as 1:02:03.500, or seconds, as 3723.5");
    }
}

TEST(ParseTime, APositionBeyond64BitsIsRefused) {
    EXPECT_EQ(Parsed("9223372036854775807", 1), kLast);
    EXPECT_EQ(Parsed("-9223372036854775808", 1), kFirst);
    const std::string what = "this position is beyond 64 bits of samples";
    EXPECT_EQ(Refused("9223372036854775808", 1).what, what);
    EXPECT_EQ(Refused("-9223372036854775809", 1).what, what);
    EXPECT_EQ(Refused("18446744073709551615:59:59.999999999999999999", 4294967295).what, what);
}

TEST(ParseTime, HasNoPositionWithoutARate) {
    EXPECT_EQ(Refused("0", 0).what, "a sample rate of 0 has no times");
    EXPECT_EQ(Refused("0", 0).advice, "use positions in samples");
}

// A sample lasts longer than a billionth of a second, so that nine digits tell all apart.
RC_GTEST_PROP(ParseTime, NineDecimalsGiveThePositionBack, (std::int64_t position)) {
    const auto sampleRate = *rc::gen::inRange<std::uint32_t>(1, 1000000000);
    RC_ASSERT(ParseTime(FormatTime(position, sampleRate, 9).value(), sampleRate).position ==
              position);
    RC_ASSERT(ParseTime(FormatSeconds(position, sampleRate, 9).value(), sampleRate).position ==
              position);
}

RC_GTEST_PROP(ParseTime, AMillisecondReadsAsASampleThatPrintsTheSame, (std::int64_t position)) {
    const auto sampleRate = *rc::gen::inRange<std::uint32_t>(2000, 4294967295);
    const auto text = FormatTime(position / 2, sampleRate);
    RC_ASSERT(FormatTime(ParseTime(text.value(), sampleRate).position, sampleRate) == text);
}

}  // namespace
}  // namespace orvo
