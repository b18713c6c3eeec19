#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using testing::ElementsAre;
using testing::IsEmpty;

class ClipChannelMap : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfMap(const std::string& content,
                                        const test::HostSetup& host = {}) {
        return CallsOf(CallsInTrack("<audioClip>" + content + "</audioClip>", host),
                       "SetChannelSource");
    }

    static AudioTrack With(const std::map<kelcore::uint32, kelcore::int32>& sources) {
        AudioTrack track;
        track.clips.emplace_back().channelSources = sources;
        return track;
    }
};

TEST_F(ClipChannelMap, IsAppliedByAscendingChannelWhenTheClipEnds) {
    const auto calls = CallsInTrack(
        "<audioClip><channelMap><channel index='10' sourceIndex='1'/>"
        "<channel index='2' sourceIndex='-1'/></channelMap><take/></audioClip>");
    EXPECT_THAT(
        std::vector<std::string>(calls.end() - 3, calls.end()),
        ElementsAre("IEditAudioClip#3.AddTake(0)", "IEditAudioClip#3.SetChannelSource(2,-1)",
                    "IEditAudioClip#3.SetChannelSource(10,1)"));
}

TEST_F(ClipChannelMap, TheFirstEntryOfAChannelIsKept) {
    EXPECT_THAT(CallsOfMap("<channelMap><channel index='0' sourceIndex='5'/>"
                           "<channel index='0' sourceIndex='6'/></channelMap>"
                           "<channelMap><channel index='0' sourceIndex='7'/></channelMap>"),
                ElementsAre("IEditAudioClip#3.SetChannelSource(0,5)"));
}

TEST_F(ClipChannelMap, AChannelWithoutAttributesFeedsTheFirstFromTheFirst) {
    EXPECT_THAT(CallsOfMap("<channelMap><channel/></channelMap>"),
                ElementsAre("IEditAudioClip#3.SetChannelSource(0,0)"));
}

TEST_F(ClipChannelMap, TheIndexIsUnsignedAndTheSourceSigned) {
    EXPECT_THAT(CallsOfMap("<channelMap><channel index='4294967295' sourceIndex='-2147483648'/>"
                           "</channelMap>"),
                ElementsAre("IEditAudioClip#3.SetChannelSource(4294967295,-2147483648)"));
}

TEST_F(ClipChannelMap, AnEmptyMapSetsNothing) {
    EXPECT_THAT(CallsOfMap("<channelMap/>"), IsEmpty());
}

TEST_F(ClipChannelMap, IsForgottenWithItsClip) {
    EXPECT_EQ(CallsOf(CallsInTrack("<audioClip><channelMap><channel index='0'/></channelMap>"
                                   "</audioClip><audioClip/>"),
                      "SetChannelSource")
                  .size(),
              1u);
}

TEST_F(ClipChannelMap, IsForgottenWithAClipThatTheHostDidNotMake) {
    EXPECT_THAT(CallsOfMap("<channelMap><channel index='0'/></channelMap>",
                           Null("IEditAudioTrack.CreateAudioClip")),
                IsEmpty());
}

TEST_F(ClipChannelMap, IsWrittenForEveryChannelFromZero) {
    EXPECT_EQ(WrittenElement("channelMap", With({{0, 1}, {2, -1}})),
              "<channelMap>\n"
              "  <channel index=\"0\" sourceIndex=\"1\"/>\n"
              "  <channel index=\"1\" sourceIndex=\"1\"/>\n"
              "  <channel index=\"2\" sourceIndex=\"-1\"/>\n"
              "</channelMap>");
}

TEST_F(ClipChannelMap, IsNotWrittenForAClipWithoutChannels) {
    EXPECT_THAT(WrittenElement("channelMap", With({})), IsEmpty());
}

TEST_F(ClipChannelMap, SurvivesAWriteAndARead) {
    const AudioTrack track = With({{0, 5}, {1, 4}, {2, -3}});
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).clips, track.clips);
}

TEST_F(ClipChannelMap, AChannelThatWasLeftOutComesBackFedByItsOwnNumber) {
    EXPECT_EQ(ThroughFile(WithTrack(With({{1, 0}}))).audioTracks.at(0).clips,
              With({{0, 0}, {1, 0}}).clips);
}

TEST_F(ClipChannelMap, WithAGapKeepsEverySourceIfTheHostCountsToTheHighest) {
    const auto read = ReadInTrack(
        "<audioClip><channelMap><channel index='4' sourceIndex='0'/>"
        "<channel index='1' sourceIndex='5'/></channelMap></audioClip>");
    const auto sources = ThroughFile(WithTrack(read)).audioTracks.at(0).clips.at(0).channelSources;
    EXPECT_EQ(sources.size(), 5u);
    EXPECT_EQ(sources.at(1), 5);
    EXPECT_EQ(sources.at(4), 0);
}

TEST_F(ClipChannelMap, WithAGapLosesItsHighestSourceIfTheHostCountsThoseThatItHas) {
    test::HostSetup host;
    host.faults.ReturnNumber("IQueryAudioClip.GetChannelCount", 2);
    EXPECT_EQ(WrittenElement("channelMap", WithTrack(With({{1, 5}, {4, 0}})), host),
              "<channelMap>\n"
              "  <channel index=\"0\" sourceIndex=\"0\"/>\n"
              "  <channel index=\"1\" sourceIndex=\"5\"/>\n"
              "</channelMap>");
}

TEST_F(ClipChannelMap, WithTheMostChannelsIsWrittenAndWithMoreFailsTheSave) {
    EXPECT_TRUE(Write(WithTrack(With({{1023, 0}}))).ok);
    EXPECT_FALSE(Write(WithTrack(With({{1024, 0}}))).ok);
    EXPECT_FALSE(Write(WithTrack(With({{4294967295, 0}}))).ok);
}

}  // namespace
}  // namespace tses
