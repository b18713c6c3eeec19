#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Parameter : public test::ElementFixture {
protected:
    /// The calls that the parameters of an effect cause.
    std::vector<std::string> CallsOfParameters(const std::string& parameters) {
        auto calls = CallsOf(CallsInTrack("<effectsRack><slot><component>" + parameters +
                                          "</component></slot></effectsRack>"),
                             "IEditComponent#5.");
        calls.erase(calls.begin(), calls.begin() + 6);
        return calls;
    }

    static AudioTrack WithMix(orvo::Component mix) {
        AudioTrack track;
        track.effectsRack.emplace().mix = std::move(mix);
        return track;
    }

    /// The mix of a rack after it has been written and read.
    orvo::Component ThroughFile(const orvo::Component& mix) {
        return *ElementFixture::ThroughFile(WithTrack(WithMix(mix)))
                    .audioTracks.at(0)
                    .effectsRack->mix;
    }
};

// Reading

TEST_F(Parameter, SetsItsValueAndItsName) {
    EXPECT_THAT(CallsOfParameters("<parameter index='3' name='Gain' parameterValue='-0.5'/>"),
                ElementsAre("IEditComponent#5.SetParameterValue(3,-0.5)",
                            "IEditComponent#5.SetParameterName(3,\"Gain\")"));
}

TEST_F(Parameter, WithoutAttributesIsTheFirstWithZeroAndNoName) {
    EXPECT_THAT(CallsOfParameters("<parameter/>"),
                ElementsAre("IEditComponent#5.SetParameterValue(0,0)",
                            "IEditComponent#5.SetParameterName(0,\"\")"));
}

TEST_F(Parameter, IsSafeDuringWriteOnlyForTheExactTextTrueAndOtherwiseNotSet) {
    EXPECT_THAT(CallsOfParameters("<parameter index='3' safeDuringWrite='true'/>").back(),
                "IEditComponent#5.SetParameterSafeDuringWrite(3,true)");
    for (const std::string text : {"false", "TRUE", "1", ""}) {
        EXPECT_THAT(CallsOfParameters("<parameter safeDuringWrite='" + text + "'/>"),
                    Not(Contains(HasSubstr("SafeDuringWrite"))))
            << text;
    }
}

TEST_F(Parameter, AValueMayHaveADecimalComma) {
    EXPECT_THAT(CallsOfParameters("<parameter parameterValue='0,75'/>").front(),
                "IEditComponent#5.SetParameterValue(0,0.75)");
}

TEST_F(Parameter, AValueIsReadAsFarAsItIsANumber) {
    EXPECT_THAT(CallsOfParameters("<parameter parameterValue=' 1.5 dB'/>").front(),
                "IEditComponent#5.SetParameterValue(0,1.5)");
    EXPECT_THAT(CallsOfParameters("<parameter parameterValue='loud'/>").front(),
                "IEditComponent#5.SetParameterValue(0,0)");
}

TEST_F(Parameter, AnIndexThatIsNoNumberIsTheFirst) {
    EXPECT_THAT(CallsOfParameters("<parameter index='second' parameterValue='1'/>").front(),
                "IEditComponent#5.SetParameterValue(0,1)");
}

TEST_F(Parameter, OfTwoTheLaterOneWins) {
    EXPECT_THAT(CallsOfParameters("<parameter index='1' parameterValue='1' name='A'/>"
                                  "<parameter index='1' parameterValue='2'/>"),
                ElementsAre("IEditComponent#5.SetParameterValue(1,1)",
                            "IEditComponent#5.SetParameterName(1,\"A\")",
                            "IEditComponent#5.SetParameterValue(1,2)",
                            "IEditComponent#5.SetParameterName(1,\"\")"));
}

// Writing

TEST_F(Parameter, IsWrittenWithItsNameUnlessEmptyAndSafeDuringWriteOnlyWhenItIs) {
    orvo::Component mix;
    mix.parameters[0].value = 0.1F;
    mix.parameters[1] = {-2.5F, "Gain", true, std::nullopt};
    EXPECT_EQ(WrittenElement("component", WithMix(mix)),
              "<component id=\"rackMix\" powered=\"true\">\n"
              "  <parameter index=\"0\" parameterValue=\"0.1\"/>\n"
              "  <parameter index=\"1\" name=\"Gain\" parameterValue=\"-2.5\" "
              "safeDuringWrite=\"true\"/>\n"
              "</component>");
}

TEST_F(Parameter, WithoutAValueLeavesAGapInTheIndices) {
    orvo::Component mix;
    mix.parameters[0].value = 1.0F;
    mix.parameters[1].name = "lost";
    mix.parameters[1].automation.emplace().keyframes.resize(1);
    mix.parameters[3].value = 1.0F;
    EXPECT_EQ(WrittenElement("component", WithMix(mix)),
              "<component id=\"rackMix\" powered=\"true\">\n"
              "  <parameter index=\"0\" parameterValue=\"1\"/>\n"
              "  <parameter index=\"3\" parameterValue=\"1\"/>\n"
              "</component>");
}

TEST_F(Parameter, WithoutAValueIsAskedForNothingElse) {
    orvo::Component mix;
    mix.parameters[0].name = "lost";
    EXPECT_THAT(CallsOf(Write(WithTrack(WithMix(mix))).calls, "IQueryComponent#"),
                Not(Contains(HasSubstr("GetParameterName"))));
}

TEST_F(Parameter, NamesAndLanesThatTheHostReportsAsNullAreNotWritten) {
    orvo::Component mix;
    mix.parameters[0] = {1.0F, "Gain", false, orvo::AutomationLane()};
    mix.parameters[0].automation->keyframes.resize(1);
    EXPECT_THAT(WrittenElement("component", WithMix(mix), Null("IQueryComponent.GetParameterName")),
                Not(HasSubstr("name=")));
    EXPECT_THAT(
        WrittenElement("component", WithMix(mix), Null("IQueryComponent.GetParameterAutomation")),
        HasSubstr("<parameter index=\"0\" name=\"Gain\" parameterValue=\"1\"/>"));
}

TEST_F(Parameter, ValuesSurviveToTheLastBit) {
    orvo::Component mix;
    kelcore::uint32 index = 0;
    for (const float value :
         {0.1F, 1e-45F, 3.4028235e38F, -1.1754944e-38F, 16777217.0F, 0.3333333F}) {
        mix.parameters[index++].value = value;
    }
    EXPECT_EQ(ThroughFile(mix), mix);
}

TEST_F(Parameter, OneWithoutAValueIsLostWithItsNameAndItsLane) {
    orvo::Component mix;
    mix.parameters[1].name = "lost";
    mix.parameters[1].automation.emplace().keyframes.resize(1);
    mix.parameters[2].value = 1.0F;
    orvo::Component expected = mix;
    expected.parameters.erase(1);
    EXPECT_EQ(ThroughFile(mix), expected);
}

TEST_F(Parameter, AnIndexThatNoEffectHasFailsTheSaveAtOnce) {
    orvo::Component mix;
    mix.parameters[4294967294].value = 1.0F;
    const test::WriteOutcome outcome = Write(WithTrack(WithMix(mix)));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.file, std::nullopt);
    EXPECT_THAT(CallsOf(outcome.calls, "GetParameterValue"), IsEmpty());
}

TEST_F(Parameter, AnImpossibleCountFailsTheSaveEvenIfALaterTrackIsWritten) {
    orvo::Component mix;
    mix.parameters[0].value = 1.0F;
    orvo::Session session = WithTrack(WithMix(mix));
    session.audioTracks.emplace_back().id = 99;
    EXPECT_TRUE(Write(session).ok);
    test::HostSetup host;
    host.faults.ReturnNumber("IQueryComponent.GetParameterCount", 4294967295);
    EXPECT_FALSE(Write(session, host).ok);
}

}  // namespace
}  // namespace tses
