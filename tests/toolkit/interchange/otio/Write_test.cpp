#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <orvo/Interchange.h>
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/otio/OtioText.h"

namespace {

using nlohmann::json;
using orvo::ExportResult;
using orvo::Fidelity;
using orvo::InterchangeKind;
using orvo::Session;
using testing::ElementsAre;

class OtioWriting : public testing::Test {
protected:
    json Written(const Session& session, const orvo::ExportOptions& options = {}) {
        result_ = orvo::ExportSession(session, InterchangeKind::Otio, folder_ / "a.otio", options);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return json::parse(test::ReadFile(folder_ / "a.otio"));
    }

    bool SaysOf(Fidelity fidelity, const std::string& place) const {
        return std::ranges::any_of(result_.report.facts, [&](const orvo::InterchangeFact& fact) {
            return fact.fidelity == fidelity && fact.place == place;
        });
    }

    test::TemporaryFolder folder_;
    ExportResult result_;
};

/// A short form of a track: gaps, transitions and clips with their ranges.
std::vector<std::string> ItemsOf(const json& timeline, std::size_t track = 0) {
    std::vector<std::string> items;
    for (const json& item : timeline["tracks"]["children"][track]["children"]) {
        const std::string schema = item["OTIO_SCHEMA"];
        if (schema == "Transition.1") {
            items.push_back(fmt::format("transition {} {}",
                                        item["in_offset"]["value"].get<double>(),
                                        item["out_offset"]["value"].get<double>()));
            continue;
        }
        const json& range = item["source_range"];
        items.push_back(fmt::format(
            "{} {}+{}", schema == "Gap.1" ? "gap" : item["name"].get<std::string>(),
            range["start_time"]["value"].get<double>(), range["duration"]["value"].get<double>()));
    }
    return items;
}

Session SmallSession() {
    Session session;
    session.files = {{.id = 5, .path = "/m/a b.wav"}};
    session.audioTracks = {{.id = 1, .name = "Voice"}};
    session.audioTracks[0].clips = {{.id = 2,
                                     .fileId = 5,
                                     .sourceInPoint = 10,
                                     .duration = 100,
                                     .startPoint = 50,
                                     .name = "A"}};
    return session;
}

TEST_F(OtioWriting, IsThisText) {
    Written(SmallSession());
    EXPECT_EQ(
        test::ReadFile(folder_ / "a.otio"),
        R"({"OTIO_SCHEMA":"Timeline.1","metadata":{"orvo":{"version":1,"sampleRate":48000,"session":)"
        R"({"files":[{"id":5,"path":"/m/a b.wav"}]}}},"name":"","global_start_time":)"
        R"({"OTIO_SCHEMA":"RationalTime.1","rate":48000.0,"value":0.0},"tracks":{"OTIO_SCHEMA":)"
        R"("Stack.1","metadata":{},"name":"tracks","source_range":null,"effects":[],"markers":[],)"
        R"("enabled":true,"children":[)"
        "\n"
        R"({"OTIO_SCHEMA":"Track.1","metadata":{"orvo":{"trackId":1,"lane":1,"position":0,"track":)"
        R"({"id":1}}},"name":"Voice","kind":"Audio","source_range":null,"effects":[],"markers":[],)"
        R"("enabled":true,"children":[)"
        "\n"
        R"({"OTIO_SCHEMA":"Gap.1","metadata":{},"name":"","source_range":{"OTIO_SCHEMA":)"
        R"("TimeRange.1","duration":{"OTIO_SCHEMA":"RationalTime.1","rate":48000.0,"value":50.0},)"
        R"("start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":48000.0,"value":0.0}},"effects":[],)"
        R"("markers":[],"enabled":true},)"
        "\n"
        R"({"OTIO_SCHEMA":"Clip.2","metadata":{"orvo":{"clip":{"id":2,"fileID":5}}},"name":"A",)"
        R"("source_range":{"OTIO_SCHEMA":"TimeRange.1","duration":{"OTIO_SCHEMA":"RationalTime.1",)"
        R"("rate":48000.0,"value":100.0},"start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":)"
        R"(48000.0,"value":10.0}},"effects":[],"markers":[],"enabled":true,"media_references":)"
        R"({"DEFAULT_MEDIA":{"OTIO_SCHEMA":"ExternalReference.1","metadata":{},"name":"",)"
        R"("available_range":{"OTIO_SCHEMA":"TimeRange.1","duration":{"OTIO_SCHEMA":)"
        R"("RationalTime.1","rate":48000.0,"value":110.0},"start_time":{"OTIO_SCHEMA":)"
        R"("RationalTime.1","rate":48000.0,"value":0.0}},"available_image_bounds":null,)"
        R"("target_url":"file:///m/a%20b.wav"}},"active_media_reference_key":"DEFAULT_MEDIA"}]}]}})"
        "\n");
}

TEST_F(OtioWriting, ACrossfadeIsCutInItsMiddle) {
    Session session = SmallSession();
    session.audioTracks[0].clips.push_back({.id = 3,
                                            .fileId = 5,
                                            .sourceInPoint = 1000,
                                            .duration = 200,
                                            .startPoint = 125,
                                            .name = "B"});
    // 25 samples of both: 12 before the cut and 13 behind it.
    EXPECT_THAT(ItemsOf(Written(session)),
                ElementsAre("gap 0+50", "A 10+87", "transition 12 13", "B 1012+188"));
}

TEST_F(OtioWriting, FadesAreTransitionsBesideGaps) {
    Session session = SmallSession();
    session.audioTracks[0].clips[0].startPoint = 0;
    session.audioTracks[0].clips[0].fadeOut = orvo::Fade{.startPoint = 90, .endPoint = 100};
    session.audioTracks[0].clips.push_back(
        {.id = 3, .duration = 40, .startPoint = 100, .name = "B"});
    session.audioTracks[0].clips[1].fadeIn = orvo::Fade{.endPoint = 20};
    session.audioTracks[0].clips[1].fadeOut = orvo::Fade{.startPoint = 35, .endPoint = 40};
    EXPECT_THAT(ItemsOf(Written(session)),
                ElementsAre("A 10+100", "transition 10 0", "gap 0+0", "transition 0 20", "B 0+40",
                            "transition 5 0", "gap 0+0"));
}

TEST_F(OtioWriting, FadesThatOverlapAreShortenedAndSaid) {
    Session session = SmallSession();
    session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 80};
    session.audioTracks[0].clips[0].fadeOut = orvo::Fade{.startPoint = 50, .endPoint = 100};
    EXPECT_THAT(ItemsOf(Written(session)), ElementsAre("gap 0+50", "transition 0 80", "A 10+100",
                                                       "transition 20 0", "gap 0+0"));
    EXPECT_TRUE(SaysOf(Fidelity::Approximated, "/audioTracks/0/audioClips/0"));
}

TEST_F(OtioWriting, OtherOverlapsStandOnFurtherTracks) {
    Session session = SmallSession();
    session.audioTracks[0].clips.push_back(
        {.id = 3, .duration = 10, .startPoint = 60, .name = "B", .autoCrossfade = false});
    const json timeline = Written(session);
    EXPECT_THAT(ItemsOf(timeline, 0), ElementsAre("gap 0+50", "A 10+100"));
    EXPECT_THAT(ItemsOf(timeline, 1), ElementsAre("gap 0+60", "B 0+10"));
    EXPECT_EQ(timeline["tracks"]["children"][1]["name"], "Voice (2)");
    EXPECT_TRUE(SaysOf(Fidelity::Lost, "/audioTracks/0/audioClips/1"));
}

TEST_F(OtioWriting, AStretchIsASpeed) {
    Session session = SmallSession();
    session.audioTracks[0].clips[0].stretch =
        orvo::ClipStretch{.stretchMode = orvo::StretchMode::Rendered, .stretchRatio = 4};
    const json clip = Written(session)["tracks"]["children"][0]["children"][1];
    EXPECT_EQ(clip["effects"][0]["time_scalar"], 0.25);
    EXPECT_EQ(clip["source_range"]["duration"]["value"], 100);
}

TEST_F(OtioWriting, VideoTracksComeFirstAndThenAllByTheirIndex) {
    Session session;
    session.videoTracks = {{.id = 7, .index = 9, .name = "Picture"}};
    session.audioTracks = {{.id = 1, .index = 2, .name = "Second"},
                           {.id = 2, .index = 1, .name = "First"}};
    const json timeline = Written(session);
    std::vector<std::string> names;
    for (const json& track : timeline["tracks"]["children"]) {
        names.push_back(track["name"].get<std::string>() + " " + track["kind"].get<std::string>());
    }
    EXPECT_THAT(names, ElementsAre("Picture Video", "First Audio", "Second Audio"));
}

TEST_F(OtioWriting, BoundariesAreRoundedToFramesAndThatIsSaid) {
    Session session = SmallSession();
    session.audioTracks[0].clips[0].startPoint = 48001;
    session.audioTracks[0].clips[0].duration = 96000;
    EXPECT_THAT(ItemsOf(Written(session, {.frameRate = 25})), ElementsAre("gap 0+25", "A 0+50"));
    EXPECT_TRUE(SaysOf(Fidelity::Approximated, "/audioTracks/0/audioClips/0"));
}

TEST_F(OtioWriting, WhatOnlyTheMetadataHoldIsLostForOthers) {
    Session session = SmallSession();
    session.audioTracks[0].solo = true;
    EXPECT_TRUE(Written(session)["tracks"]["children"][0]["metadata"].contains("orvo"));
    EXPECT_TRUE(SaysOf(Fidelity::Lost, "/audioTracks/0/solo"));
}

TEST_F(OtioWriting, WithoutOwnDataTheReportIsTheSame) {
    Session session = SmallSession();
    session.audioTracks[0].solo = true;
    Written(session);
    const orvo::InterchangeReport report = result_.report;
    const json timeline = Written(session, {.ownData = false});
    EXPECT_EQ(timeline.dump().find("orvo"), std::string::npos);
    EXPECT_EQ(result_.report, report);
}

TEST_F(OtioWriting, FilesThatNoClipPlaysAreSaid) {
    Session session = SmallSession();
    session.files.push_back({.id = 6, .path = "/m/b.wav"});
    Written(session);
    EXPECT_TRUE(SaysOf(Fidelity::Lost, "/files/1"));
}

TEST_F(OtioWriting, ASessionWithoutARateIsRefused) {
    Session session = SmallSession();
    session.sampleRate = 0;
    EXPECT_FALSE(orvo::ExportSession(session, InterchangeKind::Otio, folder_ / "b.otio"));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "b.otio"));
}

// Archives

TEST_F(OtioWriting, AnArchiveHoldsItsMediaAndGivesThemBack) {
    Session session = SmallSession();
    std::filesystem::create_directory(folder_ / "one");
    std::filesystem::create_directory(folder_ / "two");
    session.files = {{.id = 5, .path = folder_.Write("one/a.wav", "first").string()},
                     {.id = 6, .path = folder_.Write("two/A.wav", "second").string()},
                     {.id = 7, .path = "/nowhere/c.wav"}};
    auto& clips = session.audioTracks[0].clips;
    clips.push_back({.id = 3, .fileId = 6, .duration = 9, .startPoint = 500, .name = "B"});
    clips.push_back({.id = 4, .fileId = 7, .duration = 9, .startPoint = 600, .name = "C"});
    const ExportResult written =
        orvo::ExportSession(session, InterchangeKind::Otioz, folder_ / "a.otioz");
    ASSERT_TRUE(written) << testing::PrintToString(written.messages);
    EXPECT_GE(written.report.Count(Fidelity::Lost), 1u);

    folder_.Write("out", "");
    std::filesystem::remove(folder_ / "out");
    const orvo::ImportResult read = orvo::ImportSession(folder_ / "a.otioz", InterchangeKind::Otioz,
                                                        {.mediaFolder = folder_ / "out"});
    ASSERT_TRUE(read) << testing::PrintToString(read.messages);
    ASSERT_EQ(read.session.files.size(), 3u);
    EXPECT_EQ(read.session.files[0].path, (folder_ / "out" / "a.wav").string());
    EXPECT_EQ(test::ReadFile(read.session.files[0].path), "first");
    EXPECT_EQ(test::ReadFile(read.session.files[1].path), "second");
    EXPECT_EQ(read.session.files[2].path, "/nowhere/c.wav");
    EXPECT_EQ(read.session.audioTracks, session.audioTracks);
}

TEST_F(OtioWriting, MediaOfAnArchiveNeverReplaceFiles) {
    Session session = SmallSession();
    session.files[0].path = folder_.Write("a.wav", "sound").string();
    ASSERT_TRUE(orvo::ExportSession(session, InterchangeKind::Otioz, folder_ / "a.otioz"));
    folder_.Write("a.wav", "mine");
    const orvo::ImportResult read = orvo::ImportSession(folder_ / "a.otioz", InterchangeKind::Otioz,
                                                        {.mediaFolder = folder_.Path()});
    ASSERT_TRUE(read);
    EXPECT_EQ(test::ReadFile(folder_ / "a.wav"), "mine");
    EXPECT_EQ(test::ReadFile(read.session.files.at(0).path), "sound");
}

TEST_F(OtioWriting, MediaThatStayInTheArchiveAreOffline) {
    Session session = SmallSession();
    session.files[0].path = folder_.Write("a.wav", "sound").string();
    ASSERT_TRUE(orvo::ExportSession(session, InterchangeKind::Otioz, folder_ / "a.otioz"));
    const orvo::ImportResult read =
        orvo::ImportSession(folder_ / "a.otioz", InterchangeKind::Otioz);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read.session.audioTracks.at(0).clips.at(0).offline);
    EXPECT_EQ(read.report.Count(Fidelity::Lost), 1u);
}

}  // namespace
