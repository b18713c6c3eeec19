// Sessions on their way through OpenTimelineIO and back.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include <orvo/Differences.h>
#include <orvo/Interchange.h>
#include <orvo/Json.h>
#include <orvo/Session.h>
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "toolkit/Dice.h"
#include "toolkit/GeneratedSession.h"

namespace {

using orvo::AudioClip;
using orvo::ExportOptions;
using orvo::InterchangeKind;
using orvo::Session;

class OtioTrips : public testing::Test {
protected:
    std::string Written(const Session& session, const ExportOptions& options = {}) {
        const std::filesystem::path file = folder_ / "a.otio";
        const orvo::ExportResult result =
            orvo::ExportSession(session, InterchangeKind::Otio, file, options);
        EXPECT_TRUE(result) << testing::PrintToString(result.messages);
        return result ? test::ReadFile(file) : std::string();
    }

    Session ReadBack() {
        const orvo::ImportResult result =
            orvo::ImportSession(folder_ / "a.otio", InterchangeKind::Otio);
        EXPECT_TRUE(result) << testing::PrintToString(result.messages);
        EXPECT_EQ(result.report.facts.size(), 0u) << testing::PrintToString(result.report.facts);
        return result.session;
    }

    /// Expects the whole session back, and the same bytes from a second trip.
    void ExpectEqualTrip(const Session& session) {
        const std::string text = Written(session);
        const Session back = ReadBack();
        if (back != session) {
            const auto differences = orvo::FindDifferences(session, back, 1).list;
            ADD_FAILURE() << differences.size() << " differences, the first: "
                          << (differences.empty() ? "" : testing::PrintToString(differences[0]));
        }
        EXPECT_EQ(Written(back), text);
    }

    test::TemporaryFolder folder_ = test::TemporaryFolder::InMemory();
};

Session Example(const std::string& name) {
    const auto path = test::SourceFolder() / "examples" / name / (name + ".orvo");
    orvo::ReadResult read = orvo::ReadSession(path);
    EXPECT_TRUE(read) << testing::PrintToString(read.messages);
    return read.session;
}

TEST_F(OtioTrips, KeepTheWholeOfTheExamples) {
    for (const char* const name :
         {"radio-spot", "spoken-word", "music", "picture", "sound-library"}) {
        SCOPED_TRACE(name);
        ExpectEqualTrip(Example(name));
    }
}

TEST_F(OtioTrips, KeepTheWholeOfGeneratedSessions) {
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        ExpectEqualTrip(toolkit::GenerateSession({.tracks = 9, .clips = 6, .keyframes = 4}, seed));
    }
}

/// Clips that overlap in all ways: linked, contained, of no length, stretched, with long fades.
AudioClip CrowdedClip(toolkit::Dice& dice, std::uint32_t id) {
    AudioClip clip{.id = id,
                   .fileId = 1,
                   .sourceInPoint = static_cast<std::int64_t>(dice.Below(100)),
                   .duration = static_cast<std::int64_t>(dice.Below(60)),
                   .startPoint = static_cast<std::int64_t>(dice.Below(400)),
                   .name = "Clip " + std::to_string(id)};
    clip.autoCrossfade = dice.Below(2) == 0;
    clip.crossFadeTailClipId = static_cast<std::int32_t>(dice.Below(30));
    if (dice.Below(2) == 0) {
        clip.fadeIn = orvo::Fade{.endPoint = static_cast<std::int64_t>(dice.Below(70))};
    }
    if (dice.Below(2) == 0) {
        clip.fadeOut = orvo::Fade{.endPoint = static_cast<std::int64_t>(dice.Below(70))};
    }
    if (dice.Below(3) == 0) {
        clip.stretch =
            orvo::ClipStretch{.stretchMode = orvo::StretchMode::Rendered,
                              .stretchRatio = 0.7 + 0.1 * static_cast<double>(dice.Below(9))};
    }
    return clip;
}

Session CrowdedSession(std::uint64_t seed) {
    toolkit::Dice dice(seed);
    Session session;
    session.files = {{.id = 1, .path = "/nowhere/a b.wav"}};
    session.audioTracks = {{.id = 4, .index = 1, .name = "Crowd"}, {.id = 9, .name = "Calm"}};
    for (std::uint32_t id = 0; id < 30; ++id) {
        session.audioTracks[0].clips.push_back(CrowdedClip(dice, id));
    }
    session.duration = 1000;
    return session;
}

TEST_F(OtioTrips, KeepTheWholeOfCrowdedTracks) {
    for (std::uint64_t seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        ExpectEqualTrip(CrowdedSession(seed));
    }
}

TEST_F(OtioTrips, KeepWhatOpenTimelineIOCannotPlace) {
    Session session = CrowdedSession(1);
    std::vector<AudioClip>& clips = session.audioTracks[0].clips;
    clips = {{.id = 1, .duration = 10, .startPoint = -5, .name = "early"},
             {.id = 2, .duration = -10, .name = "inside out"},
             {.id = 3, .duration = 10, .startPoint = std::int64_t{1} << 60, .name = "late"},
             {.id = 4, .duration = 10, .startPoint = 5, .name = "here"}};
    ExpectEqualTrip(session);
}

TEST_F(OtioTrips, KeepOddTexts) {
    Session session = CrowdedSession(2);
    session.audioTracks[0].name = "lone \xED\xA0\x80 mark \xEF\xB7\x90 \"quote\" \\ \n";
    session.files[0].path = "/nowhere/100% \xC3\xA4.wav";
    session.audioTracks[0].clips[0].name = std::string("zero \0 inside", 13);
    ExpectEqualTrip(session);
}

TEST_F(OtioTrips, OfPathsOfWindowsKeepThem) {
    Session session = CrowdedSession(3);
    session.files[0].path = "D:\\takes\\a b.wav";
    ExpectEqualTrip(session);
}

// In frames

TEST_F(OtioTrips, InFramesRoundOnceAndThenStay) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(seed);
        const Session session = toolkit::GenerateSession({.tracks = 5, .clips = 9}, seed);
        Written(session, {.frameRate = 25});
        const Session back = ReadBack();
        const std::string text = Written(back, {.frameRate = 25});
        const Session again = ReadBack();
        EXPECT_EQ(again, back);
        EXPECT_EQ(Written(again, {.frameRate = 25}), text);
        for (std::size_t track = 0; track < session.audioTracks.size(); ++track) {
            for (std::size_t i = 0; i < session.audioTracks[track].clips.size(); ++i) {
                const auto rounded = back.audioTracks[track].clips[i].startPoint;
                const auto start = session.audioTracks[track].clips[i].startPoint;
                EXPECT_LE(std::abs(rounded - start), session.sampleRate / 50 + 1);
            }
        }
    }
}

}  // namespace
