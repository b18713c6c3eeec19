#include "toolkit/SessionSummary.h"

#include <gtest/gtest.h>

#include "platform/tbcore/MediaHandlers.h"

using orvo::File;
using orvo::Session;
using toolkit::SessionSummary;
using toolkit::Summarise;

namespace {

bool Never(const std::string&) {
    return false;
}

File MediaAt(std::string path) {
    File file;
    file.path = std::move(path);
    return file;
}

TEST(SessionSummary, TakesTheFormatOfTheSession) {
    Session session;
    session.formatDescription = "described";
    session.sampleRate = 44100;
    session.audioChannelType = orvo::ChannelType::FivePointOne;
    session.bitDepth = 16;
    session.duration = 12;
    session.audioDevice.inputDeviceId = "in";
    const SessionSummary summary = Summarise(session, Never);
    EXPECT_EQ(summary.format, "described");
    EXPECT_EQ(summary.sampleRate, 44100u);
    EXPECT_EQ(summary.audioChannelType, orvo::ChannelType::FivePointOne);
    EXPECT_EQ(summary.bitDepth, 16u);
    EXPECT_EQ(summary.duration, 12);
    EXPECT_EQ(summary.audioDevice, session.audioDevice);
}

TEST(SessionSummary, DistinguishesFoundMediaFromMissing) {
    Session session;
    session.files = {MediaAt("/there"), MediaAt("/gone"), MediaAt("/gone too")};
    const SessionSummary summary =
        Summarise(session, [](const std::string& path) { return path == "/there"; });
    ASSERT_EQ(summary.media.size(), 3u);
    EXPECT_TRUE(summary.media[0].found);
    EXPECT_FALSE(summary.media[1].found);
    EXPECT_EQ(summary.MissingCount(), 2u);
}

TEST(SessionSummary, MediaWithoutAPathIsMissing) {
    Session session;
    session.files = {MediaAt("")};
    EXPECT_EQ(Summarise(session, [](const std::string&) { return true; }).MissingCount(), 1u);
}

TEST(SessionSummary, AnUnknownHandlerGoesByItsIdentifier) {
    Session session;
    session.files = {MediaAt("/a")};
    session.files[0].mediaHandler = "nobody knows it";
    EXPECT_EQ(Summarise(session, Never).media[0].handlerName, "nobody knows it");
}

TEST(SessionSummary, SaysWhichEventsTheMusicalTimelineHas) {
    Session session;
    session.metronome.globalTrackInfo.emplace().timeSignatureEvents = {1};
    const SessionSummary summary = Summarise(session, Never);
    EXPECT_FALSE(summary.tempoChanges);
    EXPECT_TRUE(summary.timeSignatureChanges);
    EXPECT_FALSE(summary.keySignatureChanges);
}

TEST(SessionSummary, CountsTheOfflineClipsOfAllTracks) {
    Session session;
    session.videoTracks.resize(1);
    session.videoTracks[0].clips.resize(2);
    session.videoTracks[0].clips[1].offline = true;
    session.audioTracks.resize(2);
    session.audioTracks[1].clips.resize(1);
    session.audioTracks[1].clips[0].offline = true;
    EXPECT_EQ(Summarise(session, Never).clipsOffline, 2u);
}

TEST(SessionSummary, TakesThePropertiesAndTheLengthOfTheMetadata) {
    Session session;
    session.properties = {{"reel", "2"}};
    session.xmpMetadata = "<x/>";
    const SessionSummary summary = Summarise(session, Never);
    EXPECT_EQ(summary.properties, session.properties);
    EXPECT_EQ(summary.xmpLength, 4u);
}

std::string NameOfFormat(kelcore::int32 format) {
    orvo::TimeFormat times;
    times.format = orvo::TimeDisplay{format};
    return toolkit::TimeFormatName(times);
}

TEST(TimeFormatName, NamesTheFormatsOfAFileAndNumbersOthers) {
    EXPECT_EQ(NameOfFormat(0), "decimal");
    EXPECT_EQ(NameOfFormat(1), "samples");
    EXPECT_EQ(NameOfFormat(3), "timecode, 30 frames a second, NTSC");
    EXPECT_EQ(NameOfFormat(4), "timecode, 30 frames a second, NTSC, drop frame");
    EXPECT_EQ(NameOfFormat(5), "format 5");
    EXPECT_EQ(NameOfFormat(6), "bars and beats");
    EXPECT_EQ(NameOfFormat(12), "timecode, 60 frames a second, NTSC");
    EXPECT_EQ(NameOfFormat(13), "timecode, 60 frames a second, NTSC, drop frame");
    EXPECT_EQ(NameOfFormat(14), "timecode, 24 frames a second, NTSC");
}

TEST(TimeFormatName, ATimecodeSaysItsRateAndHowFramesAreCounted) {
    orvo::TimeFormat times;
    times.format = orvo::TimeDisplay::Timecode;
    times.frameRate = 25;
    EXPECT_EQ(toolkit::TimeFormatName(times), "timecode, 25 frames a second");
    times.ntsc = true;
    times.dropFrame = true;
    EXPECT_EQ(toolkit::TimeFormatName(times), "timecode, 25 frames a second, NTSC, drop frame");
}

TEST(ChannelLayoutName, NamesTheLayoutsThatAFileCanHold) {
    EXPECT_EQ(toolkit::ChannelLayoutName(orvo::ChannelType::Mono), "mono");
    EXPECT_EQ(toolkit::ChannelLayoutName(orvo::ChannelType::Stereo), "stereo");
    EXPECT_EQ(toolkit::ChannelLayoutName(orvo::ChannelType::FivePointOne), "5.1");
    EXPECT_EQ(toolkit::ChannelLayoutName(orvo::ChannelType{3}), std::nullopt);
}

}  // namespace
