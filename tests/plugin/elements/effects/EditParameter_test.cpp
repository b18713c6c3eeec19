#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::EditParameter;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class EditParameterElement : public test::ElementFixture {};

TEST_F(EditParameterElement, ReachesItsTrack) {
    EXPECT_THAT(CallsInTrack("<editParameter parameterIndex='3' slotIndex='1'/>"
                             "<editParameter parameterIndex='4' slotIndex='1'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetEditParameter(1,3)",
                            "IEditAudioTrackPrivate#2.SetEditParameter(1,4)"));
}

TEST_F(EditParameterElement, WithoutAttributesNamesNoSlotAndTheFirstParameter) {
    EXPECT_THAT(CallsInTrack("<editParameter/>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetEditParameter(4294967295,0)"));
    EXPECT_THAT(CallsInTrack("<editParameter parameterIndex='x' slotIndex='x'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.SetEditParameter(4294967295,0)"));
}

TEST_F(EditParameterElement, OfAClipReachesTheClipAndNotTheTrack) {
    const auto calls = CallsInTrack("<audioClip id='1'><editParameter slotIndex='1'/></audioClip>");
    EXPECT_THAT(CallsOf(calls, "SetEditParameter"),
                ElementsAre("IEditAudioClip#3.SetEditParameter(1,0)"));
}

TEST_F(EditParameterElement, IsWrittenUnlessItNamesNoSlot) {
    AudioTrack track;
    track.editParameters = {{0, 3}, {4294967295, 7}, {4294967294, 4294967295}};
    const std::string element = WrittenElement("audioTrack", track);
    EXPECT_THAT(element, HasSubstr("  <editParameter parameterIndex=\"3\" slotIndex=\"0\"/>\n"
                                   "  <editParameter parameterIndex=\"4294967295\" "
                                   "slotIndex=\"4294967294\"/>\n"));
    EXPECT_THAT(element, Not(HasSubstr("parameterIndex=\"7\"")));
}

TEST_F(EditParameterElement, SurvivesAWriteAndAReadUnlessItNamesNoSlot) {
    AudioTrack track;
    track.editParameters = {{0, 3}, {4294967295, 7}, {0, 3}};
    EXPECT_THAT(ThroughFile(WithTrack(track)).audioTracks.at(0).editParameters,
                ElementsAre(EditParameter{0, 3}, EditParameter{0, 3}));
}

}  // namespace
}  // namespace tses
