#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::EffectsSlot;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SlotRouting : public test::ElementFixture {
protected:
    /// The calls of the slot's wiring; the slot is object 4.
    std::vector<std::string> CallsOfWiring(const std::string& content,
                                           const test::HostSetup& host = {}) {
        const auto calls = CallsInTrack(
            "<effectsRack><slot><component>" + content + "</component></slot></effectsRack>", host);
        std::vector<std::string> wiring;
        for (const char* const operation :
             {"SetBusConfig", "AddInputChannel", "AddOutputChannel"}) {
            const auto found = CallsOf(calls, operation);
            wiring.insert(wiring.end(), found.begin(), found.end());
        }
        return wiring;
    }

    static AudioTrack With(EffectsSlot slot) {
        AudioTrack track;
        slot.component.emplace();
        track.effectsRack.emplace().slots.emplace_back(std::move(slot));
        return track;
    }

    EffectsSlot Again(const EffectsSlot& slot) {
        return ThroughFile(WithTrack(With(slot)))
            .audioTracks.at(0)
            .effectsRack->slots.at(0)
            .value();
    }
};

// Reading

TEST_F(SlotRouting, ChannelsReachTheSlotAtOnceInTheOrderOfTheFile) {
    const auto calls = CallsInTrack(
        "<effectsRack><slot><component><channelMap direction='output'>"
        "<channel index='1' sourceIndex='0'/><channel index='0' sourceIndex='-1'/></channelMap>"
        "<channelMap direction='input'><channel index='-2' sourceIndex='7'/></channelMap>"
        "</component></slot></effectsRack>");
    EXPECT_THAT(std::vector<std::string>(calls.end() - 3, calls.end()),
                ElementsAre("IEditEffectsSlot#4.AddOutputChannel(1,0)",
                            "IEditEffectsSlot#4.AddOutputChannel(0,-1)",
                            "IEditEffectsSlot#4.AddInputChannel(-2,7)"));
}

TEST_F(SlotRouting, AMapIsAnInputMapOnlyForTheExactTextInput) {
    const std::string channel = "<channel index='0' sourceIndex='1'/></channelMap>";
    EXPECT_THAT(CallsOfWiring("<channelMap direction='input'>" + channel),
                ElementsAre("IEditEffectsSlot#4.AddInputChannel(0,1)"));
    for (const std::string attribute :
         {"direction='Input'", "direction='output'", "direction='input '", "direction=''", ""}) {
        EXPECT_THAT(CallsOfWiring("<channelMap " + attribute + ">" + channel),
                    ElementsAre("IEditEffectsSlot#4.AddOutputChannel(0,1)"))
            << attribute;
    }
}

TEST_F(SlotRouting, AMapWithoutADirectionIsAnOutputMapEvenAfterAnInputMap) {
    EXPECT_THAT(CallsOfWiring("<channelMap direction='input'><channel index='0'/></channelMap>"
                              "<channelMap><channel index='1'/></channelMap>"),
                ElementsAre("IEditEffectsSlot#4.AddInputChannel(0,0)",
                            "IEditEffectsSlot#4.AddOutputChannel(1,0)"));
}

TEST_F(SlotRouting, AChannelWithoutAnIndexIsDropped) {
    EXPECT_THAT(CallsOfWiring("<channelMap><channel sourceIndex='1'/></channelMap>"), IsEmpty());
}

TEST_F(SlotRouting, AChannelWithoutASourceIsFedByTheFirst) {
    EXPECT_THAT(CallsOfWiring("<channelMap><channel index='3'/></channelMap>"),
                ElementsAre("IEditEffectsSlot#4.AddOutputChannel(3,0)"));
}

TEST_F(SlotRouting, AnIndexThatDoesNotParseIsZero) {
    EXPECT_THAT(CallsOfWiring("<channelMap><channel index='x' sourceIndex='y'/></channelMap>"),
                ElementsAre("IEditEffectsSlot#4.AddOutputChannel(0,0)"));
}

TEST_F(SlotRouting, ChannelsOfTheSameIndexAreAllAdded) {
    EXPECT_EQ(
        CallsOfWiring("<channelMap><channel index='0'/><channel index='0'/></channelMap>").size(),
        2u);
}

TEST_F(SlotRouting, TheBusConfigurationReachesTheSlotUnchanged) {
    EXPECT_THAT(CallsOfWiring("<busConfig> 5.1 &lt;in&gt; </busConfig>"),
                ElementsAre("IEditEffectsSlot#4.SetBusConfig(\" 5.1 <in> \")"));
}

TEST_F(SlotRouting, ABusConfigurationOfBlanksCountsAsMissing) {
    EXPECT_THAT(CallsOfWiring("<busConfig/>"), IsEmpty());
    EXPECT_THAT(CallsOfWiring("<busConfig> \n\t </busConfig>"), IsEmpty());
}

TEST_F(SlotRouting, WithoutASlotEverythingIsDropped) {
    EXPECT_THAT(CallsOfWiring("<busConfig>5.1</busConfig><channelMap direction='input'>"
                              "<channel index='0' sourceIndex='1'/></channelMap>",
                              Null("IEditEffectsRack.AddSlot")),
                IsEmpty());
}

TEST_F(SlotRouting, ASlotWhoseComponentTheHostDoesNotHaveIsStillWired) {
    EXPECT_THAT(CallsOfWiring("<busConfig>5.1</busConfig>", Null("IEditEffectsSlot.GetComponent")),
                ElementsAre("IEditEffectsSlot#4.SetBusConfig(\"5.1\")"));
}

// Writing

TEST_F(SlotRouting, TheConfigurationIsWrittenFirstThenTheInputsThenTheOutputs) {
    const EffectsSlot slot{
        .busConfig = " 5.1 ", .inputChannels = {{0, 1}, {-1, 5}}, .outputChannels = {{7, -1}}};
    EXPECT_THAT(WrittenElement("slot", With(slot)),
                HasSubstr(">\n"
                          "    <busConfig><![CDATA[ 5.1 ]]></busConfig>\n"
                          "    <channelMap direction=\"input\">\n"
                          "      <channel index=\"0\" sourceIndex=\"1\"/>\n"
                          "      <channel index=\"-1\" sourceIndex=\"5\"/>\n"
                          "    </channelMap>\n"
                          "    <channelMap direction=\"output\">\n"
                          "      <channel index=\"7\" sourceIndex=\"-1\"/>\n"
                          "    </channelMap>\n"
                          "  </component>\n"));
}

TEST_F(SlotRouting, ADirectionWithoutChannelsIsNotWritten) {
    EXPECT_THAT(WrittenElement("slot", With({})), Not(HasSubstr("channelMap")));
    EXPECT_THAT(WrittenElement("slot", With({.outputChannels = {{0, 0}}})),
                Not(HasSubstr("\"input\"")));
}

TEST_F(SlotRouting, AMissingBusConfigurationIsNotWritten) {
    EXPECT_THAT(WrittenElement("slot", With({})), Not(HasSubstr("busConfig")));
    EXPECT_THAT(
        WrittenElement("slot", With({.busConfig = "5.1"}), Null("IQueryEffectsSlot.GetBusConfig")),
        Not(HasSubstr("busConfig")));
}

TEST_F(SlotRouting, SurvivesAWriteAndARead) {
    EffectsSlot slot;
    slot.busConfig = " <5.1>]]>\n ";
    slot.inputChannels = {{std::numeric_limits<kelcore::int32>::min(), -1}, {0, 0}, {0, 1}};
    slot.outputChannels = {{std::numeric_limits<kelcore::int32>::max(), 2}};
    const EffectsSlot again = Again(slot);
    EXPECT_EQ(again.busConfig, slot.busConfig);
    EXPECT_EQ(again.inputChannels, slot.inputChannels);
    EXPECT_EQ(again.outputChannels, slot.outputChannels);
}

TEST_F(SlotRouting, ABusConfigurationOfBlanksIsLostByAWriteAndARead) {
    EXPECT_EQ(Again({.busConfig = " "}).busConfig, "");
}

}  // namespace
}  // namespace tses
