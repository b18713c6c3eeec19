#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"

namespace {

using orvo::Fidelity;
using orvo::Session;
using testing::ElementsAre;
using testing::HasSubstr;

Session SessionForArdour() {
    Session session;
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}};
    session.audioTracks = {{.id = 1, .index = 0, .name = "A/B"},
                           {.id = 2, .index = 1, .name = "A-B"}};
    session.audioTracks[0].clips = {
        {.id = 7, .fileId = 5, .sourceInPoint = 10, .duration = 48000, .startPoint = 96000}};
    return session;
}

/// A WAV file of 16 bits and one channel.
std::string SoundOf(std::uint32_t rate, std::uint32_t frames) {
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i) {
            text += static_cast<char>(value >> (8 * i) & 0xFF);
        }
        return text;
    };
    const std::string format = number(1, 2) + number(1, 2) + number(rate, 4) + number(2 * rate, 4) +
                               number(2, 2) + number(16, 2);
    const std::string body = "WAVEfmt " + number(16, 4) + format + "data" + number(2 * frames, 4) +
                             std::string(std::size_t{2} * frames, '\0');
    return "RIFF" + number(static_cast<std::uint32_t>(body.size()), 4) + body;
}

class ArdourExport : public testing::Test {
protected:
    void Export(const Session& session, const orvo::ExportOptions& options = {}) {
        result_ =
            ExportSession(session, orvo::InterchangeKind::Ardour, folder_ / "my.ardour", options);
    }

    std::string Written(const Session& session) {
        Export(session);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return test::ReadFile(folder_ / "my.ardour" / "my.ardour");
    }

    test::TemporaryFolder folder_;
    orvo::ExportResult result_;
};

TEST_F(ArdourExport, APlaylistHasRegionsInTicks) {
    const std::string text = Written(SessionForArdour());
    EXPECT_THAT(text, HasSubstr("<Session version=\"7002\" name=\"my\" sample-rate=\"48000\""));
    EXPECT_THAT(text, HasSubstr("start=\"a58800\" length=\"a282240000@a564480000\""));
    EXPECT_THAT(text, HasSubstr("name=\"/nowhere/a.wav\""));
    EXPECT_THAT(result_.files, ElementsAre(folder_ / "my.ardour" / "my.ardour"));
}

TEST_F(ArdourExport, TimesAreRoundedUpWhereTheRateDoesNotDivide) {
    Session session = SessionForArdour();
    session.sampleRate = 44056;
    session.audioTracks[0].clips[0].startPoint = 1;  // 6406.391 ticks
    EXPECT_THAT(Written(session), HasSubstr("@a6407\""));
}

TEST_F(ArdourExport, NoTwoTracksHaveOneName) {
    const std::string text = Written(SessionForArdour());
    EXPECT_THAT(text, HasSubstr("name=\"A-B\" default-type"));
    EXPECT_THAT(text, HasSubstr("name=\"A-B 2\" default-type"));
    EXPECT_EQ(result_.report.Count(Fidelity::Approximated), 2u);
}

TEST_F(ArdourExport, MediaOfAnotherRateAreRefusedAndNothingIsLeft) {
    Session session = SessionForArdour();
    session.files[0].path = folder_.Write("a.wav", SoundOf(44100, 100)).string();
    Export(session);
    EXPECT_FALSE(result_);
    ASSERT_EQ(result_.messages.size(), 1u);
    EXPECT_EQ(result_.messages[0].file, session.files[0].path);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "my.ardour"));
}

TEST_F(ArdourExport, AClipEndsWhereItsMediaEnd) {
    Session session = SessionForArdour();
    session.files[0].path = folder_.Write("a.wav", SoundOf(48000, 1010)).string();
    EXPECT_THAT(Written(session), HasSubstr("length=\"a5880000@"));
    EXPECT_EQ(result_.report.Count(Fidelity::Lost), 1u);
}

TEST_F(ArdourExport, WhatIsAboveTheHighestPointOfAnEnvelopeIsTheRegionsOwnGain) {
    Session session = SessionForArdour();
    orvo::Component& gain = session.audioTracks[0].clips[0].gain.emplace();
    gain.parameters[0] = {
        .value = 0.0F,
        .automation = orvo::AutomationLane{
            .keyframes = {{.value = 20, .sampleOffset = 0}, {.value = 0, .sampleOffset = 48000}}}};
    const std::string text = Written(session);
    EXPECT_THAT(text, HasSubstr("scale-amplitude=\"5\""));
    EXPECT_THAT(text, HasSubstr("<events>a0 2\na282240000 0.2\n</events>"));
}

TEST_F(ArdourExport, AFolderThatIsNotEmptyIsRefused) {
    std::filesystem::create_directory(folder_ / "my.ardour");
    folder_.Write("my.ardour/old", "old");
    Export(SessionForArdour());
    EXPECT_FALSE(result_);
    ASSERT_EQ(result_.messages.size(), 1u);
    EXPECT_EQ(result_.messages[0].what, "the folder is not empty");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "my.ardour" / "my.ardour"));
}

TEST_F(ArdourExport, AFileInPlaceOfTheFolderIsRefused) {
    folder_.Write("my.ardour", "old");
    Export(SessionForArdour());
    EXPECT_FALSE(result_);
    EXPECT_EQ(test::ReadFile(folder_ / "my.ardour"), "old");
}

TEST_F(ArdourExport, NothingIsLeftIfLossIsForbidden) {
    Export(SessionForArdour(), {.strict = true});
    EXPECT_FALSE(result_);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "my.ardour"));
}

TEST_F(ArdourExport, NothingIsLeftOfAConversionThatWasCancelled) {
    Export(SessionForArdour(), {.progress = [](double) { return false; }});
    EXPECT_TRUE(result_.cancelled);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "my.ardour"));
}

}  // namespace
