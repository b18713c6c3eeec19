#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include <orvo/Diff.h>
#include <orvo/Json.h>
#include <orvo/Merge.h>
#include "tests/plugin/RandomSession.h"
#include "tests/toolkit/diff/SmallSession.h"

namespace {

using orvo::MergeConflict;
using orvo::MergeDecision;
using orvo::MergeResult;
using orvo::Session;
using test::Bass;
using test::Drums;
using test::kSecond;
using test::SentencesOf;
using testing::ElementsAre;
using testing::IsEmpty;
using Edit = std::function<void(Session&)>;

Session Edited(Session session, const Edit& edit) {
    edit(session);
    return session;
}

orvo::AudioClip NewClip(std::uint32_t id, const char* name, std::int64_t start) {
    return {.id = id,
            .fileId = 22,
            .sourceInPoint = start * 7,
            .duration = kSecond,
            .startPoint = start * kSecond,
            .name = name};
}

std::vector<orvo::Keyframe>& Volume(Session& session) {
    return Drums(session).fader->parameters[0].automation->keyframes;
}

orvo::Component& Effect(Session& session, std::size_t slot) {
    return *Drums(session).effectsRack->slots[slot]->component;
}

// Small edits, from which the cases are put together.

void RenameLine(Session& s) {
    Bass(s).clips[0].name = "Riff";
}
void MoveLine(Session& s) {
    Bass(s).clips[0].startPoint += kSecond;
}
void TrimLine(Session& s) {
    Bass(s).clips[0].duration -= kSecond;
}
void RemoveLine(Session& s) {
    Bass(s).clips.erase(Bass(s).clips.begin());
}
void AddClip(Session& s) {
    Bass(s).clips.push_back(NewClip(300, "New", 50));
}
void AddOtherClip(Session& s) {
    Bass(s).clips.push_back(NewClip(300, "Other", 60));
}
void AddTrack(Session& s) {
    s.audioTracks.push_back({.id = 40, .index = 3, .name = "Voice"});
}
void AddOtherTrack(Session& s) {
    s.audioTracks.push_back({.id = 40, .index = 3, .name = "Choir"});
}
void RenameBass(Session& s) {
    Bass(s).name = "Low";
}
void SoloBass(Session& s) {
    Bass(s).solo = true;
}
void SwapTracks(Session& s) {
    std::swap(s.audioTracks[0], s.audioTracks[1]);
}
void AddFile(Session& s) {
    s.files.push_back({.id = 50, .path = "/media/new.wav"});
}
void AddOtherFile(Session& s) {
    s.files.push_back({.id = 50, .path = "/media/other.wav"});
}
void UseNewFile(Session& s) {
    AddFile(s);
    AddClip(s);
    Bass(s).clips.back().fileId = 50;
}
void UseOtherFile(Session& s) {
    AddOtherFile(s);
    AddOtherClip(s);
    Bass(s).clips.back().fileId = 50;
}
void RenumberAll(Session& s) {
    for (auto& clip : Drums(s).clips) {
        clip.id += 1000;
    }
    s.clipGroups[0].items[0].clipId = 1100;
}

struct Case {
    const char* name;
    Edit ours;
    Edit theirs;
};

/// Both edits of each case can be made one after the other, which is what a merge gives.
const std::vector<Case> kCases = {
    {"RenameAndMove", RenameLine, MoveLine},
    {"RenameAndTrim", RenameLine, TrimLine},
    {"MoveAndTrim", MoveLine, TrimLine},
    {"SameEdit", RenameLine, RenameLine},
    {"ClipAndTrack", RenameLine, RenameBass},
    {"TwoMembersOfATrack", RenameBass, SoloBass},
    {"RemoveAndAdd", RemoveLine, AddClip},
    {"RemoveAndRenameAnother", RemoveLine, [](Session& s) { Drums(s).clips[0].name = "Boom"; }},
    {"RemoveTwo", RemoveLine, [](Session& s) { Drums(s).clips.pop_back(); }},
    {"AddTrackAndClip", AddTrack, AddClip},
    {"AddTrackAndRename", AddTrack, RenameBass},
    {"AddFileAndClip", AddFile, AddClip},
    {"ReorderAndRename", SwapTracks, [](Session& s) { s.audioTracks[2].name = "Hall"; }},
    {"SettingsOfTheSession", [](Session& s) { s.bitDepth = 24; },
     [](Session& s) { s.sampleRate = 44100; }},
    {"TempoAndFormat", [](Session& s) { s.musicalTime.beatsPerMinute = 90; },
     [](Session& s) { s.musicalTime.beatsPerBar = 3; }},
    {"EffectParameters", [](Session& s) { Effect(s, 0).parameters[0].value = 1; },
     [](Session& s) { Effect(s, 1).parameters[0].value = 1; }},
    {"ParametersOfOneEffect", [](Session& s) { Effect(s, 1).parameters[0].value = 1; },
     [](Session& s) { Effect(s, 1).parameters[1].value = 9; }},
    {"BypassAndParameter", [](Session& s) { Drums(s).effectsRack->slots[1]->bypassed = true; },
     [](Session& s) { Effect(s, 1).parameters[1].value = 9; }},
    {"Keyframes", [](Session& s) { Volume(s)[1].value = 1; },
     [](Session& s) { Volume(s)[5].value = 2; }},
    {"KeyframesAddedAndChanged", [](Session& s) { Volume(s)[1].value = 1; },
     [](Session& s) { Volume(s).push_back({.value = 1, .sampleOffset = 20 * kSecond}); }},
    {"FadersOfTwoTracks", [](Session& s) { Drums(s).fader->parameters[0].value = -6; },
     [](Session& s) { Bass(s).sendList->slots[0]->sendComponent->parameters[0].value = 1; }},
    {"GainAndFade", [](Session& s) { Bass(s).clips[0].gain->parameters[0].value = 0.5F; },
     [](Session& s) { Bass(s).clips[0].fadeIn->endPoint = kSecond; }},
    {"RoutingAndSend", [](Session& s) { Bass(s).hardwareOutputId = 2; },
     [](Session& s) { Bass(s).sendList->slots[0]->preFader = true; }},
    {"GroupAndClip", [](Session& s) { s.clipGroups[0].name = "Start"; }, MoveLine},
    {"PortsAndFiles", [](Session& s) { s.audioDevice.outputPorts[0].name = "Phones"; }, AddFile},
    {"PropertyAndLength", [](Session& s) { s.properties[0].value = "Bob"; },
     [](Session& s) { s.duration += kSecond; }},
    {"NewIdsAndRename", RenumberAll, [](Session& s) { Drums(s).clips[1].name = "Boom"; }},
    {"NewIdsAndRemove", RenumberAll, RemoveLine},
    {"StretchAndRename", [](Session& s) { Bass(s).clips[0].stretch = orvo::ClipStretch{}; },
     RenameLine},
    {"MetronomeAndTrack", [](Session& s) { s.metronome.enabled = true; }, SoloBass},
    {"RemoveEffectAndRename", [](Session& s) { Drums(s).effectsRack->slots.pop_back(); },
     RenameLine},
};

class EachMerge : public testing::TestWithParam<Case> {};

TEST_P(EachMerge, MakesBothEdits) {
    const Session base = test::SmallSession();
    const Session ours = Edited(base, GetParam().ours);
    const Session theirs = Edited(base, GetParam().theirs);
    const MergeResult merged = orvo::MergeSessions(base, ours, theirs);
    EXPECT_THAT(merged.conflicts, IsEmpty());
    const bool isSameEdit = SentencesOf(ours, theirs).empty();
    const Session expected = isSameEdit ? ours : Edited(theirs, GetParam().ours);
    EXPECT_THAT(SentencesOf(expected, merged.session), IsEmpty());
    const MergeResult swapped = orvo::MergeSessions(base, theirs, ours);
    EXPECT_THAT(swapped.conflicts, IsEmpty());
    EXPECT_THAT(SentencesOf(merged.session, swapped.session), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Merge, EachMerge, testing::ValuesIn(kCases),
                         [](const auto& merge) { return std::string(merge.param.name); });

MergeResult MergeEdits(const Edit& ours, const Edit& theirs,
                       MergeDecision decision = MergeDecision::None) {
    const Session base = test::SmallSession();
    return orvo::MergeSessions(base, Edited(base, ours), Edited(base, theirs), decision);
}

TEST(Merge, NamesWhatBothSidesChangedInTheWordsOfDiff) {
    const MergeResult merged =
        MergeEdits(RenameLine, [](Session& s) { Bass(s).clips[0].name = "Hook"; });
    ASSERT_EQ(merged.conflicts.size(), 1U);
    EXPECT_THAT(merged.conflicts[0].ours,
                ElementsAre(R"(clip "Line" on track "Bass" renamed to "Riff")"));
    EXPECT_THAT(merged.conflicts[0].theirs,
                ElementsAre(R"(clip "Line" on track "Bass" renamed to "Hook")"));
    EXPECT_EQ(merged.session.audioTracks[1].clips[0].name, "Line");
}

TEST(Merge, DecidesAsAsked) {
    const auto hook = [](Session& s) { Bass(s).clips[0].name = "Hook"; };
    const auto name = [&](MergeDecision decision) {
        return MergeEdits(RenameLine, hook, decision).session.audioTracks[1].clips[0].name;
    };
    EXPECT_EQ(name(MergeDecision::Ours), "Riff");
    EXPECT_EQ(name(MergeDecision::Theirs), "Hook");
}

TEST(Merge, DoesNotDropAnEditOfWhatTheOtherSideRemoved) {
    const MergeResult merged = MergeEdits(RemoveLine, RenameLine);
    ASSERT_EQ(merged.conflicts.size(), 1U);
    EXPECT_THAT(merged.conflicts[0].ours,
                ElementsAre(testing::HasSubstr(R"(clip "Line" on track "Bass" removed)")));
    EXPECT_THAT(merged.conflicts[0].theirs,
                ElementsAre(R"(clip "Line" on track "Bass" renamed to "Riff")"));
}

TEST(Merge, NoticesThatWhatOneSideRemovedIsUsedByTheOther) {
    const auto unused = [](Session& s) {
        s.files.push_back({.id = 23, .path = "/media/spare.wav"});
    };
    const Session base = Edited(test::SmallSession(), unused);
    const Session ours = Edited(base, [](Session& s) { s.files.pop_back(); });
    const Session theirs = Edited(base, [](Session& s) {
        AddClip(s);
        Bass(s).clips.back().fileId = 23;
    });
    EXPECT_EQ(orvo::MergeSessions(base, ours, theirs).conflicts.size(), 1U);
}

TEST(Merge, NumbersWhatBothSidesAddedApart) {
    const MergeResult merged = MergeEdits(UseNewFile, UseOtherFile);
    EXPECT_THAT(merged.conflicts, IsEmpty());
    ASSERT_EQ(merged.session.files.size(), 4U);
    const orvo::File& file = merged.session.files[2];
    const orvo::File& other = merged.session.files[3];
    EXPECT_NE(file.id, other.id);
    const auto& clips = merged.session.audioTracks[1].clips;
    ASSERT_EQ(clips.size(), 4U);
    EXPECT_NE(clips[2].id, clips[3].id);
    for (const orvo::AudioClip& clip : {clips[2], clips[3]}) {
        const bool isNew = clip.name == "New";
        EXPECT_EQ(clip.fileId, (file.path == "/media/new.wav") == isNew ? file.id : other.id);
    }
}

TEST(Merge, AddsWhatBothSidesAddedAlikeOnce) {
    const MergeResult merged = MergeEdits(UseNewFile, UseNewFile);
    EXPECT_THAT(merged.conflicts, IsEmpty());
    EXPECT_EQ(merged.session.files.size(), 3U);
    EXPECT_EQ(merged.session.audioTracks[1].clips.size(), 3U);
}

TEST(Merge, KeepsTheTracksThatBothSidesAdded) {
    const MergeResult merged = MergeEdits(AddTrack, AddOtherTrack);
    const MergeResult swapped = MergeEdits(AddOtherTrack, AddTrack);
    EXPECT_THAT(merged.conflicts, IsEmpty());
    EXPECT_EQ(merged.session.audioTracks.size(), 5U);
    EXPECT_THAT(SentencesOf(merged.session, swapped.session), IsEmpty());
}

TEST(Merge, TakesTheLongerLength) {
    const MergeResult merged = MergeEdits([](Session& s) { s.duration = 30 * kSecond; },
                                          [](Session& s) { s.duration = 25 * kSecond; });
    EXPECT_THAT(merged.conflicts, IsEmpty());
    EXPECT_EQ(merged.session.duration, 30 * kSecond);
}

TEST(Merge, KeepsTheCursorOfTheBaseIfBothSidesMovedIt) {
    const MergeResult merged =
        MergeEdits([](Session& s) { s.ctiPosition = 1; }, [](Session& s) { s.ctiPosition = 2; });
    EXPECT_THAT(merged.conflicts, IsEmpty());
    EXPECT_TRUE(merged.keptEditorState);
    EXPECT_EQ(merged.session.ctiPosition, 0);
}

RC_GTEST_PROP(MergeProperties, AnUnchangedSideGivesTheOther, ()) {
    const Session base = test::DrawSession();
    const Session side = test::DrawSession();
    for (const MergeResult& merged :
         {orvo::MergeSessions(base, side, base), orvo::MergeSessions(base, base, side)}) {
        RC_ASSERT(merged.conflicts.empty());
        RC_ASSERT(orvo::FindChanges(side, merged.session).empty());
    }
}

RC_GTEST_PROP(MergeProperties, TheOrderOfTheSidesDoesNotMatter, ()) {
    const Session base = test::SmallSession();
    const auto ours = kCases[*rc::gen::inRange<std::size_t>(0, kCases.size())].ours;
    const auto theirs = kCases[*rc::gen::inRange<std::size_t>(0, kCases.size())].theirs;
    const MergeResult one = orvo::MergeSessions(base, Edited(base, ours), Edited(base, theirs));
    const MergeResult other = orvo::MergeSessions(base, Edited(base, theirs), Edited(base, ours));
    RC_ASSERT(orvo::FindChanges(one.session, other.session).empty());
    RC_ASSERT(one.conflicts.size() == other.conflicts.size());
}

}  // namespace
