#include <orvo/Draw.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "tests/support/TemporaryFolder.h"
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

TEST(DrawSvg, AMutedTrackIsPale) {
    Session session = Song();
    EXPECT_THAT(Drawn(session), Not(HasSubstr("<g opacity=\"0.5\">")));
    session.audioTracks[0].mute->parameters[0] = {.value = 1.F};
    EXPECT_THAT(Drawn(session), HasSubstr("<g opacity=\"0.5\">"));
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

TEST(ContactSheet, ShowsEverySession) {
    orvo::ContactSheet sheet({.title = "All", .width = 1600});
    for (const char* const title : {"One", "Two & three", "Four"}) {
        sheet.Add(MakeLayout(Song()), {}, title);
    }
    const std::string svg = sheet.Take();
    EXPECT_TRUE(test::ReadTree(svg));
    for (const char* const text :
         {">All</text>", ">One</text>", ">Two &amp; three</text>", "timelines of 3 sessions"}) {
        EXPECT_THAT(svg, HasSubstr(text));
    }
    EXPECT_TRUE(test::ReadTree(orvo::ContactSheet({.width = 1}).Take()));
}

TEST(ContactSheet, EachRowOfPicturesMakesItHigher) {
    orvo::ContactSheet sheet({.width = 1008});
    for (int i = 0; i < 5; ++i) {
        sheet.Add(MakeLayout(Song()), {}, "");
    }
    EXPECT_EQ(sheet.PictureWidth(), 480);
    EXPECT_THAT(sheet.Take(), HasSubstr("width=\"1008\" height=\"784\"")) << "3 rows of 240";
}

TEST(ContactSheet, AClipHasItsNameInALowPicture) {
    orvo::ContactSheet sheet({.width = 1008});
    sheet.Add(MakeLayout(Song()), {}, "");
    EXPECT_THAT(sheet.Take(), testing::AllOf(HasSubstr(">Voice</text>"), HasSubstr(">Hello</text>")));
}

// Waveforms

/// A mono file of 16 bits that is silent in its first half.
void WriteSound(const std::filesystem::path& path, std::uint32_t frames) {
    std::ofstream file(path, std::ios::binary);
    const auto number = [&file](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            file.put(static_cast<char>(value >> (8 * i)));
        }
    };
    file << "RIFF";
    number(36 + frames * 2, 4);
    file << "WAVEfmt ";
    number(16, 4);
    number(1, 2);
    number(1, 2);
    number(48'000, 4);
    number(96'000, 4);
    number(2, 2);
    number(16, 2);
    file << "data";
    number(frames * 2, 4);
    for (std::uint32_t i = 0; i < frames; ++i) {
        number(i < frames / 2 ? 0 : i % 2 == 0 ? 16'384 : 0xE000, 2);
    }
}

TEST(Waveforms, HaveTheLowestAndHighestValueOfEachStretch) {
    const test::TemporaryFolder folder;
    WriteSound(folder / "a.wav", 200'000);
    Session session = Song();
    session.files = {{.id = 1, .path = (folder / "a.wav").string()},
                     {.id = 2, .path = (folder / "absent.wav").string()},
                     {.id = 3, .path = folder.Write("text.wav", "no sound").string()}};
    const auto waveforms = orvo::ReadWaveforms(MakeLayout(session));
    ASSERT_EQ(waveforms.size(), 3u);
    ASSERT_TRUE(waveforms[0]);
    EXPECT_FALSE(waveforms[1]);
    EXPECT_FALSE(waveforms[2]);
    EXPECT_EQ(waveforms[0]->frames, 200'000u);
    EXPECT_EQ(waveforms[0]->framesPerPeak, 4u);
    const std::vector<orvo::Peak>* const peaks = waveforms[0]->Whole();
    ASSERT_NE(peaks, nullptr);
    EXPECT_EQ(peaks->size(), 50'000u);
    EXPECT_EQ(peaks->front().highest, 0);
    EXPECT_FLOAT_EQ(peaks->back().highest, 0.5F);
    EXPECT_FLOAT_EQ(peaks->back().lowest, -0.25F);
}

TEST(Waveforms, AreNotReadOnceTheReadIsStopped) {
    const test::TemporaryFolder folder;
    WriteSound(folder / "a.wav", 200'000);
    Session session = Song();
    session.files = {{.id = 1, .path = (folder / "a.wav").string()}};
    EXPECT_FALSE(orvo::ReadWaveforms(MakeLayout(session), {.isStopped = [] { return true; }})[0]);
}

TEST(Waveforms, AreDrawnInTheirClips) {
    const test::TemporaryFolder folder;
    WriteSound(folder / "a.wav", 96'000);
    Session session = Song();
    session.audioTracks[0].clips[0].fileId = 1;
    session.audioTracks[0].clips[0].sourceInPoint = 0;
    session.files = {{.id = 1, .path = (folder / "a.wav").string()}};
    const Layout layout = MakeLayout(session);
    const std::string without = DrawSvg(layout, {}, {});
    const std::string with = DrawSvg(layout, orvo::ReadWaveforms(layout), {});
    EXPECT_GT(with.size(), without.size() + 2000);
    EXPECT_THAT(with, Not(HasSubstr("missing</text>")));
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
    EXPECT_GT(toolkit::TextWidth("漢字", style), toolkit::TextWidth("ab", style));
    EXPECT_EQ(toolkit::TextWidth("\xFF", style), 10);
}

}  // namespace
