#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "session/json/SessionJson.h"
#include "tests/reference_host/support/Mirror.h"
#include "tests/reference_host/support/NoLiveNodes.h"
#include "tests/session/Filled.h"

namespace refhost {
namespace {

class WholeSessionTest : public test::NoLiveNodes {
protected:
    /// A session in which every value is filled, as far as the interfaces can pass it on.
    static orvo::Session FullSession() {
        auto session = orvo::test::Filler().Make<orvo::Session>();
        for (orvo::AudioTrack& track : session.audioTracks) {
            MakeTellable(track);
        }
        MakeTellable(*session.metronome.track);
        session.metronome.track->id = 4294967295;
        for (orvo::VideoTrack& track : session.videoTracks) {
            track.index = 0;
        }
        session.formatVersion = {};
        session.formatDescription.clear();
        session.versionDependentValue = 0;
        return session;
    }

    static void MakeTellable(orvo::AudioTrack& track) {
        track.clipsOnly = false;
        for (orvo::AudioClip& clip : track.clips) {
            clip.channelSources.emplace(1, 5);
        }
    }

    static orvo::Session Mirrored(const orvo::Session& session) {
        const auto from = SessionNode::Make(session);
        const auto to = SessionNode::Make();
        test::Mirror(from->Query(), to->Edit());
        return to->Value();
    }
};

TEST_F(WholeSessionTest, EditingTakesEverythingThatQueryingReports) {
    const orvo::Session session = FullSession();
    EXPECT_EQ(Mirrored(session), session);
}

TEST_F(WholeSessionTest, ADefaultSessionStaysOne) {
    EXPECT_EQ(Mirrored({}), orvo::Session{});
}

TEST_F(WholeSessionTest, NullSlotsAreSkipped) {
    orvo::Session session;
    session.audioTracks.push_back({.id = 1});
    orvo::AudioTrack& track = session.audioTracks[0];
    track.effectsRack = {.slots = {std::nullopt, orvo::EffectsSlot{.slotIndex = 4}}};
    track.sendList = {.slots = {std::nullopt, orvo::SendSlot{.slotIndex = 3}}};
    const orvo::Session mirrored = Mirrored(session);
    ASSERT_EQ(mirrored.audioTracks.size(), 1U);
    EXPECT_EQ(mirrored.audioTracks[0].effectsRack->slots,
              (std::vector<std::optional<orvo::EffectsSlot>>{{{.slotIndex = 4}}}));
    EXPECT_EQ(mirrored.audioTracks[0].sendList->slots,
              (std::vector<std::optional<orvo::SendSlot>>{{{.slotIndex = 3}}}));
}

TEST_F(WholeSessionTest, EverythingComesBackFromJson) {
    const auto session = orvo::test::Filler().Make<orvo::Session>();
    EXPECT_EQ(orvo::FromJson(orvo::ToJson(session)).session, session);
}

}  // namespace
}  // namespace refhost
