#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/plugin/EverythingSession.h"
#include "tests/plugin/RandomSession.h"
#include "tests/support/SerializerFixture.h"
#include "toolkit/GeneratedSession.h"

// Whole sessions, written with the library's internal calls and with its public ones.

namespace tses {
namespace {

using orvo::Session;

class EitherNodes : public test::SerializerFixture {
protected:
    std::vector<std::string> Written(const std::vector<Session>& sessions, NodeMaker makeNodes) {
        std::vector<std::string> files;
        for (const test::WriteOutcome& outcome : WriteWithNodes(sessions, makeNodes)) {
            EXPECT_TRUE(outcome.ok);
            files.push_back(outcome.file.value_or(""));
            EXPECT_NE(files.back(), "");
        }
        return files;
    }

    bool WritesTheSame(const std::vector<Session>& sessions) {
        return Written(sessions, MakeInternalNodes) == Written(sessions, MakePublicNodes);
    }
};

TEST_F(EitherNodes, WriteASessionWithEverythingAlike) {
    EXPECT_TRUE(WritesTheSame({test::EverythingSession("/media/")}));
}

TEST_F(EitherNodes, WriteAnEmptySessionAlike) {
    EXPECT_TRUE(WritesTheSame({Session()}));
}

TEST_F(EitherNodes, WriteSessionsOfAHundredKilobytesAlike) {
    for (const kelcore::uint64 seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        EXPECT_TRUE(WritesTheSame({toolkit::GenerateSession({.tracks = 9, .clips = 20}, seed)}));
    }
}

TEST_F(EitherNodes, WriteOneSessionAfterTheOtherAlike) {
    const Session everything = test::EverythingSession("/media/");
    const Session generated = toolkit::GenerateSession({.tracks = 2, .clips = 5}, 1);
    EXPECT_TRUE(WritesTheSame({everything, Session(), generated, everything}));
    const std::vector<std::string> files = Written({everything, generated, everything}, kNodeMaker);
    EXPECT_EQ(files[0], files[2]);
}

RC_GTEST_FIXTURE_PROP(EitherNodes, WriteAnySessionAlike, ()) {
    RC_ASSERT(WritesTheSame({test::DrawSession()}));
}

}  // namespace
}  // namespace tses
