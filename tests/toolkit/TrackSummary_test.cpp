#include "toolkit/TrackSummary.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

orvo::Component WithLane(std::size_t keyframes) {
    orvo::Component component;
    component.parameters[0].value = 1.0F;
    component.parameters[0].automation.emplace();
    component.parameters[0].automation->keyframes.resize(keyframes);
    return component;
}

orvo::AudioTrack Track(kelcore::uint32 id, std::string name) {
    orvo::AudioTrack track;
    track.id = id;
    track.name = std::move(name);
    return track;
}

TEST(TrackSummary, TheOutputIsTheTrackOrPortByName) {
    orvo::Session session;
    session.audioDevice.outputPorts = {{3, "Main"}};
    session.audioTracks = {Track(1, "Voice"), Track(2, "Bus"), Track(3, "")};
    session.audioTracks[0].outputTrackId = 2;
    session.audioTracks[1].hardwareOutputId = 3;
    session.audioTracks[2].outputTrackId = 9;
    const auto tracks = SummariseTracks(session);
    EXPECT_EQ(tracks.at(0).output, "Bus");
    EXPECT_EQ(tracks.at(1).output, "Main");
    EXPECT_EQ(tracks.at(2).output, "missing track 9");
}

TEST(TrackSummary, TrackNumberZeroIsNotATrackSoTheHardwareOutputCounts) {
    orvo::Session session;
    session.audioTracks = {Track(0, "Voice")};
    session.audioTracks[0].outputTrackId = 0;
    session.audioTracks[0].hardwareOutputId = 4;
    EXPECT_EQ(SummariseTracks(session).at(0).output, "port 4");
    session.audioTracks[0].hardwareOutputId = -1;
    EXPECT_EQ(SummariseTracks(session).at(0).output, "");
}

TEST(TrackSummary, AutomationOfEverythingInATrackIsCountedAndEmptyLanesAreNot) {
    orvo::Session session;
    session.audioTracks = {Track(1, "Voice")};
    orvo::AudioTrack& track = session.audioTracks[0];
    track.fader = WithLane(2);
    track.eq = WithLane(0);
    track.effectsRack.emplace();
    track.effectsRack->mix = WithLane(1);
    track.effectsRack->slots = {std::nullopt, orvo::EffectsSlot{}};
    track.effectsRack->slots[1]->component = WithLane(3);
    track.sendList.emplace();
    track.sendList->slots = {orvo::SendSlot{}, std::nullopt};
    track.sendList->slots[0]->sendComponent = WithLane(4);
    track.clips.resize(1);
    track.clips[0].gain = WithLane(5);
    const auto summary = SummariseTracks(session).at(0);
    EXPECT_EQ(summary.automation, (AutomationCount{5, 15}));
    EXPECT_EQ(summary.effects.size(), 1u);
    EXPECT_EQ(summary.sends.size(), 1u);
    EXPECT_EQ(summary.clips, 1u);
}

TEST(TrackSummary, ALaneOfAParameterWithoutAValueIsNotCounted) {
    orvo::Session session;
    session.audioTracks = {Track(1, "Voice")};
    session.audioTracks[0].fader = WithLane(2);
    session.audioTracks[0].fader->parameters[0].value.reset();
    EXPECT_EQ(SummariseTracks(session).at(0).automation, AutomationCount());
    session.audioTracks[0].fader->parameters[0].value = 1.0F;
    EXPECT_NE(SummariseTracks(session).at(0).automation, AutomationCount());
}

TEST(TrackSummary, ASlotWithoutAnEffectHasNoName) {
    orvo::Session session;
    session.audioTracks = {Track(1, "Voice")};
    session.audioTracks[0].effectsRack.emplace().slots = {orvo::EffectsSlot{.slotIndex = 3}};
    const auto effects = SummariseTracks(session).at(0).effects;
    ASSERT_EQ(effects.size(), 1u);
    EXPECT_EQ(effects[0].slotIndex, 3u);
    EXPECT_EQ(effects[0].name, "");
}

TEST(TrackSummary, AMuteWithoutAValueIsOff) {
    orvo::Session session;
    session.audioTracks = {Track(1, "a"), Track(2, "b")};
    session.audioTracks[0].mute.emplace();
    session.audioTracks[1].mute.emplace().parameters[0].name = "mute";
    EXPECT_FALSE(SummariseTracks(session).at(0).muted);
    EXPECT_FALSE(SummariseTracks(session).at(1).muted);
}

TEST(TrackSummary, AMuteAtOneHalfIsOn) {
    orvo::Session session;
    session.audioTracks = {Track(1, "a"), Track(2, "b")};
    session.audioTracks[0].mute.emplace().parameters[0].value = 0.5F;
    session.audioTracks[1].mute.emplace().parameters[0].value = 0.49F;
    EXPECT_TRUE(SummariseTracks(session).at(0).muted);
    EXPECT_FALSE(SummariseTracks(session).at(1).muted);
}

TEST(TrackSummary, AnInstrumentHearsOneMidiInputOrAll) {
    orvo::Session session;
    session.audioTracks = {Track(1, "voice"), Track(2, "bass"), Track(3, "piano")};
    session.audioTracks[1].instrument = orvo::InstrumentTrack{"Pedals", false};
    session.audioTracks[2].instrument = orvo::InstrumentTrack{"Keyboard", true};
    const auto tracks = SummariseTracks(session);
    EXPECT_EQ(tracks.at(0).midiInput, "");
    EXPECT_EQ(tracks.at(1).midiInput, "Pedals");
    EXPECT_EQ(tracks.at(2).midiInput, "all MIDI inputs");
}

TEST(TrackSummary, ASendMayFeedOneComponentOfItsDestination) {
    orvo::Session session;
    session.audioTracks = {Track(1, "drums")};
    session.audioTracks[0].sendList.emplace().slots.resize(2);
    session.audioTracks[0].sendList->slots[0].emplace();
    session.audioTracks[0].sendList->slots[1].emplace().destCompIndex = 0;
    const auto sends = SummariseTracks(session).at(0).sends;
    EXPECT_EQ(sends.at(0).component, std::nullopt);
    EXPECT_EQ(sends.at(1).component, 0);
}

TEST(TrackSummary, AVideoTrackListsEachFormatOfItsClipsOnce) {
    orvo::VideoFormat wide;
    wide.width = 1920;
    orvo::Session session;
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(4);
    session.videoTracks[0].clips[0].format = wide;
    session.videoTracks[0].clips[2].format = orvo::VideoFormat();
    session.videoTracks[0].clips[3].format = wide;
    EXPECT_EQ(SummariseTracks(session).at(0).pictures,
              (std::vector<orvo::VideoFormat>{wide, orvo::VideoFormat()}));
}

TEST(TrackSummary, VideoComesFirstAndTheMetronomeLastAndAnUnknownKindIsAudio) {
    orvo::Session session;
    session.videoTracks.resize(1);
    session.audioTracks = {Track(1, "odd")};
    session.audioTracks[0].kind = orvo::TrackKind{7};
    session.metronome.track = Track(2, "Click");
    session.metronome.track->kind = orvo::TrackKind::Metronome;
    const auto tracks = SummariseTracks(session);
    ASSERT_EQ(tracks.size(), 3u);
    EXPECT_EQ(KindName(tracks[0].kind), "video");
    EXPECT_EQ(KindName(tracks[1].kind), "audio");
    EXPECT_EQ(KindName(tracks[2].kind), "metronome");
}

TEST(TrackSummary, TracksOfASideComeInTheOrderOfTheirIndices) {
    orvo::Session session;
    session.audioTracks = {Track(1, "second"), Track(2, "first")};
    session.audioTracks[0].index = 1;
    EXPECT_EQ(SummariseTracks(session).at(0).name, "first");
}

}  // namespace
}  // namespace toolkit
