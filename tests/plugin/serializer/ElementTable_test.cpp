#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Strings.h"
#include "tests/plugin/serializer/InstrumentElements.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

using Place = std::pair<std::string, State>;  // an element and its parent's State

std::vector<Place> PlacesOfTable(bool instrumentTracks) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", instrumentTracks);
    const Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    std::vector<Place> places;
    for (const ElementEntry& entry : SerializerTestAccess::Table(impl).Entries()) {
        places.emplace_back(kelcore::UTF16to8(entry.name), entry.parentState);
    }
    return places;
}

TEST(ElementTable, WithoutInstrumentTracksTheirElementsAreMissing) {
    const std::vector<Place> all = PlacesOfTable(true);
    std::vector<Place> expected = all;
    std::erase_if(expected, [](const Place& place) {
        return std::count(std::begin(kInstrumentElements), std::end(kInstrumentElements),
                          place.first) > 0;
    });
    EXPECT_EQ(expected.size() + std::size(kInstrumentElements), all.size());
    EXPECT_THAT(PlacesOfTable(false), UnorderedElementsAreArray(expected));
}

TEST(ElementTable, TheFeatureIsAskedOnceWhenTheTableIsBuilt) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", true);
    const Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    EXPECT_NE(SerializerTestAccess::Table(impl).Find(u"instrumentTrack", states::tracks), nullptr);
}

TEST(ElementTable, EveryEntryHasAStart) {
    const Serializer::Impl impl{WriterFault{}, MakeDomDocument};
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
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.CharactersEvent(u"\n  ");
    events.StartElementEvent(u"", u"name", u"name", {});
    events.CharactersEvent(u"Voice");
    EXPECT_EQ(SerializerTestAccess::Characters(impl), u"Voice");
}

TEST(CharacterData, IsWhatFollowsTheLastStartTag) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
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
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    EXPECT_THAT(SerializerTestAccess::Stack(impl), ElementsAre(states::unknown));
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.StartElementEvent(u"", u"files", u"files", {});
    events.StartElementEvent(u"", u"unknown", u"unknown", {});
    events.StartElementEvent(u"", u"file", u"file", {});
    EXPECT_THAT(SerializerTestAccess::Stack(impl),
                ElementsAre(states::unknown, states::orvo, states::files, states::unknown,
                            states::unknown));
}

TEST(ProgressMilestones, AreSeven) {
    EXPECT_EQ(kProgressTotal, 7u);
}

}  // namespace
}  // namespace tses
