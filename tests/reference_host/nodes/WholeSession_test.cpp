#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "reference_host/json/SessionJson.h"
#include "tests/reference_host/support/Filled.h"
#include "tests/reference_host/support/Mirror.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class WholeSessionTest : public test::NoLiveNodes {
protected:
    /// A session in which everything is something, as far as the interfaces can tell it.
    static model::Session FullSession() {
        auto session = test::Filler().Make<model::Session>();
        for (model::AudioTrack& track : session.audioTracks) {
            MakeTellable(track);
        }
        MakeTellable(*session.metronome.track);
        session.metronome.track->id = 4294967295;
        for (model::VideoTrack& track : session.videoTracks) {
            track.index = 0;
        }
        session.formatVersion = {};
        session.formatDescription.clear();
        session.versionDependentValue = 0;
        return session;
    }

    static void MakeTellable(model::AudioTrack& track) {
        track.clipsOnly = false;
        for (model::AudioClip& clip : track.clips) {
            clip.channelSources.emplace(1, 5);
        }
    }

    static model::Session Mirrored(const model::Session& session) {
        const auto from = SessionNode::Make(session);
        const auto to = SessionNode::Make();
        test::Mirror(from->Query(), to->Edit());
        return to->Value();
    }
};

TEST_F(WholeSessionTest, EverythingThatQueryingTellsEditingTakes) {
    const model::Session session = FullSession();
    EXPECT_EQ(Mirrored(session), session);
}

TEST_F(WholeSessionTest, ADefaultSessionStaysOne) {
    EXPECT_EQ(Mirrored({}), model::Session{});
}

TEST_F(WholeSessionTest, NullSlotsAreSkipped) {
    model::Session session;
    session.audioTracks.push_back({.id = 1});
    model::AudioTrack& track = session.audioTracks[0];
    track.effectsRack = {.slots = {std::nullopt, model::EffectsSlot{.slotIndex = 4}}};
    track.sendList = {.slots = {std::nullopt, model::SendSlot{.slotIndex = 3}}};
    const model::Session mirrored = Mirrored(session);
    ASSERT_EQ(mirrored.audioTracks.size(), 1U);
    EXPECT_EQ(mirrored.audioTracks[0].effectsRack->slots,
              (std::vector<std::optional<model::EffectsSlot>>{{{.slotIndex = 4}}}));
    EXPECT_EQ(mirrored.audioTracks[0].sendList->slots,
              (std::vector<std::optional<model::SendSlot>>{{{.slotIndex = 3}}}));
}

TEST_F(WholeSessionTest, EverythingComesBackFromJson) {
    const auto session = test::Filler().Make<model::Session>();
    EXPECT_EQ(FromJson(ToJson(session)), session);
}

}  // namespace
}  // namespace refhost
