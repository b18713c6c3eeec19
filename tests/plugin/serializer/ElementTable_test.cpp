#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Strings.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

using Place = std::pair<std::string, State>;  // an element and its parent's State

/// The tree of accepted elements, written down a second time by hand.
std::vector<Place> ExpectedPlaces() {
    std::vector<Place> places;
    const auto add = [&places](std::string_view name, std::initializer_list<State> parents) {
        for (const State parent : parents) {
            places.emplace_back(name, parent);
        }
    };
    add("session", {1});
    add("files", {1});
    add("file", {3});
    add("audioDevice", {1});
    add("inputPort", {59});
    add("outputPort", {59});
    add("name", {2, 23, 63});
    add("tracks", {2});
    add("masterTrack", {5});
    add("audioTrack", {5});
    add("instrumentTrack", {5});
    add("busTrack", {5});
    add("videoTrack", {5});
    add("trackParameters", {6, 7, 8, 9, 10, 12});
    add("trackAudioParameters", {6, 7, 8, 9, 12});
    add("trackInput", {24});
    add("trackOutput", {24});
    add("trackPanner", {24});
    for (const char* const channel :
         {"Left", "Right", "Center", "LeftSurround", "RightSurround", "LFE"}) {
        add("fivePointOne" + std::string(channel), {42});
    }
    add("component", {24, 33, 25, 27, 13});
    add("sendList", {7, 8, 9, 12});
    add("sendSlot", {32});
    add("effectsRack", {6, 7, 8, 9, 12, 13});
    add("slot", {25});
    add("presetChunkData", {26});
    add("parameter", {22, 26});
    add("parameterKeyframes", {29});
    add("parameterKeyframe", {30});
    add("channelMap", {26, 13});
    add("channel", {67, 19});
    add("busConfig", {26});
    add("editParameter", {6, 7, 8, 9, 12, 13});
    add("clip", {8});
    add("audioClip", {8});
    add("midiClip", {9});
    add("midiEvents", {14});
    add("fadeIn", {13});
    add("fadeOut", {13});
    add("clipStretch", {13});
    add("take", {13});
    add("properties", {13, 2});
    add("videoClip", {10});
    add("videoFormat", {21});
    add("metronome", {2});
    add("metronomeTrack", {64});
    add("globalTrackInfo", {64});
    add("tempoEvents", {11});
    add("timeSignatureEvents", {11});
    add("keySignatureEvents", {11});
    add("xmpMetadata", {2});
    add("sessionState", {2});
    add("selectionState", {36});
    add("viewState", {36});
    add("timeFormatState", {36});
    add("mixingOptionState", {36});
    add("clipGroups", {2});
    add("clipGroup", {62});
    add("item", {63});
    add("property", {70});
    add("trackVisibilityPresets", {2});
    add("trackVisibilityPreset", {72});
    add("trackVisibility", {73});
    return places;
}

constexpr std::string_view kInstrumentElements[] = {
    "instrumentTrack",     "midiClip",          "midiEvents", "globalTrackInfo", "tempoEvents",
    "timeSignatureEvents", "keySignatureEvents"};

std::vector<Place> PlacesOfTable(bool instrumentTracks) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", instrumentTracks);
    const Serializer::Impl impl{WriterFault{}};
    std::vector<Place> places;
    for (const ElementEntry& entry : SerializerTestAccess::Table(impl).Entries()) {
        places.emplace_back(kelcore::UTF16to8(entry.name), entry.parentState);
    }
    return places;
}

TEST(ElementTable, AcceptsEveryElementUnderItsParentsAndNoOther) {
    EXPECT_THAT(PlacesOfTable(true), UnorderedElementsAreArray(ExpectedPlaces()));
}

TEST(ElementTable, WithoutInstrumentTracksTheirElementsAreMissing) {
    std::vector<Place> expected = ExpectedPlaces();
    std::erase_if(expected, [](const Place& place) {
        return std::count(std::begin(kInstrumentElements), std::end(kInstrumentElements),
                          place.first) > 0;
    });
    EXPECT_EQ(expected.size() + std::size(kInstrumentElements), ExpectedPlaces().size());
    EXPECT_THAT(PlacesOfTable(false), UnorderedElementsAreArray(expected));
}

TEST(ElementTable, TheFeatureIsAskedOnceWhenTheTableIsBuilt) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
    const Serializer::Impl impl{WriterFault{}};
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    EXPECT_NE(SerializerTestAccess::Table(impl).Find(u"instrumentTrack", 5), nullptr);
}

TEST(ElementTable, EveryEntryHasAStart) {
    const Serializer::Impl impl{WriterFault{}};
    for (const ElementEntry& entry : SerializerTestAccess::Table(impl).Entries()) {
        EXPECT_TRUE(static_cast<bool>(entry.onStart)) << kelcore::UTF16to8(entry.name);
    }
}

TEST(ElementTable, TheFirstOfTwoEntriesForOnePlaceIsTaken) {
    int started = 0;
    const ElementTable table({{u"b", 1, [&](auto, const auto&) { started = 1; }, {}},
                              {u"a", 1, [&](auto, const auto&) { started = 2; }, {}},
                              {u"b", 2, [&](auto, const auto&) { started = 3; }, {}},
                              {u"b", 1, [&](auto, const auto&) { started = 4; }, {}}});
    table.Find(u"b", 1)->onStart(u"b", {});
    EXPECT_EQ(started, 1);
    table.Find(u"b", 2)->onStart(u"b", {});
    EXPECT_EQ(started, 3);
    EXPECT_EQ(table.Find(u"b", 3), nullptr);
    EXPECT_EQ(table.Find(u"c", 1), nullptr);
}

TEST(CharacterData, OfANameIsItsOwnTextAlone) {
    Serializer::Impl impl{WriterFault{}};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.CharactersEvent(u"\n  ");
    events.StartElementEvent(u"", u"name", u"name", {});
    events.CharactersEvent(u"Voice");
    EXPECT_EQ(SerializerTestAccess::Characters(impl), u"Voice");
}

TEST(CharacterData, IsWhatFollowsTheLastStartTag) {
    Serializer::Impl impl{WriterFault{}};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.CharactersEvent(u"before ");
    EXPECT_EQ(SerializerTestAccess::Characters(impl), u"before ");
    events.StartElementEvent(u"", u"unknown", u"unknown", {});
    EXPECT_EQ(SerializerTestAccess::Characters(impl), u"");
    events.CharactersEvent(u"in");
    events.CharactersEvent(u"side");
    events.EndElementEvent(u"", u"unknown", u"unknown");
    events.CharactersEvent(u" after");
    EXPECT_EQ(SerializerTestAccess::Characters(impl), u"inside after");
}

TEST(StateStack, HoldsTheRootsStateAndZeroForWhatIsUnknown) {
    Serializer::Impl impl{WriterFault{}};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    EXPECT_THAT(SerializerTestAccess::Stack(impl), ElementsAre(0));
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.StartElementEvent(u"", u"files", u"files", {});
    events.StartElementEvent(u"", u"unknown", u"unknown", {});
    events.StartElementEvent(u"", u"file", u"file", {});
    EXPECT_THAT(SerializerTestAccess::Stack(impl), ElementsAre(0, 1, 3, 0, 0));
}

TEST(ProgressMilestones, AreSeven) {
    EXPECT_EQ(kProgressTotal, 7u);
}

}  // namespace
}  // namespace tses
