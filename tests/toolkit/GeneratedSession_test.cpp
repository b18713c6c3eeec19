#include "toolkit/GeneratedSession.h"

#include <gtest/gtest.h>

#include <set>

namespace toolkit {
namespace {

using kelcore::uint32;

std::set<uint32> IdsOf(const std::vector<orvo::AudioTrack>& tracks) {
    std::set<uint32> ids;
    for (const orvo::AudioTrack& track : tracks) {
        ids.insert(track.id);
    }
    return ids;
}

TEST(GeneratedSession, NoTwoTracksOrClipsHaveTheSameId) {
    const orvo::Session session = GenerateSession({.tracks = 20, .clips = 6}, 1);
    EXPECT_EQ(session.audioTracks.size(), 19u);
    EXPECT_EQ(IdsOf(session.audioTracks).size(), 19u);
    EXPECT_FALSE(IdsOf(session.audioTracks).contains(session.videoTracks.at(0).id));
    std::set<uint32> clips;
    std::size_t count = 0;
    for (const orvo::AudioTrack& track : session.audioTracks) {
        for (const orvo::AudioClip& clip : track.clips) {
            clips.insert(clip.id);
        }
        for (const orvo::MidiClip& clip : track.midiClips) {
            clips.insert(clip.id);
        }
        count += track.clips.size() + track.midiClips.size();
    }
    EXPECT_EQ(clips.size(), count);
}

TEST(GeneratedSession, EverythingItRefersToExists) {
    const orvo::Session session = GenerateSession({.tracks = 20, .clips = 6}, 1);
    const std::set<uint32> tracks = IdsOf(session.audioTracks);
    for (const orvo::AudioTrack& track : session.audioTracks) {
        EXPECT_TRUE(track.kind == orvo::TrackKind::Master ||
                    tracks.contains(static_cast<uint32>(track.outputTrackId)));
        for (const orvo::AudioClip& clip : track.clips) {
            EXPECT_GE(clip.fileId, 1u);
            EXPECT_LE(clip.fileId, session.files.size());
            EXPECT_LE(clip.startPoint + clip.duration, session.duration);
        }
    }
    ASSERT_FALSE(session.clipGroups.empty());
    EXPECT_TRUE(tracks.contains(session.clipGroups.at(0).items.at(0).trackId));
}

TEST(GeneratedSession, OnlyTheSeedDecides) {
    EXPECT_EQ(GenerateSession({.tracks = 5}, 3), GenerateSession({.tracks = 5}, 3));
    EXPECT_NE(GenerateSession({.tracks = 5}, 3), GenerateSession({.tracks = 5}, 4));
}

TEST(GeneratedSession, TheDrawsAreTheSameOnEveryMachine) {
    const orvo::Session session = GenerateSession({.tracks = 2, .clips = 1}, 1);
    const orvo::AudioClip& clip = session.audioTracks.at(0).clips.at(0);
    EXPECT_EQ(clip.startPoint, 156302);
    EXPECT_EQ(clip.duration, 1011514);
    EXPECT_EQ(clip.hue, 72);
}

TEST(GeneratedSession, WithoutKeyframesThereIsNoLane) {
    const orvo::Session session = GenerateSession({.tracks = 2, .keyframes = 0}, 1);
    const orvo::AudioTrack& track = session.audioTracks.at(0);
    EXPECT_FALSE(track.fader->parameters.at(0).automation);
    EXPECT_FALSE(track.effectsRack->slots.at(0)->component->parameters.at(0).automation);
}

TEST(GeneratedSession, TheLargestSizesDoNotOverflowTheCount) {
    EXPECT_EQ(CountItems({.tracks = 2, .clips = 3, .slots = 4, .keyframes = 5}), 66u);
    EXPECT_GT(
        CountItems({.tracks = 10'000, .clips = 0, .slots = 1'000'000, .keyframes = 1'000'000}),
        kMostGeneratedItems);
}

}  // namespace
}  // namespace toolkit
