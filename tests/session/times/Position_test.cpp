#include <gtest/gtest.h>

#include <limits>

#include <orvo/Times.h>

namespace orvo {
namespace {

Session Shown(const TimeFormat& format) {
    return {.timeFormat = format,
            .musicalTime = {.beatsPerMinute = 120, .beatsPerBar = 4, .subdivisions = 10}};
}

void ExpectBothWays(const Session& session, std::int64_t position, const std::string& text) {
    EXPECT_EQ(FormatPosition(session, position), text);
    EXPECT_EQ(ParsePosition(session, text), (PositionResult{.ok = true, .position = position}));
}

TEST(Position, IsShownAsTheSessionShowsTimes) {
    using enum TimeDisplay;
    ExpectBothWays(Shown({.format = Decimal}), 72000, "0:00:01.500");
    ExpectBothWays(Shown({.format = Samples}), 72000, "72000");
    ExpectBothWays(Shown({.format = Timecode, .frameRate = 24}), 72000, "00:00:01:12");
    ExpectBothWays(Shown({.format = Ntsc30}), 72072, "00:00:01:15");
    ExpectBothWays(Shown({.format = Ntsc30Drop}), 2882880, "00:01:00;02");
    ExpectBothWays(Shown({.format = Ntsc60}), 72072, "00:00:01:30");
    ExpectBothWays(Shown({.format = Ntsc60Drop}), 2882880, "00:01:00;04");
    ExpectBothWays(Shown({.format = Ntsc24}), 72072, "00:00:01:12");
    ExpectBothWays(Shown({.format = BarsAndBeats}), 72000, "1:4.0");
}

TEST(Position, AFormatThatIsTheHostsOwnIsShownAsTime) {
    ExpectBothWays(Shown({.format = TimeDisplay{7}, .frameRate = 25}), -72000, "-0:00:01.500");
}

TEST(Position, TimecodeWithoutAFrameRateIsShownAsTime) {
    ExpectBothWays(Shown({.format = TimeDisplay::Timecode}), 72000, "0:00:01.500");
}

TEST(Position, BarsAndBeatsWithoutATempoAreShownAsTime) {
    Session session = Shown({.format = TimeDisplay::BarsAndBeats});
    session.musicalTime = {};
    ExpectBothWays(session, 72000, "0:00:01.500");
}

TEST(Position, WithoutASampleRateItIsShownAsSamples) {
    using enum TimeDisplay;
    for (const TimeDisplay format : {Decimal, Samples, Ntsc30, BarsAndBeats}) {
        Session session = Shown({.format = format});
        session.sampleRate = 0;
        ExpectBothWays(session, -72000, "-72000");
    }
}

TEST(Position, TheTimecodeOfTheFirstSampleDoesNotCount) {
    Session session = Shown({.format = TimeDisplay::Ntsc24});
    session.smpteStart = std::int64_t{3600} * 48000;
    ExpectBothWays(session, 0, "00:00:00:00");
}

TEST(Position, EveryCountOfSamplesReadsBack) {
    using Limits = std::numeric_limits<std::int64_t>;
    const Session session = Shown({.format = TimeDisplay::Samples});
    ExpectBothWays(session, Limits::max(), "9223372036854775807");
    ExpectBothWays(session, Limits::min(), "-9223372036854775808");
    EXPECT_EQ(ParsePosition(session, "9223372036854775808").messages.at(0).what,
              "this position is beyond 64 bits of samples");
    for (const char* const text : {"", "-", "1.5", "1 ", "x"}) {
        EXPECT_EQ(ParsePosition(session, text).messages.at(0).what,
                  "this is not a number of samples");
    }
}

TEST(Position, ATextOfAnotherFormatIsRefused) {
    EXPECT_FALSE(ParsePosition(Shown({.format = TimeDisplay::Ntsc30}), "0:00:01.500"));
    EXPECT_FALSE(ParsePosition(Shown({}), "00:00:01:12"));
}

}  // namespace
}  // namespace orvo
