#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::EffectsSlot;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Slot : public test::ElementFixture {
protected:
    /// The calls for the content of a rack, without the two calls for the rack itself.
    std::vector<std::string> CallsInRack(const std::string& slots,
                                         const test::HostSetup& host = {}) {
        auto calls = CallsInTrack("<effectsRack>" + slots + "</effectsRack>", host);
        calls.erase(calls.begin(), calls.begin() + 2);
        return calls;
    }
};

// Reading

TEST_F(Slot, IsAddedWithItsIndexItsBypassAndItsSideChain) {
    EXPECT_THAT(
        CallsInRack("<slot powered='false' sideChainChannels='2' slotIndex='9'/>"),
        ElementsAre("IEditEffectsRack#3.AddSlot() -> IEditEffectsSlot#4",
                    "IEditEffectsSlot#4.SetSlotIndex(9)", "IEditEffectsSlot#4.SetBypassed(true)",
                    "IEditEffectsSlot#4.SetSideChainChannels(2)"));
}

TEST_F(Slot, TakesEveryUnsignedNumber) {
    EXPECT_THAT(CallsInRack("<slot sideChainChannels='4294967294' slotIndex='4294967293'/>"),
                AllOf(Contains("IEditEffectsSlot#4.SetSlotIndex(4294967293)"),
                      Contains("IEditEffectsSlot#4.SetSideChainChannels(4294967294)")));
}

TEST_F(Slot, WithoutAttributesIsPoweredWithoutAnIndexAndItsSideChainIsNotSet) {
    EXPECT_THAT(CallsInRack("<slot/>"),
                ElementsAre("IEditEffectsRack#3.AddSlot() -> IEditEffectsSlot#4",
                            "IEditEffectsSlot#4.SetSlotIndex(4294967295)",
                            "IEditEffectsSlot#4.SetBypassed(false)"));
}

TEST_F(Slot, AnIndexThatIsNoNumberCountsAsMissing) {
    EXPECT_THAT(CallsInRack("<slot slotIndex='first'/>"),
                Contains("IEditEffectsSlot#4.SetSlotIndex(4294967295)"));
}

TEST_F(Slot, ASideChainThatIsNoNumberIsSetToZero) {
    EXPECT_THAT(CallsInRack("<slot sideChainChannels='two'/>"),
                Contains("IEditEffectsSlot#4.SetSideChainChannels(0)"));
}

TEST_F(Slot, IsPoweredOnlyForTheExactTextTrue) {
    EXPECT_THAT(CallsInRack("<slot powered='true'/>"),
                Contains("IEditEffectsSlot#4.SetBypassed(false)"));
    for (const std::string text : {"TRUE", "1", "", "false"}) {
        EXPECT_THAT(CallsInRack("<slot powered='" + text + "'/>"),
                    Contains("IEditEffectsSlot#4.SetBypassed(true)"))
            << text;
    }
}

TEST_F(Slot, ItsComponentNeedsNoId) {
    EXPECT_THAT(
        CallsOf(CallsInRack("<slot><component id='rackMix' name='Echo'/></slot>"), "Component"),
        ElementsAre(
            "IEditEffectsSlot#4.GetComponent() -> IEditComponent#5",
            "IEditComponent#5.SetComponentGuid(\"\")", "IEditComponent#5.SetComponentID(\"\")",
            "IEditComponent#5.SetName(\"Echo\")", "IEditComponent#5.SetPresetName(\"\")",
            "IEditComponent#5.SetEditorVisible(false)", "IEditComponent#5.SetEditorRect(0,0,0,0)"));
}

TEST_F(Slot, AComponentThatTheHostReportsAsNullIsDropped) {
    EXPECT_THAT(CallsInRack("<slot><component name='x'><parameter/></component></slot>",
                            Null("IEditEffectsSlot.GetComponent"))
                    .back(),
                "IEditEffectsSlot#4.GetComponent() -> null");
}

TEST_F(Slot, ThatTheHostReportsAsNullIsDropped) {
    EXPECT_THAT(CallsInRack("<slot slotIndex='0'/><slot><component name='x'/></slot>",
                            Null("IEditEffectsRack.AddSlot")),
                ElementsAre("IEditEffectsRack#3.AddSlot() -> null",
                            "IEditEffectsRack#3.AddSlot() -> null"));
}

TEST_F(Slot, TheContentOfOneThatTheHostReportsAsNullDoesNotReachTheSlotBefore) {
    EXPECT_THAT(
        CallsInRack("<slot slotIndex='0'/><slot slotIndex='1' sideChainChannels='2'>"
                    "<component name='x'><busConfig>5.1</busConfig>"
                    "<channelMap direction='input'><channel index='0'/></channelMap>"
                    "<channelMap direction='output'><channel index='0'/></channelMap>"
                    "<presetChunkData>AAEC</presetChunkData><parameter/></component>"
                    "</slot>",
                    NullAtTheSecond("IEditEffectsRack.AddSlot")),
        ElementsAre("IEditEffectsRack#3.AddSlot() -> IEditEffectsSlot#4",
                    "IEditEffectsSlot#4.SetSlotIndex(0)", "IEditEffectsSlot#4.SetBypassed(false)",
                    "IEditEffectsRack#3.AddSlot() -> null"));
}

// Writing

AudioTrack WithSlot(EffectsSlot slot) {
    AudioTrack track;
    track.effectsRack.emplace().slots = {std::move(slot)};
    return track;
}

EffectsSlot SampleSlot() {
    EffectsSlot slot;
    slot.slotIndex = 4294967295;
    slot.bypassed = true;
    slot.sideChainChannels = 2;
    slot.component.emplace().guid = "guid";
    slot.component->componentId = "id";
    slot.component->name = "Echo";
    return slot;
}

TEST_F(Slot, IsWrittenWithItsComponent) {
    EXPECT_EQ(WrittenElement("slot", WithSlot(SampleSlot())),
              "<slot powered=\"false\" sideChainChannels=\"2\" slotIndex=\"4294967295\">\n"
              "  <component componentGuid=\"guid\" componentID=\"id\" name=\"Echo\"/>\n"
              "</slot>");
}

TEST_F(Slot, WithoutASideChainDoesNotMentionIt) {
    EXPECT_EQ(WrittenElement("slot", WithSlot({})), "<slot powered=\"true\" slotIndex=\"0\"/>");
}

TEST_F(Slot, WithoutAComponentIsWrittenEmpty) {
    EXPECT_EQ(
        WrittenElement("slot", WithSlot(SampleSlot()), Null("IQueryEffectsSlot.GetComponent")),
        "<slot powered=\"false\" sideChainChannels=\"2\" slotIndex=\"4294967295\"/>");
}

TEST_F(Slot, AnEffectAlwaysWritesItsTextsEvenIfTheyAreEmpty) {
    EffectsSlot slot;
    slot.component.emplace();
    EXPECT_THAT(WrittenElement("slot", WithSlot(slot)),
                HasSubstr("<component componentGuid=\"\" componentID=\"\" name=\"\"/>"));
}

TEST_F(Slot, AnEffectHasNeitherAnIdNorAPowerOfItsOwn) {
    EffectsSlot slot = SampleSlot();
    slot.component->powered = false;
    const std::string element = WrittenElement("slot", WithSlot(slot));
    EXPECT_THAT(element, Not(HasSubstr("component id=")));
    EXPECT_THAT(element, Not(HasSubstr("name=\"Echo\" powered")));
    EXPECT_TRUE(ThroughFile(WithTrack(WithSlot(slot)))
                    .audioTracks.at(0)
                    .effectsRack->slots.at(0)
                    ->component->powered);
}

TEST_F(Slot, AnEffectWritesItsWiringItsPresetsStateAndItsParametersInThisOrder) {
    EffectsSlot slot = SampleSlot();
    slot.busConfig = "{}";
    slot.inputChannels = {{0, 1}};
    slot.outputChannels = {{0, 1}};
    slot.component->presetChunk = {kelcore::byte(0), kelcore::byte(1), kelcore::byte(2)};
    slot.component->parameters[0].value = 1.0F;
    EXPECT_THAT(WrittenElement("slot", WithSlot(slot)),
                testing::MatchesRegex("(.|\n)*<busConfig>(.|\n)*direction=\"input\"(.|\n)*"
                                      "direction=\"output\"(.|\n)*<presetChunkData>(.|\n)*"
                                      "<parameter (.|\n)*"));
}

TEST_F(Slot, AnEmptySlotSurvivesAWriteAndARead) {
    EffectsSlot slot = SampleSlot();
    slot.component.reset();
    const AudioTrack track = WithSlot(slot);
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).effectsRack, track.effectsRack);
}

}  // namespace
}  // namespace tses
