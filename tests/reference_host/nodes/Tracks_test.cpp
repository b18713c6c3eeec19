#include <gtest/gtest.h>

#include "reference_host/SessionNode.h"
#include "reference_host/nodes/Session.h"
#include "tests/reference_host/support/NoLiveNodes.h"

namespace refhost {
namespace {

class TracksTest : public test::NoLiveNodes {
protected:
    static tses::IEditAudioTrackPrivate& Track(SessionNode& session, kelcore::uint32 id = 1) {
        return dynamic_cast<tses::IEditAudioTrackPrivate&>(*session.Edit().GetAudioTrack(id));
    }
};

TEST_F(TracksTest, ATrackIsMadeOnceForEachId) {
    const auto session = SessionNode::Make();
    session->Edit().GetAudioTrack(0);
    session->Edit().GetAudioTrack(7);
    session->Edit().GetAudioTrack(0);
    session->Edit().GetVideoTrack(7);
    ASSERT_EQ(session->Value().audioTracks.size(), 2U);
    EXPECT_EQ(session->Value().audioTracks[1].id, 7U);
    EXPECT_EQ(session->Value().videoTracks.size(), 1U);
}

TEST_F(TracksTest, NoTrackIsMadeForTheIdThatNamesNothing) {
    const auto session = SessionNode::Make();
    EXPECT_EQ(session->Edit().GetAudioTrack(4294967295), nullptr);
    EXPECT_EQ(session->Edit().GetVideoTrack(4294967295), nullptr);
    EXPECT_EQ(session->Value(), orvo::Session{});
}

TEST_F(TracksTest, WhatATrackMayLackExistsOnceItWasAskedFor) {
    const auto session = SessionNode::Make();
    tses::IEditAudioTrackPrivate& track = Track(*session);
    EXPECT_EQ(session->Value().audioTracks[0], orvo::AudioTrack{.id = 1});
    track.GetEffectsRack();
    track.GetSendList();
    track.GetInstrument();
    track.GetEQComponent(u"trackEQ");
    const orvo::AudioTrack& made = session->Value().audioTracks[0];
    EXPECT_EQ(made.effectsRack, orvo::EffectsRack{});
    EXPECT_EQ(made.sendList, orvo::SendList{});
    EXPECT_EQ(made.instrument, orvo::InstrumentTrack{});
    EXPECT_EQ(made.eq, orvo::Component{});
    EXPECT_EQ(made.fader, std::nullopt);
}

TEST_F(TracksTest, WhatATrackLacksIsNull) {
    const auto session = SessionNode::Make({.audioTracks = {{.id = 1}}});
    auto& track = dynamic_cast<tses::IQueryAudioTrackPrivate&>(*session->Query().GetAudioTrack(0));
    EXPECT_EQ(track.GetEffectsRack(), nullptr);
    EXPECT_EQ(track.GetSendList(), nullptr);
    EXPECT_EQ(track.GetInstrument(), nullptr);
    EXPECT_EQ(track.GetFaderComponent(), nullptr);
    EXPECT_EQ(track.GetClip(0), nullptr);
    EXPECT_EQ(session->Query().GetAudioTrack(1), nullptr);
}

TEST_F(TracksTest, WhatAClipMayLackExistsOnceItWasAskedFor) {
    const auto session = SessionNode::Make();
    tses::IEditAudioClip* const clip = Track(*session).CreateAudioClip(4);
    const orvo::AudioClip& made = session->Value().audioTracks[0].clips[0];
    EXPECT_EQ(made, orvo::AudioClip{.id = 4});
    clip->GetFadeIn();
    clip->GetClipStretch();
    clip->GetProperties();
    EXPECT_EQ(made.fadeIn, orvo::Fade{});
    EXPECT_EQ(made.fadeOut, std::nullopt);
    EXPECT_EQ(made.stretch, orvo::ClipStretch{});
    EXPECT_EQ(made.properties, "");
}

TEST_F(TracksTest, AClipIsMadeForAnyIdEvenTwice) {
    const auto session = SessionNode::Make();
    Track(*session).CreateAudioClip(4294967295);
    Track(*session).CreateAudioClip(4294967295);
    EXPECT_EQ(session->Value().audioTracks[0].clips.size(), 2U);
}

TEST_F(TracksTest, ATrackOfClipsOnlyDoesNotCast) {
    orvo::AudioTrack shown{.id = 1};
    shown.clipsOnly = true;
    shown.clips.push_back({.id = 8});
    const auto session = SessionNode::Make({.audioTracks = {shown}});
    tses::IQueryAudioTrack* const track = session->Query().GetAudioTrack(0);
    ASSERT_NE(track, nullptr);
    EXPECT_EQ(dynamic_cast<tses::IQueryAudioTrackPrivate*>(track), nullptr);
    ASSERT_EQ(track->GetClipCount(), 1U);
    EXPECT_EQ(track->GetClip(0)->GetID(), 8U);
}

TEST_F(TracksTest, AMidiClipListStaysWithoutAReferenceAfterItsClipsAreGone) {
    const auto session = SessionNode::Make();
    const auto track = Ref<tses::IEditAudioTrack>::Retain(session->Edit().GetAudioTrack(1));
    tses::IEditMIDIClipList* const list = track->GetMIDIClipList();
    for (kelcore::uint32 id = 0; id < 3; ++id) {
        Ref<tses::IEditMIDIClip>::Retain(list->CreateMIDIClip(id))->SetName(u"clip");
    }
    EXPECT_EQ(track->GetMIDIClipList(), list);
    EXPECT_EQ(session->Value().audioTracks[0].midiClips.size(), 3U);
}

TEST_F(TracksTest, AChannelThatWasLeftOutIsFedByItsOwnNumber) {
    orvo::AudioTrack track{.id = 1};
    track.clips.push_back({.channelSources = {{2, 0}}});
    const auto session = SessionNode::Make({.audioTracks = {track}});
    tses::IQueryAudioClip* const clip = session->Query().GetAudioTrack(0)->GetClip(0);
    ASSERT_EQ(clip->GetChannelCount(), 3U);
    EXPECT_EQ(clip->GetChannelSource(1), 1);
    EXPECT_EQ(clip->GetChannelSource(2), 0);
}

TEST_F(TracksTest, TheMetronomesTrackHasNoIdOfItsOwn) {
    const auto session = SessionNode::Make();
    session->Edit().GetMetronomeInfo()->GetTrack();
    EXPECT_EQ(session->Value().metronome.track, orvo::AudioTrack{.id = 4294967295});
}

TEST_F(TracksTest, TheMetronomesTrackIsMadeOnce) {
    const auto session = SessionNode::Make();
    session->Edit().GetMetronomeInfo()->GetTrack();
    session->Value().metronome.track->name = "Click";
    session->Edit().GetMetronomeInfo()->GetTrack();
    EXPECT_EQ(session->Value().metronome.track->name, "Click");
}

TEST_F(TracksTest, AMissingSlotHasTheIndexThatNamesNothing) {
    orvo::AudioTrack track{.id = 1};
    track.effectsRack = {.slots = {std::nullopt, orvo::EffectsSlot{.slotIndex = 4}}};
    const auto session = SessionNode::Make({.audioTracks = {track}});
    auto& query = dynamic_cast<tses::IQueryAudioTrackPrivate&>(*session->Query().GetAudioTrack(0));
    tses::IQueryEffectsRack* const rack = query.GetEffectsRack();
    EXPECT_EQ(rack->GetSlotIndex(0), 4294967295);
    EXPECT_EQ(rack->GetSlotIndex(1), 4U);
}

TEST_F(TracksTest, BeyondTheLastMidiClipThereIsNone) {
    orvo::AudioTrack track{.id = 1};
    track.midiClips.push_back({.id = 5});
    const auto session = SessionNode::Make({.audioTracks = {track}});
    auto& query = dynamic_cast<tses::IQueryAudioTrackPrivate&>(*session->Query().GetAudioTrack(0));
    EXPECT_EQ(query.GetMIDIClipList()->GetClip(0)->GetID(), 5U);
    EXPECT_EQ(query.GetMIDIClipList()->GetClip(1), nullptr);
}

TEST_F(TracksTest, APropertyThatIsSetAgainIsReplaced) {
    const auto session = SessionNode::Make();
    tses::IEditProperties* const properties = session->Edit().GetProperties();
    properties->SetProperty(u"a", u"1");
    properties->SetProperty(u"b", u"2");
    properties->SetProperty(u"a", u"3");
    EXPECT_EQ(session->Value().properties, (std::vector<orvo::Property>{{"a", "3"}, {"b", "2"}}));
    EXPECT_EQ(session->Query().GetProperties()->GetValue(u"none"), nullptr);
}

TEST_F(TracksTest, AReferenceToTheInnermostNodeKeepsEverythingAboveItAlive) {
    auto session = SessionNode::Make();
    auto component = Ref<tses::IEditComponent>::Retain(
        Track(*session).CreateAudioClip(1)->GetEffectsRack()->AddSlot()->GetComponent());
    session.Reset();
    component->SetName(u"still there");
    EXPECT_GE(LiveNodes(), 6U);
    component.Reset();
    EXPECT_EQ(LiveNodes(), 0U);
}

}  // namespace
}  // namespace refhost
