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

class TrackAudioParameters : public test::ElementFixture {
protected:
    AudioTrack ReadParameters(const std::string& attributes, const std::string& children = "") {
        return ReadInTrack("<trackAudioParameters " + attributes + ">" + children +
                           "</trackAudioParameters>");
    }

    /// Only the calls of the components.
    std::vector<std::string> CallsOfComponents(const std::string& components,
                                               const test::HostSetup& host = {}) {
        return CallsOf(
            CallsInTrack("<trackAudioParameters>" + components + "</trackAudioParameters>", host),
            "Component");
    }

    /// Whether a read switches the EQ on or off, in the order of the calls.
    std::vector<std::string> PoweredOfEq(const std::string& attributes,
                                         const std::string& children) {
        return CallsOf(CallsInTrack("<trackAudioParameters><component id='trackEQ' " + attributes +
                                    ">" + children + "</component></trackAudioParameters>"),
                       "SetPowered");
    }
};

// Reading

TEST_F(TrackAudioParameters, ReachTheTrackAtTheEndInTheirOrder) {
    EXPECT_THAT(CallsInTrack("<trackAudioParameters audioChannelType='stereo' automationMode='-3' "
                             "monitoring='true' recordArmed='true' solo='true' soloSafe='true'>"
                             "<trackOutput outputID='5' type='trackID'/><trackInput inputID='-2'/>"
                             "</trackAudioParameters>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetAudioChannelType(2)",
                            "IEditAudioTrackPrivate#2.SetSolo(true)",
                            "IEditAudioTrackPrivate#2.SetRecordArmed(true)",
                            "IEditAudioTrackPrivate#2.SetMonitoring(true)",
                            "IEditAudioTrackPrivate#2.SetSoloSafe(true)",
                            "IEditAudioTrackPrivate#2.SetOutputTrack(5)",
                            "IEditAudioTrackPrivate#2.SetInput(-2)",
                            "IEditAudioTrackPrivate#2.SetHardwareOutput(-1)",
                            "IEditAudioTrackPrivate#2.SetAutomationMode(-3)"));
}

TEST_F(TrackAudioParameters, WithoutAttributesAndChildrenTheDefaultsReachTheTrack) {
    EXPECT_THAT(CallsInTrack("<trackAudioParameters/>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetAudioChannelType(0)",
                            "IEditAudioTrackPrivate#2.SetSolo(false)",
                            "IEditAudioTrackPrivate#2.SetRecordArmed(false)",
                            "IEditAudioTrackPrivate#2.SetMonitoring(false)",
                            "IEditAudioTrackPrivate#2.SetSoloSafe(false)",
                            "IEditAudioTrackPrivate#2.SetOutputTrack(-1)",
                            "IEditAudioTrackPrivate#2.SetInput(-1)",
                            "IEditAudioTrackPrivate#2.SetHardwareOutput(-1)",
                            "IEditAudioTrackPrivate#2.SetAutomationMode(1)"));
}

TEST_F(TrackAudioParameters, EachLayoutHasItsNumberOfChannels) {
    EXPECT_EQ(ReadParameters("audioChannelType='mono'").audioChannelType, orvo::ChannelType::Mono);
    EXPECT_EQ(ReadParameters("audioChannelType='stereo'").audioChannelType,
              orvo::ChannelType::Stereo);
    EXPECT_EQ(ReadParameters("audioChannelType='fivePointOne'").audioChannelType,
              orvo::ChannelType::FivePointOne);
}

TEST_F(TrackAudioParameters, AnUnknownLayoutIsSetToZero) {
    for (const std::string keyword : {"quad", "Stereo", "2", ""}) {
        EXPECT_THAT(CallsInTrack("<trackAudioParameters audioChannelType='" + keyword + "'/>"),
                    Contains("IEditAudioTrackPrivate#2.SetAudioChannelType(0)"))
            << keyword;
    }
}

TEST_F(TrackAudioParameters, TrueAndOneSwitchOnUnlikeATracksOwnAttributes) {
    for (const std::string text : {"true", "1"}) {
        const AudioTrack track =
            ReadParameters("solo='" + text + "' recordArmed='" + text + "' monitoring='" + text +
                           "' soloSafe='" + text + "'");
        EXPECT_TRUE(track.solo) << text;
        EXPECT_TRUE(track.recordArmed) << text;
        EXPECT_TRUE(track.monitoring) << text;
        EXPECT_TRUE(track.soloSafe) << text;
    }
    EXPECT_FALSE(ReadInSession("<tracks><audioTrack id='7' select='1'/></tracks>")
                     .session.audioTracks.at(0)
                     .selected);
}

TEST_F(TrackAudioParameters, AnyOtherTextSwitchesOff) {
    for (const std::string text : {"TRUE", "True", "2", "yes", "", " 1", "01"}) {
        const AudioTrack track =
            ReadParameters("solo='" + text + "' recordArmed='" + text + "' monitoring='" + text +
                           "' soloSafe='" + text + "'");
        EXPECT_FALSE(track.solo || track.recordArmed || track.monitoring || track.soloSafe) << text;
    }
}

TEST_F(TrackAudioParameters, AnAutomationModeThatIsNoNumberIsOne) {
    EXPECT_EQ(ReadParameters("automationMode='write'").automationMode, 1);
}

TEST_F(TrackAudioParameters, VolumeAndMuteAreAcceptedAndChangeNothing) {
    EXPECT_EQ(CallsInTrack("<trackAudioParameters volume='0.5' mute='true'/>"),
              CallsInTrack("<trackAudioParameters/>"));
}

TEST_F(TrackAudioParameters, VolumeAndMuteAreReadIntoTheTracksRecord) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    const auto session = refhost::SessionNode::Make();
    SerializerTestAccess::Attach(impl, &session->Edit());
    events.StartElementEvent(u"", u"orvo", u"orvo", {});
    events.StartElementEvent(u"", u"session", u"session", {});
    events.StartElementEvent(u"", u"tracks", u"tracks", {});
    events.StartElementEvent(u"", u"audioTrack", u"audioTrack", {{u"id", u"1"}});
    const TrackAudioRecord& record = SerializerTestAccess::Tracks(impl).pending.audio;
    EXPECT_EQ(record.volume, 0.0F);
    EXPECT_FALSE(record.mute);
    events.StartElementEvent(u"", u"trackAudioParameters", u"trackAudioParameters",
                             {{u"mute", u"1"}, {u"volume", u"-0,5"}});
    EXPECT_EQ(record.volume, -0.5F);
    EXPECT_TRUE(record.mute);
}

TEST_F(TrackAudioParameters, AnOutputOfTypeTrackIdGoesToATrack) {
    const AudioTrack track =
        ReadParameters("", "<trackOutput type='trackID' outputID='4294967295'/>");
    EXPECT_EQ(track.outputTrackId, -1);
    EXPECT_EQ(ReadParameters("", "<trackOutput type='trackID' outputID='5'/>").outputTrackId, 5);
    EXPECT_EQ(ReadParameters("", "<trackOutput type='trackID' outputID='5'/>").hardwareOutputId,
              -1);
}

TEST_F(TrackAudioParameters, AnOutputOfAnyOtherTypeOrNoneGoesToTheHardware) {
    for (const std::string type : {"type='hardwareOutput'", "type='trackid'", "type=''", ""}) {
        const AudioTrack track = ReadParameters("", "<trackOutput outputID='5' " + type + "/>");
        EXPECT_EQ(track.outputTrackId, -1) << type;
        EXPECT_EQ(track.hardwareOutputId, 5) << type;
    }
}

TEST_F(TrackAudioParameters, AnOutputWithoutAnIdNamesNoOutput) {
    for (const std::string output :
         {"<trackOutput/>", "<trackOutput type='trackID'/>", "<trackOutput type='hardwareOutput'/>",
          "<trackOutput type='trackID' outputID='x'/>"}) {
        const AudioTrack track = ReadParameters("", output);
        EXPECT_EQ(track.outputTrackId, -1) << output;
        EXPECT_EQ(track.hardwareOutputId, -1) << output;
    }
}

TEST_F(TrackAudioParameters, ASecondOutputForgetsTheFirst) {
    const AudioTrack track =
        ReadParameters("", "<trackOutput type='trackID' outputID='5'/><trackOutput outputID='6'/>");
    EXPECT_EQ(track.outputTrackId, -1);
    EXPECT_EQ(track.hardwareOutputId, 6);
    EXPECT_EQ(ReadParameters("", "<trackOutput outputID='6'/><trackOutput/>").hardwareOutputId, -1);
}

TEST_F(TrackAudioParameters, AnInputWithoutAnIdNamesNoInput) {
    EXPECT_EQ(ReadParameters("", "<trackInput inputID='4'/>").inputId, 4);
    EXPECT_EQ(ReadParameters("", "<trackInput/>").inputId, -1);
    EXPECT_EQ(ReadParameters("", "<trackInput inputID='x'/>").inputId, -1);
    EXPECT_EQ(ReadParameters("", "<trackInput inputID='4'/><trackInput/>").inputId, -1);
}

TEST_F(TrackAudioParameters, OfTwoTheSecondStartsFromTheValuesOfTheFirst) {
    const AudioTrack track = ReadInTrack(
        "<trackAudioParameters solo='true' audioChannelType='stereo' automationMode='3'>"
        "<trackInput inputID='4'/><trackOutput outputID='5'/></trackAudioParameters>"
        "<trackAudioParameters soloSafe='true' audioChannelType='quad'/>");
    EXPECT_TRUE(track.solo);
    EXPECT_TRUE(track.soloSafe);
    EXPECT_EQ(track.audioChannelType, orvo::ChannelType::Stereo);
    EXPECT_EQ(track.automationMode, 3);
    EXPECT_EQ(track.inputId, 4);
    EXPECT_EQ(track.hardwareOutputId, 5);
}

TEST_F(TrackAudioParameters, EachKeywordAsksForItsComponentByTheKeyword) {
    EXPECT_THAT(
        CallsOf(CallsInTrack("<trackAudioParameters><component id='trackEQ'/>"
                             "<component id='trackPan'/><component id='trackMute'/>"
                             "<component id='trackFader'/></trackAudioParameters>"),
                "-> IEditComponent"),
        ElementsAre("IEditAudioTrackPrivate#2.GetEQComponent(\"trackEQ\") -> IEditComponent#3",
                    "IEditAudioTrackPrivate#2.GetPanComponent(\"trackPan\") -> IEditComponent#4",
                    "IEditAudioTrackPrivate#2.GetMuteComponent(\"trackMute\") -> IEditComponent#5",
                    "IEditAudioTrackPrivate#2.GetFaderComponent(\"trackFader\") -> "
                    "IEditComponent#6"));
}

TEST_F(TrackAudioParameters, AComponentIsSetBeforeTheSwitches) {
    const auto calls =
        CallsInTrack("<trackAudioParameters><component id='trackPan'/></trackAudioParameters>");
    EXPECT_THAT(calls.front(), HasSubstr("GetPanComponent"));
    EXPECT_THAT(calls.back(), HasSubstr("SetAutomationMode"));
}

TEST_F(TrackAudioParameters, AComponentWithAnotherIdOrNoneIsDropped) {
    for (const std::string id : {"id='trackfader'", "id='rackMix'", "id=''", "id='sendPan'", ""}) {
        EXPECT_THAT(CallsOfComponents("<component " + id +
                                      " powered='true'>"
                                      "<parameter index='0' parameterValue='1'>"
                                      "<parameterKeyframes><parameterKeyframe/>"
                                      "</parameterKeyframes></parameter></component>"),
                    IsEmpty())
            << id;
    }
}

TEST_F(TrackAudioParameters, AComponentWithoutAKeywordDoesNotReachTheOneBefore) {
    const auto calls = CallsOfComponents(
        "<component id='trackPan'/><component name='x'><parameter index='3'/></component>");
    EXPECT_THAT(calls, Not(Contains(HasSubstr("SetParameterValue"))));
}

TEST_F(TrackAudioParameters, AComponentThatTheHostReportsAsNullIsDropped) {
    EXPECT_THAT(CallsOfComponents("<component id='trackFader' powered='false'>"
                                  "<parameter index='0' parameterValue='1'/></component>",
                                  Null("IEditAudioTrackPrivate.GetFaderComponent")),
                ElementsAre("IEditAudioTrackPrivate#2.GetFaderComponent(\"trackFader\") -> null"));
}

// The EQ of old files

TEST_F(TrackAudioParameters, AnEqWithoutPoweredIsSwitchedByItsLastParameter) {
    EXPECT_THAT(PoweredOfEq("",
                            "<parameter index='0' parameterValue='1.0'/>"
                            "<parameter index='1' parameterValue='0.2'/>"),
                ElementsAre("IEditComponent#3.SetPowered(false)"));
    EXPECT_THAT(PoweredOfEq("",
                            "<parameter index='1' parameterValue='0.2'/>"
                            "<parameter index='0' parameterValue='1.0'/>"),
                ElementsAre("IEditComponent#3.SetPowered(true)"));
}

TEST_F(TrackAudioParameters, AnEqIsOnFromAHalf) {
    EXPECT_THAT(PoweredOfEq("", "<parameter parameterValue='0.5'/>"),
                ElementsAre("IEditComponent#3.SetPowered(true)"));
    EXPECT_THAT(PoweredOfEq("", "<parameter parameterValue='0,49999'/>"),
                ElementsAre("IEditComponent#3.SetPowered(false)"));
}

TEST_F(TrackAudioParameters, AParameterOfAnEqWithoutAValueCountsAsZero) {
    EXPECT_THAT(PoweredOfEq("", "<parameter parameterValue='1'/><parameter index='1'/>"),
                ElementsAre("IEditComponent#3.SetPowered(false)"));
}

TEST_F(TrackAudioParameters, AnEqIsSwitchedAfterItsParameters) {
    const auto calls = CallsOfComponents(
        "<component id='trackEQ'><parameter index='4' parameterValue='1'/></component>");
    EXPECT_THAT(calls.back(), "IEditComponent#3.SetPowered(true)");
}

TEST_F(TrackAudioParameters, AnEqWithPoweredIsOnOrOffAsThatSays) {
    EXPECT_THAT(PoweredOfEq("powered='true'", "<parameter parameterValue='0.2'/>"),
                ElementsAre("IEditComponent#3.SetPowered(true)"));
    EXPECT_THAT(PoweredOfEq("powered='false'", "<parameter parameterValue='1'/>"),
                ElementsAre("IEditComponent#3.SetPowered(false)"));
}

TEST_F(TrackAudioParameters, PoweredOfAComponentBeforeAnEqDoesNotCountForTheEq) {
    EXPECT_THAT(
        CallsOf(CallsOfComponents("<component id='trackFader' powered='true'/>"
                                  "<component id='trackEQ'>"
                                  "<parameter parameterValue='0.2'/></component>"),
                "SetPowered"),
        ElementsAre("IEditComponent#3.SetPowered(true)", "IEditComponent#4.SetPowered(false)"));
}

TEST_F(TrackAudioParameters, AnEqWithoutParametersIsNotSwitched) {
    EXPECT_THAT(PoweredOfEq("", ""), IsEmpty());
}

TEST_F(TrackAudioParameters, AnEqWithoutParametersIsNotSwitchedByThoseOfTheComponentBefore) {
    EXPECT_THAT(CallsOf(CallsOfComponents("<component id='trackPan'><parameter index='0' "
                                          "parameterValue='1'/></component>"
                                          "<component id='trackEQ'/>"),
                        "SetPowered"),
                IsEmpty());
}

TEST_F(TrackAudioParameters, OnlyTheEqIsSwitchedByItsParameters) {
    const std::string parameter = "<parameter parameterValue='1'/>";
    EXPECT_THAT(CallsOf(CallsOfComponents("<component id='trackFader'>" + parameter +
                                          "</component><component id='trackMute'>" + parameter +
                                          "</component><component id='trackPan'>" + parameter +
                                          "</component>"),
                        "SetPowered"),
                IsEmpty());
}

TEST_F(TrackAudioParameters, AComponentAfterTheEqIsNotSwitched) {
    EXPECT_THAT(CallsOf(CallsOfComponents("<component id='trackEQ' powered='true'/>"
                                          "<component id='trackPan'>"
                                          "<parameter parameterValue='1'/></component>"),
                        "SetPowered"),
                ElementsAre("IEditComponent#3.SetPowered(true)"));
}

TEST_F(TrackAudioParameters, AnEqThatTheHostReportsAsNullIsNotSwitched) {
    EXPECT_THAT(CallsOfComponents("<component id='trackEQ'><parameter parameterValue='1'/>"
                                  "</component>",
                                  Null("IEditAudioTrackPrivate.GetEQComponent")),
                ElementsAre("IEditAudioTrackPrivate#2.GetEQComponent(\"trackEQ\") -> null"));
}

// Writing

AudioTrack SampleOfParameters() {
    AudioTrack track;
    track.audioChannelType = orvo::ChannelType::Stereo;
    track.solo = true;
    track.recordArmed = true;
    track.monitoring = true;
    track.soloSafe = true;
    track.automationMode = -3;
    track.outputTrackId = 5;
    track.inputId = 4;
    track.hardwareOutputId = 6;
    return track;
}

TEST_F(TrackAudioParameters, AreWrittenWithSwitchesOutputAndInput) {
    EXPECT_EQ(WrittenElement("trackAudioParameters", SampleOfParameters()),
              "<trackAudioParameters audioChannelType=\"stereo\" automationMode=\"-3\" "
              "monitoring=\"true\" recordArmed=\"true\" solo=\"true\" soloSafe=\"true\">\n"
              "  <trackOutput outputID=\"5\" type=\"trackID\"/>\n"
              "  <trackInput inputID=\"4\"/>\n"
              "</trackAudioParameters>");
}

TEST_F(TrackAudioParameters, SwitchesThatAreOffAreWrittenToo) {
    EXPECT_EQ(WrittenElement("trackAudioParameters", AudioTrack()),
              "<trackAudioParameters automationMode=\"1\" monitoring=\"false\" "
              "recordArmed=\"false\" solo=\"false\" soloSafe=\"false\">\n"
              "  <trackOutput outputID=\"-1\" type=\"hardwareOutput\"/>\n"
              "  <trackInput inputID=\"-1\"/>\n"
              "</trackAudioParameters>");
}

TEST_F(TrackAudioParameters, OnlyAnIdAboveZeroIsWrittenAsATrack) {
    AudioTrack track = SampleOfParameters();
    for (const kelcore::int32 id : {0, -1, -2147483647 - 1}) {
        track.outputTrackId = id;
        EXPECT_EQ(WrittenElement("trackOutput", track),
                  "<trackOutput outputID=\"6\" type=\"hardwareOutput\"/>")
            << id;
    }
    track.outputTrackId = 1;
    EXPECT_EQ(WrittenElement("trackOutput", track),
              "<trackOutput outputID=\"1\" type=\"trackID\"/>");
}

TEST_F(TrackAudioParameters, EachLayoutHasItsKeyword) {
    AudioTrack track;
    for (const auto& [layout, keyword] :
         {std::pair<kelcore::uint32, std::string>{1, "mono"}, {2, "stereo"}, {6, "fivePointOne"}}) {
        track.audioChannelType = orvo::ChannelType{layout};
        EXPECT_THAT(WrittenElement("trackAudioParameters", track),
                    HasSubstr("audioChannelType=\"" + keyword + "\""));
    }
}

TEST_F(TrackAudioParameters, ALayoutWithoutAKeywordIsNotWrittenAndReadsBackAsZero) {
    AudioTrack track;
    for (const kelcore::uint32 layout : {4u, 0u, 3u, 8u, 4294967295u}) {
        track.audioChannelType = orvo::ChannelType{layout};
        EXPECT_THAT(WrittenElement("trackAudioParameters", track),
                    Not(HasSubstr("audioChannelType")));
        EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).audioChannelType,
                  orvo::ChannelType::NotSaid)
            << layout;
    }
}

TEST_F(TrackAudioParameters, VolumeAndMuteAreNotWritten) {
    const std::string element = WrittenElement("trackAudioParameters", SampleOfParameters());
    EXPECT_THAT(element, Not(HasSubstr("volume=")));
    EXPECT_THAT(element, Not(HasSubstr("mute=")));
}

TEST_F(TrackAudioParameters, TheHostIsAskedForTheSwitchesAndTheRoutingInTheirOrder) {
    const auto calls =
        CallsOf(Write(WithTrack(SampleOfParameters())).calls, "IQueryAudioTrackPrivate#");
    const auto first = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
        return call.find("GetAudioChannelType") != std::string::npos;
    });
    ASSERT_GE(calls.end() - first, 8);
    std::vector<std::string> operations;
    for (auto call = first; call != first + 8; ++call) {
        operations.push_back(call->substr(call->find('.') + 1));
    }
    EXPECT_THAT(operations, ElementsAre("GetAudioChannelType()", "IsSolo()", "IsRecordArmed()",
                                        "IsMonitoring()", "IsSoloSafe()", "GetOutputTrackId()",
                                        "GetInputId()", "GetHardwareOutputId()"));
}

TEST_F(TrackAudioParameters, TheFourComponentsFollowInTheirOrder) {
    AudioTrack track;
    track.fader.emplace();
    track.mute.emplace().powered = false;
    track.pan.emplace();
    track.eq.emplace();
    EXPECT_THAT(WrittenElement("trackAudioParameters", track),
                HasSubstr("  <trackInput inputID=\"-1\"/>\n"
                          "  <component id=\"trackFader\" powered=\"true\"/>\n"
                          "  <component id=\"trackMute\" powered=\"false\"/>\n"
                          "  <component id=\"trackPan\" powered=\"true\"/>\n"
                          "  <component id=\"trackEQ\" powered=\"true\"/>\n"
                          "</trackAudioParameters>"));
}

TEST_F(TrackAudioParameters, AComponentThatTheHostReportsAsNullIsNotWritten) {
    AudioTrack track;
    track.fader.emplace();
    track.eq.emplace();
    const std::string element = WrittenElement("trackAudioParameters", track,
                                               Null("IQueryAudioTrackPrivate.GetFaderComponent"));
    EXPECT_THAT(element, Not(HasSubstr("trackFader")));
    EXPECT_THAT(element, HasSubstr("trackEQ"));
}

TEST_F(TrackAudioParameters, AnEqThatIsOffStaysOffWhateverItsLastParameter) {
    AudioTrack track;
    track.eq.emplace().powered = false;
    track.eq->parameters[0].value = 1.0F;
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).eq, track.eq);
}

}  // namespace
}  // namespace tses
