#include <orvo/Differences.h>
#include <orvo/Json.h>

#include <gmock/gmock.h>

#include <ctime>
#include <limits>
#include <sstream>

namespace orvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::size_t kMany = 100;

std::vector<std::string> LinesOf(const Differences& differences) {
    std::vector<std::string> lines;
    for (const Difference& difference : differences.list) {
        std::ostringstream line;
        line << difference;
        lines.push_back(line.str());
    }
    return lines;
}

std::vector<std::string> Lines(const Session& session, const Session& other) {
    return LinesOf(FindDifferences(session, other, kMany));
}

TEST(DifferencesTest, EqualSessionsHaveNone) {
    const Session session{.audioTracks = {{.id = 2}}, .files = {{.id = 1}}};
    EXPECT_EQ(FindDifferences(session, session, kMany).count, 0U);
    EXPECT_THAT(Lines(session, session), IsEmpty());
}

TEST(DifferencesTest, AValueHasItsPlaceAndWhatItWasAndIs) {
    EXPECT_THAT(Lines({.sampleRate = 1, .audioTracks = {{}, {.name = "a"}}},
                      {.sampleRate = 2, .audioTracks = {{}, {.name = "b"}}}),
                ElementsAre("/sampleRate: 1 became 2", R"(/audioTracks/1/name: "a" became "b")"));
}

TEST(DifferencesTest, AMissingOrAdditionalThingIsOneDifference) {
    EXPECT_THAT(Lines({.files = {{.id = 1}}}, {}),
                ElementsAre(R"(/files/0: {"id":1} became nothing)"));
    EXPECT_THAT(Lines({}, {.files = {{.id = 1}}}),
                ElementsAre(StartsWith("/files/0: nothing became {")));
}

TEST(DifferencesTest, WhatIsLeftOutOfAListMovesNothingElse) {
    EXPECT_THAT(
        Lines({.audioTracks = {{.id = 1}, {.id = 2, .name = "a"}, {.id = 3}, {.id = 4}}},
              {.audioTracks = {{.id = 2, .name = "b"}, {.id = 3}}}),
        ElementsAre(StartsWith("/audioTracks/0: {"), R"(/audioTracks/1/name: "a" became "b")",
                    StartsWith("/audioTracks/3: {")));
    EXPECT_THAT(
        Lines({.metronome = {.pattern = {Beat::DownBeat, Beat{7}, Beat::UpBeat, Beat::UpBeat}}},
              {.metronome = {.pattern = {Beat::DownBeat, Beat::UpBeat, Beat::UpBeat}}}),
        ElementsAre("/metronome/pattern/1: 7 became nothing"));
}

/// A session with these slots in its one rack.
Session WithSlots(std::vector<std::optional<EffectsSlot>> slots) {
    return {.audioTracks = {{.effectsRack = EffectsRack{.slots = std::move(slots)}}}};
}

TEST(DifferencesTest, ANullInAListIsIgnoredAndWhatFollowsIsComparedWithItsLike) {
    const std::optional<EffectsSlot> none;
    const EffectsSlot one{.slotIndex = 1, .busConfig = "a"};
    const EffectsSlot other{.slotIndex = 1, .busConfig = "b"};
    const EffectsSlot last{.slotIndex = 2};
    EXPECT_THAT(Lines(WithSlots({none, one, none, last}), WithSlots({one, last})), IsEmpty());
    EXPECT_THAT(Lines(WithSlots({none, one, none, last}), WithSlots({other, last})),
                ElementsAre(R"(/audioTracks/0/effectsRack/slots/1/busConfig: "a" became "b")"));
    EXPECT_THAT(Lines(WithSlots({one, none}), WithSlots({none, other})),
                ElementsAre(R"(/audioTracks/0/effectsRack/slots/0/busConfig: "a" became "b")"));
}

TEST(DifferencesTest, WhatIsLeftOutBesideANullIsNamedInItsOwnPlace) {
    const EffectsSlot one{.slotIndex = 1};
    const EffectsSlot two{.slotIndex = 2};
    EXPECT_THAT(Lines(WithSlots({std::nullopt, one, two}), WithSlots({two})),
                ElementsAre(StartsWith("/audioTracks/0/effectsRack/slots/1: {")));
    EXPECT_THAT(Lines(WithSlots({one}), WithSlots({std::nullopt, one, two})),
                ElementsAre(StartsWith("/audioTracks/0/effectsRack/slots/2: nothing became {")));
}

TEST(DifferencesTest, AThingOnOneSideOnlyIsOneDifference) {
    EXPECT_THAT(Lines({.audioTracks = {{.fader = orvo::Component{}}}}, {.audioTracks = {{}}}),
                ElementsAre(AllOf(StartsWith("/audioTracks/0/trackFader: {"),
                                  testing::EndsWith("became null"))));
}

TEST(DifferencesTest, EntriesOfTablesGoByTheirNumbers) {
    orvo::Component one;
    one.parameters = {{1, {}}, {3, {}}, {4, {.name = "a"}}};
    orvo::Component other;
    other.parameters = {{1, {}}, {2, {}}, {4, {.name = "b"}}};
    EXPECT_THAT(
        Lines({.audioTracks = {{.fader = one}}}, {.audioTracks = {{.fader = other}}}),
        ElementsAre(StartsWith("/audioTracks/0/trackFader/parameters/3: {"),
                    R"(/audioTracks/0/trackFader/parameters/4/name: "a" became "b")",
                    StartsWith("/audioTracks/0/trackFader/parameters/2: nothing became {")));
}

TEST(DifferencesTest, AChannelThatIsLeftOutBelowTheHighestIsFedByItsOwnNumber) {
    const auto find = [](std::map<std::uint32_t, std::int32_t> one,
                         std::map<std::uint32_t, std::int32_t> other) {
        Session session;
        Session changed;
        session.audioTracks.emplace_back().clips.emplace_back().channelSources = std::move(one);
        changed.audioTracks.emplace_back().clips.emplace_back().channelSources = std::move(other);
        return Lines(session, changed);
    };
    EXPECT_THAT(find({{2, 0}}, {{0, 0}, {1, 1}, {2, 0}}), IsEmpty());
    EXPECT_THAT(find({{0, 0}, {1, 1}, {2, 0}}, {{2, 0}}), IsEmpty());
    const std::string sources = "/audioTracks/0/audioClips/0/channelMap";
    EXPECT_THAT(find({{2, 0}}, {{0, 1}, {1, 1}, {2, 0}}),
                ElementsAre(sources + "/0: nothing became 1"));
    EXPECT_THAT(find({{0, 0}, {1, 1}}, {{0, 0}}), ElementsAre(sources + "/1: 1 became nothing"));
    EXPECT_THAT(find({}, {{0, 0}}), ElementsAre(sources + "/0: nothing became 0"));
}

TEST(DifferencesTest, NotANumberEqualsItself) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(Lines({.audioTracks = {{.hue = none}}}, {.audioTracks = {{.hue = none}}}),
                IsEmpty());
    EXPECT_THAT(Lines({.audioTracks = {{.hue = none}}}, {.audioTracks = {{.hue = 1}}}),
                ElementsAre("/audioTracks/0/trackHue: \"NaN\" became 1.0"));
}

TEST(DifferencesTest, NotANumberOfSinglePrecisionEqualsItselfToo) {
    orvo::Component fader;
    fader.parameters[0].value = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(Lines({.audioTracks = {{.fader = fader}}}, {.audioTracks = {{.fader = fader}}}),
                IsEmpty());
}

TEST(DifferencesTest, LongValuesAreCutBetweenCharacters) {
    std::string text = "a";
    for (int i = 0; i < 100; ++i) {
        text += "\u00E9";
    }
    std::string shown = "\"a";
    while (shown.size() < 60) {
        shown += "\u00E9";
    }
    EXPECT_THAT(Lines({.formatDescription = text}, {}),
                ElementsAre("/formatDescription: " + shown + "... became \"\""));
}

TEST(DifferencesTest, AllAreCountedAndTheFirstNamed) {
    const Differences differences = FindDifferences(
        {.sampleRate = 1, .audioChannelType = ChannelType::Mono, .duration = 3}, {}, 1);
    EXPECT_EQ(differences.count, 3U);
    EXPECT_THAT(LinesOf(differences), ElementsAre(StartsWith("/sampleRate: ")));
}

TEST(DifferencesTest, OnlyWhatIsShownOfALargeValueIsEncoded) {
    Session session;
    session.metronome.track.emplace().clips.assign(40'000, {.id = 1, .name = "clip"});
    const std::clock_t begin = std::clock();
    ToJson(session, [](std::string_view) {});
    const std::clock_t encoded = std::clock();
    const std::vector<std::string> lines = Lines(session, {});
    const std::clock_t compared = std::clock();
    EXPECT_THAT(lines, ElementsAre(testing::EndsWith("... became null")));
    EXPECT_LT(4 * (compared - encoded), encoded - begin);
}

}  // namespace
}  // namespace orvo
