#include "toolkit/ClipSummary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

orvo::Session OneTrack() {
    orvo::Session session;
    session.audioTracks.resize(1);
    session.audioTracks[0].id = 7;
    session.audioTracks[0].name = "Voice";
    return session;
}

orvo::AudioClip Clip(kelcore::uint32 id, kelcore::int64 start) {
    orvo::AudioClip clip;
    clip.id = id;
    clip.fileId = 1;
    clip.startPoint = start;
    return clip;
}

std::vector<MediaSummary> Media(bool found) {
    MediaSummary file;
    file.id = 1;
    file.found = found;
    return {file};
}

TEST(ClipSummary, ClipsComeInTheOrderOfTheTimelineTrackByTrack) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 900), Clip(2, 100)};
    session.audioTracks[0].midiClips.resize(1);
    session.audioTracks[0].midiClips[0].startPoint = 500;
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(1);
    session.videoTracks[0].clips[0].startPoint = 5000;
    std::vector<kelcore::int64> starts;
    for (const ClipSummary& clip : SummariseClips(session, Media(true))) {
        starts.push_back(clip.start);
    }
    EXPECT_THAT(starts, ElementsAre(5000, 100, 500, 900));
}

TEST(ClipSummary, SaysWhatIsMissingOfflineAndDone) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    EXPECT_THAT(SummariseClips(session, Media(true)).at(0).marks, IsEmpty());
    clip.offline = true;
    clip.looped = true;
    clip.fadeIn.emplace().endPoint = 480;
    clip.crossFadeHeadClipId = 2;
    clip.takes = {0, 1};
    clip.mute.emplace().parameters[0].value = 1.0F;
    clip.channelSources = {{0, 1}};
    EXPECT_THAT(SummariseClips(session, Media(false)).at(0).marks,
                ElementsAre("missing", "offline", "muted", "looped", "fades", "crossfades",
                            "takes 2", "channel map"));
}

TEST(ClipSummary, AClipOfAFileThatTheSessionDoesNotListHasNoMedia) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(1);
    for (const ClipSummary& clip : SummariseClips(session, {})) {
        EXPECT_THAT(clip.marks, ElementsAre("no media"));
    }
}

TEST(ClipSummary, AClipIsStretchedOrHasEffectsOnlyIfItHasSome) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    clip.stretch.emplace().stretchMode = orvo::StretchMode::Off;
    clip.effectsRack.emplace();
    EXPECT_THAT(SummariseClips(session, Media(true)).at(0).marks, IsEmpty());
    clip.stretch->stretchMode = orvo::StretchMode::Realtime;
    clip.effectsRack->slots.emplace_back();
    EXPECT_THAT(SummariseClips(session, Media(true)).at(0).marks,
                ElementsAre("stretched", "effects"));
}

TEST(ClipSummary, AFadeWithoutLengthAndAMapThatChangesNothingAreNotMarked) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    clip.fadeIn.emplace() = {.startPoint = 480, .endPoint = 480};
    clip.fadeOut.emplace();
    clip.channelSources = {{0, 0}, {1, 1}};
    EXPECT_THAT(SummariseClips(session, Media(true)).at(0).marks, IsEmpty());
    clip.fadeOut->startPoint = 1;
    clip.channelSources[4294967295] = -1;
    EXPECT_THAT(SummariseClips(session, Media(true)).at(0).marks,
                ElementsAre("fades", "channel map"));
}

TEST(ClipSummary, SaysTheFirstSampleInTheFileExceptForMidi) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    session.audioTracks[0].clips[0].sourceInPoint = 77;
    session.audioTracks[0].midiClips.resize(1);
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(1);
    session.videoTracks[0].clips[0].sourceInPoint = 25;
    const std::vector<ClipSummary> clips = SummariseClips(session, Media(true));
    EXPECT_EQ(clips.at(0).sourceInPoint, 25);
    EXPECT_EQ(clips.at(1).sourceInPoint, 77);
    EXPECT_EQ(clips.at(2).sourceInPoint, std::nullopt);
}

TEST(ClipSummary, AClipNamesItsGroupsAndAGroupItsMissingMembers) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 0)};
    session.clipGroups = {{5, "Call", 0, {{7, 1}, {7, 2}}}, {6, "", 0, {{7, 1}}}};
    EXPECT_EQ(SummariseClips(session, Media(true)).at(0).group, "Call, group 6");
    EXPECT_THAT(SummariseGroups(session),
                ElementsAre(GroupSummary{5, "Call", 2, 1}, GroupSummary{6, "", 1, 0}));
}

TEST(ClipSummary, ClipsOfTheMetronomeComeLast) {
    orvo::Session session = OneTrack();
    session.audioTracks[0].clips = {Clip(1, 900)};
    session.metronome.track = orvo::AudioTrack{.id = 9, .clips = {Clip(2, 0)}};
    session.clipGroups = {{.id = 1, .name = "Both", .items = {{7, 1}, {9, 2}}}};
    const auto clips = SummariseClips(session, Media(true));
    ASSERT_EQ(clips.size(), 2u);
    EXPECT_EQ(clips[1].id, 2u);
    EXPECT_EQ(clips[1].group, "Both");
    EXPECT_EQ(SummariseGroups(session).at(0).dangling, 0u);
}

}  // namespace
}  // namespace toolkit
