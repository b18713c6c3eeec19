#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::SendSlot;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Sends : public test::ElementFixture {
protected:
    std::vector<std::string> CallsInList(const std::string& slots,
                                         const test::HostSetup& host = {}) {
        return CallsInTrack("<sendList>" + slots + "</sendList>", host);
    }
};

// Reading

TEST_F(Sends, ASlotIsAddedWithWhatItsElementSays) {
    EXPECT_THAT(
        CallsInList("<sendSlot destCompIndex='2' preFader='true' sendOutputID='4' "
                    "slotIndex='9'/>"),
        ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3",
                    "IEditSendList#3.AddSlot() -> IEditSendSlot#4",
                    "IEditSendSlot#4.SetSlotIndex(9)", "IEditSendSlot#4.SetSendOutputId(4)",
                    "IEditSendSlot#4.SetPreFader(true)", "IEditSendSlot#4.SetDestCompIndex(2)"));
}

TEST_F(Sends, AttributesThatAreAbsentCauseNoCall) {
    EXPECT_THAT(CallsInList("<sendSlot slotIndex='9'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3",
                            "IEditSendList#3.AddSlot() -> IEditSendSlot#4",
                            "IEditSendSlot#4.SetSlotIndex(9)"));
}

TEST_F(Sends, AMissingDestinationComponentIsNotSet) {
    EXPECT_THAT(CallsInList("<sendSlot slotIndex='9' sendOutputID='4' preFader='false'/>"),
                Not(Contains(HasSubstr("SetDestCompIndex"))));
}

TEST_F(Sends, NumbersThatDoNotParseAreZero) {
    EXPECT_THAT(CallsInList("<sendSlot destCompIndex='x' sendOutputID='' slotIndex='1.0'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3",
                            "IEditSendList#3.AddSlot() -> IEditSendSlot#4",
                            "IEditSendSlot#4.SetSlotIndex(0)", "IEditSendSlot#4.SetSendOutputId(0)",
                            "IEditSendSlot#4.SetDestCompIndex(0)"));
}

TEST_F(Sends, PreFaderIsOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"TRUE", "1", "", "false"}) {
        EXPECT_THAT(CallsInList("<sendSlot slotIndex='0' preFader='" + text + "'/>"),
                    Contains("IEditSendSlot#4.SetPreFader(false)"))
            << text;
    }
}

TEST_F(Sends, ASlotWithoutAnIndexCreatesNoSlot) {
    EXPECT_THAT(CallsInList("<sendSlot destCompIndex='2' preFader='true' sendOutputID='4'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3"));
}

TEST_F(Sends, TheContentOfASlotWithoutAnIndexReachesTheSlotBefore) {
    EXPECT_THAT(CallsOf(CallsInList("<sendSlot slotIndex='0'/>"
                                    "<sendSlot><component id='sendPan'/></sendSlot>"),
                        "GetPanComponent"),
                ElementsAre("IEditSendSlot#4.GetPanComponent(\"sendPan\") -> IEditComponent#5"));
}

TEST_F(Sends, TheSlotBeforeMayBelongToAnotherTrack) {
    const auto tracks =
        ReadInSession(
            "<tracks><audioTrack id='1'><sendList><sendSlot slotIndex='0'/></sendList>"
            "</audioTrack><busTrack id='2'><sendList><sendSlot>"
            "<component id='sendComponent' name='Level'/></sendSlot></sendList>"
            "</busTrack></tracks>")
            .session.audioTracks;
    ASSERT_EQ(tracks.size(), 2u);
    ASSERT_TRUE(tracks[0].sendList->slots.at(0)->sendComponent.has_value());
    EXPECT_EQ(tracks[0].sendList->slots[0]->sendComponent->name, "Level");
    EXPECT_THAT(tracks[1].sendList->slots, IsEmpty());
}

TEST_F(Sends, TheSlotOfTheReadBeforeIsForgotten) {
    ReadInTrack("<sendList><sendSlot slotIndex='0'/></sendList>");
    EXPECT_THAT(CallsInList("<sendSlot><component id='sendPan'/></sendSlot>"),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3"));
}

TEST_F(Sends, ATrackWithoutASendListDropsItsSlots) {
    EXPECT_THAT(CallsInList("<sendSlot slotIndex='0' preFader='true'>"
                            "<component id='sendPan'/></sendSlot>",
                            Null("IEditAudioTrackPrivate.GetSendList")),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> null"));
}

TEST_F(Sends, ASlotWithoutAListClearsTheSlotBefore) {
    // The second track has no list, so its slot clears the first track's, and what follows without
    // an index is dropped.
    const auto outcome = ReadInSession(
        "<tracks><audioTrack id='1'><sendList><sendSlot slotIndex='0'/></sendList></audioTrack>"
        "<audioTrack id='2'><sendList><sendSlot slotIndex='1'/>"
        "<sendSlot><component id='sendPan'/></sendSlot></sendList></audioTrack></tracks>",
        NullAtTheSecond("IEditAudioTrackPrivate.GetSendList"));
    EXPECT_THAT(CallsOf(outcome.calls, "GetPanComponent"), IsEmpty());
}

TEST_F(Sends, ASlotWithoutAnIndexLeavesTheSlotBeforeEvenWithoutAList) {
    const auto outcome = ReadInSession(
        "<tracks><audioTrack id='1'><sendList><sendSlot slotIndex='0'/></sendList></audioTrack>"
        "<audioTrack id='2'><sendList><sendSlot><component id='sendPan'/></sendSlot></sendList>"
        "</audioTrack></tracks>",
        NullAtTheSecond("IEditAudioTrackPrivate.GetSendList"));
    EXPECT_THAT(CallsOf(outcome.calls, "IEditSendSlot#"),
                ElementsAre("IEditSendList#3.AddSlot() -> IEditSendSlot#4",
                            "IEditSendSlot#4.SetSlotIndex(0)",
                            "IEditSendSlot#4.GetPanComponent(\"sendPan\") -> IEditComponent#6"));
}

TEST_F(Sends, ASlotThatTheHostReportsAsNullIsDropped) {
    EXPECT_THAT(CallsInList("<sendSlot slotIndex='0' preFader='true'>"
                            "<component id='sendPan'/></sendSlot>",
                            Null("IEditSendList.AddSlot")),
                ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3",
                            "IEditSendList#3.AddSlot() -> null"));
}

TEST_F(Sends, TheContentOfASlotThatTheHostReportsAsNullDoesNotReachTheSlotBefore) {
    EXPECT_THAT(
        CallsInList("<sendSlot slotIndex='0'/><sendSlot slotIndex='1' preFader='true'>"
                    "<component id='sendComponent'/><component id='sendPan'/></sendSlot>",
                    NullAtTheSecond("IEditSendList.AddSlot")),
        ElementsAre("IEditAudioTrackPrivate#2.GetSendList() -> IEditSendList#3",
                    "IEditSendList#3.AddSlot() -> IEditSendSlot#4",
                    "IEditSendSlot#4.SetSlotIndex(0)", "IEditSendList#3.AddSlot() -> null"));
}

TEST_F(Sends, AMasterTrackHasNone) {
    EXPECT_THAT(CallsIn("<tracks><masterTrack id='1'><sendList><sendSlot slotIndex='0'/>"
                        "</sendList></masterTrack></tracks>"),
                Not(Contains(HasSubstr("GetSendList"))));
}

TEST_F(Sends, EachKeywordAsksForItsComponentByTheKeyword) {
    EXPECT_THAT(CallsOf(CallsInList("<sendSlot slotIndex='0'><component id='sendPan'/>"
                                    "<component id='sendComponent'/></sendSlot>"),
                        "-> IEditComponent"),
                ElementsAre("IEditSendSlot#4.GetPanComponent(\"sendPan\") -> IEditComponent#5",
                            "IEditSendSlot#4.GetSendComponent(\"sendComponent\") -> "
                            "IEditComponent#6"));
}

TEST_F(Sends, ParametersAndLanesOfAComponentReachIt) {
    const AudioTrack track = ReadInTrack(
        "<sendList><sendSlot slotIndex='0'><component id='sendComponent' powered='false'>"
        "<parameter index='1' parameterValue='0.5'><parameterKeyframes>"
        "<parameterKeyframe sampleOffset='7'/></parameterKeyframes></parameter></component>"
        "</sendSlot></sendList>");
    const auto& level = track.sendList->slots.at(0)->sendComponent;
    ASSERT_TRUE(level.has_value());
    EXPECT_FALSE(level->powered);
    EXPECT_EQ(level->parameters.at(1).value, 0.5F);
    EXPECT_EQ(level->parameters.at(1).automation->keyframes.at(0).sampleOffset, 7);
}

TEST_F(Sends, AComponentWithAnotherIdOrNoneIsDropped) {
    for (const std::string id : {"id='sendpan'", "id='trackPan'", "id=''", ""}) {
        EXPECT_THAT(CallsInList("<sendSlot slotIndex='0'><component " + id +
                                "><parameter index='1'/></component></sendSlot>"),
                    Not(Contains(HasSubstr("Component"))))
            << id;
    }
}

TEST_F(Sends, AComponentThatTheHostReportsAsNullIsDropped) {
    EXPECT_THAT(CallsInList("<sendSlot slotIndex='0'><component id='sendPan' powered='true'>"
                            "<parameter index='1'/></component></sendSlot>",
                            Null("IEditSendSlot.GetPanComponent"))
                    .back(),
                "IEditSendSlot#4.GetPanComponent(\"sendPan\") -> null");
}

// Writing

AudioTrack WithSlots(std::vector<std::optional<SendSlot>> slots) {
    AudioTrack track;
    track.sendList = orvo::SendList{std::move(slots)};
    return track;
}

SendSlot SampleSend() {
    SendSlot slot;
    slot.slotIndex = 4294967295;
    slot.sendOutputId = -1;
    slot.destCompIndex = 2;
    slot.preFader = true;
    slot.sendComponent.emplace();
    slot.panComponent.emplace().powered = false;
    return slot;
}

TEST_F(Sends, ASlotIsWrittenWithItsTwoComponents) {
    EXPECT_EQ(WrittenElement("sendList", WithSlots({SampleSend()})),
              "<sendList>\n"
              "  <sendSlot destCompIndex=\"2\" preFader=\"true\" sendOutputID=\"-1\" "
              "slotIndex=\"4294967295\">\n"
              "    <component id=\"sendComponent\" powered=\"true\"/>\n"
              "    <component id=\"sendPan\" powered=\"false\"/>\n"
              "  </sendSlot>\n"
              "</sendList>");
}

TEST_F(Sends, AListWithoutSlotsIsNotWritten) {
    EXPECT_EQ(WrittenElement("sendList", WithSlots({})), "");
    EXPECT_FALSE(ThroughFile(WithTrack(WithSlots({}))).audioTracks.at(0).sendList.has_value());
}

TEST_F(Sends, ANegativeDestinationComponentIsNotWritten) {
    SendSlot slot = SampleSend();
    for (const kelcore::int32 index : {-1, -2}) {
        slot.destCompIndex = index;
        EXPECT_THAT(WrittenElement("sendList", WithSlots({slot})), Not(HasSubstr("destCompIndex")));
    }
    slot.destCompIndex = 0;
    EXPECT_THAT(WrittenElement("sendList", WithSlots({slot})), HasSubstr("destCompIndex=\"0\""));
}

TEST_F(Sends, ASlotThatTheHostReportsAsNullIsSkipped) {
    EXPECT_EQ(WrittenElement("sendList", WithSlots({std::nullopt, SendSlot(), std::nullopt})),
              "<sendList>\n"
              "  <sendSlot preFader=\"false\" sendOutputID=\"-1\" slotIndex=\"0\"/>\n"
              "</sendList>");
}

TEST_F(Sends, AListOfNothingButNullSlotsIsWrittenEmpty) {
    EXPECT_EQ(WrittenElement("sendList", WithSlots({std::nullopt})), "<sendList/>");
}

TEST_F(Sends, SlotsAreWrittenInTheOrderOfTheHost) {
    SendSlot first;
    first.slotIndex = 5;
    SendSlot second;
    second.slotIndex = 1;
    EXPECT_THAT(WrittenElement("sendList", WithSlots({first, second})),
                testing::MatchesRegex("(.|\n)*slotIndex=\"5\"(.|\n)*slotIndex=\"1\"(.|\n)*"));
}

TEST_F(Sends, SurviveAWriteAndARead) {
    const AudioTrack track = WithSlots({SampleSend(), SendSlot()});
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).sendList, track.sendList);
}

}  // namespace
}  // namespace tses
