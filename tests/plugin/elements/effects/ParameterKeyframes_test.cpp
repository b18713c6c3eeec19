#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "reference_host/SessionNode.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::AutomationLane;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ParameterKeyframes : public test::ElementFixture {
protected:
    /// The calls of the lanes of a mix.
    std::vector<std::string> CallsOfLanes(const std::string& parameters,
                                          const test::HostSetup& host = {}) {
        std::vector<std::string> calls;
        for (const std::string& call : CallsInTrack("<effectsRack><component id='rackMix'>" +
                                                        parameters + "</component></effectsRack>",
                                                    host)) {
            if (call.find("Automation") != std::string::npos) {
                calls.push_back(call);
            }
        }
        return calls;
    }

    /// The keyframe calls of a lane with one keyframe that has these attributes.
    std::vector<std::string> CallsOfKeyframe(const std::string& attributes) {
        return CallsOf(CallsOfLanes("<parameter><parameterKeyframes><parameterKeyframe " +
                                    attributes + "/></parameterKeyframes></parameter>"),
                       "AddKeyframe");
    }

    static AudioTrack WithLane(AutomationLane lane) {
        AudioTrack track;
        auto& parameter = track.effectsRack.emplace().mix.emplace().parameters[0];
        parameter.value = 1.0F;
        parameter.automation = std::move(lane);
        return track;
    }
};

// Reading

TEST_F(ParameterKeyframes, ALaneBelongsToTheParameterAroundIt) {
    EXPECT_THAT(
        CallsOfLanes("<parameter index='3'><parameterKeyframes enableSplines='true' "
                     "readOnly='true'><parameterKeyframe sampleOffset='48000' select='true' "
                     "type='hold' value='0.5'/><parameterKeyframe sampleOffset='-1' "
                     "type='linear' value='-2'/></parameterKeyframes></parameter>"),
        ElementsAre("IEditComponent#4.GetParameterAutomation(3) -> IEditAutomationLane#5",
                    "IEditAutomationLane#5.SetEnableSplines(true)",
                    "IEditAutomationLane#5.SetReadOnly(true)",
                    "IEditAutomationLane#5.AddKeyframe(0.5,48000,true,true)",
                    "IEditAutomationLane#5.AddKeyframe(-2,-1,false,false)"));
}

TEST_F(ParameterKeyframes, WithoutAttributesTheLanesFlagsStayUntouched) {
    EXPECT_THAT(CallsOfLanes("<parameter><parameterKeyframes/></parameter>"),
                ElementsAre("IEditComponent#4.GetParameterAutomation(0) -> IEditAutomationLane#5"));
}

TEST_F(ParameterKeyframes, OneAttributeSetsBothFlags) {
    EXPECT_THAT(CallsOfLanes("<parameter><parameterKeyframes readOnly='true'/></parameter>"),
                ElementsAre("IEditComponent#4.GetParameterAutomation(0) -> IEditAutomationLane#5",
                            "IEditAutomationLane#5.SetEnableSplines(false)",
                            "IEditAutomationLane#5.SetReadOnly(true)"));
    EXPECT_THAT(CallsOfLanes("<parameter><parameterKeyframes colour='red'/></parameter>"),
                ElementsAre("IEditComponent#4.GetParameterAutomation(0) -> IEditAutomationLane#5",
                            "IEditAutomationLane#5.SetEnableSplines(false)",
                            "IEditAutomationLane#5.SetReadOnly(false)"));
}

TEST_F(ParameterKeyframes, FlagsAreOnOnlyForTrueAndForOne) {
    const auto flags = [this](const std::string& text) {
        auto calls = CallsOfLanes("<parameter><parameterKeyframes enableSplines='" + text +
                                  "' readOnly='" + text + "'/></parameter>");
        calls.erase(calls.begin());
        return calls;
    };
    EXPECT_THAT(flags("1"), ElementsAre("IEditAutomationLane#5.SetEnableSplines(true)",
                                        "IEditAutomationLane#5.SetReadOnly(true)"));
    for (const std::string text : {"TRUE", "2", "", "false"}) {
        EXPECT_THAT(flags(text), ElementsAre("IEditAutomationLane#5.SetEnableSplines(false)",
                                             "IEditAutomationLane#5.SetReadOnly(false)"))
            << text;
    }
}

TEST_F(ParameterKeyframes, AKeyframeWithoutAttributesIsAllZero) {
    EXPECT_THAT(CallsOfKeyframe(""),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,false)"));
}

TEST_F(ParameterKeyframes, AKeyframeIsSelectedOnlyForTrueAndForOne) {
    EXPECT_THAT(CallsOfKeyframe("select='1'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,true)"));
    EXPECT_THAT(CallsOfKeyframe("select='TRUE'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,false)"));
}

TEST_F(ParameterKeyframes, EveryTypeExceptTheExactTextHoldIsLinear) {
    for (const std::string type : {"Hold", "linear", "hold ", "", "1", "spline"}) {
        EXPECT_THAT(CallsOfKeyframe("type='" + type + "'"),
                    ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,false)"))
            << type;
    }
}

TEST_F(ParameterKeyframes, AValueMayHaveADecimalComma) {
    EXPECT_THAT(CallsOfKeyframe("value='-0,5'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(-0.5,0,false,false)"));
}

TEST_F(ParameterKeyframes, NumbersThatDoNotParseAreZero) {
    EXPECT_THAT(CallsOfKeyframe("value='x' sampleOffset='1.5'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,false)"));
    EXPECT_THAT(CallsOfKeyframe("sampleOffset='9223372036854775808'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,0,false,false)"));
}

TEST_F(ParameterKeyframes, AnOffsetMayNeedMoreThan32Bits) {
    EXPECT_THAT(CallsOfKeyframe("sampleOffset='5000000000'"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,5000000000,false,false)"));
    EXPECT_THAT(
        CallsOfKeyframe("sampleOffset='-9223372036854775808'"),
        ElementsAre("IEditAutomationLane#5.AddKeyframe(0,-9223372036854775808,false,false)"));
}

TEST_F(ParameterKeyframes, KeyframesAreNeitherSortedNorDeduplicated) {
    EXPECT_THAT(CallsOf(CallsOfLanes("<parameter><parameterKeyframes>"
                                     "<parameterKeyframe sampleOffset='9'/>"
                                     "<parameterKeyframe sampleOffset='1'/>"
                                     "<parameterKeyframe sampleOffset='9'/>"
                                     "</parameterKeyframes></parameter>"),
                        "AddKeyframe"),
                ElementsAre("IEditAutomationLane#5.AddKeyframe(0,9,false,false)",
                            "IEditAutomationLane#5.AddKeyframe(0,1,false,false)",
                            "IEditAutomationLane#5.AddKeyframe(0,9,false,false)"));
}

TEST_F(ParameterKeyframes, UnknownAttributesOfAKeyframeAreIgnored) {
    EXPECT_EQ(CallsOfKeyframe("colour='red' Value='1'"), CallsOfKeyframe(""));
}

TEST_F(ParameterKeyframes, ALaneThatTheHostReportsAsNullDropsItsKeyframes) {
    EXPECT_THAT(CallsOfLanes("<parameter><parameterKeyframes readOnly='true'><parameterKeyframe/>"
                             "</parameterKeyframes></parameter>",
                             Null("IEditComponent.GetParameterAutomation")),
                ElementsAre("IEditComponent#4.GetParameterAutomation(0) -> null"));
}

TEST_F(ParameterKeyframes, OfALaneThatTheHostReportsAsNullDoNotReachTheLaneBefore) {
    EXPECT_THAT(
        CallsOfLanes("<parameter index='1'><parameterKeyframes/></parameter>"
                     "<parameter index='2'><parameterKeyframes readOnly='true'>"
                     "<parameterKeyframe sampleOffset='7'/></parameterKeyframes></parameter>",
                     NullAtTheSecond("IEditComponent.GetParameterAutomation")),
        ElementsAre("IEditComponent#4.GetParameterAutomation(1) -> IEditAutomationLane#5",
                    "IEditComponent#4.GetParameterAutomation(2) -> null"));
}

TEST_F(ParameterKeyframes, InADroppedComponentTheLaneBeforeIsNotReached) {
    const auto calls = CallsInTrack(
        "<effectsRack><component id='rackMix'><parameter><parameterKeyframes/></parameter>"
        "</component><component id='nobody'><parameter><parameterKeyframes readOnly='true'>"
        "<parameterKeyframe/></parameterKeyframes></parameter></component></effectsRack>");
    EXPECT_THAT(calls, Not(Contains(HasSubstr("AddKeyframe"))));
    EXPECT_THAT(calls, Not(Contains(HasSubstr("SetReadOnly"))));
}

// In a document, no keyframe outside of a lane reaches the handler, so the test calls the handler.
TEST_F(ParameterKeyframes, AStrayKeyframeAfterItsLaneStillLandsInIt) {
    const auto session = refhost::SessionNode::Make();
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
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
    start(u"parameter");
    start(u"parameterKeyframes");
    end(u"parameterKeyframes");
    end(u"parameter");
    end(u"component");
    SerializerTestAccess::StartParameterKeyframe(impl, {{u"sampleOffset", u"7"}});
    const auto& lane =
        session->Value().audioTracks.at(0).effectsRack->mix->parameters.at(0).automation;
    ASSERT_TRUE(lane.has_value());
    ASSERT_EQ(lane->keyframes.size(), 1u);
    EXPECT_EQ(lane->keyframes[0].sampleOffset, 7);
}

TEST_F(ParameterKeyframes, AKeyframeBeforeAnyLaneIsDropped) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SerializerTestAccess::StartParameterKeyframe(impl, {{u"sampleOffset", u"7"}});
    EXPECT_THAT(SerializerTestAccess::Stack(impl),
                ElementsAre(states::unknown, states::parameterKeyframe));
}

TEST_F(ParameterKeyframes, AKeyframeOutsideOfALaneIsNotRecognisedInADocument) {
    EXPECT_THAT(CallsOfLanes("<parameter><parameterKeyframes/><parameterKeyframe/></parameter>"),
                Not(Contains(HasSubstr("AddKeyframe"))));
}

// Writing

TEST_F(ParameterKeyframes, AreWrittenWithTheLanesFlags) {
    AutomationLane lane;
    lane.enableSplines = true;
    lane.keyframes = {{0.5F, 5'000'000'000, orvo::KeyframeType::Hold, true},
                      {-0.25F, -1, orvo::KeyframeType::Linear, false}};
    EXPECT_EQ(WrittenElement("parameter", WithLane(lane)),
              "<parameter index=\"0\" parameterValue=\"1\">\n"
              "  <parameterKeyframes enableSplines=\"true\" readOnly=\"false\">\n"
              "    <parameterKeyframe sampleOffset=\"5000000000\" select=\"true\" type=\"hold\" "
              "value=\"0.5\"/>\n"
              "    <parameterKeyframe sampleOffset=\"-1\" select=\"false\" type=\"linear\" "
              "value=\"-0.25\"/>\n"
              "  </parameterKeyframes>\n"
              "</parameter>");
}

TEST_F(ParameterKeyframes, ALaneWithoutKeyframesIsNotWrittenWhateverItsFlags) {
    AutomationLane lane;
    lane.enableSplines = true;
    lane.readOnly = true;
    EXPECT_EQ(WrittenElement("parameter", WithLane(lane)),
              "<parameter index=\"0\" parameterValue=\"1\"/>");
}

TEST_F(ParameterKeyframes, SurviveAWriteAndARead) {
    AutomationLane lane;
    lane.readOnly = true;
    lane.keyframes = {
        {0.1F, std::numeric_limits<kelcore::int64>::max(), orvo::KeyframeType::Hold, false},
        {-3e-20F, std::numeric_limits<kelcore::int64>::min(), orvo::KeyframeType::Linear, true},
        {0.1F, 5'000'000'000, orvo::KeyframeType::Hold, false}};
    const AudioTrack track = WithLane(lane);
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).effectsRack, track.effectsRack);
}

}  // namespace
}  // namespace tses
