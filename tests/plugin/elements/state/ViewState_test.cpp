#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using testing::ElementsAre;

class ViewState : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfView(const std::string& attributes) {
        return CallsOf(CallsIn("<sessionState><viewState " + attributes + "/></sessionState>"),
                       "SetViewState");
    }
};

TEST_F(ViewState, AllFourValuesReachTheHostTogether) {
    EXPECT_THAT(CallsOfView("verticalScrollOffset='-3' trackControlsWidth='220' "
                            "horizontalViewStart='5000000000' horizontalViewDuration='48000'"),
                ElementsAre("IEditSession#1.SetViewState(5000000000,48000,220,-3)"));
}

TEST_F(ViewState, WhatIsMissingOrDoesNotParseIsZero) {
    EXPECT_THAT(CallsOfView(""), ElementsAre("IEditSession#1.SetViewState(0,0,0,0)"));
    EXPECT_THAT(CallsOfView("trackControlsWidth='220'"),
                ElementsAre("IEditSession#1.SetViewState(0,0,220,0)"));
    EXPECT_THAT(CallsOfView("horizontalViewStart='x' verticalScrollOffset='1.5'"),
                ElementsAre("IEditSession#1.SetViewState(0,0,0,0)"));
}

TEST_F(ViewState, IsWrittenWithAllFourValues) {
    Session session;
    session.viewState = {5'000'000'000, 48000, 220, -3};
    EXPECT_EQ(WrittenElement("viewState", session),
              "<viewState horizontalViewDuration=\"48000\" horizontalViewStart=\"5000000000\" "
              "trackControlsWidth=\"220\" verticalScrollOffset=\"-3\"/>");
}

TEST_F(ViewState, SurvivesAWriteAndARead) {
    Session session;
    session.viewState = {
        std::numeric_limits<kelcore::int64>::min(), std::numeric_limits<kelcore::int64>::max(),
        std::numeric_limits<kelcore::int32>::min(), std::numeric_limits<kelcore::int32>::max()};
    EXPECT_EQ(ThroughFile(session).viewState, session.viewState);
}

}  // namespace
}  // namespace tses
