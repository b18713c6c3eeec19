#include "toolkit/Timecode.h"

#include <gtest/gtest.h>

#include <limits>

using orvo::TimeFormat;
using toolkit::FormatTimecode;

namespace {

using orvo::TimeDisplay;

constexpr kelcore::uint32 kRate = 48000;

/// The samples of so many frames of NTSC at 30 frames.
constexpr kelcore::int64 NtscFrames(kelcore::int64 count) {
    return count * kRate * 1001 / 30000;
}

TEST(Timecode, CountsFramesBehindTheSeconds) {
    const TimeFormat format{.format = TimeDisplay::Timecode, .frameRate = 25};
    EXPECT_EQ(FormatTimecode(0, kRate, format), "00:00:00:00");
    EXPECT_EQ(FormatTimecode(3600LL * kRate, kRate, format), "01:00:00:00");
    EXPECT_EQ(FormatTimecode(kRate + 24 * 1920, kRate, format), "00:00:01:24");
    EXPECT_EQ(FormatTimecode(2 * kRate - 959, kRate, format), "00:00:02:00") << "the nearest frame";
    EXPECT_EQ(FormatTimecode(-48000, kRate, format), "-00:00:01:00");
}

TEST(Timecode, NtscLastsLonger) {
    EXPECT_EQ(
        FormatTimecode(NtscFrames(108000), kRate, {.format = TimeDisplay::Ntsc30, .frameRate = 30}),
        "01:00:00:00");
    EXPECT_EQ(FormatTimecode(kRate * 1001LL * 60 / 1000, kRate, {.format = TimeDisplay::Ntsc60}),
              "00:01:00:00");
    EXPECT_EQ(FormatTimecode(kRate * 1001LL * 60 / 1000, kRate, {.format = TimeDisplay::Ntsc24}),
              "00:01:00:00");
}

TEST(Timecode, LessThanHalfAFrameHasNoSign) {
    EXPECT_EQ(FormatTimecode(-1, kRate, {.format = TimeDisplay::Timecode, .frameRate = 25}),
              "00:00:00:00");
    EXPECT_EQ(FormatTimecode(-48000, kRate, {.format = TimeDisplay::Timecode, .frameRate = 25}),
              "-00:00:01:00");
}

TEST(Timecode, DropFrameLeavesOutTwoNumbersAMinuteButEveryTenth) {
    const TimeFormat format{
        .format = TimeDisplay::Ntsc30Drop, .frameRate = 30, .ntsc = true, .dropFrame = true};
    EXPECT_EQ(FormatTimecode(NtscFrames(1799), kRate, format), "00:00:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(1800), kRate, format), "00:01:00;02");
    EXPECT_EQ(FormatTimecode(NtscFrames(3597), kRate, format), "00:01:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(3598), kRate, format), "00:02:00;02");
    EXPECT_EQ(FormatTimecode(NtscFrames(17981), kRate, format), "00:09:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(17982), kRate, format), "00:10:00;00");
    EXPECT_EQ(FormatTimecode(NtscFrames(107892), kRate, format), "01:00:00;00");
    EXPECT_EQ(FormatTimecode(NtscFrames(1800), kRate, {.format = TimeDisplay::Ntsc60Drop}),
              "00:01:00;04")
        << "four at 60";
}

TEST(Timecode, OtherFormatsAreNone) {
    EXPECT_EQ(FormatTimecode(0, kRate, {.format = TimeDisplay::Decimal}), std::nullopt);
    EXPECT_EQ(FormatTimecode(0, kRate, {.format = TimeDisplay::Samples}), std::nullopt);
    EXPECT_EQ(FormatTimecode(0, kRate, {.format = TimeDisplay::BarsAndBeats}), std::nullopt);
    EXPECT_EQ(FormatTimecode(0, 0, {.format = TimeDisplay::Ntsc30}), std::nullopt)
        << "no sample rate";
    EXPECT_EQ(FormatTimecode(0, kRate, {.format = TimeDisplay::Timecode, .frameRate = 0}),
              std::nullopt);
    EXPECT_EQ(FormatTimecode(0, kRate, {.format = TimeDisplay::Timecode, .frameRate = -25}),
              std::nullopt);
}

TEST(Timecode, WhatNoNumberHoldsIsNone) {
    constexpr auto kLast = std::numeric_limits<kelcore::int64>::max();
    EXPECT_EQ(FormatTimecode(kLast, 1, {.format = TimeDisplay::Ntsc30}), std::nullopt);
    EXPECT_EQ(FormatTimecode(kLast, kRate, {.format = TimeDisplay::Timecode, .frameRate = 25}),
              "53375995583:39:01:04");
}

}  // namespace
