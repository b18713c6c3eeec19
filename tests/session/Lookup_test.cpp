#include <orvo/Lookup.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace orvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A voice and a guitar feed a bus and the master, and the voice keys an effect of the bus.
Session Band() {
    Session session;
    session.audioDevice = {.inputPorts = {{.id = 0, .name = "Microphone"}},
                           .outputPorts = {{.id = 3, .name = "Main"}}};
    session.files = {{.id = 1, .path = "/voice.wav"}, {.id = 2, .path = "/picture.mov"}};
    session.videoTracks = {
        {.id = 1, .name = "Picture", .clips = {{.id = 50, .fileId = 2}, {.id = 51, .fileId = 1}}}};
    session.audioTracks = {
        {.id = 1, .name = "Voice", .outputTrackId = 3, .clips = {{.id = 10, .fileId = 1}}},
        {.id = 2, .name = "Guitar", .outputTrackId = 4, .clips = {{.id = 11, .fileId = 9}}},
        {.id = 3, .kind = TrackKind::Bus, .name = "Bus", .outputTrackId = 4},
        {.id = 4, .kind = TrackKind::Master, .name = "Master", .hardwareOutputId = 3}};
    session.audioTracks[0].sendList = SendList{
        .slots = {SendSlot{.sendOutputId = 3, .destCompIndex = 0}, std::nullopt, SendSlot{}}};
    session.audioTracks[1].sendList = SendList{.slots = {SendSlot{.sendOutputId = 3}}};
    session.audioTracks[1].midiClips = {{.id = 12}};
    session.metronome.track =
        AudioTrack{.id = 7, .outputTrackId = 4, .clips = {{.id = 13, .fileId = 1}}};
    return session;
}

template <class Track>
std::vector<std::string> NamesOf(const std::vector<Track*>& tracks) {
    std::vector<std::string> names;
    for (const Track* const track : tracks) {
        names.push_back(track->name);
    }
    return names;
}

TEST(Lookup, TracksComeInTheOrderOfTheirIndicesAndEqualOnesInThatOfTheList) {
    Session session;
    session.audioTracks = {{.index = 2, .name = "c"},
                           {.index = 0, .name = "a"},
                           {.index = 2, .name = "d"},
                           {.index = 1, .name = "b"}};
    session.videoTracks = {{.index = 1, .name = "y"}, {.index = 0, .name = "x"}};
    EXPECT_THAT(NamesOf(AudioTracksInOrder(session)), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(NamesOf(VideoTracksInOrder(session)), ElementsAre("x", "y"));
    const Session& constant = session;
    EXPECT_THAT(NamesOf(AudioTracksInOrder(constant)), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(NamesOf(VideoTracksInOrder(constant)), ElementsAre("x", "y"));
}

TEST(Lookup, TheTrackOfTheMetronomeComesLast) {
    Session session;
    session.audioTracks = {{.index = 5, .name = "a"}};
    session.metronome.track = AudioTrack{.name = "click"};
    EXPECT_THAT(NamesOf(AudioTracksInOrder(session)), ElementsAre("a", "click"));
}

TEST(Lookup, ATrackIsFoundOnItsSide) {
    Session session = Band();
    EXPECT_EQ(FindAudioTrack(session, 1), &session.audioTracks[0]);
    EXPECT_EQ(FindVideoTrack(session, 1), &session.videoTracks[0]);
    EXPECT_EQ(FindAudioTrack(session, 5), nullptr);
    EXPECT_EQ(FindVideoTrack(session, 2), nullptr);
    const Session& constant = session;
    EXPECT_EQ(FindAudioTrack(constant, 4), &session.audioTracks[3]);
    EXPECT_EQ(FindVideoTrack(constant, 1), &session.videoTracks[0]);
}

TEST(Lookup, TheTrackOfTheMetronomeIsNotFoundByItsId) {
    const Session session = Band();
    EXPECT_EQ(FindAudioTrack(session, 7), nullptr);
    EXPECT_EQ(SessionIndex(session).FindAudioTrack(7), nullptr);
}

TEST(Lookup, WhatIsFoundCanBeChanged) {
    Session session = Band();
    FindAudioTrack(session, 2)->name = "Lute";
    FindAudioClip(session, 13).clip->name = "click";
    FeedsInto(session, session.audioTracks[3]).at(0).source->outputTrackId = 3;
    EXPECT_EQ(session.audioTracks[1].name, "Lute");
    EXPECT_EQ(session.metronome.track->clips[0].name, "click");
    EXPECT_EQ(session.audioTracks[1].outputTrackId, 3);
}

TEST(Lookup, TheFirstOfAnIdCounts) {
    Session session;
    session.audioTracks = {{.id = 1, .clips = {{.id = 8}}}, {.id = 1, .clips = {{.id = 8}}}};
    session.files = {{.id = 1}, {.id = 1}};
    const SessionIndex index(session);
    EXPECT_EQ(FindAudioTrack(session, 1), &session.audioTracks[0]);
    EXPECT_EQ(index.FindAudioTrack(1), &session.audioTracks[0]);
    EXPECT_EQ(FindAudioClip(session, 8).clip, &session.audioTracks[0].clips[0]);
    EXPECT_EQ(index.FindAudioClip(8).clip, &session.audioTracks[0].clips[0]);
    EXPECT_EQ(FindFile(session, 1), &session.files[0]);
    EXPECT_EQ(index.FindFile(1), &session.files[0]);
}

TEST(Lookup, TheIdOfNothingFindsNothing) {
    Session session;
    session.audioTracks = {{.id = kNoId, .clips = {{.id = kNoId, .fileId = kNoId}}}};
    session.files = {{.id = kNoId}};
    const SessionIndex index(session);
    EXPECT_EQ(FindAudioTrack(session, kNoId), nullptr);
    EXPECT_EQ(index.FindAudioTrack(kNoId), nullptr);
    EXPECT_FALSE(FindAudioClip(session, kNoId));
    EXPECT_FALSE(index.FindAudioClip(kNoId));
    EXPECT_EQ(FindFile(session, kNoId), nullptr);
    EXPECT_EQ(index.FindFile(kNoId), nullptr);
    EXPECT_EQ(ClipsOfFile(session, kNoId), FileClips<Session>());
    EXPECT_FALSE(FindAudioClip(session, static_cast<std::uint32_t>(kNone)));
}

TEST(Lookup, AClipIsFoundWithItsTrack) {
    Session session = Band();
    const Session& constant = session;
    std::vector<AudioTrack>& tracks = session.audioTracks;
    EXPECT_EQ(FindAudioClip(session, 11),
              (TrackAudioClip<Session>{&tracks[1], &tracks[1].clips[0]}));
    EXPECT_EQ(FindAudioClip(constant, 10).track, &tracks[0]);
    EXPECT_EQ(FindAudioClip(constant, 13).track, &*session.metronome.track);
    EXPECT_EQ(FindMidiClip(session, 12).clip, &tracks[1].midiClips[0]);
    EXPECT_EQ(FindMidiClip(constant, 12).track, &tracks[1]);
    EXPECT_EQ(FindVideoClip(session, 51).clip, &session.videoTracks[0].clips[1]);
    EXPECT_EQ(FindVideoClip(constant, 50).track, &session.videoTracks[0]);
    EXPECT_FALSE(FindAudioClip(session, 12)) << "a MIDI clip";
    EXPECT_FALSE(FindMidiClip(session, 10));
    EXPECT_FALSE(FindVideoClip(session, 10));
}

TEST(Lookup, AllClipsAreVisitedVideoFirst) {
    const Session session = Band();
    std::vector<std::uint32_t> ids;
    ForEachClip(session, [&ids](const auto& track, const auto& clip) {
        ids.push_back(track.id);
        ids.push_back(clip.id);
    });
    EXPECT_THAT(ids, ElementsAre(1, 50, 1, 51, 1, 10, 2, 11, 2, 12, 7, 13));
}

TEST(Lookup, AFileIsFoundForAClip) {
    Session session = Band();
    EXPECT_EQ(FindFile(session, session.audioTracks[0].clips[0].fileId), &session.files[0]);
    const Session& constant = session;
    EXPECT_EQ(FindFile(constant, 2), &session.files[1]);
    EXPECT_EQ(FindFile(session, 9), nullptr);
}

TEST(Lookup, TheClipsOfAFileAreThoseOfBothSides) {
    Session session = Band();
    const FileClips<Session> clips = ClipsOfFile(session, 1);
    ASSERT_EQ(clips.audio.size(), 2u);
    EXPECT_EQ(clips.audio[0].clip, &session.audioTracks[0].clips[0]);
    EXPECT_EQ(clips.audio[1].track, &*session.metronome.track);
    ASSERT_EQ(clips.video.size(), 1u);
    EXPECT_EQ(clips.video[0].clip, &session.videoTracks[0].clips[1]);
    const Session& constant = session;
    EXPECT_EQ(ClipsOfFile(constant, 9).audio.at(0).clip, &session.audioTracks[1].clips[0])
        << "of a file that is not listed";
    EXPECT_EQ(ClipsOfFile(constant, 3), FileClips<const Session>());
}

TEST(Lookup, PortsAreFoundOnTheirSideOfTheDevice) {
    Session session = Band();
    const Session& constant = session;
    EXPECT_EQ(FindInputPort(session, 0), &session.audioDevice.inputPorts[0]);
    EXPECT_EQ(FindInputPort(constant, 3), nullptr);
    EXPECT_EQ(FindOutputPort(session, 3), &session.audioDevice.outputPorts[0]);
    EXPECT_EQ(FindOutputPort(constant, 0), nullptr);
}

TEST(Lookup, ATrackFeedsItsOutputThenTheTargetsOfItsSends) {
    Session session = Band();
    AudioTrack& voice = session.audioTracks[0];
    AudioTrack& bus = session.audioTracks[2];
    const auto feeds = FeedsOf(session, voice);
    ASSERT_EQ(feeds.size(), 3u);
    EXPECT_EQ(
        feeds[0],
        (Feed<Session>{
            .source = &voice, .targetKind = FeedTarget::Track, .targetId = 3, .target = &bus}));
    EXPECT_EQ(feeds[1], (Feed<Session>{.source = &voice,
                                       .send = &*voice.sendList->slots[0],
                                       .targetKind = FeedTarget::Track,
                                       .targetId = 3,
                                       .target = &bus,
                                       .component = 0}));
    EXPECT_EQ(feeds[2], (Feed<Session>{.source = &voice, .send = &*voice.sendList->slots[2]}))
        << "nowhere";
}

TEST(Lookup, AnOutputTrackAboveZeroCountsOtherwiseThePort) {
    Session session;
    session.audioTracks = {{.id = 0}};
    AudioTrack& track = session.audioTracks[0];
    const auto output = [&] { return FeedsOf(session, track).at(0); };
    track.hardwareOutputId = 3;
    EXPECT_EQ(output().targetKind, FeedTarget::Port);
    EXPECT_EQ(output().targetId, 3);
    track.outputTrackId = 0;
    EXPECT_EQ(output().targetKind, FeedTarget::Port);
    track.outputTrackId = 9;
    EXPECT_EQ(output().targetKind, FeedTarget::Track);
    EXPECT_EQ(output().targetId, 9);
    EXPECT_EQ(output().target, nullptr) << "a track that is not there";
    track.outputTrackId = kNone;
    track.hardwareOutputId = kNone;
    EXPECT_EQ(output(), (Feed<Session>{.source = &track}));
}

TEST(Lookup, ASendMayLeadToTrackZero) {
    Session session;
    session.audioTracks = {{.id = 0, .sendList = SendList{.slots = {SendSlot{.sendOutputId = 0}}}}};
    EXPECT_EQ(FeedsOf(session, session.audioTracks[0]).at(1).target, &session.audioTracks[0]);
}

TEST(Lookup, TheFeedsIntoATrackAreTheInverse) {
    const Session session = Band();
    const std::vector<AudioTrack>& tracks = session.audioTracks;
    const auto into = [&session](const AudioTrack& track) {
        std::vector<std::pair<std::string, bool>> feeds;
        for (const auto& feed : FeedsInto(session, track)) {
            EXPECT_EQ(feed.target, &track);
            feeds.emplace_back(feed.source->name, feed.send != nullptr);
        }
        return feeds;
    };
    EXPECT_THAT(into(tracks[0]), IsEmpty());
    EXPECT_THAT(into(tracks[2]), ElementsAre(std::pair("Voice", false), std::pair("Voice", true),
                                             std::pair("Guitar", true)));
    EXPECT_THAT(into(tracks[3]), ElementsAre(std::pair("Guitar", false), std::pair("Bus", false),
                                             std::pair("", false)))
        << "the metronome last";
    EXPECT_THAT(into(*session.metronome.track), IsEmpty());
}

TEST(Lookup, OfTwoTracksWithAnIdTheFirstIsFed) {
    Session session;
    session.audioTracks = {{.id = 1, .outputTrackId = 2}, {.id = 2}, {.id = 2}};
    EXPECT_EQ(FeedsInto(session, session.audioTracks[1]).size(), 1u);
    EXPECT_EQ(FeedsInto(session, session.audioTracks[2]).size(), 0u);
}

TEST(Lookup, AnIndexFindsTheSame) {
    const Session session = Band();
    const SessionIndex index(session);
    for (std::uint32_t id = 0; id < 60; ++id) {
        EXPECT_EQ(index.FindAudioTrack(id), FindAudioTrack(session, id));
        EXPECT_EQ(index.FindVideoTrack(id), FindVideoTrack(session, id));
        EXPECT_EQ(index.FindAudioClip(id), FindAudioClip(session, id));
        EXPECT_EQ(index.FindMidiClip(id), FindMidiClip(session, id));
        EXPECT_EQ(index.FindVideoClip(id), FindVideoClip(session, id));
        EXPECT_EQ(index.FindFile(id), FindFile(session, id));
    }
    for (const AudioTrack& track : session.audioTracks) {
        EXPECT_EQ(index.FeedsOf(track), FeedsOf(session, track));
    }
}

}  // namespace
}  // namespace orvo
