#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Takes : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfTakes(const std::string& content) {
        return CallsOf(CallsInTrack("<audioClip>" + content + "</audioClip>"), "AddTake");
    }
};

TEST_F(Takes, ReachTheClipInTheOrderOfTheFile) {
    EXPECT_THAT(CallsOfTakes("<take sourceInPoint='5000000000'/><take sourceInPoint='-1'/>"
                             "<take sourceInPoint='-1'/>"),
                ElementsAre("IEditAudioClip#3.AddTake(5000000000)", "IEditAudioClip#3.AddTake(-1)",
                            "IEditAudioClip#3.AddTake(-1)"));
}

TEST_F(Takes, ATakeWithoutAnInPointBeginsAtZero) {
    EXPECT_THAT(CallsOfTakes("<take/>"), ElementsAre("IEditAudioClip#3.AddTake(0)"));
}

TEST_F(Takes, AnInPointThatDoesNotParseIsZero) {
    EXPECT_THAT(CallsOfTakes("<take sourceInPoint='soon'/>"),
                ElementsAre("IEditAudioClip#3.AddTake(0)"));
}

TEST_F(Takes, AreWrittenInTheirOrder) {
    orvo::AudioTrack track;
    track.clips.emplace_back().takes = {5'000'000'000, -1};
    EXPECT_THAT(WrittenElement("audioClip", track),
                HasSubstr(">\n  <take sourceInPoint=\"5000000000\"/>\n"
                          "  <take sourceInPoint=\"-1\"/>\n</audioClip>"));
}

TEST_F(Takes, SurviveAWriteAndARead) {
    orvo::AudioTrack track;
    track.clips.emplace_back().takes = {std::numeric_limits<kelcore::int64>::min(), 0, 0,
                                        std::numeric_limits<kelcore::int64>::max()};
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).clips, track.clips);
}

}  // namespace
}  // namespace tses
