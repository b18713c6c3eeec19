#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::MixingOptions;
using orvo::Session;
using testing::ElementsAre;

class MixingOptionState : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfMixing(const std::string& attributes) {
        const auto calls =
            CallsIn("<sessionState><mixingOptionState " + attributes + "/></sessionState>");
        return {calls.begin() + 2, calls.end()};  // without the two of the state itself
    }
};

TEST_F(MixingOptionState, PanModeAndOverlapReachTheHostInThisOrder) {
    EXPECT_THAT(CallsOfMixing("playOverlappingClips='true' panPower='-4.5' "
                              "defaultPanModeLogarithmic='true'"),
                ElementsAre("IEditSession#1.SetPanMode(true,-4.5)",
                            "IEditSession#1.SetPlayOverlappingClips(true)"));
}

TEST_F(MixingOptionState, WithoutAttributesThePanPowerIsMinusThree) {
    EXPECT_THAT(CallsOfMixing(""), ElementsAre("IEditSession#1.SetPanMode(false,-3)",
                                               "IEditSession#1.SetPlayOverlappingClips(false)"));
}

TEST_F(MixingOptionState, WithoutAPanPowerItIsMinusThree) {
    EXPECT_EQ(CallsOfMixing("defaultPanModeLogarithmic='true'").front(),
              "IEditSession#1.SetPanMode(true,-3)");
}

TEST_F(MixingOptionState, SwitchesAreOnForTrueAndForOne) {
    EXPECT_EQ(CallsOfMixing("playOverlappingClips='1' defaultPanModeLogarithmic='1'"),
              CallsOfMixing("playOverlappingClips='true' defaultPanModeLogarithmic='true'"));
    EXPECT_EQ(CallsOfMixing("playOverlappingClips='True' defaultPanModeLogarithmic='yes'"),
              CallsOfMixing(""));
}

TEST_F(MixingOptionState, APanPowerMayHaveADecimalComma) {
    EXPECT_EQ(CallsOfMixing("panPower='-4,5'").front(), "IEditSession#1.SetPanMode(false,-4.5)");
}

TEST_F(MixingOptionState, APanPowerThatDoesNotParseIsZero) {
    EXPECT_EQ(CallsOfMixing("panPower='loud'").front(), "IEditSession#1.SetPanMode(false,0)");
}

TEST_F(MixingOptionState, IsWrittenWithEveryAttribute) {
    Session session;
    session.mixingOptions = {true, -4.5, true};
    EXPECT_EQ(WrittenElement("mixingOptionState", session),
              "<mixingOptionState defaultPanModeLogarithmic=\"true\" panPower=\"-4.5\" "
              "playOverlappingClips=\"true\"/>");
}

TEST_F(MixingOptionState, SurvivesAWriteAndARead) {
    for (const MixingOptions& options :
         {MixingOptions{true, 0.1 + 0.2, false}, MixingOptions{false, -1e-300, true}}) {
        Session session;
        session.mixingOptions = options;
        EXPECT_EQ(ThroughFile(session).mixingOptions, options);
    }
}

}  // namespace
}  // namespace tses
