#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>

#include "format/States.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SerializerTestAccess.h"

// What the host sees of every element in every place: in the element's own place, one call that no
// other element causes; in any other place, nothing.

namespace tses {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;
using Calls = std::vector<std::string>;

/// An element with the attributes and the text that it needs, and the call of the host that shows
/// that it was understood there. No call: the element is accepted but causes no call by itself.
struct PlaceRow {
    const char* name;
    State parent;
    State state;
    const char* attributes;
    const char* text;
    const char* call;
};

// A row's context is the chain of first rows that lead to its parent. Elements of the same name
// under several parents differ in the handler or the object, so each has its own row.
constexpr PlaceRow kRows[] = {
    {"session", 1, 2, "", "", "IEditSession#1.SetSampleRate("},
    {"files", 1, 3, "", "", nullptr},
    {"file", 3, 4, "id='1'", "", "IEditSession#1.GetFile("},
    {"audioDevice", 1, 59, "inputID='a'", "", "IEditSession#1.SetInputDeviceId("},
    {"inputPort", 59, 60, "", "", "IEditSession#1.AddInputPort("},
    {"outputPort", 59, 60, "", "", "IEditSession#1.AddOutputPort("},
    {"name", 2, 51, "", "text", nullptr},
    {"tracks", 2, 5, "", "", nullptr},
    {"masterTrack", 5, 6, "id='6'", "", "IEditSession#1.GetAudioTrack(6)"},
    {"busTrack", 5, 7, "id='7'", "", "IEditSession#1.GetAudioTrack(7)"},
    {"audioTrack", 5, 8, "id='8'", "", "IEditSession#1.GetAudioTrack(8)"},
    {"instrumentTrack", 5, 9, "id='9'", "", "IEditSession#1.GetAudioTrack(9)"},
    {"videoTrack", 5, 10, "id='10'", "", "IEditSession#1.GetVideoTrack(10)"},
    {"metronome", 2, 64, "", "", "IEditSession#1.GetMetronomeInfo("},
    {"metronomeTrack", 64, 12, "", "", ".GetTrack("},
    {"trackParameters", 6, 23, "", "", ".SetHeight("},
    {"trackParameters", 7, 23, "", "", ".SetHeight("},
    {"trackParameters", 8, 23, "", "", ".SetHeight("},
    {"trackParameters", 9, 23, "", "", ".SetHeight("},
    {"trackParameters", 10, 23, "", "", "IEditVideoTrack#2.SetHeight("},
    {"trackParameters", 12, 23, "", "", ".SetHeight("},
    {"name", 23, 51, "", "text", ".SetName(\"text\")"},
    {"trackAudioParameters", 6, 24, "", "", ".SetSoloSafe("},
    {"trackAudioParameters", 7, 24, "", "", ".SetSoloSafe("},
    {"trackAudioParameters", 8, 24, "", "", ".SetSoloSafe("},
    {"trackAudioParameters", 9, 24, "", "", ".SetSoloSafe("},
    {"trackAudioParameters", 12, 24, "", "", ".SetSoloSafe("},
    {"trackInput", 24, 34, "inputID='77'", "", ".SetInput(77)"},
    {"trackOutput", 24, 35, "outputID='77'", "", ".SetHardwareOutput(77)"},
    {"trackPanner", 24, 42, "angle='1'", "", nullptr},
    {"fivePointOneLeft", 42, 43, "", "", nullptr},
    {"fivePointOneRight", 42, 44, "", "", nullptr},
    {"fivePointOneCenter", 42, 45, "", "", nullptr},
    {"fivePointOneLeftSurround", 42, 46, "", "", nullptr},
    {"fivePointOneRightSurround", 42, 47, "", "", nullptr},
    {"fivePointOneLFE", 42, 48, "", "", nullptr},
    {"component", 24, 22, "id='trackFader'", "", ".GetFaderComponent("},
    {"sendList", 7, 32, "", "", ".GetSendList("},
    {"sendList", 8, 32, "", "", ".GetSendList("},
    {"sendList", 9, 32, "", "", ".GetSendList("},
    {"sendList", 12, 32, "", "", ".GetSendList("},
    {"sendSlot", 32, 33, "slotIndex='0'", "", ".AddSlot("},
    {"component", 33, 22, "id='sendComponent'", "", ".GetSendComponent("},
    {"effectsRack", 6, 25, "", "", ".GetEffectsRack("},
    {"effectsRack", 7, 25, "", "", ".GetEffectsRack("},
    {"effectsRack", 8, 25, "", "", ".GetEffectsRack("},
    {"effectsRack", 9, 25, "", "", ".GetEffectsRack("},
    {"effectsRack", 12, 25, "", "", ".GetEffectsRack("},
    {"editParameter", 6, 58, "", "", ".SetEditParameter("},
    {"editParameter", 7, 58, "", "", ".SetEditParameter("},
    {"editParameter", 8, 58, "", "", ".SetEditParameter("},
    {"editParameter", 9, 58, "", "", ".SetEditParameter("},
    {"editParameter", 12, 58, "", "", ".SetEditParameter("},
    {"audioClip", 8, 13, "", "", ".CreateAudioClip("},
    {"clip", 8, 13, "", "", ".CreateAudioClip("},
    {"effectsRack", 13, 25, "", "", "IEditAudioClip#3.GetEffectsRack("},
    {"component", 13, 22, "id='clipGain'", "", ".GetClipGainComponent("},
    {"fadeIn", 13, 55, "", "", ".GetFadeIn("},
    {"fadeOut", 13, 56, "", "", ".GetFadeOut("},
    {"clipStretch", 13, 57, "", "", ".GetClipStretch("},
    {"take", 13, 61, "", "", ".AddTake("},
    {"editParameter", 13, 58, "", "", "IEditAudioClip#3.SetEditParameter("},
    {"properties", 13, 69, "properties='a'", "", "IEditAudioClip#3.GetProperties("},
    {"channelMap", 13, 19, "", "", nullptr},
    {"channel", 19, 20, "index='0'", "", ".SetChannelSource("},
    {"component", 25, 22, "id='rackMix'", "", ".GetMixComponent("},
    {"slot", 25, 27, "", "", ".AddSlot("},
    {"component", 27, 26, "", "", "IEditEffectsSlot#4.GetComponent("},
    {"presetChunkData", 26, 28, "", "AAEC", ".SetPresetChunk("},
    {"channelMap", 26, 67, "direction='input'", "", nullptr},
    {"channel", 67, 68, "index='0'", "", ".AddInputChannel("},
    {"busConfig", 26, 66, "", "text", ".SetBusConfig("},
    {"parameter", 22, 29, "index='0'", "", ".SetParameterValue("},
    {"parameter", 26, 29, "index='0'", "", ".SetParameterValue("},
    {"parameterKeyframes", 29, 30, "", "", ".GetParameterAutomation("},
    {"parameterKeyframe", 30, 31, "", "", ".AddKeyframe("},
    {"midiClip", 9, 14, "", "", ".CreateMIDIClip("},
    {"midiEvents", 14, 15, "", "AAEC", ".SetMIDIEvents("},
    {"videoClip", 10, 21, "", "", ".CreateVideoClip("},
    {"videoFormat", 21, 54, "", "", ".GetVideoFormat("},
    {"globalTrackInfo", 64, 11, "", "", ".GetGlobalTrackInfo("},
    {"tempoEvents", 11, 16, "", "AAEC", ".SetTempoEvents("},
    {"timeSignatureEvents", 11, 17, "", "AAEC", ".SetTimeSignatureEvents("},
    {"keySignatureEvents", 11, 18, "", "AAEC", ".SetKeySignatureEvents("},
    {"xmpMetadata", 2, 53, "", "text", ".SetXmpMetadata(\"text\")"},
    {"sessionState", 2, 36, "", "", ".SetCtiPosition("},
    {"selectionState", 36, 37, "", "", ".SetSelection("},
    {"viewState", 36, 38, "", "", ".SetViewState("},
    {"timeFormatState", 36, 39, "", "", ".SetTimeFormat("},
    {"mixingOptionState", 36, 40, "", "", ".SetPanMode("},
    {"clipGroups", 2, 62, "", "", nullptr},
    {"clipGroup", 62, 63, "", "", ".CreateClipGroup("},
    {"name", 63, 51, "", "text", ".SetName(\"text\")"},
    {"item", 63, 65, "", "", ".AddItem("},
    {"properties", 2, 70, "", "", "IEditSession#1.GetProperties("},
    {"property", 70, 71, "key='a'", "text", ".SetProperty(\"a\",\"text\")"},
    {"trackVisibilityPresets", 2, 72, "", "", nullptr},
    {"trackVisibilityPreset", 72, 73, "", "", ".CreateTrackVisibilityPreset("},
    {"trackVisibility", 73, 74, "id='5'", "", ".AddTrack(5,"},
};

constexpr std::string_view kInstrumentElements[] = {
    "instrumentTrack",     "midiClip",          "midiEvents", "globalTrackInfo", "tempoEvents",
    "timeSignatureEvents", "keySignatureEvents"};

constexpr std::string_view kMilestones[] = {
    "session", "files", "tracks", "sessionState", "audioDevice", "clipGroups", "xmpMetadata"};

constexpr std::string_view kElementsWithAnEnd[] = {"session",
                                                   "files",
                                                   "audioDevice",
                                                   "tracks",
                                                   "clipGroups",
                                                   "sessionState",
                                                   "name",
                                                   "trackParameters",
                                                   "trackAudioParameters",
                                                   "component",
                                                   "busConfig",
                                                   "presetChunkData",
                                                   "clip",
                                                   "audioClip",
                                                   "midiClip",
                                                   "midiEvents",
                                                   "videoClip",
                                                   "clipGroup",
                                                   "tempoEvents",
                                                   "keySignatureEvents",
                                                   "timeSignatureEvents",
                                                   "xmpMetadata",
                                                   "property",
                                                   "trackVisibilityPresets"};

/// The document around an element that puts it in a place where all objects exist.
struct Context {
    std::string before;
    std::string after;
};

std::string Open(const PlaceRow& row) {
    return "<" + std::string(row.name) + " " + row.attributes + ">";
}

std::string Close(const PlaceRow& row) {
    return "</" + std::string(row.name) + ">";
}

Context Around(State parent) {
    if (parent == states::orvo) {
        return {"<orvo>", "</orvo>"};
    }
    for (const PlaceRow& row : kRows) {
        if (row.state == parent) {
            const Context outer = Around(row.parent);
            return {outer.before + Open(row), Close(row) + outer.after};
        }
    }
    ADD_FAILURE() << "no element pushes " << parent;
    return {};
}

Context Inside(const PlaceRow& row) {
    const Context outer = Around(row.parent);
    return {outer.before + Open(row), Close(row) + outer.after};
}

class ElementPlaces : public test::SerializerFixture {
protected:
    Calls CallsOfContent(const Context& context, const std::string& content) {
        const test::ReadOutcome outcome = Read(context.before + content + context.after);
        EXPECT_TRUE(outcome.ok) << context.before << content;
        return outcome.calls;
    }
};

TEST_F(ElementPlaces, CoverAllPlacesOfTheTable) {
    const Serializer::Impl impl{WriterFault{}};
    std::vector<std::pair<std::string, State>> inTable;
    for (const ElementEntry& entry : SerializerTestAccess::Table(impl).Entries()) {
        inTable.emplace_back(kelcore::UTF16to8(entry.name), entry.parentState);
    }
    std::vector<std::pair<std::string, State>> here;
    for (const PlaceRow& row : kRows) {
        here.emplace_back(row.name, row.parent);
    }
    EXPECT_THAT(here, UnorderedElementsAreArray(inTable));
}

/// A serializer in the middle of a read, at the root.
struct OpenRead {
    OpenRead() { SerializerTestAccess::Attach(impl, &node->Edit()); }

    const ElementEntry& EntryOf(const PlaceRow& row) const {
        const ElementEntry* const entry =
            SerializerTestAccess::Table(impl).Find(kelcore::UTF8to16(row.name), row.parent);
        if (entry == nullptr) {
            throw std::out_of_range(row.name);
        }
        return *entry;
    }

    refhost::Ref<refhost::SessionNode> node = refhost::SessionNode::Make();
    Serializer::Impl impl{WriterFault{}};
};

// For an element without children, only this shows which State it pushes.
TEST_F(ElementPlaces, EveryElementPushesItsOwnStateExactlyOnce) {
    for (const PlaceRow& row : kRows) {
        OpenRead read;
        const ElementEntry& entry = read.EntryOf(row);
        entry.onStart(entry.name, {{u"id", u"1"}});
        EXPECT_THAT(SerializerTestAccess::Stack(read.impl), ElementsAre(states::unknown, row.state))
            << row.name << " under " << row.parent;
    }
}

TEST_F(ElementPlaces, OnlyTheseEndsDoSomething) {
    for (const PlaceRow& row : kRows) {
        // The name of the session itself is accepted and dropped.
        const bool dropped = row.name == std::string_view("name") && row.parent == states::session;
        EXPECT_EQ(!OpenRead().EntryOf(row).onEnd.empty(),
                  std::ranges::count(kElementsWithAnEnd, row.name) > 0 && !dropped)
            << row.name << " under " << row.parent;
    }
}

TEST_F(ElementPlaces, OnlyTheEndsOfTheMilestonesAdvanceTheProgress) {
    for (const PlaceRow& row : kRows) {
        OpenRead read;
        const ElementEntry& entry = read.EntryOf(row);
        if (entry.onEnd) {
            entry.onEnd(entry.name);
        }
        EXPECT_EQ(static_cast<std::ptrdiff_t>(read.node->Reports().size()),
                  std::ranges::count(kMilestones, row.name))
            << row.name << " under " << row.parent;
    }
}

TEST_F(ElementPlaces, EveryElementUnderEachOfItsParentsReachesTheHost) {
    for (const PlaceRow& row : kRows) {
        if (row.call == nullptr) {
            continue;
        }
        const Context context = Around(row.parent);
        const auto without = CallsOf(CallsOfContent(context, ""), row.call);
        const auto with =
            CallsOf(CallsOfContent(context, Open(row) + row.text + Close(row)), row.call);
        EXPECT_GT(with.size(), without.size()) << Open(row) << " in " << context.before;
    }
}

TEST_F(ElementPlaces, WhatIsOnlyOpenedOrDroppedIsAcceptedWithoutACall) {
    for (const PlaceRow& row : kRows) {
        if (row.call == nullptr) {
            const Context context = Around(row.parent);
            EXPECT_EQ(CallsOfContent(context, Open(row) + row.text + Close(row)),
                      CallsOfContent(context, ""))
                << Open(row) << " in " << context.before;
        }
    }
}

/// One element of every name, in a form that it accepts, that does not belong under that parent.
std::vector<std::string> Strangers(State parent) {
    std::map<std::string, std::string> elements;
    for (const PlaceRow& row : kRows) {
        elements.try_emplace(row.name, "<" + std::string(row.name) +
                                           " id='1' index='0' slotIndex='0' key='a' name='n' "
                                           "properties='p' direction='input' inputID='1' "
                                           "outputID='1' parameterIndex='0' type='trackID'/>");
    }
    for (const PlaceRow& row : kRows) {
        if (row.parent == parent) {
            elements.erase(row.name);
        }
    }
    std::vector<std::string> strangers;
    for (const auto& [name, element] : elements) {
        strangers.push_back(element);
    }
    return strangers;
}

TEST_F(ElementPlaces, EveryElementUnderEveryOtherParentReachesNothing) {
    for (const PlaceRow& row : kRows) {
        const Context context = Inside(row);
        const Calls undisturbed = CallsOfContent(context, "");
        std::string together;
        for (const std::string& stranger : Strangers(row.state)) {
            together += stranger;
        }
        if (CallsOfContent(context, together) == undisturbed) {
            continue;
        }
        for (const std::string& stranger : Strangers(row.state)) {
            EXPECT_EQ(CallsOfContent(context, stranger), undisturbed)
                << stranger << " in " << context.before;
        }
        ADD_FAILURE() << "in " << context.before;
    }
}

TEST_F(ElementPlaces, EveryElementUnderTheRootExceptItsThreeReachesNothing) {
    const Context context = Around(states::orvo);
    for (const std::string& stranger : Strangers(states::orvo)) {
        EXPECT_THAT(CallsOfContent(context, stranger), IsEmpty()) << stranger;
    }
}

TEST_F(ElementPlaces, EveryElementInsideAnUnknownOneReachesNothing) {
    const Context session = Around(states::session);
    const Calls undisturbed = CallsOfContent(session, "");
    for (const std::string& element : Strangers(states::unknown)) {
        EXPECT_EQ(CallsOfContent(session, "<workspaceSettings>" + element + "</workspaceSettings>"),
                  undisturbed)
            << element;
    }
}

TEST_F(ElementPlaces, WithoutInstrumentTracksTheirElementsReachNothing) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    for (const PlaceRow& row : kRows) {
        if (std::ranges::count(kInstrumentElements, row.name) > 0) {
            const Context context = Around(row.parent);
            EXPECT_EQ(CallsOfContent(context, Open(row) + row.text + Close(row)),
                      CallsOfContent(context, ""))
                << Open(row);
        }
    }
}

TEST_F(ElementPlaces, WithoutInstrumentTracksTheContentOfOneReachesNothing) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    const Calls undisturbed = CallsOfContent(Around(states::tracks), "");
    for (const PlaceRow& row : kRows) {
        if (row.parent == states::instrumentTrack) {
            EXPECT_EQ(CallsOfContent(Around(row.parent), Open(row) + Close(row)), undisturbed)
                << row.name;
        }
    }
}

}  // namespace
}  // namespace tses
