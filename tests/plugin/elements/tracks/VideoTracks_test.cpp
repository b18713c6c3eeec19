#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using orvo::VideoTrack;
using testing::ElementsAre;

class VideoTracks : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfTrack(const std::string& element,
                                          const test::HostSetup& host = {}) {
        return CallsIn("<tracks>" + element + "</tracks>", host);
    }
};

TEST_F(VideoTracks, IndexAndSelectionReachTheTrackOfTheId) {
    EXPECT_THAT(
        CallsOfTrack("<videoTrack id='3' index='2' select='true'/>"),
        ElementsAre("IEditSession#1.GetVideoTrack(3) -> IEditVideoTrack#2",
                    "IEditVideoTrack#2.SetIndex(2)", "IEditVideoTrack#2.SetSelected(true)"));
}

TEST_F(VideoTracks, MissingAttributesAreTheDefaults) {
    EXPECT_THAT(CallsOfTrack("<videoTrack/>"),
                ElementsAre("IEditSession#1.GetVideoTrack(4294967295) -> null"));
    EXPECT_THAT(
        CallsOfTrack("<videoTrack id='0'/>"),
        ElementsAre("IEditSession#1.GetVideoTrack(0) -> IEditVideoTrack#2",
                    "IEditVideoTrack#2.SetIndex(0)", "IEditVideoTrack#2.SetSelected(false)"));
}

TEST_F(VideoTracks, SelectIsOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"TRUE", "1", ""}) {
        EXPECT_THAT(CallsOfTrack("<videoTrack id='3' select='" + text + "'/>").back(),
                    "IEditVideoTrack#2.SetSelected(false)");
    }
}

TEST_F(VideoTracks, OtherAttributesAreIgnored) {
    EXPECT_EQ(CallsOfTrack("<videoTrack id='3' visible='false' phaseInverted='true'/>"),
              CallsOfTrack("<videoTrack id='3'/>"));
}

TEST_F(VideoTracks, AnIdThatTheHostDoesNotKnowDropsTheTrackAndTheReadGoesOn) {
    EXPECT_THAT(CallsOfTrack("<videoTrack id='3'><trackParameters trackHue='30'/>"
                             "<videoClip id='1'/></videoTrack>",
                             Null("IEditSession.GetVideoTrack")),
                ElementsAre("IEditSession#1.GetVideoTrack(3) -> null"));
}

TEST_F(VideoTracks, NothingOfTheTrackBeforeReachesAVideoTrack) {
    const auto outcome = ReadInSession(
        "<tracks><audioTrack id='1' index='5' select='true'><trackParameters trackHeight='64' "
        "trackHue='30' trackMinimized='true'><name>Voice</name></trackParameters></audioTrack>"
        "<videoTrack id='3'><trackParameters/></videoTrack></tracks>");
    ASSERT_EQ(outcome.session.audioTracks.at(0).name, "Voice");
    VideoTrack expected;
    expected.id = 3;
    EXPECT_THAT(outcome.session.videoTracks, ElementsAre(expected));
}

TEST_F(VideoTracks, AnIdBeyondTheSignedRangeIsWrittenUnsigned) {
    Session session;
    session.videoTracks.emplace_back().id = 4294967294;
    EXPECT_THAT(WrittenElement("videoTrack", session),
                testing::StartsWith("<videoTrack id=\"4294967294\""));
}

TEST_F(VideoTracks, AreWrittenWithoutTheIndex) {
    Session session;
    VideoTrack& track = session.videoTracks.emplace_back();
    track.id = 3;
    track.index = 2;
    track.selected = true;
    EXPECT_EQ(WrittenElement("videoTrack", session),
              "<videoTrack id=\"3\" select=\"true\">\n"
              "  <trackParameters trackHeight=\"0\" trackHue=\"-1\" trackMinimized=\"false\">\n"
              "    <name/>\n"
              "  </trackParameters>\n"
              "</videoTrack>");
}

TEST_F(VideoTracks, WritingThenReadingLosesTheIndex) {
    Session session;
    VideoTrack& track = session.videoTracks.emplace_back();
    track.id = 3;
    track.index = 2;
    track.selected = true;
    track.name = "Picture";
    track.hue = 30;
    track.height = 64;
    track.minimized = true;
    VideoTrack expected = track;
    expected.index = 0;
    EXPECT_THAT(ThroughFile(session).videoTracks, ElementsAre(expected));
}

TEST_F(VideoTracks, TheClipsFollowTheParameters) {
    Session session;
    session.videoTracks.emplace_back().clips.resize(1);
    const std::string element = WrittenElement("videoTrack", session);
    EXPECT_LT(element.find("</trackParameters>"), element.find("<videoClip "));
}

}  // namespace
}  // namespace tses
