#include "toolkit/SessionSummary.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/tbcore/MediaHandlers.h"

using refhost::model::File;
using refhost::model::Session;
using toolkit::FormatTime;
using toolkit::SessionSummary;
using toolkit::Summarise;

namespace {

bool Never(const std::u16string&) {
    return false;
}

File MediaAt(std::u16string path) {
    File file;
    file.path = std::move(path);
    return file;
}

TEST(SessionSummary, TakesTheFormatOfTheSession) {
    Session session;
    session.formatDescription = u"described";
    session.sampleRate = 44100;
    session.channelCount = 6;
    session.bitDepth = 16;
    session.duration = 12;
    session.audioDevice.inputDeviceId = u"in";
    const SessionSummary summary = Summarise(session, Never);
    EXPECT_EQ(summary.format, u"described");
    EXPECT_EQ(summary.sampleRate, 44100u);
    EXPECT_EQ(summary.channelCount, 6);
    EXPECT_EQ(summary.bitDepth, 16u);
    EXPECT_EQ(summary.duration, 12);
    EXPECT_EQ(summary.audioDevice, session.audioDevice);
}

TEST(SessionSummary, TellsFoundMediaFromMissing) {
    Session session;
    session.files = {MediaAt(u"/there"), MediaAt(u"/gone"), MediaAt(u"/gone too")};
    const SessionSummary summary =
        Summarise(session, [](const std::u16string& path) { return path == u"/there"; });
    ASSERT_EQ(summary.media.size(), 3u);
    EXPECT_TRUE(summary.media[0].found);
    EXPECT_FALSE(summary.media[1].found);
    EXPECT_EQ(summary.MissingCount(), 2u);
}

TEST(SessionSummary, MediaWithoutAPathIsMissing) {
    Session session;
    session.files = {MediaAt(u"")};
    EXPECT_EQ(Summarise(session, [](const std::u16string&) { return true; }).MissingCount(), 1u);
}

TEST(SessionSummary, AnUnknownHandlerIsCalledByItsIdentifier) {
    Session session;
    session.files = {MediaAt(u"/a")};
    session.files[0].mediaHandler = u"nobody knows it";
    EXPECT_EQ(Summarise(session, Never).media[0].handlerName, u"nobody knows it");
}

TEST(FormatTime, ShowsHoursMinutesSecondsAndMilliseconds) {
    EXPECT_EQ(FormatTime(0, 48000), "0:00:00.000");
    EXPECT_EQ(FormatTime(48000LL * 3723 + 24000, 48000), "1:02:03.500");
}

TEST(FormatTime, RoundsToTheNearestMillisecondAcrossTheSecond) {
    EXPECT_EQ(FormatTime(47999, 48000), "0:00:01.000");
    EXPECT_EQ(FormatTime(23, 48000), "0:00:00.000");
    EXPECT_EQ(FormatTime(24, 48000), "0:00:00.001");
}

TEST(FormatTime, KeepsTheSign) {
    EXPECT_EQ(FormatTime(-48000, 48000), "-0:00:01.000");
}

TEST(FormatTime, HoldsForEveryCountOfSamples) {
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::min(), 1),
              "-2562047788015215:30:08.000");
    EXPECT_EQ(FormatTime(std::numeric_limits<std::int64_t>::max(), 4294967295), "596523:14:08.500");
}

TEST(FormatTime, HasNoTimeWithoutARate) {
    EXPECT_EQ(FormatTime(1, 0), std::nullopt);
}

TEST(ChannelLayoutName, NamesTheLayoutsThatAFileCanHold) {
    EXPECT_EQ(toolkit::ChannelLayoutName(1), "mono");
    EXPECT_EQ(toolkit::ChannelLayoutName(2), "stereo");
    EXPECT_EQ(toolkit::ChannelLayoutName(6), "5.1");
    EXPECT_EQ(toolkit::ChannelLayoutName(3), std::nullopt);
}

}  // namespace
