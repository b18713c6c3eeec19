#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include <orvo/Differences.h>
#include <orvo/Json.h>
#include <orvo/Lookup.h>
#include <orvo/Session.h>
#include <orvo/Times.h>
#include "tests/support/TemporaryFolder.h"

// What is exported is enough for a program that has the public headers and the shared library.

namespace {

int Fade(const std::filesystem::path& from, const std::filesystem::path& to) {
    orvo::ReadResult read = orvo::ReadSession(from);
    if (!read) {
        for (const orvo::Message& message : read.messages) {
            std::cerr << message << '\n';
        }
        return 1;
    }
    for (orvo::AudioTrack& track : read.session.audioTracks) {
        for (orvo::AudioClip& clip : track.clips) {
            clip.fadeIn = orvo::Fade{.endPoint = 480};
        }
    }
    return orvo::WriteSession(read.session, to) ? 0 : 1;
}

TEST(PublicLibrary, AProgramReadsChangesAndWritesASession) {
    const test::TemporaryFolder folder;
    const orvo::Session song{.audioTracks = {{.id = 1, .clips = {{.id = 2, .duration = 4800}}}}};
    ASSERT_TRUE(orvo::WriteSession(song, folder / "song.orvo"));
    ASSERT_EQ(Fade(folder / "song.orvo", folder / "faded.orvo"), 0);
    const orvo::ReadResult faded = orvo::ReadSession(folder / "faded.orvo");
    ASSERT_TRUE(faded);
    EXPECT_EQ(faded.session.audioTracks[0].clips[0].fadeIn, orvo::Fade{.endPoint = 480});
}

TEST(PublicLibrary, AMissingFileIsAnError) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(Fade(folder / "none.orvo", folder / "faded.orvo"), 1);
}

TEST(PublicLibrary, JsonAndDifferencesWorkWithoutThePlugin) {
    const orvo::Session one{.sampleRate = 44100};
    const orvo::ReadResult read = orvo::FromJson(orvo::ToJson(one));
    ASSERT_TRUE(read);
    EXPECT_EQ(read.session, one);
    const orvo::Differences differences = orvo::FindDifferences(one, {}, 10);
    ASSERT_EQ(differences.count, 1u);
    std::ostringstream text;
    text << differences.list[0];
    EXPECT_EQ(text.str(), "/sampleRate: 44100 became 48000");
    EXPECT_FALSE(orvo::FromJson("{").ok);
    EXPECT_EQ(orvo::FromJson("{\n  x").messages.at(0).line, 2u);
}

TEST(PublicLibrary, ValuesPrint) {
    std::ostringstream text;
    text << orvo::Fade{.endPoint = 480};
    EXPECT_NE(text.str().find("\"endPoint\": 480"), std::string::npos);
}

TEST(PublicLibrary, ThingsAreFoundAndPositionsRead) {
    orvo::Session song{.audioTracks = {{.id = 1, .outputTrackId = 2}, {.id = 2}},
                       .timeFormat = {.format = orvo::TimeDisplay::Ntsc30Drop}};
    EXPECT_EQ(orvo::SessionIndex(song).FindAudioTrack(2), orvo::FindAudioTrack(song, 2));
    EXPECT_EQ(orvo::FeedsInto(song, song.audioTracks[1]).at(0).source, &song.audioTracks[0]);
    EXPECT_EQ(orvo::ParsePosition(song, "00:01:00;02").position, 2882880);
    EXPECT_EQ(orvo::FormatPosition(song, 2882880), "00:01:00;02");
    std::ostringstream text;
    text << orvo::ParsePosition(song, "one minute").messages.at(0);
    EXPECT_EQ(text.str(), "this is not timecode; write hh:mm:ss:ff, as 01:00:00:00");
}

}  // namespace
