#include <orvo/Layout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Layout;
using orvo::LayoutBox;
using orvo::LayoutRow;
using orvo::MakeLayout;
using orvo::Session;
using testing::ElementsAre;

Session SessionOf(std::vector<AudioClip> clips) {
    Session session;
    session.audioTracks.push_back({.id = 1, .name = "Drums", .clips = std::move(clips)});
    return session;
}

std::vector<std::string> RowNames(const Layout& layout) {
    std::vector<std::string> names;
    for (const LayoutRow& row : layout.rows) {
        names.push_back(row.name);
    }
    return names;
}

std::vector<std::uint32_t> BoxIds(const LayoutRow& row) {
    std::vector<std::uint32_t> ids;
    for (const LayoutBox& box : row.boxes) {
        ids.push_back(box.id);
    }
    return ids;
}

TEST(Layout, VideoComesFirstThenTheTracksInTheirOrderThenTheMetronome) {
    Session session;
    session.audioTracks = {{.id = 1, .index = 2, .name = "B"}, {.id = 2, .index = 1, .name = "A"}};
    session.videoTracks = {{.id = 3, .name = "V"}};
    session.metronome.track = AudioTrack{.kind = orvo::TrackKind::Metronome, .name = "M"};
    const Layout layout = MakeLayout(session);
    EXPECT_THAT(RowNames(layout), ElementsAre("V", "A", "B", "M"));
    EXPECT_EQ(layout.rows[0].kind, orvo::RowKind::Video);
    EXPECT_EQ(layout.rows[3].kind, orvo::RowKind::Metronome);
    EXPECT_EQ(layout.rows[0].path, "/videoTracks/0");
    EXPECT_EQ(layout.rows[1].path, "/audioTracks/1");
    EXPECT_EQ(layout.rows[3].path, "/metronome/metronomeTrack");
}

TEST(Layout, OnlyTracksThatFitAPatternAreShown) {
    Session session;
    session.audioTracks = {{.name = "Vocal 1"}, {.name = "Drums"}, {.name = "vocal 2"}};
    EXPECT_THAT(RowNames(MakeLayout(session, {.tracks = "Vocal*"})),
                ElementsAre("Vocal 1", "vocal 2"));
}

TEST(Layout, WhatCoversOthersComesLater) {
    const Layout layout = MakeLayout(SessionOf({{.id = 1, .duration = 9, .zOrder = 3},
                                                {.id = 2, .duration = 9, .zOrder = -1},
                                                {.id = 3, .duration = 9, .zOrder = 3}}));
    EXPECT_THAT(BoxIds(layout.rows[0]), ElementsAre(2, 1, 3));
    EXPECT_EQ(layout.rows[0].boxes[0].index, 1u);
}

TEST(Layout, TheRangeHoldsTheSessionAndAllClips) {
    Session session = SessionOf({{.duration = 50, .startPoint = -20}});
    session.duration = 90;
    const Layout layout = MakeLayout(session);
    EXPECT_EQ(layout.from, -20);
    EXPECT_EQ(layout.to, 90);
    EXPECT_EQ(layout.end, 90);
}

TEST(Layout, AnEmptyRangeLastsASecond) {
    const Layout layout = MakeLayout(Session{.sampleRate = 100});
    EXPECT_EQ(layout.to - layout.from, 100);
    const Layout late = MakeLayout(Session{}, {.from = 50, .to = 50});
    EXPECT_EQ(late.from, 50);
    EXPECT_GT(late.to, late.from);
}

TEST(Layout, BoxesOutsideTheRangeAreLeftOut) {
    const Session session = SessionOf({{.id = 1, .duration = 10, .startPoint = 0},
                                       {.id = 2, .duration = 10, .startPoint = 15},
                                       {.id = 3, .duration = 10, .startPoint = 30}});
    EXPECT_THAT(BoxIds(MakeLayout(session, {.from = 20, .to = 30}).rows[0]), ElementsAre(2));
    EXPECT_THAT(BoxIds(MakeLayout(session, {.from = 10, .to = 30}).rows[0]), ElementsAre(2));
}

TEST(Layout, PositionsBeyond64BitsEndAtTheLastOne) {
    constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
    const Layout layout = MakeLayout(SessionOf({{.duration = kLast, .startPoint = 5},
                                                {.duration = kLast, .startPoint = kFirst},
                                                {.duration = kFirst, .startPoint = 7}}));
    EXPECT_EQ(layout.rows[0].boxes[0].end, kLast);
    EXPECT_EQ(layout.rows[0].boxes[2].end, 7) << "a negative length is none";
    EXPECT_EQ(layout.from, kFirst);
}

TEST(Layout, AHueIsAnAngleAndANegativeOneIsNoColour) {
    Session session = SessionOf({{.hue = 400}, {.hue = -1}, {.hue = 360}});
    session.audioTracks[0].hue = 120;
    const LayoutRow row = MakeLayout(session).rows[0];
    EXPECT_EQ(row.hue, 120);
    EXPECT_EQ(row.boxes[0].hue, 40);
    EXPECT_EQ(row.boxes[1].hue, std::nullopt);
    EXPECT_EQ(row.boxes[2].hue, 0);
}

TEST(Layout, WhatStoresNoHueHasNoColour) {
    Session session = SessionOf({{.duration = 9}});
    session.clipGroups = {{.name = "Plain"}, {.name = "Red", .hue = 360}};
    session.audioTracks.push_back({.name = "Red", .hue = 0});
    const Layout layout = MakeLayout(session);
    EXPECT_EQ(layout.rows[0].hue, std::nullopt);
    EXPECT_EQ(layout.rows[0].boxes[0].hue, std::nullopt);
    EXPECT_EQ(layout.rows[1].hue, 0) << "a track without a hue has -1";
    EXPECT_EQ(layout.groups[0].hue, std::nullopt);
    EXPECT_EQ(layout.groups[1].hue, 0);
}

TEST(Layout, AFadeCountsFromItsEndAndIsNoLongerThanItsClip) {
    const Layout layout = MakeLayout(
        SessionOf({{.duration = 100,
                    .fadeIn = orvo::Fade{.startPoint = 10, .endPoint = 40},
                    .fadeOut = orvo::Fade{.startPoint = 0, .endPoint = 500}},
                   {.duration = 100, .fadeIn = orvo::Fade{.startPoint = 9, .endPoint = 9}}}));
    const std::vector<LayoutBox>& boxes = layout.rows[0].boxes;
    EXPECT_EQ(boxes[0].fadeIn->length, 30);
    EXPECT_EQ(boxes[0].fadeOut->length, 100);
    EXPECT_FALSE(boxes[1].fadeIn);
}

TEST(Layout, CurvesRiseFrom0To1) {
    const Layout layout = MakeLayout(SessionOf(
        {{.duration = 100,
          .fadeIn = orvo::Fade{.endPoint = 40, .type = orvo::FadeType::Cosine},
          .fadeOut = orvo::Fade{.endPoint = 40, .type = orvo::FadeType::Logarithmic}},
         {.duration = 100, .fadeIn = orvo::Fade{.endPoint = 40, .type = orvo::FadeType(9)}}}));
    ASSERT_EQ(layout.curves.size(), 3u);
    for (const orvo::Curve& curve : layout.curves) {
        EXPECT_EQ(curve.front(), 0);
        EXPECT_EQ(curve.back(), 1);
        EXPECT_TRUE(std::ranges::is_sorted(curve));
    }
    const std::size_t middle = layout.curves[0].size() / 2;
    EXPECT_FLOAT_EQ(layout.curves[0][middle], 0.5F) << "a cosine";
    EXPECT_GT(layout.curves[1][middle], 0.7F) << "a logarithm";
    EXPECT_FLOAT_EQ(layout.curves[2][middle], 0.5F) << "evenly, for a type without a name";
}

TEST(Layout, ClipsThatOverlapAndAreLinkedFromEitherSideCrossfade) {
    const auto crossfade = [](AudioClip first, AudioClip second) {
        first.id = 1;
        first.duration = 20;
        second.id = 2;
        second.duration = 20;
        return MakeLayout(SessionOf({second, first})).rows[0].boxes[1].crossfadesInto;
    };
    EXPECT_EQ(crossfade({.crossFadeTailClipId = 2}, {.startPoint = 10}), 0u);
    EXPECT_EQ(crossfade({}, {.startPoint = 10, .crossFadeHeadClipId = 1}), 0u);
    EXPECT_EQ(crossfade({}, {.startPoint = 10}), std::nullopt);
    EXPECT_EQ(crossfade({.crossFadeTailClipId = 2}, {.startPoint = 20}), std::nullopt);
    EXPECT_EQ(crossfade({.crossFadeTailClipId = 7}, {.startPoint = 10}), std::nullopt);
}

TEST(Layout, AStretchedClipPlaysItsMediaAtAnotherSpeed) {
    const auto stretched = [](orvo::StretchMode mode, double ratio) {
        return MakeLayout(SessionOf({{.stretch = orvo::ClipStretch{.stretchMode = mode,
                                                                   .stretchRatio = ratio}}}))
            .rows[0]
            .boxes[0];
    };
    EXPECT_EQ(stretched(orvo::StretchMode::Realtime, 2).speed, 0.5);
    EXPECT_TRUE(stretched(orvo::StretchMode::Realtime, 2).stretched);
    EXPECT_EQ(stretched(orvo::StretchMode::Off, 2).speed, 1);
    EXPECT_FALSE(stretched(orvo::StretchMode::Off, 2).stretched);
    EXPECT_EQ(stretched(orvo::StretchMode::Rendered, 0).speed, 1);
    EXPECT_EQ(stretched(orvo::StretchMode::Rendered, -3).speed, 1);
}

TEST(Layout, AClipHasItsMediaAndItsGroup) {
    Session session = SessionOf({{.id = 8, .fileId = 4}, {.id = 9, .fileId = 5}});
    session.files = {{.id = 4, .path = "/nowhere/a.wav"}};
    session.clipGroups = {{.id = 1, .name = "Fill", .hue = 30, .items = {{1, 8}}}};
    const Layout layout = MakeLayout(session);
    const std::vector<LayoutBox>& boxes = layout.rows[0].boxes;
    EXPECT_EQ(boxes[0].media, 0u);
    EXPECT_EQ(boxes[1].media, std::nullopt);
    EXPECT_EQ(boxes[0].group, 0u);
    EXPECT_EQ(boxes[1].group, std::nullopt);
    EXPECT_FALSE(layout.media[0].found);
    EXPECT_EQ(layout.groups[0].hue, 30);
}

// Two sessions

const LayoutBox& BoxNamed(const Layout& layout, const std::string& name, std::size_t number = 0) {
    for (const LayoutRow& row : layout.rows) {
        for (const LayoutBox& box : row.boxes) {
            if (box.name == name && number-- == 0) {
                return box;
            }
        }
    }
    throw std::runtime_error("no box " + name);
}

TEST(ChangeLayout, MarksWhatBecameOfClips) {
    Session before = SessionOf({{.id = 1, .fileId = 1, .duration = 10, .name = "stays"},
                                {.id = 2,
                                 .fileId = 1,
                                 .sourceInPoint = 500,
                                 .duration = 10,
                                 .startPoint = 20,
                                 .name = "goes"},
                                {.id = 3,
                                 .fileId = 2,
                                 .duration = 10,
                                 .startPoint = 40,
                                 .name = "moves",
                                 .fadeIn = orvo::Fade{.endPoint = 4}}});
    before.files = {{.id = 1, .path = "/a.wav"}, {.id = 2, .path = "/b.wav"}};
    Session after = before;
    std::vector<AudioClip>& clips = after.audioTracks[0].clips;
    clips.erase(clips.begin() + 1);
    clips[1].startPoint = 60;
    clips.push_back({.id = 9, .fileId = 2, .sourceInPoint = 900, .duration = 5, .name = "comes"});
    const Layout layout = orvo::MakeChangeLayout(before, after);
    EXPECT_EQ(BoxNamed(layout, "stays").change, orvo::LayoutChange::Same);
    EXPECT_EQ(BoxNamed(layout, "goes").change, orvo::LayoutChange::Removed);
    EXPECT_EQ(BoxNamed(layout, "comes").change, orvo::LayoutChange::Added);
    EXPECT_EQ(BoxNamed(layout, "moves").change, orvo::LayoutChange::Former);
    EXPECT_EQ(BoxNamed(layout, "moves").start, 40);
    EXPECT_LT(BoxNamed(layout, "moves").fadeIn->curve, layout.curves.size());
    EXPECT_EQ(BoxNamed(layout, "moves", 1).change, orvo::LayoutChange::Moved);
    EXPECT_EQ(layout.media.size(), 2u) << "each file once";
    EXPECT_EQ(layout.notes.size(), 3u);
}

/// The box that a note leads to, such as "moves 60"; empty for none.
std::string TargetOf(const Layout& layout, const orvo::LayoutNote& note) {
    if (!note.row || !note.box) {
        return note.row ? layout.rows[*note.row].name : "";
    }
    const orvo::LayoutBox& box = layout.rows[*note.row].boxes[*note.box];
    return box.name + " " + std::to_string(box.start);
}

TEST(ChangeLayout, NotesLeadToWhatChanged) {
    Session before =
        SessionOf({{.id = 1, .fileId = 1, .duration = 10, .name = "stays"},
                   {.id = 2, .fileId = 1, .duration = 7, .startPoint = 90, .name = "goes"},
                   {.id = 3, .fileId = 2, .duration = 10, .startPoint = 40, .name = "moves"}});
    before.files = {{.id = 1, .path = "/a.wav"}, {.id = 2, .path = "/b.wav"}};
    Session after = before;
    std::vector<AudioClip>& clips = after.audioTracks[0].clips;
    clips.erase(clips.begin() + 1);
    clips[1].startPoint = 60;
    after.audioTracks[0].name = "Percussion";
    after.sampleRate = before.sampleRate + 1;
    before.audioTracks.push_back(
        {.id = 9, .index = 1, .kind = orvo::TrackKind::Bus, .name = "Old"});
    const Layout layout = orvo::MakeChangeLayout(before, after);
    std::vector<std::string> targets;
    for (const orvo::LayoutNote& note : layout.notes) {
        EXPECT_NE(note.sentence, "");
        targets.push_back(TargetOf(layout, note));
    }
    EXPECT_THAT(targets,
                testing::UnorderedElementsAre("", "Old", "Percussion", "goes 90", "moves 60"));
}

TEST(ChangeLayout, ShowsTracksThatWentAndMarksThoseThatCame) {
    Session before = SessionOf({{.id = 1, .duration = 10, .name = "kept"}});
    Session after = before;
    before.audioTracks.push_back(
        {.id = 2, .index = 1, .name = "Old", .clips = {{.id = 5, .duration = 70, .name = "x"}}});
    after.audioTracks.push_back({.id = 3, .index = 1, .kind = orvo::TrackKind::Bus, .name = "New"});
    const Layout layout = orvo::MakeChangeLayout(before, after);
    ASSERT_THAT(RowNames(layout), ElementsAre("Drums", "New", "Old"));
    EXPECT_EQ(layout.rows[0].change, orvo::LayoutChange::Same);
    EXPECT_EQ(layout.rows[1].change, orvo::LayoutChange::Added);
    EXPECT_EQ(layout.rows[2].change, orvo::LayoutChange::Removed);
    EXPECT_EQ(BoxNamed(layout, "x").change, orvo::LayoutChange::Removed);
    EXPECT_EQ(layout.to, 70);
}

TEST(ChangeLayout, OfASessionWithItselfHasOnlyWhatStays) {
    const Session session = SessionOf({{.id = 1, .duration = 10, .name = "a"}});
    const Layout layout = orvo::MakeChangeLayout(session, session);
    EXPECT_EQ(BoxNamed(layout, "a").change, orvo::LayoutChange::Same);
    EXPECT_EQ(layout.rows[0].boxes.size(), 1u);
    EXPECT_TRUE(layout.notes.empty());
    EXPECT_EQ(MakeLayout(session).rows[0].boxes[0].change, std::nullopt);
}

orvo::Component Automated(std::vector<orvo::Keyframe> keyframes, bool splines = false) {
    orvo::Component component;
    component.parameters[0] = {.value = 0.F,
                               .automation = orvo::AutomationLane{
                                   .enableSplines = splines, .keyframes = std::move(keyframes)}};
    return component;
}

TEST(LayoutLanes, KeyframesComeInTheOrderOfTimeAndTheLastOfAPositionCounts) {
    Session session = SessionOf({});
    session.audioTracks[0].fader = Automated({{.value = -6, .sampleOffset = 90},
                                              {.value = 0, .sampleOffset = 10},
                                              {.value = 6, .sampleOffset = 90}});
    const orvo::LayoutLane lane = MakeLayout(session).rows[0].lanes.at(0);
    EXPECT_EQ(lane.name, "Volume");
    ASSERT_EQ(lane.keyframes.size(), 2u);
    EXPECT_EQ(lane.keyframes[0].position, 10);
    EXPECT_EQ(lane.keyframes[1].value, 6);
}

TEST(LayoutLanes, ALevelIsWithinTheRangeOfTheLane) {
    Session session = SessionOf({});
    session.audioTracks[0].fader = Automated({{.value = -12}});
    session.audioTracks[0].pan = Automated({{.value = 0}, {.value = 3, .sampleOffset = 1}});
    const auto lanes = MakeLayout(session).rows[0].lanes;
    EXPECT_DOUBLE_EQ(lanes[0].low, -36);
    EXPECT_DOUBLE_EQ(lanes[0].high, 12);
    EXPECT_DOUBLE_EQ(lanes[0].keyframes[0].level, 0.5);
    EXPECT_DOUBLE_EQ(lanes[1].low, -1);
    EXPECT_DOUBLE_EQ(lanes[1].high, 3) << "as far as the values go";
    EXPECT_DOUBLE_EQ(lanes[1].keyframes[0].level, 0.25);
}

TEST(LayoutLanes, ValuesThatAreNoNumbersStayInTheLane) {
    Session session = SessionOf({});
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    session.audioTracks[0].fader =
        Automated({{.value = -kInfinity},
                   {.value = kInfinity, .sampleOffset = 1},
                   {.value = std::numeric_limits<float>::quiet_NaN(), .sampleOffset = 2}});
    const auto keyframes = MakeLayout(session).rows[0].lanes.at(0).keyframes;
    EXPECT_EQ(keyframes[0].level, 0);
    EXPECT_EQ(keyframes[1].level, 1);
    EXPECT_EQ(keyframes[2].level, 0);
}

TEST(LayoutLanes, ASegmentIsEvenOrHeldOrASpline) {
    Session session = SessionOf({});
    const std::vector<orvo::Keyframe> keyframes = {
        {.sampleOffset = 1}, {.sampleOffset = 2, .type = orvo::KeyframeType::Hold}};
    session.audioTracks[0].fader = Automated(keyframes);
    session.audioTracks[0].pan = Automated(keyframes, true);
    const auto lanes = MakeLayout(session).rows[0].lanes;
    EXPECT_EQ(lanes[0].keyframes[0].segment, orvo::LaneSegment::Linear);
    EXPECT_EQ(lanes[0].keyframes[1].segment, orvo::LaneSegment::Hold);
    EXPECT_EQ(lanes[1].keyframes[0].segment, orvo::LaneSegment::Spline);
    EXPECT_EQ(lanes[1].keyframes[1].segment, orvo::LaneSegment::Hold);
}

TEST(LayoutLanes, AutomationOfAClipCountsFromItsStart) {
    const Session session =
        SessionOf({{.duration = 90, .startPoint = 100, .gain = Automated({{.sampleOffset = 5}})}});
    EXPECT_EQ(MakeLayout(session).rows[0].boxes[0].lanes.at(0).keyframes[0].position, 105);
    EXPECT_TRUE(MakeLayout(session, {.lanes = false}).rows[0].boxes[0].lanes.empty());
}

TEST(LayoutLanes, AnEffectNamesItsParameters) {
    Session session = SessionOf({});
    orvo::Component echo = Automated({{.value = 1}});
    echo.name = "Echo";
    echo.parameters[0].name = "Time";
    session.audioTracks[0].effectsRack.emplace().slots.push_back(
        orvo::EffectsSlot{.component = echo});
    EXPECT_EQ(MakeLayout(session).rows[0].lanes.at(0).name, "Echo: Time");
}

}  // namespace
