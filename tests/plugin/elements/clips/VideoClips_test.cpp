#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using orvo::VideoClip;
using orvo::VideoFormat;
using testing::ElementsAre;
using testing::IsEmpty;

class VideoClips : public test::ElementFixture {
protected:
    static std::string InTrack(const std::string& content) {
        return "<tracks><videoTrack id='7'>" + content + "</videoTrack></tracks>";
    }

    /// The calls from the clip on. The session is object 1, the track 2 and the clip 3.
    std::vector<std::string> CallsOfClips(const std::string& content,
                                          const test::HostSetup& host = {}) {
        return CallsOf(CallsIn(InTrack(content), host), "VideoClip");
    }

    static Session With(std::vector<VideoClip> clips) {
        Session session;
        session.videoTracks.emplace_back().clips = std::move(clips);
        return session;
    }
};

TEST_F(VideoClips, EveryAttributeReachesTheHostInTheOrderThatHostsExpect) {
    EXPECT_THAT(
        CallsOfClips("<videoClip id='12' fileID='3' sourceInPoint='100' sourceOutPoint='300' "
                     "startPoint='7' endPoint='1' hue='30.5' name='Scene' select='true' "
                     "lockedInTime='true' offline='true' zOrder='-4'/>"),
        ElementsAre("IEditVideoTrack#2.CreateVideoClip(12) -> IEditVideoClip#3",
                    "IEditVideoClip#3.SetFileID(3)", "IEditVideoClip#3.SetSourceInPoint(100)",
                    "IEditVideoClip#3.SetDuration(200)", "IEditVideoClip#3.SetStartPoint(7)",
                    "IEditVideoClip#3.SetHue(30.5)", "IEditVideoClip#3.SetName(\"Scene\")",
                    "IEditVideoClip#3.SetSelected(true)", "IEditVideoClip#3.SetLockedInTime(true)",
                    "IEditVideoClip#3.SetOffline(true)", "IEditVideoClip#3.SetZOrder(-4)"));
}

TEST_F(VideoClips, WithoutAttributesTheHostGetsTheDefaults) {
    EXPECT_THAT(
        CallsOfClips("<videoClip/>"),
        ElementsAre("IEditVideoTrack#2.CreateVideoClip(4294967295) -> IEditVideoClip#3",
                    "IEditVideoClip#3.SetFileID(4294967295)",
                    "IEditVideoClip#3.SetSourceInPoint(-1)", "IEditVideoClip#3.SetDuration(0)",
                    "IEditVideoClip#3.SetStartPoint(-1)", "IEditVideoClip#3.SetHue(0)",
                    "IEditVideoClip#3.SetName(\"\")", "IEditVideoClip#3.SetSelected(false)",
                    "IEditVideoClip#3.SetLockedInTime(false)", "IEditVideoClip#3.SetOffline(false)",
                    "IEditVideoClip#3.SetZOrder(0)"));
}

TEST_F(VideoClips, LoopingAndCrossfadesAreAcceptedAndIgnored) {
    EXPECT_EQ(CallsOfClips("<videoClip id='1' looped='true' crossFadeHeadClipID='5' "
                           "crossFadeTailClipID='6' clipAutoCrossfade='false'/>"),
              CallsOfClips("<videoClip id='1'/>"));
}

TEST_F(VideoClips, TakeOverNameAndHueOfTheClipBefore) {
    const auto clips = ReadInSession(InTrack("<videoClip name='a' hue='30'/><videoClip/>"))
                           .session.videoTracks.at(0)
                           .clips;
    EXPECT_EQ(clips.at(1).name, "a");
    EXPECT_EQ(clips.at(1).hue, 30.0);
}

TEST_F(VideoClips, NothingElseCarriesOver) {
    const auto read = [this](const std::string& content) {
        return ReadInSession(InTrack(content)).session.videoTracks.at(0).clips;
    };
    const auto clips = read(
        "<videoClip id='1' fileID='3' sourceInPoint='1' sourceOutPoint='3' startPoint='3' "
        "endPoint='4' select='true' lockedInTime='true' offline='true' zOrder='4'/><videoClip/>");
    EXPECT_EQ(clips.at(1), read("<videoClip/>").at(0));
}

TEST_F(VideoClips, AClipThatTheHostDoesNotMakeIsDroppedWithItsFormat) {
    EXPECT_THAT(CallsOfClips("<videoClip id='1'><videoFormat width='1'/></videoClip>",
                             Null("IEditVideoTrack.CreateVideoClip")),
                ElementsAre("IEditVideoTrack#2.CreateVideoClip(1) -> null"));
}

TEST_F(VideoClips, OfATrackThatTheHostDoesNotKnowAreDropped) {
    EXPECT_THAT(CallsOfClips("<videoClip id='1'/>", Null("IEditSession.GetVideoTrack")), IsEmpty());
}

// Writing

VideoClip SampleVideoClip() {
    VideoClip clip;
    clip.id = 12;
    clip.fileId = 3;
    clip.sourceInPoint = 100;
    clip.duration = 200;
    clip.startPoint = 5'000'000'000;
    clip.hue = 30.5;
    clip.name = "Scene";
    clip.offline = true;
    clip.selected = true;
    clip.lockedInTime = true;
    clip.zOrder = -4;
    return clip;
}

TEST_F(VideoClips, AreWrittenWithTheirAttributesAndWithoutThoseOfAudioClips) {
    EXPECT_EQ(WrittenElement("videoClip", With({SampleVideoClip()})),
              "<videoClip endPoint=\"5000000200\" fileID=\"3\" hue=\"30.5\" id=\"12\" "
              "lockedInTime=\"true\" name=\"Scene\" offline=\"true\" select=\"true\" "
              "sourceInPoint=\"100\" sourceOutPoint=\"300\" startPoint=\"5000000000\" "
              "zOrder=\"-4\"/>");
}

TEST_F(VideoClips, AClipThatTheHostReportsAsNullIsSkipped) {
    EXPECT_THAT(WrittenElement("videoClip", With({SampleVideoClip()}),
                               Null("IQueryVideoTrack.GetVideoClip")),
                IsEmpty());
}

TEST_F(VideoClips, SurviveAWriteAndARead) {
    VideoClip extreme = SampleVideoClip();
    extreme.sourceInPoint = std::numeric_limits<kelcore::int64>::max();
    extreme.duration = std::numeric_limits<kelcore::int64>::max();
    extreme.format = VideoFormat{24000, 1001, 5, 1920, 1080, 16, 15, 2};
    const std::vector<VideoClip> clips = {VideoClip{}, SampleVideoClip(), extreme};
    EXPECT_EQ(ThroughFile(With(clips)).videoTracks.at(0).clips, clips);
}

TEST_F(VideoClips, AClipIsReleasedWhenItsElementEnds) {
    const auto calls = CallsWithReferences(
        "<orvo><session><tracks><videoTrack id='1'><videoClip id='5'/></videoTrack>"
        "<audioTrack id='2'/></tracks></session></orvo>");
    const auto released = std::ranges::find(calls, "IEditVideoClip.Release");
    const auto next = std::ranges::find(calls, "IEditSession.GetAudioTrack");
    EXPECT_LT(released - calls.begin(), next - calls.begin());
}

TEST_F(VideoClips, AreQueriedInTheOrderThatHostsExpect) {
    EXPECT_THAT(QueriesOf("IQueryVideoClip", With({VideoClip{}})),
                ElementsAre("GetID", "GetFileID", "GetOffline", "GetZOrder", "GetSourceInPoint",
                            "GetDuration", "GetStartPoint", "GetHue", "GetName", "GetSelected",
                            "GetLockedInTime", "GetVideoFormat"));
}

}  // namespace
}  // namespace tses
