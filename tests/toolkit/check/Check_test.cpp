#include <orvo/Check.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <set>
#include <sstream>

#include <orvo/Json.h>
#include <orvo/Session.h>
#include "tests/support/TemporaryFolder.h"
#include "toolkit/check/MediaCheck.h"
#include "toolkit/check/RoutingLoops.h"

namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Finding;
using orvo::Session;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using CodeAndPath = std::pair<std::string, std::string>;

std::vector<CodeAndPath> PlacesOf(const std::vector<Finding>& findings) {
    std::vector<CodeAndPath> places;
    for (const Finding& finding : findings) {
        places.emplace_back(finding.code, finding.path);
    }
    return places;
}

std::vector<CodeAndPath> Check(const Session& session) {
    return PlacesOf(orvo::CheckSession(session, {.media = false}));
}

AudioClip ClipAt(std::uint32_t id, std::int64_t start, std::int64_t duration) {
    return {.id = id, .fileId = 1, .duration = duration, .startPoint = start};
}

/// One track with clips, and the file that they play.
Session SessionWith(std::vector<AudioClip> clips) {
    Session session;
    session.duration = 1000;
    session.files = {{.id = 1, .path = "/media/a.wav"}};
    session.audioTracks = {{.id = 1, .clips = std::move(clips)}};
    return session;
}

AudioTrack TrackThatFeeds(std::uint32_t id, std::int32_t output,
                          std::vector<std::int32_t> sends = {}) {
    AudioTrack track{.id = id, .outputTrackId = output};
    track.sendList.emplace();
    for (const std::int32_t send : sends) {
        track.sendList->slots.push_back(orvo::SendSlot{.sendOutputId = send});
    }
    return track;
}

std::vector<toolkit::RoutingLoop> LoopsOf(std::vector<AudioTrack> tracks) {
    Session session;
    session.audioTracks = std::move(tracks);
    return toolkit::FindRoutingLoops(session);
}

TEST(CheckSession, ASessionWithoutDefectsHasNoFindings) {
    EXPECT_THAT(Check(SessionWith({ClipAt(1, 0, 500), ClipAt(2, 500, 500)})), IsEmpty());
    EXPECT_THAT(Check(Session{}), IsEmpty());
}

TEST(CheckSession, AClipMayEndWithTheSessionButNotLater) {
    EXPECT_THAT(Check(SessionWith({ClipAt(1, 500, 501)})),
                ElementsAre(Pair("clip-past-end", "/audioTracks/0/audioClips/0/duration")));
}

TEST(CheckSession, PositionsAtTheEndsOfTheirRangeDoNotOverflow) {
    constexpr auto kLast = std::numeric_limits<std::int64_t>::max();
    constexpr auto kFirst = std::numeric_limits<std::int64_t>::min();
    Session session = SessionWith({ClipAt(1, kLast, kLast), ClipAt(2, kFirst, kFirst)});
    session.audioTracks[0].clips[0].crossFadeTailClipId = 2;
    session.audioTracks[0].clips[1].crossFadeTailClipId = 1;
    session.audioTracks[0].clips[0].sourceInPoint = kLast;
    EXPECT_EQ(Check(session).size(), 4u);
    EXPECT_EQ(orvo::CheckSession(session).size(), 5u);
}

TEST(CheckSession, ClipsThatTouchDoNotOverlap) {
    Session session = SessionWith({ClipAt(1, 0, 500), ClipAt(2, 500, 500), ClipAt(3, 400, 10)});
    session.audioTracks[0].clips[0].crossFadeTailClipId = 2;
    session.audioTracks[0].clips[1].crossFadeHeadClipId = 1;
    session.audioTracks[0].clips[2].crossFadeHeadClipId = 1;
    EXPECT_THAT(
        Check(session),
        ElementsAre(Pair("crossfade-apart", "/audioTracks/0/audioClips/0/crossFadeTailClipID"),
                    Pair("crossfade-apart", "/audioTracks/0/audioClips/1/crossFadeHeadClipID")));
}

TEST(CheckSession, ACrossfadeWithAClipOfAnotherTrackIsNone) {
    Session session = SessionWith({ClipAt(1, 0, 500)});
    session.audioTracks.push_back({.id = 2, .clips = {ClipAt(2, 100, 500)}});
    session.audioTracks[0].clips[0].crossFadeTailClipId = 2;
    EXPECT_THAT(
        Check(session),
        ElementsAre(Pair("crossfade-apart", "/audioTracks/0/audioClips/0/crossFadeTailClipID")));
}

TEST(CheckSession, AnIdIsUniqueAmongClipsOfEveryKind) {
    Session session = SessionWith({ClipAt(5, 0, 10)});
    session.audioTracks[0].midiClips = {{.id = 5}};
    session.videoTracks = {{.id = 9, .clips = {{.id = 5, .fileId = 1}}}};
    EXPECT_THAT(Check(session), ElementsAre(Pair("duplicate-id", "/audioTracks/0/audioClips/0/id"),
                                            Pair("duplicate-id", "/audioTracks/0/midiClips/0/id")));
}

TEST(CheckSession, TheMetronomesTrackIsChecked) {
    Session session;
    session.metronome.track = TrackThatFeeds(orvo::kNoId, 99);
    EXPECT_THAT(Check(session),
                ElementsAre(Pair("output-absent", "/metronome/metronomeTrack/outputTrackID")));
}

TEST(CheckSession, AnOutputToTrackZeroLeadsNowhere) {
    Session session;
    session.audioTracks = {TrackThatFeeds(1, 0), TrackThatFeeds(2, -1, {-1})};
    EXPECT_THAT(Check(session), IsEmpty());
    session.audioTracks = {TrackThatFeeds(1, -1, {0})};
    EXPECT_THAT(
        Check(session),
        ElementsAre(Pair("send-absent", "/audioTracks/0/sendList/sendSlots/0/sendOutputID")));
}

TEST(CheckSession, KeyframesAtTheSamePlaceAreInOrder) {
    Session session;
    orvo::Component fader;
    fader.parameters[7].automation =
        orvo::AutomationLane{.keyframes = {{.sampleOffset = 5}, {.sampleOffset = 5}}};
    session.audioTracks = {{.id = 1, .fader = fader}};
    EXPECT_THAT(Check(session), IsEmpty());
    session.audioTracks[0].fader->parameters[7].automation->keyframes.push_back({});
    EXPECT_THAT(Check(session),
                ElementsAre(Pair("keyframe-order",
                                 "/audioTracks/0/trackFader/parameters/7/parameterKeyframes/"
                                 "keyframes/2/sampleOffset")));
}

TEST(CheckSession, EveryPathLeadsIntoTheJsonOfTheSession) {
    Session session = SessionWith({ClipAt(1, 0, -1), ClipAt(1, 0, 5000)});
    session.audioTracks[0].outputTrackId = 77;
    session.clipGroups = {{.items = {{1, 1}, {1, 2}, {2, 1}}}};
    session.sampleRate = 0;
    const std::string json = orvo::ToJson(session, {.full = true});
    for (const Finding& finding : orvo::CheckSession(session)) {
        EXPECT_THAT(json, testing::HasSubstr(finding.path.substr(finding.path.rfind('/') + 1)));
    }
}

TEST(RoutingLoops, AChainIsNoLoop) {
    EXPECT_THAT(LoopsOf({TrackThatFeeds(1, 2), TrackThatFeeds(2, 3), TrackThatFeeds(3, -1)}),
                IsEmpty());
    EXPECT_THAT(LoopsOf({TrackThatFeeds(1, 3), TrackThatFeeds(2, 3, {3}), TrackThatFeeds(3, -1)}),
                IsEmpty());
}

TEST(RoutingLoops, OutputsAndSendsCloseALoop) {
    EXPECT_THAT(LoopsOf({TrackThatFeeds(1, 2), TrackThatFeeds(2, 3), TrackThatFeeds(3, -1, {1}),
                         TrackThatFeeds(4, 1)}),
                ElementsAre(ElementsAre(0, 1, 2)));
}

TEST(RoutingLoops, ATrackMayFeedItself) {
    EXPECT_THAT(LoopsOf({TrackThatFeeds(1, -1), TrackThatFeeds(2, 2)}),
                ElementsAre(ElementsAre(1)));
}

TEST(RoutingLoops, LoopsComeInTheOrderOfTheirFirstTracks) {
    EXPECT_THAT(LoopsOf({TrackThatFeeds(1, 4), TrackThatFeeds(2, 3), TrackThatFeeds(3, 2),
                         TrackThatFeeds(4, 1)}),
                ElementsAre(ElementsAre(0, 3), ElementsAre(1, 2)));
}

TEST(RoutingLoops, AMillionTracksInAChainTakeNoDeepStack) {
    std::vector<AudioTrack> tracks;
    for (std::uint32_t id = 1; id <= 100'000; ++id) {
        tracks.push_back(TrackThatFeeds(id, static_cast<std::int32_t>(id % 100'000 + 1)));
    }
    EXPECT_EQ(LoopsOf(std::move(tracks)).at(0).size(), 100'000u);
}

// Media

class CheckMedia : public testing::Test {
protected:
    std::vector<CodeAndPath> Check(const toolkit::MediaResult& result) const {
        std::vector<CodeAndPath> places;
        for (const auto& finding :
             toolkit::CheckMedia(session_, [&](const std::string&) { return result; })) {
            places.emplace_back(toolkit::Describe(finding.code).code, finding.path);
        }
        return places;
    }

    AudioClip& Clip() { return session_.audioTracks[0].clips[0]; }

    Session session_ = SessionWith({ClipAt(1, 0, 480)});
};

TEST_F(CheckMedia, AFileThatIsExactlyLongEnoughIsFine) {
    EXPECT_THAT(Check(toolkit::MediaProperties{480, 48000, 1}), IsEmpty());
    EXPECT_THAT(Check(toolkit::MediaProperties{479, 48000, 1}),
                ElementsAre(Pair("short-media", "/audioTracks/0/audioClips/0/duration")));
}

TEST_F(CheckMedia, LengthsAreComparedAtTheRateOfTheSession) {
    EXPECT_THAT(Check(toolkit::MediaProperties{441, 44100, 1}),
                ElementsAre(Pair("media-rate", "/files/0/path")));
    EXPECT_THAT(Check(toolkit::MediaProperties{440, 44100, 1}),
                ElementsAre(Pair("media-rate", "/files/0/path"),
                            Pair("short-media", "/audioTracks/0/audioClips/0/duration")));
}

TEST_F(CheckMedia, LoopedAndStretchedClipsNeedAnotherLength) {
    Clip().looped = true;
    EXPECT_THAT(Check(toolkit::MediaProperties{5, 48000, 1}), IsEmpty());
    Clip().looped = false;
    Clip().stretch = orvo::ClipStretch{.stretchMode = orvo::StretchMode::Realtime};
    EXPECT_THAT(Check(toolkit::MediaProperties{5, 48000, 1}), IsEmpty());
    Clip().stretch->stretchMode = orvo::StretchMode::Off;
    EXPECT_EQ(Check(toolkit::MediaProperties{5, 48000, 1}).size(), 1u);
}

TEST_F(CheckMedia, AFileNeedsTheChannelsOfTheMap) {
    Clip().channelSources = {{0, 1}, {1, -1}};
    EXPECT_THAT(Check(toolkit::MediaProperties{480, 48000, 2}), IsEmpty());
    EXPECT_THAT(Check(toolkit::MediaProperties{480, 48000, 1}),
                ElementsAre(Pair("media-channels", "/audioTracks/0/audioClips/0/channelMap/0")));
}

TEST_F(CheckMedia, WhatCannotBeLookedIntoMattersIfClipsPlayIt) {
    EXPECT_THAT(Check(toolkit::MediaObstacle::Unknown),
                ElementsAre(Pair("unreadable-media", "/files/0/path")));
    EXPECT_THAT(Check(toolkit::MediaObstacle::Missing),
                ElementsAre(Pair("missing-media", "/files/0/path")));
    Clip().fileId = 2;
    EXPECT_THAT(Check(toolkit::MediaObstacle::Unknown), IsEmpty());
    EXPECT_THAT(Check(toolkit::MediaObstacle::Refused), IsEmpty());
    EXPECT_THAT(Check(toolkit::MediaObstacle::Silent),
                ElementsAre(Pair("unreadable-media", "/files/0/path")));
}

TEST_F(CheckMedia, AFolderThatDoesNotAnswerIsAskedOnce) {
    session_.files = {{.id = 1, .path = "/gone/a.wav"},
                      {.id = 2, .path = "/gone/b.wav"},
                      {.id = 3, .path = "/there/c.wav"}};
    std::vector<std::string> asked;
    const auto findings = toolkit::CheckMedia(session_, [&](const std::string& path) {
        asked.push_back(path);
        return toolkit::MediaResult(path.starts_with("/gone") ? toolkit::MediaObstacle::Silent
                                                              : toolkit::MediaObstacle::Missing);
    });
    EXPECT_THAT(asked, ElementsAre("/gone/a.wav", "/there/c.wav"));
    EXPECT_EQ(findings.size(), 3U);
}

TEST(MediaProperties, OnlyRegularFilesAreOpened) {
    const test::TemporaryFolder folder;
    const std::string pipe = (folder / "pipe.wav").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path :
         {pipe, std::string("/dev/zero"), std::string("/nowhere/a.wav"), folder.Path().string()}) {
        EXPECT_EQ(toolkit::ReadMediaProperties(path),
                  toolkit::MediaResult(toolkit::MediaObstacle::Missing))
            << path;
    }
}

TEST(MediaProperties, AFileThatDoesNotAnswerIsNotWaitedFor) {
    EXPECT_EQ(toolkit::ReadMediaProperties("/dev/null", std::chrono::milliseconds(-1)),
              toolkit::MediaResult(toolkit::MediaObstacle::Silent));
}

// Files

class CheckFile : public testing::Test {
protected:
    std::vector<std::string> Check(const char* name, const std::string& content) const {
        std::ofstream(folder_ / name, std::ios::binary) << content;
        const orvo::CheckResult result = orvo::CheckFile(folder_ / name, {.media = false});
        std::vector<std::string> lines;
        for (Finding finding : result.findings) {
            finding.file = name;
            std::ostringstream line;
            line << finding;
            lines.push_back(line.str());
        }
        return lines;
    }

    test::TemporaryFolder folder_;
};

TEST_F(CheckFile, ColumnsCountCharactersInEveryEncoding) {
    const std::u16string text =
        u"<?xml version='1.0' encoding='UTF-16'?><orvo>\r\n<files><file id='1' "
        u"mediaHandler='\U0001F600\u00E9' mood=''/></files></orvo>";
    std::string wide = "\xFF\xFE";
    for (const char16_t unit : text) {
        wide += static_cast<char>(unit & 0xFF);
        wide += static_cast<char>(unit >> 8);
    }
    EXPECT_THAT(Check("a.orvo", wide), testing::Contains(testing::StartsWith("a.orvo:2:39: ")));
    EXPECT_THAT(Check("a.orvo",
                      "<orvo>\n<files><file id='1' mediaHandler='\xF0\x9F\x98\x80\xC3\xA9"
                      "' mood=''/></files></orvo>"),
                testing::Contains(testing::StartsWith("a.orvo:2:39: ")));
    EXPECT_THAT(Check("a.orvo",
                      "<?xml version='1.0' encoding='ISO-8859-1'?><orvo>\n<files><file "
                      "id='1' mediaHandler='\xE9\xE9' mood=''/></files></orvo>"),
                testing::Contains(testing::StartsWith("a.orvo:2:39: ")));
}

TEST_F(CheckFile, FindingsComeInTheOrderOfTheDocument) {
    const std::vector<std::string> lines =
        Check("a.orvo",
              "<orvo><session sampleRate='0' mood=''>\n<x/><tracks><audioTrack id='1'><audioClip "
              "fileID='3'/></audioTrack></tracks></session>\n<y/></orvo>");
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_THAT(lines[0], testing::StartsWith("a.orvo:1:16: error: "));
    EXPECT_THAT(lines[1], testing::StartsWith("a.orvo:1:31: warning: "));
    EXPECT_THAT(lines[2], testing::StartsWith("a.orvo:2:1: warning: "));
    EXPECT_THAT(lines[3], testing::StartsWith("a.orvo:2:43: error: "));
    EXPECT_THAT(lines[4], testing::StartsWith("a.orvo:3:1: warning: "));
}

TEST_F(CheckFile, AWrongValueNamesWhatItIsReadAs) {
    EXPECT_THAT(Check("a.orvo", "<orvo><session bitDepth='many' sampleRate='48000,5'/></orvo>"),
                ElementsAre(testing::HasSubstr("is read as \"32\""),
                            testing::HasSubstr("is read as \"48000\"")));
}

TEST_F(CheckFile, ATrackWithoutAnIdIsNamedThoughNothingCanBeRead) {
    EXPECT_THAT(Check("a.orvo", "<orvo><session><tracks><busTrack/></tracks></session></orvo>"),
                ElementsAre("a.orvo:1:24: error: <busTrack> without an id; the session cannot be "
                            "read [missing-id]"));
}

TEST_F(CheckFile, TheNameDecidesWhetherItIsJson) {
    EXPECT_THAT(Check("a.JSON", "{\"duration\": -1}"),
                ElementsAre("a.JSON:/duration: error: the session is -1 samples long "
                            "[negative-length]"));
    EXPECT_THAT(Check("b.json", "{\"duration\": }"),
                ElementsAre(testing::StartsWith("b.json:1:14: error: ")));
    EXPECT_THAT(Check("c.orvo", "{\"duration\": -1}"),
                ElementsAre(testing::HasSubstr("[not-a-session]")));
}

TEST_F(CheckFile, ACodeIsOneWordAndStandsOnce) {
    std::set<std::string_view> codes;
    for (const orvo::CheckCode& code : orvo::CheckCodes()) {
        EXPECT_TRUE(codes.insert(code.code).second) << code.code;
        EXPECT_EQ(orvo::FindCheckCode(code.code), &code);
        for (const std::string_view text :
             {code.title, code.explanation, code.example, code.remedy}) {
            EXPECT_THAT(text, testing::Not(IsEmpty())) << code.code;
        }
    }
    EXPECT_EQ(orvo::FindCheckCode("nothing"), nullptr);
}

}  // namespace
