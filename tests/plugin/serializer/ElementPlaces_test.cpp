#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>

#include "format/States.h"
#include "platform/kelappsupport/Features.h"
#include "platform/kelcore/Strings.h"
#include "reference_host/SessionNode.h"
#include "tests/plugin/serializer/InstrumentElements.h"
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
    {"session", states::orvo, states::session, "", "", "IEditSession#1.SetSampleRate("},
    {"files", states::orvo, states::files, "", "", nullptr},
    {"file", states::files, states::file, "id='1'", "", "IEditSession#1.GetFile("},
    {"audioDevice", states::orvo, states::audioDevice, "inputID='a'", "",
     "IEditSession#1.SetInputDeviceId("},
    {"inputPort", states::audioDevice, states::audioPort, "", "", "IEditSession#1.AddInputPort("},
    {"outputPort", states::audioDevice, states::audioPort, "", "", "IEditSession#1.AddOutputPort("},
    {"name", states::session, states::name, "", "text", nullptr},
    {"tracks", states::session, states::tracks, "", "", nullptr},
    {"masterTrack", states::tracks, states::masterTrack, "id='6'", "",
     "IEditSession#1.GetAudioTrack(6)"},
    {"busTrack", states::tracks, states::busTrack, "id='7'", "", "IEditSession#1.GetAudioTrack(7)"},
    {"audioTrack", states::tracks, states::audioTrack, "id='8'", "",
     "IEditSession#1.GetAudioTrack(8)"},
    {"instrumentTrack", states::tracks, states::instrumentTrack, "id='9'", "",
     "IEditSession#1.GetAudioTrack(9)"},
    {"videoTrack", states::tracks, states::videoTrack, "id='10'", "",
     "IEditSession#1.GetVideoTrack(10)"},
    {"metronome", states::session, states::metronome, "", "", "IEditSession#1.GetMetronomeInfo("},
    {"metronomeTrack", states::metronome, states::metronomeTrack, "", "", ".GetTrack("},
    {"trackParameters", states::masterTrack, states::trackParameters, "", "", ".SetHeight("},
    {"trackParameters", states::busTrack, states::trackParameters, "", "", ".SetHeight("},
    {"trackParameters", states::audioTrack, states::trackParameters, "", "", ".SetHeight("},
    {"trackParameters", states::instrumentTrack, states::trackParameters, "", "", ".SetHeight("},
    {"trackParameters", states::videoTrack, states::trackParameters, "", "",
     "IEditVideoTrack#2.SetHeight("},
    {"trackParameters", states::metronomeTrack, states::trackParameters, "", "", ".SetHeight("},
    {"name", states::trackParameters, states::name, "", "text", ".SetName(\"text\")"},
    {"trackAudioParameters", states::masterTrack, states::trackAudioParameters, "", "",
     ".SetSoloSafe("},
    {"trackAudioParameters", states::busTrack, states::trackAudioParameters, "", "",
     ".SetSoloSafe("},
    {"trackAudioParameters", states::audioTrack, states::trackAudioParameters, "", "",
     ".SetSoloSafe("},
    {"trackAudioParameters", states::instrumentTrack, states::trackAudioParameters, "", "",
     ".SetSoloSafe("},
    {"trackAudioParameters", states::metronomeTrack, states::trackAudioParameters, "", "",
     ".SetSoloSafe("},
    {"trackInput", states::trackAudioParameters, states::trackInput, "inputID='77'", "",
     ".SetInput(77)"},
    {"trackOutput", states::trackAudioParameters, states::trackOutput, "outputID='77'", "",
     ".SetHardwareOutput(77)"},
    {"trackPanner", states::trackAudioParameters, states::trackPanner, "angle='1'", "", nullptr},
    {"fivePointOneLeft", states::trackPanner, states::fivePointOneLeft, "", "", nullptr},
    {"fivePointOneRight", states::trackPanner, states::fivePointOneRight, "", "", nullptr},
    {"fivePointOneCenter", states::trackPanner, states::fivePointOneCenter, "", "", nullptr},
    {"fivePointOneLeftSurround", states::trackPanner, states::fivePointOneLeftSurround, "", "",
     nullptr},
    {"fivePointOneRightSurround", states::trackPanner, states::fivePointOneRightSurround, "", "",
     nullptr},
    {"fivePointOneLFE", states::trackPanner, states::fivePointOneLFE, "", "", nullptr},
    {"component", states::trackAudioParameters, states::component, "id='trackFader'", "",
     ".GetFaderComponent("},
    {"sendList", states::busTrack, states::sendList, "", "", ".GetSendList("},
    {"sendList", states::audioTrack, states::sendList, "", "", ".GetSendList("},
    {"sendList", states::instrumentTrack, states::sendList, "", "", ".GetSendList("},
    {"sendList", states::metronomeTrack, states::sendList, "", "", ".GetSendList("},
    {"sendSlot", states::sendList, states::sendSlot, "slotIndex='0'", "", ".AddSlot("},
    {"component", states::sendSlot, states::component, "id='sendComponent'", "",
     ".GetSendComponent("},
    {"effectsRack", states::masterTrack, states::effectsRack, "", "", ".GetEffectsRack("},
    {"effectsRack", states::busTrack, states::effectsRack, "", "", ".GetEffectsRack("},
    {"effectsRack", states::audioTrack, states::effectsRack, "", "", ".GetEffectsRack("},
    {"effectsRack", states::instrumentTrack, states::effectsRack, "", "", ".GetEffectsRack("},
    {"effectsRack", states::metronomeTrack, states::effectsRack, "", "", ".GetEffectsRack("},
    {"editParameter", states::masterTrack, states::editParameter, "", "", ".SetEditParameter("},
    {"editParameter", states::busTrack, states::editParameter, "", "", ".SetEditParameter("},
    {"editParameter", states::audioTrack, states::editParameter, "", "", ".SetEditParameter("},
    {"editParameter", states::instrumentTrack, states::editParameter, "", "", ".SetEditParameter("},
    {"editParameter", states::metronomeTrack, states::editParameter, "", "", ".SetEditParameter("},
    {"audioClip", states::audioTrack, states::audioClip, "", "", ".CreateAudioClip("},
    {"clip", states::audioTrack, states::audioClip, "", "", ".CreateAudioClip("},
    {"effectsRack", states::audioClip, states::effectsRack, "", "",
     "IEditAudioClip#3.GetEffectsRack("},
    {"component", states::audioClip, states::component, "id='clipGain'", "",
     ".GetClipGainComponent("},
    {"fadeIn", states::audioClip, states::fadeIn, "", "", ".GetFadeIn("},
    {"fadeOut", states::audioClip, states::fadeOut, "", "", ".GetFadeOut("},
    {"clipStretch", states::audioClip, states::clipStretch, "", "", ".GetClipStretch("},
    {"take", states::audioClip, states::take, "", "", ".AddTake("},
    {"editParameter", states::audioClip, states::editParameter, "", "",
     "IEditAudioClip#3.SetEditParameter("},
    {"properties", states::audioClip, states::clipProperties, "properties='a'", "",
     "IEditAudioClip#3.GetProperties("},
    {"channelMap", states::audioClip, states::clipChannelMap, "", "", nullptr},
    {"channel", states::clipChannelMap, states::clipChannel, "index='0'", "", ".SetChannelSource("},
    {"component", states::effectsRack, states::component, "id='rackMix'", "", ".GetMixComponent("},
    {"slot", states::effectsRack, states::slot, "", "", ".AddSlot("},
    {"component", states::slot, states::slotComponent, "", "", "IEditEffectsSlot#4.GetComponent("},
    {"presetChunkData", states::slotComponent, states::presetChunkData, "", "AAEC",
     ".SetPresetChunk("},
    {"channelMap", states::slotComponent, states::slotChannelMap, "direction='input'", "", nullptr},
    {"channel", states::slotChannelMap, states::slotChannel, "index='0'", "", ".AddInputChannel("},
    {"busConfig", states::slotComponent, states::busConfig, "", "text", ".SetBusConfig("},
    {"parameter", states::component, states::parameter, "index='0'", "", ".SetParameterValue("},
    {"parameter", states::slotComponent, states::parameter, "index='0'", "", ".SetParameterValue("},
    {"parameterKeyframes", states::parameter, states::parameterKeyframes, "", "",
     ".GetParameterAutomation("},
    {"parameterKeyframe", states::parameterKeyframes, states::parameterKeyframe, "", "",
     ".AddKeyframe("},
    {"midiClip", states::instrumentTrack, states::midiClip, "", "", ".CreateMIDIClip("},
    {"midiEvents", states::midiClip, states::midiEvents, "", "AAEC", ".SetMIDIEvents("},
    {"videoClip", states::videoTrack, states::videoClip, "", "", ".CreateVideoClip("},
    {"videoFormat", states::videoClip, states::videoFormat, "", "", ".GetVideoFormat("},
    {"globalTrackInfo", states::metronome, states::globalTrackInfo, "", "", ".GetGlobalTrackInfo("},
    {"tempoEvents", states::globalTrackInfo, states::tempoEvents, "", "AAEC", ".SetTempoEvents("},
    {"timeSignatureEvents", states::globalTrackInfo, states::timeSignatureEvents, "", "AAEC",
     ".SetTimeSignatureEvents("},
    {"keySignatureEvents", states::globalTrackInfo, states::keySignatureEvents, "", "AAEC",
     ".SetKeySignatureEvents("},
    {"xmpMetadata", states::session, states::xmpMetadata, "", "text", ".SetXmpMetadata(\"text\")"},
    {"sessionState", states::session, states::sessionState, "", "", ".SetCtiPosition("},
    {"selectionState", states::sessionState, states::selectionState, "", "", ".SetSelection("},
    {"viewState", states::sessionState, states::viewState, "", "", ".SetViewState("},
    {"timeFormatState", states::sessionState, states::timeFormatState, "", "", ".SetTimeFormat("},
    {"mixingOptionState", states::sessionState, states::mixingOptionState, "", "", ".SetPanMode("},
    {"clipGroups", states::session, states::clipGroups, "", "", nullptr},
    {"clipGroup", states::clipGroups, states::clipGroup, "", "", ".CreateClipGroup("},
    {"name", states::clipGroup, states::name, "", "text", ".SetName(\"text\")"},
    {"item", states::clipGroup, states::clipGroupItem, "", "", ".AddItem("},
    {"properties", states::session, states::sessionProperties, "", "",
     "IEditSession#1.GetProperties("},
    {"property", states::sessionProperties, states::property, "key='a'", "text",
     ".SetProperty(\"a\",\"text\")"},
    {"trackVisibilityPresets", states::session, states::trackVisibilityPresets, "", "", nullptr},
    {"trackVisibilityPreset", states::trackVisibilityPresets, states::trackVisibilityPreset, "", "",
     ".CreateTrackVisibilityPreset("},
    {"trackVisibility", states::trackVisibilityPreset, states::trackVisibility, "id='5'", "",
     ".AddTrack(5,"},
};

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
    const Serializer::Impl impl{WriterFault{}, MakeDomDocument};
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
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
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
        if (!entry.onEnd.empty()) {
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
