#include <gtest/gtest.h>

#include <orvo/Times.h>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/support/SourceFolder.h"
#include "toolkit/view/page/PageData.h"

// The page writes positions by itself. web/test/fixtures/times.json holds how the library writes
// them, for the page's own tests. ORVO_WRITE_FIXTURES=1 in the environment writes the file.

namespace {

using nlohmann::ordered_json;

constexpr orvo::MusicalTime kNoMusic{};
constexpr orvo::MusicalTime kMarch{
    .beatsPerMinute = 120, .beatsPerBar = 4, .noteLength = 4, .subdivisions = 100};
constexpr orvo::MusicalTime kWaltz{
    .beatsPerMinute = 97.31, .beatsPerBar = 3, .noteLength = 4, .subdivisions = 1};

orvo::Layout TimesLayout(std::uint32_t sampleRate, const orvo::TimeFormat& format,
                         const orvo::MusicalTime& music = kNoMusic) {
    return {.sampleRate = sampleRate, .timeFormat = format, .musicalTime = music, .to = 1};
}

orvo::TimeFormat CodeOf(std::int32_t frameRate, bool ntsc = false, bool dropFrame = false) {
    return {.format = orvo::TimeDisplay::Timecode,
            .frameRate = frameRate,
            .ntsc = ntsc,
            .dropFrame = dropFrame};
}

std::vector<orvo::Layout> TimesLayouts() {
    using enum orvo::TimeDisplay;
    return {TimesLayout(48000, {}),
            TimesLayout(44100, {}),
            TimesLayout(0, {}),
            TimesLayout(44100, {.format = Samples}),
            TimesLayout(48000, CodeOf(25)),
            TimesLayout(44100, CodeOf(24)),
            TimesLayout(48000, CodeOf(0)),
            TimesLayout(48000, CodeOf(30, true, true)),
            TimesLayout(48000, CodeOf(25, true, true)),
            TimesLayout(96000, CodeOf(120)),
            TimesLayout(48000, {.format = Ntsc30}),
            TimesLayout(48000, {.format = Ntsc30Drop}),
            TimesLayout(44100, {.format = Ntsc60Drop}),
            TimesLayout(48000, {.format = Ntsc24}),
            TimesLayout(48000, {.format = BarsAndBeats}, kMarch),
            TimesLayout(44100, {.format = BarsAndBeats}, kWaltz),
            TimesLayout(44100, {.format = BarsAndBeats})};
}

std::vector<std::int64_t> PositionsAt(std::uint32_t sampleRate) {
    constexpr std::int64_t kSeconds[] = {1, 59, 60, 61, 599, 600, 601, 3600, 86400, 400000};
    std::vector<std::int64_t> positions{0, 1, -1, 23, 24, 25, 1000000007, -123456789};
    for (const std::int64_t seconds : kSeconds) {
        for (const std::int64_t offset : {-1, 0, 1, 961}) {
            positions.push_back(seconds * sampleRate + offset);
        }
    }
    positions.push_back(std::numeric_limits<std::int64_t>::max());
    positions.push_back(std::numeric_limits<std::int64_t>::min());
    return positions;
}

ordered_json FixtureOf(const orvo::Layout& layout) {
    orvo::Session session;
    session.sampleRate = layout.sampleRate;
    session.timeFormat = layout.timeFormat;
    session.musicalTime = layout.musicalTime;
    ordered_json time = ordered_json::parse(orvo::page::DataOf(layout, {}, {})).at("time");
    time["sampleRate"] = layout.sampleRate;
    ordered_json positions = ordered_json::array();
    for (const std::int64_t position : PositionsAt(layout.sampleRate)) {
        positions.push_back({std::to_string(position), FormatPosition(session, position)});
    }
    return {{"time", time}, {"positions", positions}};
}

TEST(PageTimes, TheFixtureOfThePageIsWhatTheLibraryWrites) {
    ordered_json fixtures = ordered_json::array();
    for (const orvo::Layout& layout : TimesLayouts()) {
        fixtures.push_back(FixtureOf(layout));
    }
    const auto file = test::SourceFolder() / "web/test/fixtures/times.json";
    if (std::getenv("ORVO_WRITE_FIXTURES") != nullptr) {
        std::ofstream(file) << fixtures.dump(1) << '\n';
    }
    std::ifstream stored(file);
    EXPECT_EQ(fixtures, ordered_json::parse(stored))
        << "run this test with ORVO_WRITE_FIXTURES=1 in the environment";
}

}  // namespace
