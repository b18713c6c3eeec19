#include <orvo/Layout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

using orvo::Layout;
using orvo::RulerTick;
using orvo::RulerTicks;
using testing::ElementsAre;

std::vector<RulerTick> Labelled(const Layout& layout, std::int64_t room) {
    std::vector<RulerTick> labelled;
    for (const RulerTick& tick : RulerTicks(layout, room)) {
        if (!tick.label.empty()) {
            labelled.push_back(tick);
        }
    }
    return labelled;
}

Layout LayoutOf(orvo::TimeDisplay display, std::int64_t from, std::int64_t to) {
    Layout layout;
    layout.sampleRate = 1000;
    layout.timeFormat.format = display;
    layout.from = from;
    layout.to = to;
    return layout;
}

TEST(Ruler, CountsSeconds) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Decimal, 0, 2500);
    EXPECT_THAT(Labelled(layout, 600), ElementsAre(RulerTick{0, "0:00"}, RulerTick{1000, "0:01"},
                                                   RulerTick{2000, "0:02"}));
}

TEST(Ruler, CountsPartsOfASecondIfThereIsRoom) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Decimal, 0, 400);
    EXPECT_THAT(Labelled(layout, 150),
                ElementsAre(RulerTick{0, "0:00.0"}, RulerTick{200, "0:00.2"}));
    EXPECT_THAT(Labelled(LayoutOf(orvo::TimeDisplay::Decimal, 0, 4), 2),
                ElementsAre(RulerTick{0, "0:00.000"}, RulerTick{2, "0:00.002"}));
}

TEST(Ruler, CountsHoursWhereTheRangeHasThem) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Decimal, 0, 2 * 3600'000 + 1);
    EXPECT_THAT(Labelled(layout, 3'000'000),
                ElementsAre(RulerTick{0, "0:00:00"}, RulerTick{3600'000, "1:00:00"},
                            RulerTick{7200'000, "2:00:00"}));
}

TEST(Ruler, CountsBeforeTheStart) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Decimal, -1500, 10);
    EXPECT_THAT(Labelled(layout, 700),
                ElementsAre(RulerTick{-1000, "-0:01"}, RulerTick{0, "0:00"}));
}

TEST(Ruler, CountsSamples) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Samples, 900, 3000);
    EXPECT_THAT(Labelled(layout, 800),
                ElementsAre(RulerTick{1000, "1000"}, RulerTick{2000, "2000"}));
}

TEST(Ruler, CountsFramesAndSecondsOfTimecode) {
    Layout layout = LayoutOf(orvo::TimeDisplay::Timecode, 0, 2500);
    layout.timeFormat.frameRate = 25;
    EXPECT_THAT(Labelled(layout, 900),
                ElementsAre(RulerTick{0, "00:00:00:00"}, RulerTick{1000, "00:00:01:00"},
                            RulerTick{2000, "00:00:02:00"}));
    layout.to = 500;
    EXPECT_THAT(Labelled(layout, 300),
                ElementsAre(RulerTick{0, "00:00:00:00"}, RulerTick{400, "00:00:00:10"}));
}

TEST(Ruler, ASecondOfNtscTimecodeIsLonger) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Ntsc30Drop, 0, 2500);
    EXPECT_THAT(Labelled(layout, 900),
                ElementsAre(RulerTick{0, "00:00:00;00"}, RulerTick{1001, "00:00:01;00"},
                            RulerTick{2002, "00:00:02;00"}));
}

TEST(Ruler, CountsBars) {
    Layout layout = LayoutOf(orvo::TimeDisplay::BarsAndBeats, 0, 5000);
    layout.musicalTime = {.beatsPerMinute = 120, .beatsPerBar = 4};
    EXPECT_THAT(Labelled(layout, 1500),
                ElementsAre(RulerTick{0, "1:1"}, RulerTick{2000, "2:1"}, RulerTick{4000, "3:1"}));
    EXPECT_THAT(Labelled(layout, 400)[1], (RulerTick{500, "1:2"}));
}

TEST(Ruler, SmallMarksDivideTheDistance) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Decimal, 0, 1000);
    EXPECT_EQ(RulerTicks(layout, 1000).size(), 10u);
}

TEST(Ruler, NeverHasMoreThanItsShareOfMarks) {
    constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
    for (const auto display : {orvo::TimeDisplay::Decimal, orvo::TimeDisplay::Samples,
                               orvo::TimeDisplay::Ntsc60, orvo::TimeDisplay::BarsAndBeats}) {
        for (const auto& [from, to] : {std::pair<std::int64_t, std::int64_t>{0, kLast},
                                       {-kLast - 1, kLast},
                                       {0, 1},
                                       {0, 1'000'000'000}}) {
            Layout layout = LayoutOf(display, from, to);
            layout.musicalTime = {.beatsPerMinute = 90, .beatsPerBar = 3};
            EXPECT_LE(RulerTicks(layout, 0).size(), 4100u);
            layout.sampleRate = 0;
            EXPECT_LE(RulerTicks(layout, 0).size(), 4100u);
        }
    }
}

TEST(Ruler, EndsWhereMarksAreCloserThanNumbers) {
    constexpr std::int64_t kFar = std::int64_t{1} << 62;
    for (const auto display : {orvo::TimeDisplay::Decimal, orvo::TimeDisplay::Samples}) {
        for (const std::int64_t length : {1, 100, 10'000}) {
            for (const std::int64_t from : {kFar, -kFar}) {
                const Layout layout = LayoutOf(display, from, from + length);
                for (const RulerTick& tick : RulerTicks(layout, 1)) {
                    EXPECT_GE(tick.position, layout.from);
                    EXPECT_LT(tick.position, layout.to);
                }
            }
        }
    }
}

TEST(Ruler, MarksAreInTheRangeAndInOrder) {
    const Layout layout = LayoutOf(orvo::TimeDisplay::Ntsc60, 123'457, 345'679);
    const std::vector<RulerTick> ticks = RulerTicks(layout, 10'000);
    ASSERT_FALSE(ticks.empty());
    EXPECT_GE(ticks.front().position, layout.from);
    EXPECT_LT(ticks.back().position, layout.to);
    EXPECT_TRUE(std::ranges::is_sorted(ticks, std::less_equal(), &RulerTick::position));
}

}  // namespace
