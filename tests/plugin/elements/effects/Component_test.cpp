#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Component : public test::ElementFixture {
protected:
    /// The calls of a rack's mix, from its own component on.
    std::vector<std::string> CallsOfMix(const std::string& attributes,
                                        const std::string& children = "") {
        return CallsOf(CallsInTrack("<effectsRack><component id='rackMix' " + attributes + ">" +
                                    children + "</component></effectsRack>"),
                       "IEditComponent#4.");
    }

    std::string WrittenMix(const orvo::Component& mix, const test::HostSetup& host = {}) {
        AudioTrack track;
        track.effectsRack.emplace().mix = mix;
        return WrittenElement("component", track, host);
    }
};

// Reading

TEST_F(Component, EveryAttributeReachesItInTheOrderOfTheCalls) {
    EXPECT_THAT(
        CallsOfMix("componentGuid='g' componentID='c' name='n' presetName='p' powered='false' "
                   "editorVisible='true' editorLeft='-1' editorTop='2' editorWidth='3' "
                   "editorHeight='4'"),
        ElementsAre("IEditComponent#4.SetComponentGuid(\"g\")",
                    "IEditComponent#4.SetComponentID(\"c\")", "IEditComponent#4.SetName(\"n\")",
                    "IEditComponent#4.SetPresetName(\"p\")", "IEditComponent#4.SetPowered(false)",
                    "IEditComponent#4.SetEditorVisible(true)",
                    "IEditComponent#4.SetEditorRect(-1,2,3,4)"));
}

TEST_F(Component, WithoutAttributesItsTextsAreEmptyAndItsPowerIsNotSet) {
    EXPECT_THAT(CallsOfMix(""), ElementsAre("IEditComponent#4.SetComponentGuid(\"\")",
                                            "IEditComponent#4.SetComponentID(\"\")",
                                            "IEditComponent#4.SetName(\"\")",
                                            "IEditComponent#4.SetPresetName(\"\")",
                                            "IEditComponent#4.SetEditorVisible(false)",
                                            "IEditComponent#4.SetEditorRect(0,0,0,0)"));
}

TEST_F(Component, FlagsAreOnOnlyForTheExactTextTrue) {
    EXPECT_THAT(CallsOfMix("powered='true'"), Contains("IEditComponent#4.SetPowered(true)"));
    for (const std::string text : {"TRUE", "1", ""}) {
        const auto calls = CallsOfMix("powered='" + text + "' editorVisible='" + text + "'");
        EXPECT_THAT(calls, Contains("IEditComponent#4.SetPowered(false)")) << text;
        EXPECT_THAT(calls, Contains("IEditComponent#4.SetEditorVisible(false)")) << text;
    }
}

TEST_F(Component, NumbersOfTheEditorThatDoNotParseAreZero) {
    EXPECT_THAT(CallsOfMix("editorLeft='1.5' editorTop='x' editorWidth='' editorHeight='7'").back(),
                "IEditComponent#4.SetEditorRect(0,0,0,7)");
}

TEST_F(Component, IsReleasedAtItsEnd) {
    const auto calls = CallsInTrack(
        "<effectsRack><component id='rackMix'/><component name='late'/></effectsRack>");
    EXPECT_THAT(calls, Not(Contains(HasSubstr("late"))));
}

TEST_F(Component, TheIndicesOfItsParametersAreForgottenAtTheNextOne) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    const auto session = refhost::SessionNode::Make();
    SerializerTestAccess::Attach(impl, &session->Edit());
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    const auto start = [&events](std::u16string_view name, const TagAttributes& attributes = {}) {
        events.StartElementEvent(u"", name, name, attributes);
    };
    const auto end = [&events](std::u16string_view name) {
        events.EndElementEvent(u"", name, name);
    };
    start(u"orvo");
    start(u"session");
    start(u"tracks");
    start(u"audioTrack", {{u"id", u"1"}});
    start(u"effectsRack");
    start(u"component", {{u"id", u"rackMix"}});
    start(u"parameter", {{u"index", u"5"}});
    end(u"parameter");
    start(u"parameter");
    end(u"parameter");
    EXPECT_THAT(SerializerTestAccess::Effects(impl).parameterIndices, ElementsAre(5u, 0u));
    end(u"component");
    start(u"component", {{u"id", u"nobody"}});
    EXPECT_THAT(SerializerTestAccess::Effects(impl).parameterIndices, IsEmpty());
    start(u"parameter", {{u"index", u"6"}});
    EXPECT_THAT(SerializerTestAccess::Effects(impl).parameterIndices, ElementsAre(6u));
}

// Writing

orvo::Component SampleComponent() {
    orvo::Component component;
    component.guid = "g";
    component.componentId = "c";
    component.name = "n";
    component.presetName = "p";
    component.powered = false;
    component.editorVisible = true;
    component.editorRect = {-1, 2, 3, 4};
    return component;
}

TEST_F(Component, OfAKeywordIsWrittenWithItsKeywordAndItsPower) {
    EXPECT_EQ(WrittenMix(SampleComponent()),
              "<component componentGuid=\"g\" componentID=\"c\" editorHeight=\"4\" "
              "editorLeft=\"-1\" editorTop=\"2\" editorVisible=\"true\" editorWidth=\"3\" "
              "id=\"rackMix\" name=\"n\" powered=\"false\" presetName=\"p\"/>");
}

TEST_F(Component, OfAKeywordLeavesOutEmptyTextsAndAHiddenEditor) {
    EXPECT_EQ(WrittenMix({}), "<component id=\"rackMix\" powered=\"true\"/>");
}

TEST_F(Component, TheEditorsRectangleIsWrittenOnlyWithAWidthAndAHeight) {
    orvo::Component component;
    for (const orvo::EditorRect rect : {orvo::EditorRect{1, 2, 0, 4}, {1, 2, 3, 0}, {1, 2, 0, 0}}) {
        component.editorRect = rect;
        EXPECT_THAT(WrittenMix(component), Not(HasSubstr("editor")));
    }
    component.editorRect = {0, 0, -1, -1};
    EXPECT_THAT(
        WrittenMix(component),
        HasSubstr("editorHeight=\"-1\" editorLeft=\"0\" editorTop=\"0\" editorWidth=\"-1\""));
}

TEST_F(Component, OfASlotLeavesOutAnEditorOfNoWidthToo) {
    AudioTrack track;
    auto& component =
        track.effectsRack.emplace().slots.emplace_back().emplace().component.emplace();
    component.editorRect = {1, 2, 0, 4};
    component.editorVisible = true;
    component.presetName = "p";
    EXPECT_EQ(WrittenElement("component", track),
              "<component componentGuid=\"\" componentID=\"\" editorVisible=\"true\" name=\"\" "
              "presetName=\"p\"/>");
}

TEST_F(Component, APresetThatIsNullOrHasNoNameIsNotWritten) {
    EXPECT_THAT(WrittenMix(SampleComponent(), Null("IQueryComponent.GetPreset")),
                Not(HasSubstr("preset")));
    EXPECT_THAT(WrittenMix(SampleComponent(), Null("IQueryComponentPreset.GetName")),
                Not(HasSubstr("preset")));
}

TEST_F(Component, TextsThatTheHostReportsAsNullAreEmpty) {
    EXPECT_THAT(WrittenMix(SampleComponent(), Null("IQueryComponent.GetComponentGuid")),
                Not(HasSubstr("componentGuid")));
    EXPECT_THAT(WrittenMix(SampleComponent(), Null("IQueryComponent.GetComponentID")),
                Not(HasSubstr("componentID")));
    EXPECT_THAT(WrittenMix(SampleComponent(), Null("IQueryComponent.GetName")),
                Not(HasSubstr(" name=")));
}

TEST_F(Component, OfAKeywordDoesNotStoreAPresetsState) {
    orvo::Component component;
    component.presetChunk = {kelcore::byte(1)};
    EXPECT_EQ(WrittenMix(component), "<component id=\"rackMix\" powered=\"true\"/>");
}

TEST_F(Component, SurvivesAWriteAndARead) {
    AudioTrack track;
    track.effectsRack.emplace().mix = SampleComponent();
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).effectsRack, track.effectsRack);
}

TEST_F(Component, WithAKeywordIsQueriedInTheOrderThatHostsExpect) {
    AudioTrack track;
    track.effectsRack.emplace().mix.emplace();
    auto queries = QueriesOf("IQueryComponent", WithTrack(track));
    EXPECT_THAT(queries,
                ElementsAre("GetComponentGuid", "GetComponentID", "GetName", "GetPreset",
                            "IsEditorVisible", "IsPowered", "GetEditorRect", "GetParameterCount"));
}

}  // namespace
}  // namespace tses
