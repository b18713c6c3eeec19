#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "tests/plugin/EverythingSession.h"
#include "tests/support/SerializerFixture.h"

// A save in which a single operation of the XML writer fails, for each operation in turn.

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::Session;
using testing::IsEmpty;

class WriterFaults : public test::SerializerFixture {
protected:
    /// The operations whose failure a save survives, counted from 0. Such a save writes something
    /// other than an undisturbed one.
    std::vector<std::size_t> SurvivedFaults(const Session& session) {
        std::vector<std::size_t> survived;
        const auto undisturbed = Write(session).file;
        for (std::size_t operation = 0;; ++operation) {
            std::filesystem::remove(folder.Path() / "session.orvo");
            const test::WriteOutcome outcome = WriteWithFault(session, operation);
            EXPECT_EQ(outcome.ok, outcome.file.has_value()) << operation;
            if (outcome.file == undisturbed) {
                return survived;  // the save has fewer operations
            }
            if (outcome.ok) {
                survived.push_back(operation);
            }
        }
    }

    /// A session with only one track, so that no later track decides the result.
    static Session With(AudioTrack track) {
        Session session = test::EverythingSession("/media/");
        session.metronome.globalTrackInfo.reset();
        session.videoTracks.clear();
        session.audioTracks = {std::move(track)};
        return session;
    }
};

TEST_F(WriterFaults, InAnythingButABlockOfEventsFailTheSaveWithoutAFile) {
    AudioTrack track = test::EverythingSession("/media/").audioTracks.at(0);
    EXPECT_THAT(SurvivedFaults(With(track)), IsEmpty());
}

TEST_F(WriterFaults, InTheBlockOfAMidiClipAreIgnored) {
    AudioTrack track = test::EverythingSession("/media/").audioTracks.at(3);
    const auto survived = SurvivedFaults(With(track));
    ASSERT_EQ(survived.size(), 3u);  // its start, its text and its end
    EXPECT_EQ(survived.back(), survived.front() + 2);
}

TEST_F(WriterFaults, InTheBlocksOfTheMusicalTimelineAreIgnored) {
    Session session = With({});
    session.metronome.globalTrackInfo =
        test::EverythingSession("/media/").metronome.globalTrackInfo;
    EXPECT_EQ(SurvivedFaults(session).size(), 9u);
}

TEST_F(WriterFaults, InAVideoTrackThatIsTheLastTrackFailTheSave) {
    Session session = With({});
    session.audioTracks.clear();
    session.videoTracks = test::EverythingSession("/media/").videoTracks;
    EXPECT_THAT(SurvivedFaults(session), IsEmpty());
}

TEST_F(WriterFaults, StopTheQueriesForTheRestOfAList) {
    AudioTrack ofClips;
    ofClips.clips.resize(3);
    AudioTrack ofSlots;
    ofSlots.effectsRack.emplace().slots.resize(3, orvo::EffectsSlot());
    AudioTrack ofKeyframes;
    orvo::Parameter parameter{.value = 1.0F};
    parameter.automation.emplace().keyframes.resize(3);
    ofKeyframes.fader.emplace().parameters[0] = parameter;
    Session ofGroups;
    ofGroups.clipGroups.resize(3);
    Session ofVideo;
    ofVideo.videoTracks.resize(1);
    ofVideo.videoTracks[0].clips.resize(3);
    const auto only = [](AudioTrack track) {
        Session session;
        session.audioTracks = {std::move(track)};
        return session;
    };
    const std::pair<std::string, Session> lists[] = {
        {".GetClip(", only(ofClips)},         {".GetSlot(", only(ofSlots)},
        {".GetKeyframe(", only(ofKeyframes)}, {".GetClipGroup(", ofGroups},
        {".GetVideoClip(", ofVideo},
    };
    for (const auto& [query, session] : lists) {
        std::set<std::size_t> asked;
        for (std::size_t operation = 0;; ++operation) {
            const test::WriteOutcome outcome = WriteWithFault(session, operation);
            asked.insert(CallsOf(outcome.calls, query).size());
            if (outcome.ok) {
                break;
            }
        }
        EXPECT_THAT(asked, testing::IsSupersetOf({1u, 2u, 3u})) << query;
    }
}

}  // namespace
}  // namespace tses
