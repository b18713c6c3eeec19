#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "platform/kelappsupport/Features.h"
#include "tests/plugin/EverythingSession.h"
#include "tests/plugin/RandomSession.h"
#include "tests/support/SerializerFixture.h"
#include "toolkit/GeneratedSession.h"

// Whole sessions, written in every way: with the XML library's documents, made by its internal
// calls and by its public ones, and streamed.

namespace tses {
namespace {

using orvo::Session;

class EitherDocument : public test::SerializerFixture {
protected:
    std::vector<std::string> Written(const std::vector<Session>& sessions,
                                     DocumentMaker makeDocument) {
        std::vector<std::string> files;
        for (const test::WriteOutcome& outcome : WriteWith(sessions, makeDocument)) {
            EXPECT_TRUE(outcome.ok);
            files.push_back(outcome.file.value_or(""));
            EXPECT_NE(files.back(), "");
        }
        return files;
    }

    bool WritesTheSame(const std::vector<Session>& sessions) {
        const std::vector<std::string> files = Written(sessions, MakeDomDocument);
        return files == Written(sessions, MakePublicDomDocument) &&
               files == Written(sessions, MakeStreamedDocument);
    }
};

TEST_F(EitherDocument, WriteASessionWithEverythingAlike) {
    EXPECT_TRUE(WritesTheSame({test::EverythingSession("/media/")}));
}

TEST_F(EitherDocument, IsChosenByTheApplication) {
    EXPECT_EQ(Serializer::ChosenDocumentMaker(), MakeDomDocument);
    kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", true);
    EXPECT_EQ(Serializer::ChosenDocumentMaker(), MakeStreamedDocument);
    kelappsupport::SetFeatureEnabled("Tembra.StreamedSave", false);
}

TEST_F(EitherDocument, WriteAnEmptySessionAlike) {
    EXPECT_TRUE(WritesTheSame({Session()}));
}

TEST_F(EitherDocument, WriteSessionsOfAHundredKilobytesAlike) {
    for (const kelcore::uint64 seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        EXPECT_TRUE(WritesTheSame({toolkit::GenerateSession({.tracks = 9, .clips = 20}, seed)}));
    }
}

TEST_F(EitherDocument, WriteOneSessionAfterTheOtherAlike) {
    const Session everything = test::EverythingSession("/media/");
    const Session generated = toolkit::GenerateSession({.tracks = 2, .clips = 5}, 1);
    EXPECT_TRUE(WritesTheSame({everything, Session(), generated, everything}));
    const std::vector<std::string> files =
        Written({everything, generated, everything}, MakeDomDocument);
    EXPECT_EQ(files[0], files[2]);
}

RC_GTEST_FIXTURE_PROP(EitherDocument, WriteAnySessionAlike, ()) {
    RC_ASSERT(WritesTheSame({test::DrawSession()}));
}

}  // namespace
}  // namespace tses
