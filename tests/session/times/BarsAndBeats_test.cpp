#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include <orvo/Times.h>
#include "tests/session/times/Results.h"

namespace orvo {
namespace {

using test::kFirst;
using test::kLast;
using test::kRate;

/// A beat lasts half a second, a subdivision 1500 samples.
constexpr MusicalTime kMarch{
    .beatsPerMinute = 120, .beatsPerBar = 4, .noteLength = 4, .subdivisions = 16};

std::int64_t Parsed(std::string_view text, const MusicalTime& time, std::uint32_t rate = kRate) {
    return test::PositionIn(ParseBarsAndBeats(text, rate, time));
}

Message Refused(std::string_view text, const MusicalTime& time, std::uint32_t rate = kRate) {
    return test::RefusalIn(ParseBarsAndBeats(text, rate, time));
}

TEST(BarsAndBeats, CountFromOneAndSubdivisionsFromZero) {
    EXPECT_EQ(FormatBarsAndBeats(0, kRate, kMarch), "1:1.00");
    EXPECT_EQ(FormatBarsAndBeats(24000, kRate, kMarch), "1:2.00");
    EXPECT_EQ(FormatBarsAndBeats(4 * 24000 + 24000 + 5 * 1500, kRate, kMarch), "2:2.05");
    EXPECT_EQ(Parsed("2:2.05", kMarch), 127500);
}

TEST(BarsAndBeats, TheNearestSubdivisionIsShownAcrossTheBar) {
    EXPECT_EQ(FormatBarsAndBeats(96000 - 751, kRate, kMarch), "1:4.15");
    EXPECT_EQ(FormatBarsAndBeats(96000 - 749, kRate, kMarch), "2:1.00");
}

TEST(BarsAndBeats, BarZeroComesBeforeTheFirst) {
    EXPECT_EQ(FormatBarsAndBeats(-1500, kRate, kMarch), "0:4.15");
    EXPECT_EQ(FormatBarsAndBeats(-96000, kRate, kMarch), "0:1.00");
    EXPECT_EQ(FormatBarsAndBeats(-96000 - 24000, kRate, kMarch), "-1:4.00");
    EXPECT_EQ(Parsed("-1:4.00", kMarch), -120000);
    EXPECT_EQ(Parsed("-0:1", kMarch), -96000);
}

TEST(BarsAndBeats, ABeatOfOnePartHasNoSubdivisions) {
    const MusicalTime waltz{.beatsPerMinute = 60, .beatsPerBar = 3};
    EXPECT_EQ(FormatBarsAndBeats(std::int64_t{kRate} * 5, kRate, waltz), "2:3");
    EXPECT_EQ(Parsed("2:3", waltz), kRate * 5);
    EXPECT_EQ(Parsed("2:3.0", waltz), kRate * 5);
    EXPECT_EQ(FormatBarsAndBeats(std::int64_t{kRate} * 5, kRate,
                                 {.beatsPerMinute = 60, .beatsPerBar = 3, .subdivisions = -4}),
              "2:3");
}

TEST(BarsAndBeats, TheNoteOfABeatChangesNothing) {
    MusicalTime eighths = kMarch;
    eighths.noteLength = 8;
    EXPECT_EQ(FormatBarsAndBeats(127500, kRate, eighths), "2:2.05");
}

TEST(BarsAndBeats, ATempoWithAFractionDoesNotDrift) {
    // 97.1 beats a minute, a million bars later.
    const MusicalTime time{.beatsPerMinute = 97.1, .beatsPerBar = 4, .subdivisions = 100};
    EXPECT_EQ(Parsed("1000001:1", time), 118640576726);  // 4000000 * 48000 * 60 / 97.1, rounded up
    EXPECT_EQ(FormatBarsAndBeats(118640576726, kRate, time), "1000001:1.00");
}

TEST(BarsAndBeats, ATextIsTheFirstSampleOfItsSubdivision) {
    const MusicalTime time{.beatsPerMinute = 70, .beatsPerBar = 4};  // 41142.86 samples a beat
    EXPECT_EQ(Parsed("1:2", time), 41143);
    EXPECT_EQ(Parsed("0:4", time), -41142);
    EXPECT_EQ(Parsed("2:4", time), 288000);
}

TEST(BarsAndBeats, OtherTextsAreRefusedWithTheForm) {
    for (const char* const text : {"", "1", "1:", ":1", "1.1", "1:1.", "1:1:1", "1:1.0.0", " 1:1",
                                   "1:1 ", "1:-1", "+1:1", "18446744073709551616:1"}) {
        const Message message = Refused(text, kMarch);
        EXPECT_EQ(message.what, "this is not a position in bars and beats") << text;
        EXPECT_EQ(message.advice, "write bar:beat.subdivision, as 3:2.05, or bar:beat") << text;
    }
}

TEST(BarsAndBeats, BeatsAndSubdivisionsThatABarDoesNotHaveAreRefused) {
    EXPECT_EQ(Refused("1:0", kMarch).what, "a bar has no beat 0");
    EXPECT_EQ(Refused("1:5", kMarch).what, "a bar has no beat 5");
    EXPECT_EQ(Refused("1:5", kMarch).advice, "count beats from 1 to 4");
    EXPECT_EQ(Refused("1:1.16", kMarch).what, "a beat has no subdivision 16");
    EXPECT_EQ(Refused("1:1.16", kMarch).advice, "count subdivisions from 0 to 15");
}

TEST(BarsAndBeats, WithoutATempoThereAreNone) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto with = [](double tempo, std::int32_t beats, std::int32_t subdivisions = 1) {
        return MusicalTime{
            .beatsPerMinute = tempo, .beatsPerBar = beats, .subdivisions = subdivisions};
    };
    for (const MusicalTime& time :
         {with(0, 4), with(-120, 4), with(120, 0), with(120, -4), with(std::nan(""), 4),
          with(kInfinity, 4), with(1000001, 4), with(120, 1000001), with(120, 4, 1000001),
          with(0.0000004, 4)}) {
        EXPECT_EQ(FormatBarsAndBeats(0, kRate, time), std::nullopt);
        EXPECT_EQ(Refused("1:1", time).what, "bars and beats need a tempo");
    }
    EXPECT_EQ(FormatBarsAndBeats(0, kRate, with(0.0000005, 1000000, 1000000)), "1:1.000000");
    EXPECT_EQ(FormatBarsAndBeats(0, 0, kMarch), std::nullopt);
    EXPECT_EQ(Refused("1:1", kMarch, 0).what, "a sample rate of 0 has no times");
}

TEST(BarsAndBeats, EveryPositionHasAText) {
    const MusicalTime fast{
        .beatsPerMinute = 1000000, .beatsPerBar = 1, .noteLength = 4, .subdivisions = 1000000};
    // (2^63 - 1) * 10^6 / 60 beats
    EXPECT_EQ(FormatBarsAndBeats(kLast, 1, fast), "153722867280912930116667:1.666667");
    EXPECT_EQ(FormatBarsAndBeats(kFirst, 1, fast), "-153722867280912930133333:1.666667");
}

TEST(BarsAndBeats, APositionBeyond64BitsIsRefused) {
    const MusicalTime seconds{.beatsPerMinute = 60, .beatsPerBar = 1};
    EXPECT_EQ(Parsed("9223372036854775808:1", seconds, 1), kLast);
    EXPECT_EQ(Parsed("-9223372036854775807:1", seconds, 1), kFirst);
    const std::string what = "this position is beyond 64 bits of samples";
    EXPECT_EQ(Refused("9223372036854775809:1", seconds, 1).what, what);
    EXPECT_EQ(Refused("-9223372036854775808:1", seconds, 1).what, what);
    const MusicalTime slow{
        .beatsPerMinute = 0.000001, .beatsPerBar = 1000000, .subdivisions = 1000000};
    EXPECT_EQ(Refused("18446744073709551615:1000000.999999", slow, 4294967295).what, what);
}

RC_GTEST_PROP(BarsAndBeats, APrintedTextReadsAsASampleThatPrintsTheSame, ()) {
    const MusicalTime time{.beatsPerMinute = *rc::gen::inRange(10000, 400000) / 1000.0,
                           .beatsPerBar = *rc::gen::inRange(1, 33),
                           .noteLength = *rc::gen::inRange(1, 33),
                           .subdivisions = *rc::gen::inRange(0, 130)};
    const auto rate = *rc::gen::inRange<std::uint32_t>(8000, 192001);
    const auto position = *rc::gen::inRange<std::int64_t>(-(1LL << 50), 1LL << 50);
    const auto text = FormatBarsAndBeats(position, rate, time);
    const PositionResult read = ParseBarsAndBeats(text.value(), rate, time);
    RC_ASSERT(read.ok);
    RC_ASSERT(FormatBarsAndBeats(read.position, rate, time) == text);
}

}  // namespace
}  // namespace orvo
