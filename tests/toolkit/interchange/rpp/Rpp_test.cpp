#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "toolkit/interchange/rpp/RppText.h"

namespace {

using orvo::Component;
using orvo::Fidelity;
using orvo::Session;
using testing::HasSubstr;
using toolkit::interchange::QuotedForRpp;

Component LevelForRpp(float value) {
    Component control;
    control.parameters[0] = {.value = value};
    return control;
}

class RppExport : public testing::Test {
protected:
    std::string Written(const Session& session) {
        result_ = ExportSession(session, orvo::InterchangeKind::Rpp, folder_ / "a.rpp");
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return test::ReadFile(folder_ / "a.rpp");
    }

    test::TemporaryFolder folder_;
    orvo::ExportResult result_;
};

TEST_F(RppExport, ASmallSessionIsThisText) {
    Session session;
    session.files = {{.id = 5, .path = "/nowhere/a.flac"}};
    session.musicalTime = {.beatsPerMinute = 90.5, .beatsPerBar = 3, .noteLength = 8};
    session.audioTracks = {{.id = 1, .index = 0, .name = "Say \"it\"", .hue = 0},
                           {.id = 2, .index = 1, .kind = orvo::TrackKind::Master}};
    session.audioTracks[0].clips = {{.id = 7,
                                     .fileId = 5,
                                     .sourceInPoint = 24000,
                                     .duration = 48000,
                                     .startPoint = 12000,
                                     .name = "Hello",
                                     .lockedInTime = true}};
    session.audioTracks[0].clips[0].fadeIn = orvo::Fade{.endPoint = 480};
    session.audioTracks[1].fader = LevelForRpp(-20);
    session.clipGroups = {{.id = 4, .items = {{.trackId = 1, .clipId = 7}}}};
    EXPECT_EQ(Written(session),
              "<REAPER_PROJECT 0.1 \"7.0\" 0\n"
              "  TEMPO 90.5 3 8\n"
              "  SAMPLERATE 48000 1 0\n"
              "  MASTER_VOLUME 0.1 0\n"
              "  <TRACK\n"
              "    NAME 'Say \"it\"'\n"
              "    PEAKCOL 22501337\n"
              "    VOLPAN 1 0 -1\n"
              "    MUTESOLO 0 0 0\n"
              "    IPHASE 0\n"
              "    NCHAN 2\n"
              "    MAINSEND 1 0\n"
              "    <ITEM\n"
              "      POSITION 0.25\n"
              "      LENGTH 1\n"
              "      LOOP 0\n"
              "      FADEIN 0 0.01\n"
              "      FADEOUT 0 0\n"
              "      MUTE 0\n"
              "      LOCK 1\n"
              "      GROUP 1\n"
              "      NAME \"Hello\"\n"
              "      VOLPAN 1 0 1 -1\n"
              "      SOFFS 0.5\n"
              "      PLAYRATE 1 1 0 -1\n"
              "      <SOURCE FLAC\n"
              "        FILE \"/nowhere/a.flac\"\n"
              "      >\n"
              "    >\n"
              "  >\n"
              ">\n");
    EXPECT_TRUE(result_.report.IsFaithful()) << testing::PrintToString(result_.report.facts);
}

TEST_F(RppExport, ABusReceivesWhatFeedsIt) {
    Session session;
    session.audioTracks = {{.id = 1, .index = 0, .outputTrackId = 3},
                           {.id = 2, .index = 1},
                           {.id = 3, .index = 2, .kind = orvo::TrackKind::Bus}};
    session.audioTracks[1].sendList.emplace().slots = {
        orvo::SendSlot{.slotIndex = 0,
                       .sendOutputId = 3,
                       .preFader = true,
                       .sendComponent = LevelForRpp(-20),
                       .panComponent = LevelForRpp(0.5F)}};
    const std::string project = Written(session);
    EXPECT_THAT(project, HasSubstr("MAINSEND 0 0\n"));
    EXPECT_THAT(project, HasSubstr("    AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 0 -1 ''\n"
                                   "    AUXRECV 1 3 0.1 0.5 0 0 0 0 0 -1:U 0 -1 ''\n"));
}

TEST_F(RppExport, LevelsMoveAndOtherAutomationIsLost) {
    Session session;
    session.audioTracks = {{.id = 1}};
    session.audioTracks[0].fader = LevelForRpp(0);
    session.audioTracks[0].fader->parameters[0].automation = orvo::AutomationLane{
        .keyframes = {{.value = 0, .sampleOffset = 0, .type = orvo::KeyframeType::Hold},
                      {.value = -20, .sampleOffset = 48000}}};
    session.audioTracks[0].mute = session.audioTracks[0].fader;
    EXPECT_THAT(Written(session), HasSubstr("    <VOLENV2\n"
                                            "      ACT 1 -1\n"
                                            "      PT 0 1 1\n"
                                            "      PT 1 0.1 0\n"
                                            "    >\n"));
    ASSERT_EQ(result_.report.Count(Fidelity::Lost), 1u);
    EXPECT_EQ(result_.report.facts[0].place,
              "/audioTracks/0/trackMute/parameters/0/parameterKeyframes");
}

TEST_F(RppExport, AStretchIsARate) {
    Session session;
    session.audioTracks = {{.id = 1, .clips = {{.id = 2, .duration = 9}}}};
    session.audioTracks[0].clips[0].stretch =
        orvo::ClipStretch{.stretchMode = orvo::StretchMode::Realtime,
                          .stretchType = orvo::StretchType::Varispeed,
                          .stretchRatio = 0.5};
    EXPECT_THAT(Written(session), HasSubstr("PLAYRATE 2 0 0 -1\n"));
}

TEST_F(RppExport, TheClipsOfAMasterAreOnATrackOfTheirOwn) {
    Session session;
    session.audioTracks = {
        {.id = 1, .kind = orvo::TrackKind::Master, .name = "Main", .clips = {{.id = 2}}}};
    EXPECT_THAT(Written(session), HasSubstr("NAME \"Main clips\""));
    EXPECT_EQ(result_.report.Count(Fidelity::Moved), 1u);
}

TEST_F(RppExport, AFolderInPlaceOfTheFileIsAMessage) {
    std::filesystem::create_directory(folder_ / "a.rpp");
    result_ = ExportSession(Session(), orvo::InterchangeKind::Rpp, folder_ / "a.rpp");
    EXPECT_FALSE(result_);
    EXPECT_EQ(result_.messages.size(), 1u);
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "a.rpp"));
}

TEST(RppText, TheFirstMarkThatIsNotInATextEnclosesIt) {
    EXPECT_EQ(QuotedForRpp("a b"), "\"a b\"");
    EXPECT_EQ(QuotedForRpp("a\"b"), "'a\"b'");
    EXPECT_EQ(QuotedForRpp("a\"'b"), "`a\"'b`");
    EXPECT_EQ(QuotedForRpp("a\"'`b"), "`a\"''b`");
    EXPECT_EQ(QuotedForRpp("a\r\nb"), "\"a  b\"");
}

}  // namespace
