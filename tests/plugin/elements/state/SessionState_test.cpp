#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using testing::Contains;
using testing::ElementsAre;

class SessionState : public test::ElementFixture {};

TEST_F(SessionState, PositionAndTimecodeReachTheHostInThisOrder) {
    EXPECT_THAT(CallsIn("<sessionState smpteStart='-7' ctiPosition='5000000000'/>"),
                ElementsAre("IEditSession#1.SetCtiPosition(5000000000)",
                            "IEditSession#1.SetSmpteStart(-7)"));
}

TEST_F(SessionState, WithoutAttributesBothAreZero) {
    EXPECT_THAT(CallsIn("<sessionState/>"),
                ElementsAre("IEditSession#1.SetCtiPosition(0)", "IEditSession#1.SetSmpteStart(0)"));
}

TEST_F(SessionState, NumbersThatDoNotParseAreZero) {
    EXPECT_EQ(CallsIn("<sessionState ctiPosition='1.5' smpteStart='x' other='1'/>"),
              CallsIn("<sessionState/>"));
}

TEST_F(SessionState, TheFirstVersionsFilesEndWithThePosition) {
    const std::string content =
        "<sessionState ctiPosition='5'><selectionState selectionStart='6'/></sessionState>";
    EXPECT_THAT(ReadInRoot("<session appVersion='4.0'>" + content + "</session>").calls,
                Contains("IEditSession#1.SetVersionDependentValue(5)"));
}

TEST_F(SessionState, EveryOtherVersionsFilesEndWithTheStartOfTheSelection) {
    const std::string content =
        "<sessionState ctiPosition='5'><selectionState selectionStart='6'/></sessionState>";
    EXPECT_THAT(ReadInRoot("<session appVersion='4.0.1'>" + content + "</session>").calls,
                Contains("IEditSession#1.SetVersionDependentValue(6)"));
}

TEST_F(SessionState, BothPositionsAreForgottenBeforeTheNextRead) {
    ReadInSession(
        "<sessionState ctiPosition='5'><selectionState selectionStart='6'/></sessionState>");
    EXPECT_THAT(ReadInRoot("<session/>").calls,
                Contains("IEditSession#1.SetVersionDependentValue(0)"));
    EXPECT_THAT(ReadInRoot("<session appVersion='5'/>").calls,
                Contains("IEditSession#1.SetVersionDependentValue(0)"));
}

TEST_F(SessionState, IsAMilestoneOfTheRead) {
    const auto without = ReadInSession("").progress.size();
    EXPECT_EQ(ReadInSession("<sessionState/>").progress.size(), without + 1);
}

TEST_F(SessionState, IsWrittenWithItsFourChildrenInOneOrder) {
    Session session;
    session.ctiPosition = 5'000'000'000;
    session.smpteStart = -7;
    EXPECT_EQ(WrittenElement("sessionState", session),
              "<sessionState ctiPosition=\"5000000000\" smpteStart=\"-7\">\n"
              "  <selectionState selectionDuration=\"0\" selectionStart=\"0\"/>\n"
              "  <viewState horizontalViewDuration=\"0\" horizontalViewStart=\"0\" "
              "trackControlsWidth=\"0\" verticalScrollOffset=\"0\"/>\n"
              "  <timeFormatState beatsPerBar=\"0\" beatsPerMinute=\"0\" customFrameRate=\"0\" "
              "linkToDefaultTimeSettings=\"true\" noteLength=\"0\" subdivisions=\"0\" "
              "timeCodeDropFrame=\"false\" timeCodeFrameRate=\"0\" timeCodeNTSC=\"false\" "
              "timeFormat=\"timeFormatDecimal\"/>\n"
              "  <mixingOptionState defaultPanModeLogarithmic=\"false\" panPower=\"-3\" "
              "playOverlappingClips=\"false\"/>\n"
              "</sessionState>");
}

TEST_F(SessionState, SurvivesAWriteAndARead) {
    Session session;
    session.ctiPosition = std::numeric_limits<kelcore::int64>::min();
    session.smpteStart = std::numeric_limits<kelcore::int64>::max();
    const Session again = ThroughFile(session);
    EXPECT_EQ(again.ctiPosition, session.ctiPosition);
    EXPECT_EQ(again.smpteStart, session.smpteStart);
}

}  // namespace
}  // namespace tses
