#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <orvo/Diff.h>
#include "tests/toolkit/diff/SmallSession.h"

namespace {

using orvo::Session;
using test::Bass;
using test::Drums;
using test::kSecond;
using test::SentencesOf;
using testing::ElementsAre;

/// A change of a session, and what is said of it.
struct ScriptedEdit {
    const char* name;
    std::function<void(Session&)> apply;
    std::vector<std::string> sentences;
};

const std::vector<ScriptedEdit> kEdits = {
    {"MoveClip",
     [](Session& s) { Bass(s).clips[0].startPoint += kSecond; },
     {R"(clip "Line" on track "Bass" moved by +0:00:01.000, from 0:00:00.000 to 0:00:01.000)"}},
    {"MoveClipBack",
     [](Session& s) { Bass(s).clips[1].startPoint -= kSecond / 2; },
     {R"(clip "Fill" on track "Bass" moved by -0:00:00.500, from 0:00:10.000 to 0:00:09.500)"}},
    {"Ripple",
     [](Session& s) {
         for (std::size_t i = 2; i < 6; ++i) {
             Drums(s).clips[i].startPoint += kSecond;
         }
         Bass(s).clips[1].startPoint += kSecond;
     },
     {"5 clips on 2 tracks moved by +0:00:01.000, the first from 0:00:06.000"}},
    {"MoveClipToTrack",
     [](Session& s) {
         Bass(s).clips.push_back(Drums(s).clips[0]);
         Drums(s).clips.erase(Drums(s).clips.begin());
     },
     {R"(clip "Kick" on track "Drums" moved to track "Bass")"}},
    {"MoveClipToTrackAndTime",
     [](Session& s) {
         Bass(s).clips.push_back(Drums(s).clips[0]);
         Bass(s).clips.back().startPoint = 40 * kSecond;
         Drums(s).clips.erase(Drums(s).clips.begin());
     },
     {R"(clip "Kick" on track "Drums" moved by +0:00:40.000 to track "Bass", from 0:00:00.000 to 0:00:40.000)"}},
    {"TrimEnd",
     [](Session& s) { Bass(s).clips[0].duration -= kSecond / 2; },
     {R"(clip "Line" on track "Bass" trimmed by 0:00:00.500 at its end, now 0:00:01.500 long)"}},
    {"ExtendEnd",
     [](Session& s) { Bass(s).clips[0].duration += kSecond; },
     {R"(clip "Line" on track "Bass" extended by 0:00:01.000 at its end, now 0:00:03.000 long)"}},
    {"TrimStart",
     [](Session& s) {
         Bass(s).clips[1].startPoint += kSecond;
         Bass(s).clips[1].sourceInPoint += kSecond;
         Bass(s).clips[1].duration -= kSecond;
     },
     {R"(clip "Fill" on track "Bass" trimmed by 0:00:01.000 at its start, now 0:00:01.000 long)"}},
    {"Slip",
     [](Session& s) { Bass(s).clips[0].sourceInPoint += kSecond; },
     {R"(clip "Line" on track "Bass": media slipped by +0:00:01.000)"}},
    {"Split",
     [](Session& s) {
         auto& first = Bass(s).clips[1];
         auto second = first;
         first.duration = kSecond;
         second.id = 999;
         second.startPoint += kSecond;
         second.sourceInPoint += kSecond;
         second.duration = kSecond;
         Bass(s).clips.push_back(second);
     },
     {R"(clip "Fill" on track "Bass" split at 0:00:11.000)"}},
    {"RenameClip",
     [](Session& s) { Bass(s).clips[0].name = "Riff"; },
     {R"(clip "Line" on track "Bass" renamed to "Riff")"}},
    {"Gain",
     [](Session& s) { Bass(s).clips[0].gain->parameters[0].value = 0.5F; },
     {R"(clip "Line" on track "Bass": clip gain from 1.0 to 0.5)"}},
    {"RemoveClip",
     [](Session& s) { Bass(s).clips.erase(Bass(s).clips.begin()); },
     {R"(clip "Line" on track "Bass" removed at 0:00:00.000, 0:00:02.000 long)"}},
    {"CopyClip",
     [](Session& s) {
         Bass(s).clips.push_back(Bass(s).clips[0]);
         Bass(s).clips.back().id = 999;
         Bass(s).clips.back().startPoint = 30 * kSecond;
     },
     {R"(clip "Line" on track "Bass" added at 0:00:30.000, 0:00:02.000 long)"}},
    {"RemoveClips",
     [](Session& s) { Drums(s).clips.resize(2); },
     {R"(4 clips "Beat" on track "Drums" removed)"}},
    {"ReplaceMedia",
     [](Session& s) { Bass(s).clips[0].fileId = 21; },
     {R"(clip "Line" on track "Bass": media from "bass.wav" to "drums.wav")"}},
    {"LongerFade",
     [](Session& s) { Bass(s).clips[0].fadeIn->endPoint = kSecond / 5; },
     {R"(clip "Line" on track "Bass": fade in longer by 0:00:00.100, from 0:00:00.100 to 0:00:00.200)"}},
    {"NoFade",
     [](Session& s) { Bass(s).clips[0].fadeIn.reset(); },
     {R"(clip "Line" on track "Bass": fade in removed)"}},
    {"FadeOut",
     [](Session& s) { Bass(s).clips[0].fadeOut = orvo::Fade{.endPoint = kSecond}; },
     {R"(clip "Line" on track "Bass": fade out added, 0:00:01.000 long)"}},
    {"FadeCurve",
     [](Session& s) { Bass(s).clips[0].fadeIn->type = orvo::FadeType::Cosine; },
     {R"(clip "Line" on track "Bass": fade in type from log to cosine)"}},
    {"LockClip",
     [](Session& s) { Bass(s).clips[0].lockedInTime = true; },
     {R"(clip "Line" on track "Bass": locked in time from off to on)"}},
    {"SelectClips",
     [](Session& s) {
         for (auto& clip : Drums(s).clips) {
             clip.selected = true;
         }
     },
     {R"(6 clips on track "Drums": select from off to on)"}},
    {"Crossfade",
     [](Session& s) { Drums(s).clips[0].crossFadeTailClipId = 101; },
     {R"(clip "Kick" on track "Drums": crossfades at its end with clip "Snare" instead of nothing)"}},
    {"Stretch",
     [](Session& s) { Bass(s).clips[0].stretch = orvo::ClipStretch{}; },
     {R"(clip "Line" on track "Bass": clip stretch added)"}},
    {"RenameTrack", [](Session& s) { Bass(s).name = "Low"; }, {R"(track "Bass" renamed to "Low")"}},
    {"MuteTrack",
     [](Session& s) { Bass(s).solo = true; },
     {R"(track "Bass": solo from off to on)"}},
    {"AddTrack",
     [](Session& s) {
         orvo::AudioTrack track;
         track.id = 77;
         track.name = "Voice";
         track.index = 3;
         track.clips = {Bass(s).clips[0]};
         track.clips[0].id = 500;
         track.clips[0].startPoint = 60 * kSecond;
         s.audioTracks.push_back(track);
     },
     {R"(track "Voice" added with 1 clip)"}},
    {"RemoveTrack",
     [](Session& s) {
         s.audioTracks.erase(s.audioTracks.begin());
         s.clipGroups.clear();
     },
     {R"(track "Drums" removed with 6 clips)", R"(clip group "Intro" removed)"}},
    {"ReorderTracks",
     [](Session& s) {
         std::swap(Drums(s), Bass(s));
         std::swap(Drums(s).index, Bass(s).index);
     },
     {R"(track "Drums" moved behind track "Bass")"}},
    {"Route",
     [](Session& s) { Bass(s).outputTrackId = 13; },
     {R"(track "Bass": output from output "Left" to bus "Room")"}},
    {"RouteToPort",
     [](Session& s) { Bass(s).hardwareOutputId = 2; },
     {R"(track "Bass": output from output "Left" to output "Right")"}},
    {"Input",
     [](Session& s) { Drums(s).inputId = 2; },
     {R"(track "Drums": input from input "Mic" to input "Line")"}},
    {"RemoveSend",
     [](Session& s) { Bass(s).sendList->slots.clear(); },
     {R"(track "Bass": send to bus "Room" removed)"}},
    {"SendLevel",
     [](Session& s) { Bass(s).sendList->slots[0]->sendComponent->parameters[0].value = 1; },
     {R"(track "Bass": send to bus "Room" send component from 0.5 to 1.0)"}},
    {"Fader",
     [](Session& s) { Bass(s).fader = Drums(s).fader; },
     {R"(track "Bass": track fader added)"}},
    {"Volume",
     [](Session& s) { Drums(s).fader->parameters[0].value = -6; },
     {R"(track "Drums": track fader from 0.0 to -6.0)"}},
    {"Automation",
     [](Session& s) {
         auto& keyframes = Drums(s).fader->parameters[0].automation->keyframes;
         keyframes[2].value = 3;
         keyframes[4].value = 3;
     },
     {R"(track "Drums": automation of track fader: 2 keyframes changed between 0:00:02.000 and 0:00:04.000)"}},
    {"MoreAutomation",
     [](Session& s) {
         auto& keyframes = Drums(s).fader->parameters[0].automation->keyframes;
         keyframes[2].value = 3;
         keyframes.erase(keyframes.begin() + 5);
         keyframes.push_back({.value = 1, .sampleOffset = 9 * kSecond});
     },
     {R"(track "Drums": automation of track fader: 1 keyframe changed, 1 added, 1 removed between 0:00:02.000 and 0:00:09.000)"}},
    {"EffectParameter",
     [](Session& s) { Drums(s).effectsRack->slots[1]->component->parameters[0].value = 0.75F; },
     {R"(track "Drums": effect "Reverb" "Mix" from 0.25 to 0.75)"}},
    {"RemoveEffect",
     [](Session& s) {
         auto& slots = Drums(s).effectsRack->slots;
         slots.erase(slots.begin());
         slots[0]->slotIndex = 0;
         slots[1]->slotIndex = 1;
     },
     {R"(track "Drums": effect "Echo" removed)"}},
    {"AddEffect",
     [](Session& s) {
         Bass(s).effectsRack.emplace();
         Bass(s).effectsRack->slots = {Drums(s).effectsRack->slots[0]};
     },
     {R"(track "Bass": effect "Echo" added in slot 0)"}},
    {"MoveEffect",
     [](Session& s) {
         auto& slots = Drums(s).effectsRack->slots;
         std::swap(slots[0], slots[1]);
         slots[0]->slotIndex = 0;
         slots[1]->slotIndex = 1;
     },
     {R"(track "Drums": effect "Echo" moved from slot 0 to slot 1)"}},
    {"BypassEffect",
     [](Session& s) { Drums(s).effectsRack->slots[1]->bypassed = true; },
     {R"(track "Drums": effect "Reverb" bypassed from off to on)"}},
    {"Relink",
     [](Session& s) { s.files[0].path = "/other/drums.wav"; },
     {R"(file "drums.wav" relinked to "/other/drums.wav")"}},
    {"AddFile",
     [](Session& s) { s.files.push_back({.id = 23, .path = "/media/voice.wav"}); },
     {R"(file "voice.wav" added)"}},
    {"RenameGroup",
     [](Session& s) { s.clipGroups[0].name = "Start"; },
     {R"(clip group "Intro" renamed to "Start")"}},
    {"LeaveGroup",
     [](Session& s) { s.clipGroups[0].items.pop_back(); },
     {R"(clip group "Intro": 1 clip left)"}},
    {"RenamePort",
     [](Session& s) { s.audioDevice.outputPorts[1].name = "Phones"; },
     {R"(output "Right" renamed to "Phones")"}},
    {"SampleRate", [](Session& s) { s.bitDepth = 24; }, {"session: bit depth from 32 to 24"}},
    {"Length",
     [](Session& s) { s.duration += kSecond; },
     {"session: duration from 0:00:20.000 to 0:00:21.000"}},
    {"Tempo",
     [](Session& s) { s.musicalTime.beatsPerMinute = 90; },
     {"session: musical time beats per minute from 0.0 to 90.0"}},
    {"Property",
     [](Session& s) { s.properties[0].value = "Bob"; },
     {R"(session: property "author" from "Ann" to "Bob")"}},
    {"Metronome",
     [](Session& s) { s.metronome.enabled = true; },
     {"session: metronome enabled from off to on"}},
    {"OtherIds",
     [](Session& s) {
         s.files[0].id = 900;
         for (auto& clip : Drums(s).clips) {
             clip.fileId = 900;
             clip.id += 1000;
         }
         Drums(s).id = 901;
         s.audioTracks[2].id = 902;
         Drums(s).outputTrackId = 902;
         Bass(s).sendList->slots[0]->sendOutputId = 902;
         s.clipGroups[0] = {
             .id = 903,
             .name = "Intro",
             .items = {{.trackId = 901, .clipId = 1100}, {.trackId = 12, .clipId = 200}}};
     },
     {}},
};

class EachScriptedEdit : public testing::TestWithParam<ScriptedEdit> {};

TEST_P(EachScriptedEdit, IsToldInItsWords) {
    const Session before = test::SmallSession();
    Session after = before;
    GetParam().apply(after);
    EXPECT_EQ(SentencesOf(before, after), GetParam().sentences);
}

INSTANTIATE_TEST_SUITE_P(Diff, EachScriptedEdit, testing::ValuesIn(kEdits),
                         [](const auto& edit) { return std::string(edit.param.name); });

TEST(Diff, SameSessionsHaveNoChanges) {
    EXPECT_THAT(SentencesOf(test::SmallSession(), test::SmallSession()), ElementsAre());
}

TEST(Diff, JoinsWhatASplitDivided) {
    Session divided = test::SmallSession();
    auto& first = Bass(divided).clips[1];
    auto second = first;
    first.duration = kSecond;
    second.id = 999;
    second.startPoint += kSecond;
    second.sourceInPoint += kSecond;
    second.duration = kSecond;
    Bass(divided).clips.push_back(second);
    EXPECT_THAT(SentencesOf(divided, test::SmallSession()),
                ElementsAre(R"(clip "Fill" on track "Bass" joined at 0:00:11.000)"));
}

TEST(Diff, ShowsTimesAsAsked) {
    const Session before = test::SmallSession();
    Session after = before;
    Bass(after).clips[0].startPoint += kSecond;
    const auto moved = [&](orvo::ChangeTimes times) {
        return SentencesOf(before, after, {times}).at(0);
    };
    EXPECT_EQ(moved(orvo::ChangeTimes::Samples),
              R"(clip "Line" on track "Bass" moved by +48000, from 0 to 48000)");
    EXPECT_EQ(moved(orvo::ChangeTimes::Seconds),
              R"(clip "Line" on track "Bass" moved by +1.000, from 0.000 to 1.000)");
}

TEST(Diff, ShowsMusicalPositionsButLengthsAsTimes) {
    Session before = test::SmallSession();
    before.musicalTime = {
        .beatsPerMinute = 120, .beatsPerBar = 4, .noteLength = 4, .subdivisions = 16};
    Session after = before;
    Bass(after).clips[0].startPoint += kSecond;
    EXPECT_THAT(
        SentencesOf(before, after, {orvo::ChangeTimes::Bars}),
        ElementsAre(R"(clip "Line" on track "Bass" moved by +0:00:01.000, from 1:1.00 to 1:3.00)"));
}

TEST(Diff, GivesThePlacesOfAChangeInBothSessions) {
    const Session before = test::SmallSession();
    Session after = before;
    Bass(after).clips.erase(Bass(after).clips.begin());
    Bass(after).clips[0].name = "Riff";
    const auto changes = orvo::FindChanges(before, after);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].kind, orvo::ChangeKind::Removed);
    EXPECT_THAT(changes[0].before, ElementsAre("/audioTracks/1/audioClips/0"));
    EXPECT_THAT(changes[0].after, ElementsAre());
    EXPECT_EQ(changes[1].kind, orvo::ChangeKind::Renamed);
    EXPECT_THAT(changes[1].before, ElementsAre("/audioTracks/1/audioClips/1"));
    EXPECT_THAT(changes[1].after, ElementsAre("/audioTracks/1/audioClips/0"));
}

}  // namespace
