#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/plugin/elements/ElementFixture.h"
#include "tests/plugin/elements/TrackSamples.h"

// A writer that fails at any one of its operations, in a session with everything that tracks have.

namespace tses {
namespace {

using orvo::Session;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;

/// The version, the start of "session" and the start of "tracks" come before the first track.
constexpr std::size_t kFirstOfTracks = 3;

/// The test owns it, so it counts no references.
class LongerThanAnyText final : public IHostString {
public:
    void AddReference() override {}
    void Release() override {}
    void UnusedSlot3() override {}
    const kelcore::char16* GetData() override { return u""; }
    kelcore::uint32 GetLength() override { return 536870913; }
};

class TrackWriterFaults : public test::ElementFixture {
protected:
    /// The number of the writer's operations for a session. Every one of them must succeed, so a
    /// save succeeds as soon as the fault comes after the last one.
    std::size_t OperationsOf(const Session& session) {
        const auto fails = [&](std::size_t operation) {
            return !WriteWithFault(session, operation).ok;
        };
        std::size_t enough = 1;
        while (fails(enough)) {
            enough *= 2;
        }
        std::size_t count = enough / 2;
        while (count < enough) {
            const std::size_t middle = count + (enough - count) / 2;
            if (fails(middle)) {
                count = middle + 1;
            } else {
                enough = middle;
            }
        }
        return count;
    }

    /// The number of the writer's operations for one track of a session.
    std::size_t OperationsOfTrack(const orvo::AudioTrack& track) {
        return OperationsOf(WithTrack(track)) - OperationsOf({});
    }
    std::size_t OperationsOfVideoTrack(const orvo::VideoTrack& track) {
        Session session;
        session.videoTracks = {track};
        return OperationsOf(session) - OperationsOf({});
    }

    void PutOldFile() { folder.Write("session.orvo", "the old session"); }
};

Session SessionWithTracks() {
    Session session;
    session.videoTracks = {test::FullVideoTrack(1)};
    session.audioTracks = {test::FullTrack(2, 9), test::FullTrack(1, 3), test::FullTrack(3, 4)};
    session.trackVisibilityPresets = {{1, "All", {{9, 64.5F, true}}}};
    return session;
}

/// The operations are shared out among this many tests, because all of them take a minute.
constexpr std::size_t kTurns = 4;

class TrackWriterFaultsInTurn : public TrackWriterFaults,
                                public testing::WithParamInterface<std::size_t> {};

TEST_P(TrackWriterFaultsInTurn, TheFileIsReplacedExactlyWhenTheFailedTrackIsNotTheLastOne) {
    const Session session = SessionWithTracks();
    Session lastTrack = session;
    lastTrack.videoTracks.clear();
    lastTrack.audioTracks = {session.audioTracks.back()};

    std::size_t swallowed = OperationsOfVideoTrack(session.videoTracks[0]);
    for (std::size_t i = 0; i + 1 < session.audioTracks.size(); ++i) {
        swallowed += OperationsOfTrack(session.audioTracks[i]);
    }
    const std::size_t all = swallowed + OperationsOf(lastTrack);
    ASSERT_GT(swallowed, 300u);
    for (std::size_t operation = GetParam(); operation < all; operation += kTurns) {
        PutOldFile();
        const auto outcome = WriteWithFault(session, operation);
        const bool expected = operation >= kFirstOfTracks && operation < kFirstOfTracks + swallowed;
        ASSERT_EQ(outcome.ok, expected) << operation;
        ASSERT_EQ(*outcome.file != "the old session", expected) << operation;
        if (expected) {
            ASSERT_THAT(*outcome.file, EndsWith("</orvo>\n")) << operation;
            ASSERT_TRUE(ReadPath(Path()).ok) << operation;
        }
    }
    EXPECT_TRUE(WriteWithFault(session, all).ok);
}

INSTANTIATE_TEST_SUITE_P(, TrackWriterFaultsInTurn, testing::Range(std::size_t{0}, kTurns));

TEST_F(TrackWriterFaults, ATrackAfterAFailedOneIsStillQueried) {
    Session session;
    session.audioTracks = {test::FullTrack(1, 1), test::FullTrack(1, 2)};
    const auto outcome = WriteWithFault(session, kFirstOfTracks);
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(CallsOf(outcome.calls, "GetAutomationMode").size(), 1u);
    EXPECT_THAT(*outcome.file, testing::HasSubstr("id=\"2\""));
    EXPECT_THAT(*outcome.file,
                Not(testing::HasSubstr("<audioTrack automationLaneOpenState=\"true\" id=\"1\"")));
}

TEST_F(TrackWriterFaults, TracksAfterOneThatExceedsALimitAreStillQueriedAndNothingIsSaved) {
    PutOldFile();
    Session session;
    session.audioTracks.resize(3);
    session.audioTracks[0].clips.emplace_back().channelSources = {{1024, 0}};
    const auto outcome = Write(session);
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(*outcome.file, "the old session");
    EXPECT_THAT(CallsOf(outcome.calls, "GetChannelSource"), IsEmpty());
    EXPECT_EQ(CallsOf(outcome.calls, "IQuerySession#1.GetAudioTrack(").size(), 3u);
    EXPECT_EQ(CallsOf(outcome.calls, "GetKind").size(), 3u);
    EXPECT_EQ(CallsOf(outcome.calls, "GetHeight").size(), 1u);
    EXPECT_THAT(CallsOf(outcome.calls, "GetFileCount"), IsEmpty());
}

TEST_F(TrackWriterFaults, NoTrackIsQueriedAfterATextThatIsTooLong) {
    PutOldFile();
    LongerThanAnyText text;
    std::size_t tracks = 0;
    std::size_t reports = 0;
    test::HostSetup host;
    host.interceptor = [&](const refhost::CallRecord& call) {
        tracks += call.operation == "GetAudioTrack" ? 1u : 0u;
        reports += call.operation == "SetProgress" ? 1u : 0u;
        return call.operation == "GetPreRenderedFile" ? refhost::CallDecision::ReturnText(text)
                                                      : refhost::CallDecision::Forward();
    };
    Session session;
    session.audioTracks.resize(3);
    EXPECT_THROW(Write(session, host), std::length_error);
    EXPECT_EQ(tracks, 1u);
    EXPECT_EQ(reports, 1u) << "reports of progress";
    EXPECT_EQ(test::ReadFile(folder / "session.orvo"), "the old session");
}

TEST_F(TrackWriterFaults, ATrackWhoseStartFailedIsTheOnlyLoss) {
    Session session;
    session.audioTracks = {test::FullTrack(1, 1), test::FullTrack(1, 2)};
    ASSERT_TRUE(WriteWithFault(session, kFirstOfTracks).ok);
    const auto tracks = ReadPath(Path()).session.audioTracks;
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(tracks[0], session.audioTracks[1]);
}

TEST_F(TrackWriterFaults, AFailedTrackStaysOpenAndTakesInWhatFollows) {
    Session session;
    session.audioTracks = {test::FullTrack(1, 1), test::FullTrack(1, 2)};
    ASSERT_TRUE(WriteWithFault(session, kFirstOfTracks + 1).ok);
    const auto tracks = ReadPath(Path()).session.audioTracks;
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(tracks[0].id, 1u);
}

TEST_F(TrackWriterFaults, TheListsOwnStartFailsTheSaveAlthoughTheTracksAreWritten) {
    Session session;
    session.audioTracks = {test::FullTrack(1, 1)};
    const auto outcome = WriteWithFault(session, kFirstOfTracks - 1);
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "GetAutomationMode"), Not(IsEmpty()));
    EXPECT_FALSE(outcome.file.has_value());
}

TEST_F(TrackWriterFaults, TheListsStartWithoutTracksFailsTheSaveAtOnce) {
    const auto outcome = WriteWithFault({}, kFirstOfTracks - 1);
    EXPECT_FALSE(outcome.ok);
    EXPECT_THAT(CallsOf(outcome.calls, "GetCtiPosition"), IsEmpty());
}

TEST_F(TrackWriterFaults, AHostThatThrowsLeavesTheOldFileWhole) {
    for (const char* const operation :
         {"IQuerySession.GetAudioTrack", "IQueryAudioTrackPrivate.GetPreRenderedFile",
          "IQueryAudioTrackPrivate.GetSendList", "IQueryEffectsRack.GetSlot",
          "IQueryComponent.GetPresetChunk", "IQueryAutomationLane.GetKeyframe",
          "IQueryVideoTrack.GetName", "IQueryTrackVisibilityPreset.GetTrack"}) {
        PutOldFile();
        test::HostSetup host;
        host.faults.Throw(operation, std::make_exception_ptr(42));
        EXPECT_THROW(Write(SessionWithTracks(), host), int) << operation;
        EXPECT_EQ(test::ReadFile(folder / "session.orvo"), "the old session") << operation;
    }
}

}  // namespace
}  // namespace tses
