#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/edl/FrameClock.h"
#include "toolkit/interchange/edl/Reels.h"

namespace {

using orvo::Fidelity;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using toolkit::interchange::FrameClock;

constexpr std::int64_t kSecondOfEdl = 48000;

Session SessionForEdl(std::vector<orvo::AudioClip> clips) {
    Session session;
    session.files = {{.id = 5, .path = "/nowhere/door bell.wav"}, {.id = 6, .path = "/nowhere/b"}};
    session.audioTracks = {{.id = 1, .name = "Voice", .clips = std::move(clips)}};
    session.audioTracks[0].audioChannelType = orvo::ChannelType::Mono;
    return session;
}

class EdlExport : public testing::Test {
protected:
    void Export(const Session& session, const orvo::ExportOptions& options = {}) {
        result_ = ExportSession(session, orvo::InterchangeKind::Edl, folder_ / "a.edl", options);
    }

    std::string Written(const Session& session, const orvo::ExportOptions& options = {}) {
        Export(session, options);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return test::ReadFile(folder_ / "a.edl");
    }

    std::size_t Count(Fidelity fidelity, std::string_view what) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(result_.report.facts, [&](const orvo::InterchangeFact& fact) {
                return fact.fidelity == fidelity && fact.what.find(what) != std::string::npos;
            }));
    }

    test::TemporaryFolder folder_;
    orvo::ExportResult result_;
};

TEST_F(EdlExport, AClipIsAnEventWithExclusiveEnds) {
    EXPECT_EQ(Written(SessionForEdl({{.id = 2,
                                      .fileId = 5,
                                      .sourceInPoint = kSecondOfEdl,
                                      .duration = 2 * kSecondOfEdl,
                                      .startPoint = 10 * kSecondOfEdl,
                                      .name = "Hello"}})),
              "TITLE: a Voice\n"
              "FCM: NON-DROP FRAME\n"
              "001  DOORBELL A     C        00:00:01:00 00:00:03:00 00:00:10:00 00:00:12:00\n"
              "* FROM CLIP NAME:  Hello\n"
              "* SOURCE FILE:  /nowhere/door bell.wav\n");
    EXPECT_EQ(result_.report.Count(Fidelity::Approximated), 0u);
}

TEST_F(EdlExport, BoundariesAreRoundedNotLengths) {
    // 1920 samples a frame: from 0.6 to 2.4 frames.
    const std::string list =
        Written(SessionForEdl({{.id = 2, .fileId = 6, .duration = 3456, .startPoint = 1152}}));
    EXPECT_THAT(list, HasSubstr("C        00:00:00:00 00:00:00:01 00:00:00:01 00:00:00:02\n"));
    EXPECT_EQ(Count(Fidelity::Approximated, "rounded to frames"), 1u);
}

TEST_F(EdlExport, AClipOfLessThanHalfAFrameIsLeftOutAndTold) {
    EXPECT_EQ(Written(SessionForEdl({{.id = 2, .fileId = 6, .duration = 100, .startPoint = 0}})),
              "TITLE: a\nFCM: NON-DROP FRAME\n");
    EXPECT_EQ(Count(Fidelity::Lost, "less than half a frame"), 1u);
}

TEST_F(EdlExport, ACrossfadeIsADissolve) {
    const std::string list =
        Written(SessionForEdl({{.id = 2, .fileId = 5, .duration = 96000, .name = "A"},
                               {.id = 3, .fileId = 6, .duration = 96000, .startPoint = 76800}}));
    EXPECT_THAT(
        list,
        HasSubstr(
            "001  DOORBELL A     C        00:00:00:00 00:00:01:15 00:00:00:00 00:00:01:15\n"
            "* FROM CLIP NAME:  A\n"
            "* SOURCE FILE:  /nowhere/door bell.wav\n"
            "002  DOORBELL A     C        00:00:01:15 00:00:01:15 00:00:01:15 00:00:01:15\n"
            "002  B        A     D    010 00:00:00:00 00:00:02:00 00:00:01:15 00:00:03:15\n"));
}

TEST_F(EdlExport, FadesAreDissolvesWithBlack) {
    Session session = SessionForEdl({{.id = 2, .fileId = 6, .duration = 96000}});
    session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 19200};
    session.audioTracks[0].clips[0].fadeOut = orvo::Fade{.startPoint = 86400, .endPoint = 96000};
    EXPECT_EQ(Written(session),
              "TITLE: a Voice\n"
              "FCM: NON-DROP FRAME\n"
              "001  BL       A     C        00:00:00:00 00:00:00:00 00:00:00:00 00:00:00:00\n"
              "001  B        A     D    010 00:00:00:00 00:00:01:20 00:00:00:00 00:00:01:20\n"
              "* TO SOURCE FILE:  /nowhere/b\n"
              "002  B        A     C        00:00:01:20 00:00:01:20 00:00:01:20 00:00:01:20\n"
              "002  BL       A     D    005 00:00:00:00 00:00:00:05 00:00:01:20 00:00:02:00\n"
              "* SOURCE FILE:  /nowhere/b\n");
}

TEST_F(EdlExport, AStretchIsASpeed) {
    Session session = SessionForEdl({{.id = 2, .fileId = 6, .duration = 96000}});
    session.audioTracks[0].clips[0].stretch =
        orvo::ClipStretch{.stretchMode = orvo::StretchMode::Rendered, .stretchRatio = 2};
    EXPECT_THAT(
        Written(session),
        HasSubstr("001  B        A     C        00:00:00:00 00:00:01:00 00:00:00:00 00:00:02:00\n"
                  "M2   B              012.5                00:00:00:00\n"));
}

TEST_F(EdlExport, ClipsThatOverlapAreInListsOfTheirOwn) {
    Export(SessionForEdl(
        {{.id = 2, .fileId = 6, .duration = 96000, .autoCrossfade = false},
         {.id = 3, .fileId = 6, .duration = 9600, .startPoint = 48000, .autoCrossfade = false}}));
    EXPECT_THAT(result_.files, ElementsAre(folder_ / "a Voice.edl", folder_ / "a Voice-2.edl"));
    EXPECT_EQ(Count(Fidelity::Moved, "list of its own"), 1u);
}

TEST_F(EdlExport, AListHasUpTo999Events) {
    std::vector<orvo::AudioClip> clips(1000);
    for (std::size_t i = 0; i < clips.size(); ++i) {
        clips[i] = {
            .fileId = 6, .duration = 1920, .startPoint = static_cast<std::int64_t>(1920 * i)};
    }
    Export(SessionForEdl(clips));
    ASSERT_THAT(result_.files, SizeIs(2));
    EXPECT_THAT(test::ReadFile(result_.files[0]), HasSubstr("\n999  B"));
    EXPECT_THAT(test::ReadFile(result_.files[1]), HasSubstr("\n001  B"));
    EXPECT_THAT(test::ReadFile(result_.files[1]), testing::Not(HasSubstr("\n002")));
    EXPECT_EQ(Count(Fidelity::Moved, "999 events"), 1u);
}

TEST_F(EdlExport, TooManyListsAreRefusedAndNothingIsWritten) {
    std::vector<orvo::AudioClip> clips(501);
    for (orvo::AudioClip& clip : clips) {
        clip = {.fileId = 6, .duration = 1920, .autoCrossfade = false};
    }
    Export(SessionForEdl(clips));
    EXPECT_FALSE(result_);
    EXPECT_THAT(result_.files, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(EdlExport, DropFrameSkipsNumbers) {
    const Session session = SessionForEdl(
        {{.id = 2, .fileId = 6, .duration = 48048, .startPoint = std::int64_t{60} * 48048}});
    const std::string list = Written(session, {.frameRate = 29.97, .dropFrame = true});
    EXPECT_THAT(list, HasSubstr("FCM: DROP FRAME\n"));
    EXPECT_THAT(list, HasSubstr("00:00:00;00 00:00:01;00 00:01:00;02 00:01:01;02"));
}

TEST_F(EdlExport, DropFrameNeedsARateThatHasIt) {
    Export(SessionForEdl({}), {.frameRate = 25, .dropFrame = true});
    EXPECT_FALSE(result_);
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(EdlExport, ARateThatIsNoTimecodeIsRefused) {
    for (const double rate : {0.0, -25.0, 26.5, 1e9, std::nan("")}) {
        Export(SessionForEdl({}), {.frameRate = rate});
        EXPECT_FALSE(result_) << rate;
    }
}

TEST_F(EdlExport, WhatIsBeforeTheStartOrAfterADayIsLost) {
    Export(SessionForEdl(
        {{.id = 2, .fileId = 6, .duration = 96000, .startPoint = -48000},
         {.id = 3, .fileId = 6, .duration = 96000, .startPoint = 86400 * kSecondOfEdl},
         {.id = 4,
          .fileId = 6,
          .duration = 9,
          .startPoint = std::numeric_limits<std::int64_t>::max()}}));
    EXPECT_THAT(test::ReadFile(folder_ / "a.edl"),
                HasSubstr("00:00:01:00 00:00:02:00 00:00:00:00 00:00:01:00"));
    EXPECT_EQ(Count(Fidelity::Lost, "before the start"), 1u);
    EXPECT_EQ(Count(Fidelity::Lost, "after a day"), 2u);
}

TEST(EdlReels, NamesAreShortPlainAndUnique) {
    Session session;
    session.files = {{.id = 1, .path = "/a/door-bell one.wav"},
                     {.id = 2, .path = "C:\\b\\door bell one.wav"},
                     {.id = 3, .path = "/a/DOORBELL.aif"},
                     {.id = 4, .path = "/a/\u00e4.wav"},
                     {.id = 5, .path = "/a/bl.wav"},
                     {.id = 6, .path = ""}};
    const toolkit::interchange::Reels reels(session);
    EXPECT_EQ(reels.Of(1), "DOORBELL");
    EXPECT_EQ(reels.Of(2), "DOORBEL2");
    EXPECT_EQ(reels.Of(3), "DOORBEL3");
    EXPECT_EQ(reels.Of(4), "AX");
    EXPECT_EQ(reels.Of(5), "BL2");
    EXPECT_EQ(reels.Of(6), "AX");
    EXPECT_EQ(reels.Of(99), "AX");
}

TEST(EdlClock, CountsNtscFramesExactly) {
    const FrameClock clock(48000, {.count = 30, .ntsc = true, .dropFrame = true});
    EXPECT_EQ(clock.FramesOf(48048), 30);
    EXPECT_EQ(clock.FramesOf(-48048), -30);
    EXPECT_EQ(clock.FramesOf(800), 0);
    EXPECT_EQ(clock.FramesOf(801), 1);
    EXPECT_TRUE(clock.IsOnFrame(8008));
    EXPECT_FALSE(clock.IsOnFrame(8009));
    EXPECT_EQ(clock.TimecodeOf(1800), "00:01:00;02");
    EXPECT_EQ(clock.TimecodeOf(clock.EndOfDay() - 1), "23:59:59;29");
}

}  // namespace
