#include <orvo/Page.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/TemporaryFolder.h"
#include "toolkit/view/Colours.h"
#include "toolkit/view/page/PageData.h"
#include "toolkit/view/page/PageTemplate.h"
#include "toolkit/view/page/PageText.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kHostile =
    "</script><script>alert(1)</script><!--<script>]]>&amp;\"'\\\n\xE2\x80\xA8\xE2\x80\xA9";

orvo::Layout SmallLayout() {
    orvo::Layout layout{.sampleRate = 48000, .to = 1000, .end = 1000};
    layout.curves = {{0, 0.25F, 1}};
    layout.media = {{.id = 1, .path = "/a.wav", .found = true}, {.id = 2, .path = "/b.wav"}};
    layout.groups = {{.id = 1, .name = "Calls", .hue = 200}};
    orvo::LayoutRow row{.kind = orvo::RowKind::Audio, .id = 4, .name = "Voices", .hue = 20.5};
    row.path = "/audioTracks/0";
    row.solo = true;
    row.lanes.push_back(
        {.name = "Volume", .keyframes = {{.position = -5, .value = NAN, .level = 0.5}}});
    row.boxes = {{.kind = orvo::BoxKind::Audio,
                  .index = 7,
                  .name = "One",
                  .start = 10,
                  .end = 300,
                  .media = 0,
                  .crossfadesInto = 1},
                 {.kind = orvo::BoxKind::Midi,
                  .index = 2,
                  .name = "Two",
                  .start = 200,
                  .end = 500,
                  .looped = true}};
    row.boxes[0].fadeOut = orvo::LayoutFade{.length = 100, .curve = 0};
    row.boxes[0].group = 0;
    layout.rows = {row, {.kind = orvo::RowKind::Master, .name = "Voices"}};
    return layout;
}

json DataOfSmallLayout() {
    return json::parse(orvo::page::DataOf(SmallLayout(), {}, {.title = "Spot"}));
}

/// The text between two others.
std::string_view Between(std::string_view text, std::string_view begin, std::string_view end) {
    const std::size_t first = text.find(begin) + begin.size();
    return text.substr(first, text.find(end, first) - first);
}

std::string_view BlockOf(std::string_view page, std::string_view id) {
    const std::string begin = "id=\"" + std::string(id) + "\">";
    return Between(page, begin, "</script>");
}

std::size_t CountIn(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != std::string_view::npos;
         place = text.find(part, place + 1)) {
        ++count;
    }
    return count;
}

TEST(Page, TheTemplateHasEachMarkOnce) {
    for (const std::string_view mark :
         {orvo::page::kConnectMark, orvo::page::kTitleMark, orvo::page::kPictureMark,
          orvo::page::kSessionMark, orvo::page::kSoundsMark}) {
        EXPECT_EQ(CountIn(orvo::page::kTemplate, mark), 1U) << mark;
    }
}

TEST(Page, ThePageAsksNothingOfAnyNetwork) {
    const std::string_view page = orvo::page::kTemplate;
    EXPECT_THAT(page, HasSubstr("default-src 'none'"));
    EXPECT_THAT(page, Not(HasSubstr("unsafe-inline")));
    EXPECT_THAT(page, Not(HasSubstr("unsafe-eval")));
    EXPECT_THAT(page, Not(HasSubstr("https://")));
    EXPECT_EQ(CountIn(page, "http://"), CountIn(page, "http://www.w3.org/2000/svg"));
    EXPECT_THAT(page, Not(HasSubstr("src=")));
}

TEST(Page, OnlyAPageThatWatchesItsServerMayAskIt) {
    EXPECT_THAT(MakePage(SmallLayout(), {}), HasSubstr("connect-src 'none'"));
    const std::string page = MakePage(SmallLayout(), {}, {}, {.watch = "state?file=a"});
    EXPECT_THAT(page, HasSubstr("connect-src 'self'"));
    EXPECT_EQ(json::parse(BlockOf(page, "picture"))["watch"], "state?file=a");
}

/// A layout whose first media are a file that is there.
orvo::Layout LayoutWithMedia(const std::filesystem::path& path) {
    orvo::Layout layout = SmallLayout();
    layout.media[0].path = path;
    layout.media.push_back({.id = 3, .path = path, .found = true});
    return layout;
}

TEST(Page, HearsWhatAudioClipsPlayAndIsThere) {
    const test::TemporaryFolder folder;
    const orvo::Layout layout = LayoutWithMedia(folder.Write("a.wav", "RIFF"));
    EXPECT_THAT(orvo::MediaToHear(layout), testing::ElementsAre(0U));
    std::filesystem::remove(folder / "a.wav");
    EXPECT_THAT(orvo::MediaToHear(layout), testing::IsEmpty());
}

TEST(Page, EmbedsMediaAsBase64) {
    const test::TemporaryFolder folder;
    const std::string content(std::size_t{3} << 18, 'a');
    const orvo::Layout layout = LayoutWithMedia(folder.Write("a.wav", content + "bc"));
    const std::string page = MakePage(layout, {}, {}, {.audio = orvo::PageAudio::Embedded});
    const json data = json::parse(BlockOf(page, "picture"));
    EXPECT_EQ(data["audio"], true);
    EXPECT_EQ(data["media"][0]["sound"], "#sound-0");
    EXPECT_FALSE(data["media"][2].contains("sound")) << "no clip plays it";
    std::string sound(BlockOf(page, "sound-0"));
    std::erase(sound, '\n');
    std::string expected;
    for (std::size_t i = 0; i < content.size(); i += 3) {
        expected += "YWFh";
    }
    EXPECT_TRUE(sound == expected + "YmM=");
    EXPECT_THAT(page, HasSubstr("connect-src 'none'"));
    EXPECT_EQ(CountIn(page, "octet-stream"), 1U);
}

TEST(Page, LinksMediaUnderTheGivenAddresses) {
    const std::string page =
        MakePage(SmallLayout(), {}, {},
                 {.audio = orvo::PageAudio::Linked, .mediaAddresses = {"media/a%20b.wav"}});
    const json data = json::parse(BlockOf(page, "picture"));
    EXPECT_EQ(data["media"][0]["sound"], "media/a%20b.wav");
    EXPECT_FALSE(data["media"][1].contains("sound"));
    EXPECT_THAT(page, HasSubstr("connect-src 'self'"));
    EXPECT_EQ(CountIn(page, "octet-stream"), 0U);
}

TEST(Page, WithoutAudioNothingIsHeard) {
    const std::string page = MakePage(SmallLayout(), {}, {}, {.mediaAddresses = {"a.wav"}});
    const json data = json::parse(BlockOf(page, "picture"));
    EXPECT_EQ(data["audio"], false);
    EXPECT_FALSE(data["media"][0].contains("sound"));
}

TEST(Page, TellsWhatChanged) {
    EXPECT_EQ(DataOfSmallLayout()["compared"], false);
    EXPECT_EQ(DataOfSmallLayout()["boxes"]["change"], -1);
    orvo::Layout layout = SmallLayout();
    layout.rows[0].change = orvo::LayoutChange::Same;
    layout.rows[1].change = orvo::LayoutChange::Added;
    layout.rows[1].boxes.push_back({.change = orvo::LayoutChange::Added});
    layout.rows[0].boxes[0].change = orvo::LayoutChange::Former;
    layout.notes = {
        {.sentence = kHostile, .row = 1, .box = 0}, {.sentence = "b", .row = 0}, {.sentence = "c"}};
    const json data = json::parse(orvo::page::DataOf(layout, {}, {}));
    EXPECT_EQ(data["compared"], true);
    EXPECT_EQ(data["rows"]["change"], json({0, 1}));
    EXPECT_EQ(data["boxes"]["change"], json({5, -1, 1}));
    EXPECT_EQ(data["changes"][5]["word"], "was here");
    const std::size_t added = data["changes"][1]["colour"];
    EXPECT_EQ(data["light"][added]["wave"],
              toolkit::CssOf(toolkit::ColoursOf(orvo::Theme::Light, 130).wave));
    EXPECT_EQ(data["changes"][0]["colour"], -1);
    EXPECT_EQ(data["notes"][0]["sentence"], kHostile);
    EXPECT_EQ(data["notes"][0]["box"], 2);
    EXPECT_EQ(data["notes"][1]["row"], 0);
    EXPECT_EQ(data["notes"][1]["box"], -1);
    EXPECT_EQ(data["notes"][2]["row"], -1);
}

TEST(Page, ColumnsHoldOneValueWhereAllAreEqual) {
    const json data = DataOfSmallLayout();
    EXPECT_EQ(data["rows"]["count"], 2);
    EXPECT_EQ(data["rows"]["kind"], json({1, 3}));
    EXPECT_EQ(data["rows"]["colour"], json({0, 1}));
    EXPECT_EQ(data["rows"]["flags"], json({2, 0}));
    EXPECT_EQ(data["rows"]["boxes"], json({2, 0}));
    EXPECT_EQ(data["boxes"]["start"], json({10, 200}));
    EXPECT_EQ(data["boxes"]["length"], json({290, 300}));
    EXPECT_EQ(data["boxes"]["speed"], 1);
    EXPECT_EQ(data["boxes"]["crossfade"], json({1, 0}));
    EXPECT_EQ(data["boxes"]["flags"], json({0, 1}));
    EXPECT_EQ(data["fades"]["out"], 1);
    EXPECT_EQ(data["fades"]["length"], 100);
    EXPECT_EQ(data["keyframes"]["position"], -5);
    EXPECT_EQ(data["keyframes"]["value"], json());
    EXPECT_EQ(data["curves"], json({{0, 0.25, 1}}));
    EXPECT_EQ(data["groups"][0]["name"], "Calls");
}

TEST(Page, ClipsAreFoundInTheSession) {
    const json data = DataOfSmallLayout();
    EXPECT_EQ(data["clipKeys"], json({"videoClips", "audioClips", "midiClips"}));
    EXPECT_EQ(data["boxes"]["kind"], json({1, 2}));
    EXPECT_EQ(data["boxes"]["index"], json({7, 2}));
    EXPECT_EQ(data["strings"][data["rows"]["path"][0].get<std::size_t>()], "/audioTracks/0");
}

TEST(Page, EachTextStandsOnce) {
    const json data = DataOfSmallLayout();
    EXPECT_EQ(data["rows"]["name"].type(), json::value_t::number_unsigned);
    EXPECT_EQ(std::ranges::count(data["strings"], "Voices"), 1);
}

TEST(Page, WhatHasNoMediaIsMissingItExceptNotes) {
    orvo::Layout layout = SmallLayout();
    layout.media[0].found = false;
    layout.rows[0].boxes.push_back({.kind = orvo::BoxKind::Video});
    const json data = json::parse(orvo::page::DataOf(layout, {}, {}));
    EXPECT_EQ(data["boxes"]["flags"], json({64, 1, 64}));
}

TEST(Page, WaveformsStandWithTheirMedia) {
    const orvo::Waveform waveform{.sampleRate = 48000,
                                  .frames = 300,
                                  .framesPerPeak = 150,
                                  .runs = {{.peaks = {{-1, 0}, {-0.001F, 7}, {NAN, 0.5F}}}}};
    const json data = json::parse(orvo::page::DataOf(SmallLayout(), {std::nullopt, waveform}, {}));
    EXPECT_FALSE(data["media"][0].contains("waveform"));
    EXPECT_EQ(data["media"][1]["waveform"]["framesPerPeak"], 150);
    EXPECT_EQ(data["media"][1]["waveform"]["lowest"], "gQAA");
    EXPECT_EQ(data["media"][1]["waveform"]["highest"], "AH9A");
}

TEST(Page, NoTextBecomesMarkup) {
    orvo::Layout layout = SmallLayout();
    layout.rows[0].name = kHostile;
    layout.rows[0].boxes[0].name = kHostile;
    layout.media[0].path = kHostile;
    layout.groups[0].name = kHostile;
    orvo::Session session;
    session.xmpMetadata = kHostile;
    const std::string page = MakePage(layout, session, {}, {.title = kHostile});
    const std::string_view tags[] = {"<script", "</script", "<!--", "<title", "</title"};
    for (const std::string_view tag : tags) {
        EXPECT_EQ(CountIn(page, tag), CountIn(orvo::page::kTemplate, tag)) << tag;
    }
    EXPECT_THAT(page, Not(HasSubstr("\xE2\x80\xA8\xE2\x80\xA9\"")));
    const json picture = json::parse(BlockOf(page, "picture"));
    EXPECT_EQ(picture["title"], kHostile);
    EXPECT_EQ(picture["media"][0]["path"], kHostile);
    EXPECT_EQ(json::parse(BlockOf(page, "session"))["xmpMetadata"], kHostile);
}

TEST(Page, MalformedTextsBecomeReadable) {
    std::string text;
    orvo::page::AppendJsonText(text, "a\xFF\xED\xA0\x80z\xC3");
    EXPECT_EQ(text, "\"a\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD\"");
    EXPECT_EQ(orvo::page::AsMarkup("a<b&c\xFF"), "a&lt;b&amp;c\xEF\xBF\xBD");
}

TEST(Page, TheSameSessionGivesTheSameBytes) {
    EXPECT_EQ(MakePage(SmallLayout(), orvo::Session()), MakePage(SmallLayout(), orvo::Session()));
}

}  // namespace
