#include <orvo/Draw.h>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "tests/toolkit/edit/XmlTree.h"
#include "toolkit/view/LaneCurve.h"
#include "toolkit/view/TextWidth.h"

namespace {

using orvo::DrawSvg;
using orvo::Layout;
using orvo::MakeLayout;
using orvo::Session;
using testing::HasSubstr;
using testing::Not;

Session Song() {
    Session session;
    session.duration = 480'000;
    session.audioTracks = {
        {.id = 1, .name = "Voice", .hue = 200, .mute = orvo::Component{}, .clips = {}}};
    session.audioTracks[0].clips = {
        {.id = 5, .duration = 96'000, .startPoint = 48'000, .hue = 20, .name = "Hello"}};
    return session;
}

std::string Drawn(const Session& session, const orvo::DrawOptions& options = {.title = "Song"}) {
    return DrawSvg(MakeLayout(session), {}, options);
}

TEST(DrawSvg, ShowsNamesFactsAndTimes) {
    const std::string svg = Drawn(Song());
    EXPECT_TRUE(test::ReadTree(svg));
    for (const char* const text : {"<title>Song</title>", ">Voice</text>", ">Hello</text>",
                                   "48 kHz · 32-bit · stereo · 1 track · 1 clip · 0 media files",
                                   "<title>Hello, 0:00:01.000 to 0:00:03.000</title>",
                                   "0:00:00.000 – 0:00:10.000", ">0:05</text>", "no media"}) {
        EXPECT_THAT(svg, HasSubstr(text));
    }
}

TEST(DrawSvg, GivesTheSameBytesForTheSameSession) {
    EXPECT_EQ(Drawn(Song()), Drawn(Song()));
    EXPECT_NE(Drawn(Song()), Drawn(Song(), {.title = "Song", .theme = orvo::Theme::Dark}));
}

TEST(DrawSvg, TextsOfTheSessionAreOnlyTexts) {
    Session session = Song();
    session.audioTracks[0].name = "<script>alert(1)</script>";
    session.audioTracks[0].clips[0].name = "\"]]><!--\x01\xED\xA0\x80\xFF&amp;";
    session.files = {{.id = 1, .path = "/<b>"}};
    const std::string svg = Drawn(session, {.title = "</svg><a href='x'>"});
    EXPECT_TRUE(test::ReadTree(svg)) << svg;
    EXPECT_THAT(svg, Not(HasSubstr("<script")));
    EXPECT_THAT(svg, Not(HasSubstr("<a ")));
    EXPECT_THAT(svg, HasSubstr("]]&gt;&lt;!--\xEF\xBF\xBD"));
}

TEST(DrawSvg, NamesStayOnOneLine) {
    Session session = Song();
    session.audioTracks[0].clips[0].name =
        "a\tb\nc\rd\xE2\x80\xA8"
        "e\xE2\x80\xA9"
        "f";
    EXPECT_THAT(Drawn(session), HasSubstr(">a b c d e f</text>"));
}

TEST(DrawSvg, EmptySessionsHaveAPicture) {
    const std::string svg = Drawn(Session{});
    EXPECT_TRUE(test::ReadTree(svg));
    EXPECT_THAT(svg, HasSubstr(">No tracks</text>"));
}

TEST(DrawSvg, TheSizeIsTheOneAskedFor) {
    EXPECT_THAT(Drawn(Song(), {.width = 900, .height = 300}),
                HasSubstr("width=\"900\" height=\"300\""));
    EXPECT_THAT(Drawn(Song(), {.width = 1}), HasSubstr("width=\"400\""));
}

TEST(DrawSvg, LanesNeedRoom) {
    Session session = Song();
    orvo::Component fader;
    fader.parameters[0].automation = orvo::AutomationLane{.keyframes = {{.value = -6}}};
    session.audioTracks[0].fader = fader;
    EXPECT_THAT(Drawn(session), HasSubstr(">Volume</text>"));
    const std::string low = Drawn(session, {.height = 80});
    EXPECT_THAT(low, testing::AllOf(HasSubstr(">Voice</text>"), Not(HasSubstr("Volume"))));
}

TEST(DrawSvg, ManyTracksShareTheGreatestHeight) {
    Session session;
    session.audioTracks.assign(900, {.name = "T"});
    EXPECT_THAT(Drawn(session), HasSubstr("height=\"12000\""));
}

TEST(DrawSvg, BoxesThatCannotBeSeenApartAreDrawnTogether) {
    Session session = Song();
    session.duration = 48'000'000;
    session.audioTracks[0].clips.clear();
    for (std::uint32_t i = 0; i < 20'000; ++i) {
        session.audioTracks[0].clips.push_back({.id = i, .duration = 10, .startPoint = i * 20});
    }
    EXPECT_LT(Drawn(session).size(), 60'000u);
}

TEST(DrawSvg, ExtremePositionsAreDrawn) {
    Session session = Song();
    session.audioTracks[0].clips.push_back({.duration = INT64_MAX, .startPoint = INT64_MIN});
    session.audioTracks[0].clips.push_back({.duration = INT64_MAX, .startPoint = INT64_MAX});
    session.sampleRate = 0;
    const std::string svg = Drawn(session);
    EXPECT_TRUE(test::ReadTree(svg));
    EXPECT_THAT(svg, Not(HasSubstr("nan")));
    EXPECT_THAT(svg, Not(HasSubstr("inf")));
}

/// How strong the colours of a picture's clips are, from 0 to 255.
int StrengthOfBodies(const std::string& svg) {
    const std::size_t place = svg.find("fill=\"#", svg.find("<title>Hello, "));
    const auto channel = [&](std::size_t i) {
        return std::stoi(svg.substr(place + 7 + 2 * i, 2), nullptr, 16);
    };
    const auto [least, most] = std::minmax({channel(0), channel(1), channel(2)});
    return most - least;
}

TEST(DrawSvg, WhatIsMutedIsAlmostGrey) {
    Session session = Song();
    EXPECT_GT(StrengthOfBodies(Drawn(session)), 30);
    session.audioTracks[0].mute->parameters[0] = {.value = 1.F};
    EXPECT_LT(StrengthOfBodies(Drawn(session)), 10);
}

TEST(DrawSvg, NoShapeNeedsASurfaceOfItsOwn) {
    Session session = Song();
    session.selection = {.duration = 48'000};
    session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 24'000};
    const std::string svg = Drawn(session);
    EXPECT_THAT(svg, HasSubstr(" fill-opacity=\""));
    EXPECT_THAT(svg, HasSubstr(" stroke-opacity=\""));
    EXPECT_THAT(svg, Not(HasSubstr(" opacity=\"")));
}

TEST(DrawSvg, AClipWithoutAColourHasThatOfItsTrack) {
    Session session = Song();
    session.audioTracks[0].clips[0].hue = 200;
    const std::string like = Drawn(session);
    session.audioTracks[0].clips[0].hue = 0;
    EXPECT_EQ(Drawn(session), like);
    session.audioTracks[0].clips[0].hue = 360;
    EXPECT_NE(Drawn(session), like);
}

TEST(DrawSvg, ATextMarksWhatAClipIs) {
    Session session = Song();
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    clip.duration = 400'000;
    clip.looped = clip.lockedInTime = clip.offline = true;
    clip.takes = {0, 48'000};
    clip.stretch = orvo::ClipStretch{.stretchMode = orvo::StretchMode::Realtime, .stretchRatio = 2};
    EXPECT_THAT(Drawn(session),
                HasSubstr(">no media · offline · loop · 2× · 2 takes · locked</text>"));
    clip.duration = 48'000;
    EXPECT_THAT(Drawn(session), HasSubstr(">no media · offline</text>")) << "as many as fit";
}

TEST(DrawSvg, ATipTellsWhereTakesBegin) {
    Session session = Song();
    session.audioTracks[0].clips[0].takes = {0, 48'000};
    EXPECT_THAT(Drawn(session), HasSubstr("; takes from 0:00:00.000, 0:00:01.000</title>"));
}

TEST(DrawSvg, ShowsWhereAClipEndsBehindAnother) {
    Session session = Song();
    EXPECT_THAT(Drawn(session), Not(HasSubstr("stroke-dasharray")));
    session.audioTracks[0].clips.push_back(
        {.id = 6, .duration = 96'000, .startPoint = 100'000, .zOrder = 1});
    EXPECT_THAT(Drawn(session), HasSubstr("stroke-dasharray"));
}

TEST(DrawSvg, TextsOfAClipLieWhereNoOtherClipCoversIt) {
    const auto clip = [](const char* name, std::int64_t start, std::int64_t duration, int zOrder) {
        orvo::AudioClip made;
        made.name = name;
        made.startPoint = start;
        made.duration = duration;
        made.zOrder = zOrder;
        return made;
    };
    Session session = Song();
    session.audioTracks[0].clips = {clip("Under", 0, 240'000, 0), clip("Over", 48'000, 96'000, 1),
                                    clip("Start hidden", 288'000, 192'000, 0),
                                    clip("Front", 240'000, 96'000, 1),
                                    clip("Covered", 250'000, 10'000, 0)};
    const std::string svg = Drawn(session);
    // A second is 139 pixels. Places count from the begin of the clip.
    EXPECT_THAT(svg, testing::ContainsRegex("<text x=\"5\"[^>]*>Under</text>\n"
                                            "<text x=\"1[34][0-9.]*\"[^>]*>no media</text>"));
    EXPECT_THAT(svg, testing::ContainsRegex("<text x=\"1[45][0-9.]*\"[^>]*>Start hidden</text>"));
    EXPECT_THAT(svg, Not(HasSubstr(">Covered</text>")));
}

TEST(DrawSvg, AutomationOfAClipIsDrawnOverIt) {
    Session session = Song();
    const auto count = [&] {
        const std::string svg = Drawn(session);
        return std::ranges::count(svg, 'L');
    };
    const auto before = count();
    orvo::Component gain;
    gain.parameters[0].automation =
        orvo::AutomationLane{.keyframes = {{.value = 0}, {.value = -6, .sampleOffset = 40'000}}};
    session.audioTracks[0].clips[0].gain = gain;
    EXPECT_GT(count(), before + 2);
}

TEST(DrawSvg, ShowsWhatChangedInSentences) {
    Session after = Song();
    after.audioTracks[0].clips[0].name = "Good day";
    const std::string svg = DrawSvg(orvo::MakeChangeLayout(Song(), after), {}, {});
    EXPECT_TRUE(test::ReadTree(svg));
    EXPECT_THAT(svg, HasSubstr("renamed to &quot;Good day&quot;</text>"));
}

TEST(DrawSvg, CountsTheSentencesThatDoNotFit) {
    Layout layout = MakeLayout(Song());
    layout.notes.assign(40, {.sentence = "something changed"});
    EXPECT_THAT(DrawSvg(layout, {}, {}), HasSubstr(">and 16 more</text>"));
}

TEST(Draw, AHeadSaysWhatTheDocumentSays) {
    const orvo::PictureHead head =
        orvo::HeadOf(MakeLayout(Song()), {.title = "Song", .width = 900});
    EXPECT_EQ(head.width, 900);
    EXPECT_THAT(Drawn(Song(), {.title = "Song", .width = 900}),
                testing::AllOf(HasSubstr(fmt::format("height=\"{}\"", head.height)),
                               HasSubstr("<title>" + head.title + "</title>"),
                               HasSubstr("<desc>" + head.description + "</desc>")));
}

TEST(ContactSheet, ShowsEverySession) {
    orvo::SvgCanvas canvas;
    orvo::ContactSheet sheet(canvas, {.title = "All", .width = 1600});
    for (const char* const title : {"One", "Two & three", "Four"}) {
        sheet.Add(MakeLayout(Song()), {}, title);
    }
    const std::string svg = canvas.Take(sheet.Head());
    EXPECT_TRUE(test::ReadTree(svg));
    for (const char* const text :
         {">All</text>", ">One</text>", ">Two &amp; three</text>", "timelines of 3 sessions"}) {
        EXPECT_THAT(svg, HasSubstr(text));
    }
}

TEST(ContactSheet, MayBeEmpty) {
    orvo::SvgCanvas canvas;
    const orvo::ContactSheet sheet(canvas, {.width = 1});
    EXPECT_TRUE(test::ReadTree(canvas.Take(sheet.Head())));
}

TEST(ContactSheet, EachRowOfPicturesMakesItHigher) {
    const orvo::DrawOptions options = {.width = 1008};
    orvo::SvgCanvas canvas;
    orvo::ContactSheet sheet(canvas, options);
    for (int i = 0; i < 5; ++i) {
        sheet.Add(MakeLayout(Song()), {}, "");
    }
    EXPECT_EQ(sheet.PictureWidth(), 480);
    EXPECT_EQ(sheet.Head().width, 1008);
    EXPECT_EQ(sheet.Head().height, 784) << "3 rows of 240";
    EXPECT_EQ(orvo::ContactSheet::HeadOf(options, 6).height, 784);
    EXPECT_EQ(orvo::ContactSheet::HeadOf(options, 7).height, 784 + 256);
}

TEST(ContactSheet, AClipHasItsNameInALowPicture) {
    orvo::SvgCanvas canvas;
    orvo::ContactSheet sheet(canvas, {.width = 1008});
    sheet.Add(MakeLayout(Song()), {}, "");
    EXPECT_THAT(canvas.Take(sheet.Head()),
                testing::AllOf(HasSubstr(">Voice</text>"), HasSubstr(">Hello</text>")));
}

// Curves of lanes

orvo::LayoutLane LaneOf(orvo::LaneSegment segment) {
    return {.keyframes = {{.position = 10, .level = 0, .segment = segment},
                          {.position = 20, .level = 1, .segment = segment},
                          {.position = 30, .level = 0.5, .segment = segment}}};
}

TEST(LaneCurve, IsLevelBeforeTheFirstKeyframeAndAfterTheLast) {
    const auto curve = toolkit::LaneCurve(LaneOf(orvo::LaneSegment::Linear), 0, 100);
    EXPECT_EQ(curve.front().position, 0);
    EXPECT_EQ(curve.front().level, 0);
    EXPECT_EQ(curve.back().position, 100);
    EXPECT_EQ(curve.back().level, 0.5);
    EXPECT_EQ(curve.size(), 5u);
}

TEST(LaneCurve, AHeldValueStepsAtTheNextKeyframe) {
    const auto curve = toolkit::LaneCurve(LaneOf(orvo::LaneSegment::Hold), 10, 30);
    EXPECT_EQ(curve[2].position, 20);
    EXPECT_EQ(curve[2].level, 0);
    EXPECT_EQ(curve[3].position, 20);
    EXPECT_EQ(curve[3].level, 1);
}

TEST(LaneCurve, ASplinePassesThroughItsKeyframesAndNowhereBeyond) {
    const auto curve = toolkit::LaneCurve(LaneOf(orvo::LaneSegment::Spline), 10, 30);
    EXPECT_GT(curve.size(), 30u);
    for (const toolkit::LanePoint& point : curve) {
        EXPECT_GE(point.level, 0);
        EXPECT_LE(point.level, 1);
    }
    EXPECT_TRUE(std::ranges::any_of(curve, [](const toolkit::LanePoint& point) {
        return point.position == 20 && point.level == 1;
    }));
}

TEST(TextWidth, ATextThatDoesNotFitEndsInAnEllipsis) {
    const toolkit::TextStyle style = {.size = 10};
    EXPECT_EQ(toolkit::FittedText("short", style, 100), "short");
    const std::string fitted = toolkit::FittedText("a rather long name of a clip", style, 60);
    EXPECT_TRUE(fitted.ends_with("…"));
    EXPECT_LE(toolkit::TextWidth(fitted, style), 60);
    EXPECT_EQ(toolkit::FittedText("anything", style, 3), "");
    EXPECT_EQ(toolkit::FittedText("anything", style, 20), "any") << "not \"a…\"";
    EXPECT_GT(toolkit::TextWidth("漢字", style), toolkit::TextWidth("ab", style));
    EXPECT_EQ(toolkit::TextWidth("\xFF", style), 10);
}

}  // namespace
