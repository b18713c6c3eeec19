#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;

class TrackParameters : public test::ElementFixture {};

TEST_F(TrackParameters, ReachTheTrackAtTheEndInTheOrderOfNameHeightHueMinimized) {
    EXPECT_THAT(CallsInTrack("<trackParameters trackHeight='-64' trackHue='212.5' "
                             "trackMinimized='true'><name>Voice</name></trackParameters>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetName(\"Voice\")",
                            "IEditAudioTrackPrivate#2.SetHeight(-64)",
                            "IEditAudioTrackPrivate#2.SetHue(212.5)",
                            "IEditAudioTrackPrivate#2.SetMinimized(true)"));
}

TEST_F(TrackParameters, WithoutAnyAttributeTheHueIsMinusOneAndEverythingElseEmpty) {
    EXPECT_THAT(
        CallsInTrack("<trackParameters/>"),
        ElementsAre("IEditAudioTrackPrivate#2.SetName(\"\")",
                    "IEditAudioTrackPrivate#2.SetHeight(0)", "IEditAudioTrackPrivate#2.SetHue(-1)",
                    "IEditAudioTrackPrivate#2.SetMinimized(false)"));
}

TEST_F(TrackParameters, ATrackWithoutThemGetsNoCall) {
    EXPECT_THAT(CallsInTrack(""), testing::IsEmpty());
}

TEST_F(TrackParameters, TheNameIsTrimmed) {
    EXPECT_EQ(
        ReadInTrack("<trackParameters><name>\n\t  Lead  Voice \r\n</name></trackParameters>").name,
        "Lead  Voice");
}

TEST_F(TrackParameters, TheNameMayBeCData) {
    EXPECT_EQ(
        ReadInTrack("<trackParameters><name>A<![CDATA[ & <B>]]></name></trackParameters>").name,
        "A & <B>");
}

TEST_F(TrackParameters, AnEmptyNameElementIsAnEmptyName) {
    EXPECT_EQ(ReadInTrack("<trackParameters><name>One</name><name/></trackParameters>").name, "");
}

TEST_F(TrackParameters, OnlyTheExactTextTrueMinimizes) {
    for (const std::string text : {"TRUE", "1", "", "false"}) {
        EXPECT_FALSE(ReadInTrack("<trackParameters trackMinimized='" + text + "'/>").minimized)
            << text;
    }
}

TEST_F(TrackParameters, AHeightThatIsNoNumberIsZero) {
    EXPECT_EQ(ReadInTrack("<trackParameters trackHeight='64px'/>").height, 0);
    EXPECT_EQ(ReadInTrack("<trackParameters trackHeight='64.5'/>").height, 0);
}

TEST_F(TrackParameters, AHueMayHaveADecimalCommaAndIsZeroWhenItIsNoNumber) {
    EXPECT_EQ(ReadInTrack("<trackParameters trackHue='30,25'/>").hue, 30.25);
    EXPECT_EQ(ReadInTrack("<trackParameters trackHue='red'/>").hue, 0.0);
}

TEST_F(TrackParameters, OfTwoTheSecondStartsFromTheValuesOfTheFirst) {
    const AudioTrack track = ReadInTrack(
        "<trackParameters trackHeight='64' trackHue='30'><name>One</name>"
        "</trackParameters><trackParameters trackHeight='80'/>");
    EXPECT_EQ(track.height, 80);
    EXPECT_EQ(track.hue, 30.0);
    EXPECT_EQ(track.name, "One");
}

TEST_F(TrackParameters, OfAVideoTrackReachTheVideoTrack) {
    EXPECT_THAT(
        CallsIn("<tracks><videoTrack id='3'><trackParameters trackHeight='64' "
                "trackHue='30' trackMinimized='true'><name>Picture</name>"
                "</trackParameters></videoTrack></tracks>"),
        ElementsAre("IEditSession#1.GetVideoTrack(3) -> IEditVideoTrack#2",
                    "IEditVideoTrack#2.SetIndex(0)", "IEditVideoTrack#2.SetSelected(false)",
                    "IEditVideoTrack#2.SetName(\"Picture\")", "IEditVideoTrack#2.SetHeight(64)",
                    "IEditVideoTrack#2.SetHue(30)", "IEditVideoTrack#2.SetMinimized(true)"));
}

TEST_F(TrackParameters, OfAVideoTrackLeaveTheAudioTrackBeforeItAlone) {
    const auto outcome = ReadInSession(
        "<tracks><audioTrack id='1'/><videoTrack id='3'><trackParameters trackHeight='64'/>"
        "</videoTrack></tracks>");
    EXPECT_EQ(outcome.session.audioTracks.at(0).height, 0);
    EXPECT_EQ(outcome.session.videoTracks.at(0).height, 64);
}

// Writing

TEST_F(TrackParameters, AreWrittenWithAllAttributesAndTheName) {
    AudioTrack track;
    track.name = "A & B";
    track.height = -64;
    track.hue = 0.1;
    track.minimized = true;
    EXPECT_EQ(WrittenElement("trackParameters", track),
              "<trackParameters trackHeight=\"-64\" trackHue=\"0.1\" trackMinimized=\"true\">\n"
              "  <name>A &amp; B</name>\n"
              "</trackParameters>");
}

TEST_F(TrackParameters, AnEmptyNameIsWrittenAsAnEmptyElement) {
    EXPECT_EQ(WrittenElement("trackParameters", AudioTrack()),
              "<trackParameters trackHeight=\"0\" trackHue=\"-1\" trackMinimized=\"false\">\n"
              "  <name/>\n"
              "</trackParameters>");
}

TEST_F(TrackParameters, ANameThatTheHostReportsAsNullIsEmpty) {
    AudioTrack track;
    track.name = "Voice";
    EXPECT_THAT(WrittenElement("trackParameters", track, Null("IQueryAudioTrackPrivate.GetName")),
                HasSubstr("<name/>"));
}

TEST_F(TrackParameters, OfAVideoTrackAreTheSameElement) {
    Session session;
    orvo::VideoTrack& track = session.videoTracks.emplace_back();
    track.name = "Picture";
    track.height = 64;
    track.hue = 212.5;
    track.minimized = true;
    EXPECT_EQ(WrittenElement("trackParameters", session),
              "<trackParameters trackHeight=\"64\" trackHue=\"212.5\" trackMinimized=\"true\">\n"
              "  <name>Picture</name>\n"
              "</trackParameters>");
}

}  // namespace
}  // namespace tses
