#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/plugin/EverythingSession.h"
#include "tests/plugin/RandomSession.h"
#include "tests/support/SerializerFixture.h"
#include "toolkit/GeneratedSession.h"

// Whole sessions, written with the library's internal calls and with its public ones.

namespace tses {
namespace {

using refhost::model::Session;

class EitherNodes : public test::SerializerFixture {
protected:
    std::string Written(const Session& session, NodeMaker makeNodes) {
        const test::WriteOutcome outcome = WriteWithNodes(session, makeNodes);
        EXPECT_TRUE(outcome.ok);
        return outcome.file.value_or("");
    }

    bool WritesTheSame(const Session& session) {
        const std::string expected = Written(session, MakePublicNodes);
        return !expected.empty() && Written(session, MakeInternalNodes) == expected;
    }
};

TEST_F(EitherNodes, WriteASessionWithEverythingAlike) {
    EXPECT_TRUE(WritesTheSame(test::EverythingSession(u"/media/")));
}

TEST_F(EitherNodes, WriteAnEmptySessionAlike) {
    EXPECT_TRUE(WritesTheSame({}));
}

TEST_F(EitherNodes, WriteSessionsOfAHundredKilobytesAlike) {
    for (const kelcore::uint64 seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        EXPECT_TRUE(WritesTheSame(toolkit::GenerateSession({.tracks = 9, .clips = 20}, seed)));
    }
}

RC_GTEST_FIXTURE_PROP(EitherNodes, WriteAnySessionAlike, ()) {
    RC_ASSERT(WritesTheSame(test::DrawSession()));
}

}  // namespace
}  // namespace tses
