#include "toolkit/TrackSummary.h"

#include <gtest/gtest.h>

namespace toolkit {
namespace {

namespace model = refhost::model;

model::Component WithLane(std::size_t keyframes) {
    model::Component component;
    component.parameters[0].value = 1.0F;
    component.parameters[0].automation.emplace();
    component.parameters[0].automation->keyframes.resize(keyframes);
    return component;
}

model::AudioTrack Track(kelcore::uint32 id, std::u16string name) {
    model::AudioTrack track;
    track.id = id;
    track.name = std::move(name);
    return track;
}

TEST(TrackSummary, TheOutputIsTheTrackOrPortByName) {
    model::Session session;
    session.audioDevice.outputPorts = {{3, u"Main"}};
    session.audioTracks = {Track(1, u"Voice"), Track(2, u"Bus"), Track(3, u"")};
    session.audioTracks[0].outputTrackId = 2;
    session.audioTracks[1].hardwareOutputId = 3;
    session.audioTracks[2].outputTrackId = 9;
    const auto tracks = SummariseTracks(session);
    EXPECT_EQ(tracks.at(0).output, u"Bus");
    EXPECT_EQ(tracks.at(1).output, u"Main");
    EXPECT_EQ(tracks.at(2).output, u"missing track 9");
}

TEST(TrackSummary, TrackNumberZeroIsNoTrackSoThatTheHardwareOutputCounts) {
    model::Session session;
    session.audioTracks = {Track(0, u"Voice")};
    session.audioTracks[0].outputTrackId = 0;
    session.audioTracks[0].hardwareOutputId = 4;
    EXPECT_EQ(SummariseTracks(session).at(0).output, u"port 4");
    session.audioTracks[0].hardwareOutputId = -1;
    EXPECT_EQ(SummariseTracks(session).at(0).output, u"");
}

TEST(TrackSummary, AutomationOfEverythingInATrackIsCountedAndEmptyLanesAreNot) {
    model::Session session;
    session.audioTracks = {Track(1, u"Voice")};
    model::AudioTrack& track = session.audioTracks[0];
    track.fader = WithLane(2);
    track.eq = WithLane(0);
    track.effectsRack.emplace();
    track.effectsRack->mix = WithLane(1);
    track.effectsRack->slots = {std::nullopt, model::EffectsSlot{}};
    track.effectsRack->slots[1]->component = WithLane(3);
    track.sendList.emplace();
    track.sendList->slots = {model::SendSlot{}, std::nullopt};
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
    model::Session session;
    session.audioTracks = {Track(1, u"Voice")};
    session.audioTracks[0].fader = WithLane(2);
    session.audioTracks[0].fader->parameters[0].value.reset();
    EXPECT_EQ(SummariseTracks(session).at(0).automation, AutomationCount());
    session.audioTracks[0].fader->parameters[0].value = 1.0F;
    EXPECT_NE(SummariseTracks(session).at(0).automation, AutomationCount());
}

TEST(TrackSummary, ASlotWithoutAnEffectHasNoName) {
    model::Session session;
    session.audioTracks = {Track(1, u"Voice")};
    session.audioTracks[0].effectsRack.emplace().slots = {model::EffectsSlot{.slotIndex = 3}};
    const auto effects = SummariseTracks(session).at(0).effects;
    ASSERT_EQ(effects.size(), 1u);
    EXPECT_EQ(effects[0].slotIndex, 3u);
    EXPECT_EQ(effects[0].name, u"");
}

TEST(TrackSummary, AMuteWithoutAValueIsOff) {
    model::Session session;
    session.audioTracks = {Track(1, u"a"), Track(2, u"b")};
    session.audioTracks[0].mute.emplace();
    session.audioTracks[1].mute.emplace().parameters[0].name = u"mute";
    EXPECT_FALSE(SummariseTracks(session).at(0).muted);
    EXPECT_FALSE(SummariseTracks(session).at(1).muted);
}

TEST(TrackSummary, AMuteAtOneHalfIsOn) {
    model::Session session;
    session.audioTracks = {Track(1, u"a"), Track(2, u"b")};
    session.audioTracks[0].mute.emplace().parameters[0].value = 0.5F;
    session.audioTracks[1].mute.emplace().parameters[0].value = 0.49F;
    EXPECT_TRUE(SummariseTracks(session).at(0).muted);
    EXPECT_FALSE(SummariseTracks(session).at(1).muted);
}

TEST(TrackSummary, AnInstrumentHearsOneMidiInputOrAll) {
    model::Session session;
    session.audioTracks = {Track(1, u"voice"), Track(2, u"bass"), Track(3, u"piano")};
    session.audioTracks[1].instrument = model::InstrumentTrack{u"Pedals", false};
    session.audioTracks[2].instrument = model::InstrumentTrack{u"Keyboard", true};
    const auto tracks = SummariseTracks(session);
    EXPECT_EQ(tracks.at(0).midiInput, u"");
    EXPECT_EQ(tracks.at(1).midiInput, u"Pedals");
    EXPECT_EQ(tracks.at(2).midiInput, u"all MIDI inputs");
}

TEST(TrackSummary, ASendMayFeedOneComponentOfItsDestination) {
    model::Session session;
    session.audioTracks = {Track(1, u"drums")};
    session.audioTracks[0].sendList.emplace().slots.resize(2);
    session.audioTracks[0].sendList->slots[0].emplace();
    session.audioTracks[0].sendList->slots[1].emplace().destCompIndex = 0;
    const auto sends = SummariseTracks(session).at(0).sends;
    EXPECT_EQ(sends.at(0).component, std::nullopt);
    EXPECT_EQ(sends.at(1).component, 0);
}

TEST(TrackSummary, AVideoTrackTellsEachFormatOfItsClipsOnce) {
    model::VideoFormat wide;
    wide.width = 1920;
    model::Session session;
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(4);
    session.videoTracks[0].clips[0].format = wide;
    session.videoTracks[0].clips[2].format = model::VideoFormat();
    session.videoTracks[0].clips[3].format = wide;
    EXPECT_EQ(SummariseTracks(session).at(0).pictures,
              (std::vector<model::VideoFormat>{wide, model::VideoFormat()}));
}

TEST(TrackSummary, VideoComesFirstAndTheMetronomeLastAndAnUnknownKindIsAudio) {
    model::Session session;
    session.videoTracks.resize(1);
    session.audioTracks = {Track(1, u"odd")};
    session.audioTracks[0].kind = 7;
    session.metronome.track = Track(2, u"Click");
    session.metronome.track->kind = 4;
    const auto tracks = SummariseTracks(session);
    ASSERT_EQ(tracks.size(), 3u);
    EXPECT_STREQ(FamilyName(tracks[0].family), "video");
    EXPECT_STREQ(FamilyName(tracks[1].family), "audio");
    EXPECT_STREQ(FamilyName(tracks[2].family), "metronome");
}

}  // namespace
}  // namespace toolkit
