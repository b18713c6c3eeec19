#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdio>
#include <limits>
#include <sstream>

#include <orvo/Times.h>
#include "tests/session/times/Results.h"

namespace orvo {
namespace {

using test::kFirst;
using test::kLast;
using test::kRate;

constexpr FrameRate kFilm{.count = 24};
constexpr FrameRate kPal{.count = 25};
constexpr FrameRate kNtsc24{.count = 24, .ntsc = true};
constexpr FrameRate kNtsc30{.count = 30, .ntsc = true};
constexpr FrameRate kNtsc60{.count = 60, .ntsc = true};
constexpr FrameRate kNtsc30Drop{.count = 30, .ntsc = true, .dropFrame = true};
constexpr FrameRate kNtsc60Drop{.count = 60, .ntsc = true, .dropFrame = true};
constexpr FrameRate kCompactDisc{.count = 75};

/// The last sample at or before the start of frame `count` of NTSC at 30.
constexpr std::int64_t NtscFrames(std::int64_t count) {
    return count * kRate * 1001 / 30000;
}

std::int64_t Parsed(std::string_view text, const FrameRate& rate,
                    std::uint32_t sampleRate = kRate) {
    return test::PositionIn(ParseTimecode(text, sampleRate, rate));
}

Message Refused(std::string_view text, const FrameRate& rate, std::uint32_t sampleRate = kRate) {
    return test::RefusalIn(ParseTimecode(text, sampleRate, rate));
}

TEST(Timecode, CountsFramesAfterTheSeconds) {
    EXPECT_EQ(FormatTimecode(0, kRate, kPal), "00:00:00:00");
    EXPECT_EQ(FormatTimecode(3600LL * kRate, kRate, kPal), "01:00:00:00");
    EXPECT_EQ(FormatTimecode(kRate + 24 * 1920, kRate, kPal), "00:00:01:24");
    EXPECT_EQ(FormatTimecode(2 * kRate - 959, kRate, kPal), "00:00:02:00") << "the nearest frame";
    EXPECT_EQ(FormatTimecode(-48000, kRate, kPal), "-00:00:01:00");
    EXPECT_EQ(FormatTimecode(kRate * 3 / 2, kRate, kFilm), "00:00:01:12");
    EXPECT_EQ(FormatTimecode(kRate - 640, kRate, kCompactDisc), "00:00:00:74");
}

TEST(Timecode, HoursGoOnBeyondADay) {
    EXPECT_EQ(FormatTimecode(100LL * 3600 * kRate, kRate, kPal), "100:00:00:00");
    EXPECT_EQ(Parsed("100:00:00:00", kPal), 100LL * 3600 * kRate);
}

TEST(Timecode, FramesHaveAsManyDigitsAsTheHighestNumber) {
    EXPECT_EQ(FormatTimecode(0, kRate, {.count = 10}), "00:00:00:00");
    EXPECT_EQ(FormatTimecode(0, kRate, {.count = 100}), "00:00:00:00");
    EXPECT_EQ(FormatTimecode(400, kRate, {.count = 120}), "00:00:00:001");
    EXPECT_EQ(Parsed("0:0:0:1", {.count = 120}), 400);
}

TEST(Timecode, NtscFramesLastLonger) {
    EXPECT_EQ(FormatTimecode(NtscFrames(108000), kRate, kNtsc30), "01:00:00:00");
    EXPECT_EQ(FormatTimecode(kRate * 1001LL * 60 / 1000, kRate, kNtsc60), "00:01:00:00");
    EXPECT_EQ(FormatTimecode(kRate * 1001LL * 60 / 1000, kRate, kNtsc24), "00:01:00:00");
    EXPECT_EQ(Parsed("00:01:00:00", kNtsc24), kRate * 1001LL * 60 / 1000);
}

TEST(Timecode, LessThanHalfAFrameHasNoSign) {
    EXPECT_EQ(FormatTimecode(-959, kRate, kPal), "00:00:00:00");
    EXPECT_EQ(FormatTimecode(-960, kRate, kPal), "-00:00:00:01");
    EXPECT_EQ(Parsed("-00:00:00:00", kPal), 0);
}

TEST(Timecode, DropFrameSkipsTwoNumbersAMinuteExceptEveryTenth) {
    EXPECT_EQ(FormatTimecode(NtscFrames(1799), kRate, kNtsc30Drop), "00:00:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(1800), kRate, kNtsc30Drop), "00:01:00;02");
    EXPECT_EQ(FormatTimecode(NtscFrames(3597), kRate, kNtsc30Drop), "00:01:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(3598), kRate, kNtsc30Drop), "00:02:00;02");
    EXPECT_EQ(FormatTimecode(NtscFrames(17981), kRate, kNtsc30Drop), "00:09:59;29");
    EXPECT_EQ(FormatTimecode(NtscFrames(17982), kRate, kNtsc30Drop), "00:10:00;00");
    EXPECT_EQ(FormatTimecode(NtscFrames(107892), kRate, kNtsc30Drop), "01:00:00;00");
    EXPECT_EQ(FormatTimecode(NtscFrames(1800), kRate, kNtsc60Drop), "00:01:00;04") << "four at 60";
}

/// Counts the labels of a day as a clock does, one frame after the other.
class DropFrameClock {
public:
    explicit DropFrameClock(int perSecond) : perSecond_(perSecond) {}

    std::string Label() const {
        char text[32];
        std::snprintf(text, sizeof text, "%02d:%02d:%02d;%02d", hours_, minutes_, seconds_,
                      frames_);
        return text;
    }

    void Tick() {
        if (++frames_ < perSecond_) {
            return;
        }
        frames_ = 0;
        if (++seconds_ < 60) {
            return;
        }
        seconds_ = 0;
        if (++minutes_ == 60) {
            minutes_ = 0;
            ++hours_;
        }
        if (minutes_ % 10 != 0) {
            frames_ = perSecond_ == 60 ? 4 : 2;
        }
    }

    bool IsMidnight() const { return hours_ == 24; }

private:
    int perSecond_;
    int hours_ = 0;
    int minutes_ = 0;
    int seconds_ = 0;
    int frames_ = 0;
};

/// @return the frames of the day
std::int64_t CheckDay(const FrameRate& rate) {
    // At this sample rate a frame lasts 1001 samples.
    const std::uint32_t sampleRate = rate.count * 1000;
    DropFrameClock clock(static_cast<int>(rate.count));
    std::int64_t frame = 0;
    for (; !clock.IsMidnight(); ++frame, clock.Tick()) {
        const std::string label = clock.Label();
        if (FormatTimecode(frame * 1001, sampleRate, rate) != label ||
            ParseTimecode(label, sampleRate, rate).position != frame * 1001) {
            ADD_FAILURE() << "frame " << frame << " is not " << label;
            break;
        }
    }
    return frame;
}

TEST(Timecode, DropFrameAt30IsWhatAClockCountsForADay) {
    EXPECT_EQ(CheckDay(kNtsc30Drop), 2589408);
}

TEST(Timecode, DropFrameAt60IsWhatAClockCountsForADay) {
    EXPECT_EQ(CheckDay(kNtsc60Drop), 5178816);
}

TEST(Timecode, ADroppedNumberIsRefusedWithTheFirstOfItsMinute) {
    EXPECT_EQ(Refused("00:01:00;01", kNtsc30Drop).advice, "start this minute with frame 2");
    EXPECT_EQ(Refused("00:59:00;03", kNtsc60Drop).advice, "start this minute with frame 4");
    EXPECT_EQ(Parsed("00:10:00;00", kNtsc30Drop, 30000), 17982 * 1001);
    EXPECT_EQ(Parsed("00:01:01;00", kNtsc30Drop, 30000), 1828 * 1001);
    EXPECT_EQ(Parsed("00:01:00:00", kNtsc30, 30000), 1800 * 1001) << "not without drop frame";
}

TEST(Timecode, ASemicolonMeansDropFrameAndAColonEither) {
    EXPECT_EQ(Parsed("00:10:00:00", kNtsc30Drop, 30000), 17982 * 1001);
    EXPECT_EQ(Refused("00:10:00;00", kNtsc30).advice, "put a colon before the frames");
}

TEST(Timecode, ATextIsTheFirstSampleOfItsFrame) {
    // A frame of NTSC lasts 1601.6 samples.
    EXPECT_EQ(Parsed("00:00:00:01", kNtsc30), 1602);
    EXPECT_EQ(Parsed("00:00:00:05", kNtsc30), 8008);
    EXPECT_EQ(Parsed("-00:00:00:01", kNtsc30), -1601);
    EXPECT_EQ(Parsed("-00:00:00:05", kNtsc30), -8008);
}

TEST(Timecode, TextsThatAreNotTimecodeAreRefusedWithTheForm) {
    for (const char* const text :
         {"", "-", "1", "00:00:00", "00:00:00:", "00:00:00:00:00", "00:00:00:00 ", " 00:00:00:00",
          "+00:00:00:00", "00:00:00:-1", "00:60:00:00", "00:00:60:00", "00;00:00:00", "00:00:00.00",
          "0x:00:00:00", "--00:00:00:00", "18446744073709551616:00:00:00"}) {
        const Message message = Refused(text, kPal);
        EXPECT_EQ(message.what, "this is not timecode") << text;
        EXPECT_EQ(message.advice, "write hh:mm:ss:ff, as 01:00:00:00") << text;
    }
}

TEST(Timecode, AFrameBeyondTheSecondIsRefused) {
    const Message message = Refused("00:00:00:25", kPal);
    EXPECT_EQ(message.what, "a second has no frame 25");
    EXPECT_EQ(message.advice, "count frames from 0 to 24");
    EXPECT_EQ(Parsed("00:00:00:24", kPal), 24 * 1920);
}

TEST(Timecode, WithoutARateThereIsNone) {
    EXPECT_EQ(FormatTimecode(0, 0, kPal), std::nullopt);
    EXPECT_EQ(FormatTimecode(0, kRate, {.count = 0}), std::nullopt);
    EXPECT_EQ(FormatTimecode(0, kRate, {.count = 25, .dropFrame = true}), std::nullopt);
    EXPECT_EQ(Refused("00:00:00:00", kPal, 0).what, "a sample rate of 0 has no times");
    EXPECT_EQ(Refused("00:00:00:00", {.count = 0}).what,
              "there is no timecode with this frame rate");
    EXPECT_EQ(Refused("00:00:00:00", {.count = 25, .ntsc = true, .dropFrame = true}).what,
              "there is no timecode with this frame rate");
}

TEST(Timecode, EveryPositionHasAText) {
    EXPECT_EQ(FormatTimecode(kLast, kRate, kPal), "53375995583:39:01:04");
    EXPECT_EQ(FormatTimecode(kFirst, kRate, kPal), "-53375995583:39:01:04");
    EXPECT_EQ(FormatTimecode(kLast, 1, {.count = 4294967295}), "2562047788015215:30:07:0000000000");
    EXPECT_EQ(FormatTimecode(kFirst, 1, {.count = 1}), "-2562047788015215:30:08:00");
    EXPECT_EQ(
        FormatTimecode(kLast, 4294967295, {.count = 4294967280, .ntsc = true, .dropFrame = true}),
        "596523:49:55;4251202378");
}

TEST(Timecode, APositionBeyond64BitsIsRefused) {
    constexpr FrameRate kOne{.count = 1};
    EXPECT_EQ(Parsed("2562047788015215:30:07:00", kOne, 1), kLast);
    EXPECT_EQ(Parsed("-2562047788015215:30:08:00", kOne, 1), kFirst);
    const std::string what = "this position is beyond 64 bits of samples";
    EXPECT_EQ(Refused("2562047788015215:30:08:00", kOne, 1).what, what);
    EXPECT_EQ(Refused("-2562047788015215:30:09:00", kOne, 1).what, what);
    EXPECT_EQ(Refused("18446744073709551615:59:59:4294967294", {.count = 4294967295, .ntsc = true},
                      4294967295)
                  .what,
              what);
}

TEST(Timecode, TheNtscFormatsNameTheirRates) {
    using enum TimeDisplay;
    EXPECT_EQ(FrameRateOf({.format = Ntsc30}), kNtsc30);
    EXPECT_EQ(FrameRateOf({.format = Ntsc30Drop}), kNtsc30Drop);
    EXPECT_EQ(FrameRateOf({.format = Ntsc60}), kNtsc60);
    EXPECT_EQ(FrameRateOf({.format = Ntsc60Drop}), kNtsc60Drop);
    EXPECT_EQ(FrameRateOf({.format = Ntsc24}), kNtsc24);
    EXPECT_EQ(FrameRateOf({.format = Ntsc24, .frameRate = 25, .dropFrame = true}), kNtsc24);
}

TEST(Timecode, OtherTimecodeHasTheRateThatIsStored) {
    using enum TimeDisplay;
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = 75}), kCompactDisc);
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = 30, .dropFrame = true}),
              FrameRate{.count = 30});
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = 30, .ntsc = true, .dropFrame = true}),
              kNtsc30Drop);
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = 24, .ntsc = true, .dropFrame = true}),
              kNtsc24);
}

TEST(Timecode, OtherFormatsHaveNoFrameRate) {
    using enum TimeDisplay;
    for (const TimeDisplay format : {Decimal, Samples, BarsAndBeats, TimeDisplay{5}}) {
        EXPECT_EQ(FrameRateOf({.format = format, .frameRate = 25}), std::nullopt);
    }
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = 0, .customFrameRate = 25}),
              std::nullopt);
    EXPECT_EQ(FrameRateOf({.format = Timecode, .frameRate = -25}), std::nullopt);
}

TEST(Timecode, AFrameRatePrints) {
    std::ostringstream text;
    text << kPal << "; " << kNtsc30Drop;
    EXPECT_EQ(text.str(), "25 frames a second; 30 frames a second, NTSC, drop frame");
}

FrameRate AnyRate() {
    const FrameRate rate = *rc::gen::element(
        FrameRate{.count = 10}, FrameRate{.count = 12}, FrameRate{.count = 15}, kFilm, kPal,
        FrameRate{.count = 30}, FrameRate{.count = 48}, FrameRate{.count = 50},
        FrameRate{.count = 60}, kCompactDisc, FrameRate{.count = 100}, FrameRate{.count = 120},
        kNtsc24, kNtsc30, kNtsc60, kNtsc30Drop, kNtsc60Drop);
    return rate;
}

std::uint32_t AnySampleRate() {
    return *rc::gen::element(6000U, 8000U, 11025U, 22050U, 32000U, 44100U, 47952U, 48000U, 88200U,
                             96000U, 176400U, 192000U);
}

RC_GTEST_PROP(Timecode, APrintedTextReadsAsASampleThatPrintsTheSame, ()) {
    const FrameRate rate = AnyRate();
    const std::uint32_t sampleRate = AnySampleRate();
    const auto position = *rc::gen::inRange<std::int64_t>(-(1LL << 40), 1LL << 40);
    const auto text = FormatTimecode(position, sampleRate, rate);
    RC_ASSERT(text.has_value());
    const PositionResult read = ParseTimecode(*text, sampleRate, rate);
    RC_ASSERT(read.ok);
    RC_ASSERT(FormatTimecode(read.position, sampleRate, rate) == text);
}

RC_GTEST_PROP(Timecode, APrintedTextReadsAsTheFirstSampleOfTheNearestFrame, ()) {
    const FrameRate rate = AnyRate();
    RC_PRE(!rate.dropFrame);
    const std::uint32_t sampleRate = AnySampleRate();
    const auto position = *rc::gen::inRange<std::int64_t>(0, 1LL << 40);
    const std::string text = FormatTimecode(position, sampleRate, rate).value();
    long long hours = 0;
    long long minutes = 0;
    long long seconds = 0;
    long long frames = 0;
    RC_ASSERT(
        std::sscanf(text.c_str(), "%lld:%lld:%lld:%lld", &hours, &minutes, &seconds, &frames) == 4);
    const std::int64_t frame = ((hours * 60 + minutes) * 60 + seconds) * rate.count + frames;
    // In these units a sample lasts `sample` and a frame `length`.
    const std::int64_t sample = rate.count * (rate.ntsc ? 1000LL : 1);
    const std::int64_t length = sampleRate * (rate.ntsc ? 1001LL : 1);
    RC_ASSERT(2 * std::abs(position * sample - frame * length) <= length);
    const std::int64_t behind =
        ParseTimecode(text, sampleRate, rate).position * sample - frame * length;
    RC_ASSERT(behind >= 0 && behind < sample);
}

}  // namespace
}  // namespace orvo
