#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using testing::ElementsAre;

class SelectionState : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfSelection(const std::string& attributes) {
        return CallsOf(CallsIn("<sessionState><selectionState " + attributes + "/></sessionState>"),
                       "SetSelection");
    }
};

TEST_F(SelectionState, StartAndLengthReachTheHostTogether) {
    EXPECT_THAT(CallsOfSelection("selectionDuration='48000' selectionStart='5000000000'"),
                ElementsAre("IEditSession#1.SetSelection(5000000000,48000)"));
}

TEST_F(SelectionState, WhatIsMissingOrDoesNotParseIsZero) {
    EXPECT_THAT(CallsOfSelection(""), ElementsAre("IEditSession#1.SetSelection(0,0)"));
    EXPECT_THAT(CallsOfSelection("selectionStart='x' selectionDuration='5'"),
                ElementsAre("IEditSession#1.SetSelection(0,5)"));
}

TEST_F(SelectionState, IsWrittenWithBothValues) {
    Session session;
    session.selection = {5'000'000'000, 48000};
    EXPECT_EQ(WrittenElement("selectionState", session),
              "<selectionState selectionDuration=\"48000\" selectionStart=\"5000000000\"/>");
}

TEST_F(SelectionState, ANegativeStartComesBackUnchanged) {
    Session session;
    session.selection = {-100, std::numeric_limits<kelcore::int64>::min()};
    EXPECT_EQ(WrittenElement("selectionState", session),
              "<selectionState selectionDuration=\"-9223372036854775808\" "
              "selectionStart=\"-100\"/>");
    EXPECT_EQ(ThroughFile(session).selection, session.selection);
}

}  // namespace
}  // namespace tses
