#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "platform/kelappsupport/Features.h"
#include "reference_host/SessionNode.h"
#include "tests/support/SerializerFixture.h"
#include "tests/support/SerializerTestAccess.h"

// Which elements reach a handler, what is skipped, and which progress the host gets.

namespace tses {
namespace {

using refhost::Progress;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class Dispatch : public test::SerializerFixture {
protected:
    static std::vector<kelcore::uint32> Steps(const test::ReadOutcome& outcome) {
        std::vector<kelcore::uint32> steps;
        for (const Progress& progress : outcome.progress) {
            steps.push_back(progress.done);
        }
        return steps;
    }
};

TEST_F(Dispatch, AnEmptyRootIsASession) {
    const auto outcome = Read("<orvo/>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(outcome.calls, IsEmpty());
    EXPECT_THAT(outcome.progress, ElementsAre(Progress{0, 7, 0, 0}));
}

TEST_F(Dispatch, ARootOfAnotherNameIsNotASession) {
    for (const char* const document :
         {"<session/>", "<Orvo/>", "<orv/>", "<orvos><session/></orvos>"}) {
        const auto outcome = Read(document);
        EXPECT_FALSE(outcome.ok) << document;
        EXPECT_THAT(outcome.calls, IsEmpty());
        EXPECT_THAT(outcome.log, IsEmpty());
    }
}

TEST_F(Dispatch, ThePrefixOfTheRootDoesNotMatter) {
    EXPECT_TRUE(Read("<o:orvo xmlns:o='urn:x'><o:session/></o:orvo>").ok);
}

TEST_F(Dispatch, ADocumentWithoutAnElementIsNoSession) {
    for (const bool logTarget : {true, false}) {
        test::HostSetup host;
        host.logTarget = logTarget;
        EXPECT_FALSE(Read("", host).ok);
        EXPECT_FALSE(Read("<!-- nothing -->", host).ok);
    }
}

TEST_F(Dispatch, AnEmptyPathFailsBeforeAnythingIsParsed) {
    const auto outcome = ReadPath(u"");
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(outcome.progress, ElementsAre(Progress{0, 7, 0, 0}));
}

TEST_F(Dispatch, WorkspaceSettingsAreSkippedWithTheirSubtreeLikeAnyUnknownElement) {
    const auto outcome = ReadInSession(
        "<workspaceSettings><tracks/><files><file id='1'/></files></workspaceSettings><tracks/>");
    EXPECT_THAT(CallsOf(outcome.calls, "GetFile"), IsEmpty());
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1, 2));
}

TEST_F(Dispatch, WhatFollowsAnUnknownElementWithChildrenIsHandled) {
    const auto outcome = ReadInRoot(
        "<unknown><session sampleRate='1'/><a><b/></a></unknown><session sampleRate='2'/>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "SetSampleRate"),
                ElementsAre("IEditSession#1.SetSampleRate(2)"));
}

TEST_F(Dispatch, SkippingEndsWithTheOuterOfTwoUnknownElements) {
    const auto outcome = ReadInRoot("<outer><inner></inner><files/><session/></outer><files/>");
    EXPECT_THAT(outcome.calls, IsEmpty());
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1));
}

TEST_F(Dispatch, TheEndOfAnUnknownElementIsNotTakenForThatOfAKnownOne) {
    const auto outcome = ReadInRoot("<session><files/></session>");
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1));
}

TEST_F(Dispatch, AKnownElementInTheWrongPlaceIsSkipped) {
    const auto outcome =
        ReadInRoot("<file id='1'/><session><file id='2'/></session><files><session/></files>");
    EXPECT_THAT(CallsOf(outcome.calls, "GetFile"), IsEmpty());
    EXPECT_THAT(CallsOf(outcome.calls, "SetSampleRate"), SizeIs(1));
}

TEST_F(Dispatch, TrackParametersDirectlyUnderTheSessionAreIgnored) {
    const auto outcome =
        ReadInSession("<trackParameters><name>x</name><tracks/></trackParameters>");
    EXPECT_EQ(outcome.calls, ReadInSession("").calls);
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1));
}

TEST_F(Dispatch, WithoutInstrumentTracksTheirElementsAreSkippedWithEverythingInThem) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    const auto outcome = ReadInSession(
        "<tracks><instrumentTrack id='1'><trackParameters/><midiClip "
        "id='2'/></instrumentTrack></tracks>"
        "<metronome><globalTrackInfo tempoVisible='true'/></metronome>");
    EXPECT_THAT(CallsOf(outcome.calls, "Track"), IsEmpty());
    EXPECT_THAT(CallsOf(outcome.calls, "Clip"), IsEmpty());
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1, 2));
}

TEST_F(Dispatch, EverythingThatHandlersRememberIsClearedBeforeARead) {
    auto impl = std::make_unique<Serializer::Impl>(WriterFault{}, MakeDomDocument);
    SerializerTestAccess::SavedState(*impl).ctiPosition = 111;
    SerializerTestAccess::SavedState(*impl).selectionStart = 222;
    folder.Write("session.orvo", "<orvo><session appVersion='25'/></orvo>");
    const auto node = refhost::SessionNode::Make();
    EXPECT_TRUE(impl->Read(Path(), Retain(&node->Edit())));
    EXPECT_EQ(node->Value().versionDependentValue, 0);
}

TEST_F(Dispatch, ARootOfAnotherNameEndsTheParseWithThatMessage) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    try {
        SerializerTestAccess::Content(impl).StartElementEvent(u"", u"song", u"song", {});
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Not a session file.");
    }
}

TEST_F(Dispatch, ProgressCountsTheMilestonesInTheOrderOfTheirEnds) {
    const auto outcome = ReadInRoot(
        "<session><tracks/><sessionState/><xmpMetadata/><clipGroups/></session><files/"
        "><audioDevice/>");
    EXPECT_THAT(outcome.progress,
                ElementsAre(Progress{0, 7, 0, 0}, Progress{1, 7, 0, 0}, Progress{2, 7, 0, 0},
                            Progress{3, 7, 0, 0}, Progress{4, 7, 0, 0}, Progress{5, 7, 0, 0},
                            Progress{6, 7, 0, 0}, Progress{7, 7, 0, 0}));
}

TEST_F(Dispatch, ProgressStopsAtSevenHoweverManyMilestonesThereAre) {
    std::string files;
    for (int i = 0; i < 10; ++i) {
        files += "<files/>";
    }
    EXPECT_THAT(Steps(ReadInRoot(files)), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 7, 7, 7));
}

TEST_F(Dispatch, EachReadBeginsItsProgressAnew) {
    ReadInRoot("<files/>");
    EXPECT_THAT(Steps(ReadInRoot("<files/>")), ElementsAre(0, 1));
}

TEST_F(Dispatch, AnElementNamedLikeTheRootInsideTheDocumentIsSkippedUntilItsParentsDepthIsBack) {
    // Its end does not end the skipping. The next sibling is still skipped; its end brings the
    // depth back and runs only the end handler.
    const auto outcome =
        ReadInRoot("<orvo/><files><file id='1'/></files><files><file id='2'/></files>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "GetFile"),
                ElementsAre(StartsWith("IEditSession#1.GetFile(2)")));
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1, 2));
}

TEST_F(Dispatch, TheEndOfTheElementAfterAnInnerRootStillActs) {
    const auto outcome = ReadInSession(
        "<orvo/><xmpMetadata>a packet</xmpMetadata><properties><property key='k'/></properties>");
    EXPECT_THAT(CallsOf(outcome.calls, "SetXmpMetadata"),
                ElementsAre("IEditSession#1.SetXmpMetadata(\"a packet\")"));
    EXPECT_THAT(CallsOf(outcome.calls, "SetProperty"), SizeIs(1));
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1, 2));

    const auto session = ReadInRoot("<orvo/><session sampleRate='96000'><tracks/></session>");
    EXPECT_THAT(CallsOf(session.calls, "SetSampleRate"), IsEmpty());
    EXPECT_THAT(CallsOf(session.calls, "SetVersionDependentValue"), SizeIs(1));
    EXPECT_THAT(Steps(session), ElementsAre(0, 1));
}

TEST_F(Dispatch, AReadThatFailedInsideASkippedElementLeavesTheNextOneSkipping) {
    EXPECT_FALSE(Read("<orvo><unknown><broken></unknown></orvo>").ok);
    // Skipping began at depth 2 and ends when the stack is back there: after the first child.
    const auto outcome = ReadInRoot("<files><file id='1'/></files><files><file id='2'/></files>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "GetFile"),
                ElementsAre(StartsWith("IEditSession#1.GetFile(2)")));
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1, 2));
}

TEST_F(Dispatch, AnElementInWhichTheSkippingOfAnEarlierReadEndsStillRunsItsEnd) {
    EXPECT_FALSE(Read("<orvo><session><unknown><broken></unknown></session></orvo>").ok);
    // Skipping began at depth 3 and ends with the name, inside the session.
    const auto outcome = ReadInRoot("<session sampleRate='96000'><name/></session>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "SetSampleRate"), IsEmpty());
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1));
}

TEST_F(Dispatch, AnElementNamedLikeTheRootPostponesTheEndOfSkippingToLaterElements) {
    const auto outcome = ReadInRoot("<session><orvo/></session><files><file/><file/></files>");
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(Steps(outcome), ElementsAre(0, 1));
}

TEST_F(Dispatch, AnElementNamedLikeTheRootAtTheEndOfADocumentLeavesTheNextReadSkipping) {
    EXPECT_TRUE(ReadInRoot("<orvo/>").ok);
    const auto next = ReadInRoot("<session/><files><file id='1'/></files>");
    EXPECT_TRUE(next.ok);
    EXPECT_THAT(CallsOf(next.calls, "SetSampleRate"), IsEmpty());
    EXPECT_THAT(CallsOf(next.calls, "GetFile"), SizeIs(1));
    EXPECT_THAT(CallsOf(ReadInRoot("<session/>").calls, "SetSampleRate"), SizeIs(1));
}

TEST_F(Dispatch, ACompleteSkippedElementLeavesNothingBehind) {
    EXPECT_TRUE(ReadInRoot("<unknown><a/></unknown>").ok);
    EXPECT_THAT(CallsOf(ReadInRoot("<session/>").calls, "SetSampleRate"), SizeIs(1));
}

TEST_F(Dispatch, AMalformedDocumentIsLoggedWithItsPlaceAndFails) {
    const auto outcome = Read("<orvo>\n <session>\n </orvo>");
    EXPECT_FALSE(outcome.ok);
    ASSERT_THAT(outcome.log, SizeIs(1));
    EXPECT_THAT(outcome.log[0], StartsWith("XML FATAL ERROR: (line: 3, col: "));
    EXPECT_THAT(outcome.log[0], HasSubstr(") [ /"));
    EXPECT_THAT(outcome.log[0], HasSubstr("session.orvo] "));
    EXPECT_EQ(outcome.log[0].back(), '\n');
    EXPECT_THAT(CallsOf(outcome.calls, "LogTarget"), SizeIs(2));
}

TEST_F(Dispatch, AMalformedDocumentFailsEvenWithoutALogTarget) {
    test::HostSetup host;
    host.logTarget = false;
    for (const char* const document :
         {"<orvo>\n <session>\n </orvo>", "<orvo/>junk", "<orvo><session a='1' a='2'/></orvo>",
          "<orvo>\xFF</orvo>", "<orvo>&undefined;</orvo>", "<orvo><p:a/></orvo>", "<orvo"}) {
        const auto outcome = Read(document, host);
        EXPECT_FALSE(outcome.ok) << document;
        EXPECT_THAT(outcome.calls, Contains("IEditSession#1.GetLogTarget() -> null")) << document;
    }
}

TEST_F(Dispatch, BothEncodingsThatMustBeKnownAreRead) {
    std::u16string document = u"\uFEFF<orvo><session sampleRate='7'/></orvo>";
    const std::string bytes(reinterpret_cast<const char*>(document.data()), document.size() * 2);
    EXPECT_THAT(Read(bytes).calls, Contains("IEditSession#1.SetSampleRate(7)"));
    EXPECT_THAT(Read("\xEF\xBB\xBF<orvo><session sampleRate='8'/></orvo>").calls,
                Contains("IEditSession#1.SetSampleRate(8)"));
}

TEST_F(Dispatch, AnExceptionOfTheHostFailsTheReadAndLeavesNothingHeld) {
    for (const char* const operation :
         {"IEditSession.SetSampleRate", "IEditSession.GetFile", "IEditFile.SetPath"}) {
        test::HostSetup host;
        host.faults.Throw(operation, std::make_exception_ptr(42));
        EXPECT_FALSE(ReadInRoot("<session/><files><file id='1'/></files>", host).ok) << operation;
    }
}

}  // namespace
}  // namespace tses
