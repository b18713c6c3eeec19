#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::EffectsRack;
using orvo::EffectsSlot;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class EffectsRackElement : public test::ElementFixture {};

// Reading

TEST_F(EffectsRackElement, SetsWhetherTheTracksRackIsPreFader) {
    EXPECT_THAT(CallsInTrack("<effectsRack preFader='false'/>"),
                ElementsAre("IEditAudioTrackPrivate#2.GetEffectsRack() -> IEditEffectsRack#3",
                            "IEditEffectsRack#3.SetPreFader(false)"));
}

TEST_F(EffectsRackElement, IsPreFaderByDefault) {
    EXPECT_THAT(CallsInTrack("<effectsRack/>"), Contains("IEditEffectsRack#3.SetPreFader(true)"));
}

TEST_F(EffectsRackElement, IsPreFaderOnlyForTheExactTextTrue) {
    EXPECT_TRUE(ReadInTrack("<effectsRack preFader='true'/>").effectsRack->preFader);
    for (const std::string text : {"TRUE", "1", "", " true"}) {
        EXPECT_FALSE(ReadInTrack("<effectsRack preFader='" + text + "'/>").effectsRack->preFader)
            << text;
    }
}

TEST_F(EffectsRackElement, EachKeywordAsksForItsComponent) {
    EXPECT_THAT(CallsOf(CallsInTrack("<effectsRack><component id='rackOutput'/>"
                                     "<component id='rackInput'/><component id='rackMix'/>"
                                     "</effectsRack>"),
                        "-> IEditComponent"),
                ElementsAre("IEditEffectsRack#3.GetOutputComponent() -> IEditComponent#4",
                            "IEditEffectsRack#3.GetInputComponent() -> IEditComponent#5",
                            "IEditEffectsRack#3.GetMixComponent() -> IEditComponent#6"));
}

TEST_F(EffectsRackElement, AComponentWithAnotherIdOrNoneIsDropped) {
    for (const std::string id : {"id='rackmix'", "id='trackFader'", "id=''", ""}) {
        EXPECT_THAT(CallsInTrack("<effectsRack><component id='rackMix'/><component " + id +
                                 " name='x'><parameter index='5'/></component></effectsRack>"),
                    Not(Contains(HasSubstr("SetParameterValue"))))
            << id;
    }
}

TEST_F(EffectsRackElement, ComponentsThatTheHostReportsAsNullAreDropped) {
    EXPECT_THAT(CallsInTrack("<effectsRack><component id='rackMix'><parameter/></component>"
                             "</effectsRack>",
                             Null("IEditEffectsRack.GetMixComponent"))
                    .back(),
                "IEditEffectsRack#3.GetMixComponent() -> null");
}

TEST_F(EffectsRackElement, WithoutARackEverythingInItIsDropped) {
    EXPECT_THAT(CallsInTrack("<effectsRack preFader='true'><component id='rackMix'/>"
                             "<slot slotIndex='0'><component name='x'><parameter/>"
                             "<presetChunkData>AAEC</presetChunkData></component></slot>"
                             "</effectsRack>",
                             Null("IEditAudioTrackPrivate.GetEffectsRack")),
                ElementsAre("IEditAudioTrackPrivate#2.GetEffectsRack() -> null"));
}

TEST_F(EffectsRackElement, WithoutARackTheSlotOfTheTrackBeforeIsNotReached) {
    const std::string rack = "<effectsRack><slot><component name='x'/></slot></effectsRack>";
    const auto outcome =
        ReadInSession("<tracks><audioTrack id='1'>" + rack + "</audioTrack><audioTrack id='2'>" +
                          rack + "</audioTrack></tracks>",
                      NullAtTheSecond("IEditAudioTrackPrivate.GetEffectsRack"));
    EXPECT_THAT(CallsOf(outcome.calls, "SetName"), testing::SizeIs(1));
}

TEST_F(EffectsRackElement, WithoutAClipsRackItsSlotsDoNotReachTheTracksRack) {
    for (const std::string operation :
         {"IEditAudioTrack.CreateAudioClip", "IEditAudioClip.GetEffectsRack"}) {
        EXPECT_THAT(CallsOf(CallsInTrack("<effectsRack><slot slotIndex='0'/></effectsRack>"
                                         "<audioClip id='1'><effectsRack preFader='false'>"
                                         "<slot slotIndex='1'/></effectsRack></audioClip>",
                                         Null(operation)),
                            "IEditEffectsRack#3."),
                    ElementsAre("IEditEffectsRack#3.SetPreFader(true)",
                                "IEditEffectsRack#3.AddSlot() -> IEditEffectsSlot#4"))
            << operation;
    }
}

TEST_F(EffectsRackElement, EverySoundingTrackHasOne) {
    for (const std::string element : {"audioTrack", "busTrack", "masterTrack", "instrumentTrack"}) {
        EXPECT_THAT(
            CallsIn("<tracks><" + element + " id='1'><effectsRack/></" + element + "></tracks>"),
            Contains(HasSubstr("SetPreFader(true)")))
            << element;
    }
    EXPECT_THAT(CallsIn("<metronome><metronomeTrack><effectsRack/></metronomeTrack></metronome>"),
                Contains(HasSubstr("SetPreFader(true)")));
    EXPECT_THAT(CallsIn("<tracks><videoTrack id='1'><effectsRack/></videoTrack></tracks>"),
                Not(Contains(HasSubstr("SetPreFader"))));
}

// Writing

AudioTrack WithRack(EffectsRack rack) {
    AudioTrack track;
    track.effectsRack = std::move(rack);
    return track;
}

TEST_F(EffectsRackElement, AlwaysSaysWhetherItIsPreFader) {
    EffectsRack rack;
    EXPECT_EQ(WrittenElement("effectsRack", WithRack(rack)), "<effectsRack preFader=\"true\"/>");
    rack.preFader = false;
    EXPECT_EQ(WrittenElement("effectsRack", WithRack(rack)), "<effectsRack preFader=\"false\"/>");
}

TEST_F(EffectsRackElement, WritesItsComponentsAndThenItsSlots) {
    EffectsRack rack;
    rack.mix.emplace();
    rack.input.emplace();
    rack.output.emplace().powered = false;
    rack.slots.resize(2, EffectsSlot());
    rack.slots[0]->slotIndex = 7;
    EXPECT_EQ(WrittenElement("effectsRack", WithRack(rack)),
              "<effectsRack preFader=\"true\">\n"
              "  <component id=\"rackMix\" powered=\"true\"/>\n"
              "  <component id=\"rackInput\" powered=\"true\"/>\n"
              "  <component id=\"rackOutput\" powered=\"false\"/>\n"
              "  <slot powered=\"true\" slotIndex=\"7\"/>\n"
              "  <slot powered=\"true\" slotIndex=\"0\"/>\n"
              "</effectsRack>");
}

TEST_F(EffectsRackElement, ATrackWithoutARackHasNoElement) {
    EXPECT_EQ(WrittenElement("effectsRack", AudioTrack()), "");
}

TEST_F(EffectsRackElement, ComponentsThatTheHostReportsAsNullAreNotWritten) {
    EffectsRack rack;
    rack.mix.emplace();
    rack.output.emplace();
    EXPECT_EQ(
        WrittenElement("effectsRack", WithRack(rack), Null("IQueryEffectsRack.GetMixComponent")),
        "<effectsRack preFader=\"true\">\n"
        "  <component id=\"rackOutput\" powered=\"true\"/>\n"
        "</effectsRack>");
}

TEST_F(EffectsRackElement, SlotsThatTheHostReportsAsNullAreSkipped) {
    EffectsRack rack;
    rack.slots.resize(3);
    rack.slots[1].emplace().slotIndex = 1;
    EXPECT_EQ(WrittenElement("effectsRack", WithRack(rack)),
              "<effectsRack preFader=\"true\">\n"
              "  <slot powered=\"true\" slotIndex=\"1\"/>\n"
              "</effectsRack>");
}

TEST_F(EffectsRackElement, SurvivesAWriteAndARead) {
    EffectsRack rack;
    rack.preFader = false;
    rack.mix.emplace().parameters[0].value = 0.5F;
    rack.output.emplace().name = "Output";
    rack.slots.resize(2, EffectsSlot());
    rack.slots[1]->component.emplace().name = "Echo";
    EXPECT_EQ(ThroughFile(WithTrack(WithRack(rack))).audioTracks.at(0).effectsRack, rack);
}

TEST_F(EffectsRackElement, ASlotIsAskedForItsEffectBeforeTheRackIsAskedForItsIndex) {
    EffectsRack rack;
    rack.slots.emplace_back(EffectsSlot{.component = orvo::Component{}});
    const auto calls = Write(WithTrack(WithRack(rack))).calls;
    const auto placeOf = [&](std::string_view operation) {
        const auto call = std::ranges::find_if(
            calls, [&](const std::string& text) { return text.find(operation) != text.npos; });
        return call - calls.begin();
    };
    EXPECT_LT(placeOf("IQueryEffectsRack#3.GetSlot("),
              placeOf("IQueryEffectsSlot#4.GetComponent("));
    EXPECT_LT(placeOf("IQueryEffectsSlot#4.GetComponent("),
              placeOf("IQueryEffectsRack#3.GetSlotIndex("));
    EXPECT_LT(placeOf("IQueryEffectsRack#3.GetSlotIndex("),
              placeOf("IQueryEffectsSlot#4.IsBypassed("));
    EXPECT_LT(placeOf("IQueryEffectsSlot#4.IsBypassed("), std::ssize(calls));
}

}  // namespace
}  // namespace tses
