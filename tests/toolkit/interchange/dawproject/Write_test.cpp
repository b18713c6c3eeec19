#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>

#include <orvo/Interchange.h>
#include <orvo/Session.h>
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/dawproject/Archive.h"
#include "tests/toolkit/interchange/dawproject/CarriedParts.h"
#include "toolkit/GeneratedSession.h"
#include "toolkit/interchange/dawproject/Entries.h"

namespace {

using orvo::Fidelity;
using orvo::InterchangeKind;
using testing::HasSubstr;
using testing::Not;

orvo::Component ControlAt(float value) {
    orvo::Component control;
    control.parameters[0].value = value;
    return control;
}

/// A session that loses nothing.
orvo::Session PlainSession() {
    orvo::Session session;
    session.musicalTime = {.beatsPerMinute = 100, .beatsPerBar = 3, .noteLength = 4};
    session.files = {{.id = 5, .path = "/nowhere/a.wav"}};
    session.audioTracks = {{.id = 7, .name = "Voice", .hue = 0},
                           {.id = 9, .index = 1, .kind = orvo::TrackKind::Master, .name = "Out"}};
    session.audioTracks[0].outputTrackId = 9;
    session.audioTracks[0].fader = ControlAt(0);
    session.audioTracks[1].audioChannelType = orvo::ChannelType::Stereo;
    session.audioTracks[0].clips = {{.id = 1,
                                     .fileId = 5,
                                     .sourceInPoint = 24000,
                                     .duration = 48000,
                                     .startPoint = 96000,
                                     .hue = -1,
                                     .name = "A & \"b\""}};
    return session;
}

class DawProjectWriting : public testing::Test {
protected:
    std::string Written(const orvo::Session& session, orvo::ExportOptions options = {}) {
        result_ = orvo::ExportSession(session, InterchangeKind::DawProject, File(), options);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return test::EntryOf(File(), "project.xml");
    }

    orvo::Session Back(const orvo::ImportOptions& options = {}) {
        read_ = orvo::ImportSession(File(), InterchangeKind::DawProject, options);
        EXPECT_TRUE(read_) << testing::PrintToString(read_.messages);
        return read_.session;
    }

    std::filesystem::path File() const { return folder_ / "a.dawproject"; }

    /// Whether the report of the writing says something of a place.
    bool Says(Fidelity fidelity, std::string_view place) const {
        return std::ranges::any_of(result_.report.facts, [&](const orvo::InterchangeFact& fact) {
            return fact.fidelity == fidelity && fact.place == place;
        });
    }

    test::TemporaryFolder folder_;
    orvo::ExportResult result_;
    orvo::ImportResult read_;
};

TEST_F(DawProjectWriting, ASmallSessionIsThisDocument) {
    EXPECT_EQ(Written(PlainSession()),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<Project version="1.0">
  <Application name="OrvoNative" version="1.0"/>
  <Transport>
    <Tempo id="tempo" unit="bpm" value="100"/>
    <TimeSignature id="meter" numerator="3" denominator="4"/>
  </Transport>
  <Structure>
    <Track id="t1" name="Voice" color="#d95757" contentType="audio" loaded="true">
      <Channel id="t1ch" role="regular" destination="t2ch">
        <Mute id="t1mute" value="false"/>
        <Pan id="t1pan" unit="normalized" value="0.5" min="0" max="1"/>
        <Volume id="t1vol" unit="linear" value="1" min="0" max="2"/>
      </Channel>
    </Track>
    <Track id="t2" name="Out" contentType="audio" loaded="true">
      <Channel id="t2ch" role="master" audioChannels="2">
        <Mute id="t2mute" value="false"/>
        <Pan id="t2pan" unit="normalized" value="0.5" min="0" max="1"/>
        <Volume id="t2vol" unit="linear" value="1" min="0" max="2"/>
      </Channel>
    </Track>
  </Structure>
  <Arrangement id="arrangement">
    <Lanes id="lanes" timeUnit="seconds">
      <Lanes id="t1lanes" track="t1">
        <Clips id="t1clips">
          <Clip time="2" duration="1" name="A &amp; &quot;b&quot;" contentTimeUnit="seconds" playStart="0.5" playStop="1.5">
            <Audio id="c1" channels="2" sampleRate="48000" duration="1.5">
              <File path="/nowhere/a.wav" external="true"/>
            </Audio>
          </Clip>
        </Clips>
      </Lanes>
    </Lanes>
  </Arrangement>
</Project>
)");
    EXPECT_EQ(result_.report.Count(Fidelity::Lost), 0u)
        << testing::PrintToString(result_.report.facts);
}

TEST_F(DawProjectWriting, AStretchedClipPlaysWarpedMedia) {
    orvo::Session session = PlainSession();
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    clip.stretch = {.stretchMode = orvo::StretchMode::Realtime, .stretchRatio = 2};
    const std::string project = Written(session, {.ownData = false});
    EXPECT_THAT(project, HasSubstr(R"(playStart="1" playStop="2")"));  // stretched
    EXPECT_THAT(project, HasSubstr(R"(<Warp time="2" contentTime="1"/>)"));
    test::ExpectCarried(session, Back());
}

TEST_F(DawProjectWriting, ALoopedClipLoopsItsWholeFile) {
    orvo::Session session = PlainSession();
    session.audioTracks[0].clips[0].looped = true;
    EXPECT_THAT(Written(session, {.ownData = false}), HasSubstr(R"(loopStart="0" loopEnd="1.5")"));
    EXPECT_TRUE(Back().audioTracks[0].clips[0].looped);
}

TEST_F(DawProjectWriting, EnvelopesOfClipsCountInTheirContent) {
    orvo::Session session = PlainSession();
    orvo::AudioClip& clip = session.audioTracks[0].clips[0];
    clip.pan = ControlAt(-0.5F);
    clip.gain = ControlAt(0);
    clip.gain->parameters[0].automation = orvo::AutomationLane{
        .keyframes = {{.value = 0, .sampleOffset = 0, .type = orvo::KeyframeType::Hold},
                      {.value = -6, .sampleOffset = 24000}}};
    const std::string project = Written(session, {.ownData = false});
    EXPECT_THAT(project, HasSubstr(R"(<RealPoint time="0.5" value="1" interpolation="hold"/>)"));
    EXPECT_THAT(project, HasSubstr(R"(<RealPoint time="1" value="0.50118)"));
    EXPECT_THAT(project, HasSubstr(R"(<RealPoint time="0.5" value="0.25")"));
    test::ExpectCarried(session, Back());
}

TEST_F(DawProjectWriting, ABusThatOnlySendsFeedIsAnEffectChannel) {
    orvo::Session session = PlainSession();
    session.audioTracks.push_back({.id = 3, .index = 2, .kind = orvo::TrackKind::Bus});
    session.audioTracks.push_back({.id = 4, .index = 3, .kind = orvo::TrackKind::Bus});
    session.audioTracks[0].sendList.emplace().slots = {
        orvo::SendSlot{.sendOutputId = 3, .preFader = true}};
    const std::string project = Written(session, {.ownData = false});
    EXPECT_THAT(project, HasSubstr(R"(<Send id="t1s0" destination="t3ch" type="pre">)"));
    EXPECT_THAT(project, HasSubstr(R"(id="t3ch" role="effect")"));
    EXPECT_THAT(project, HasSubstr(R"(id="t4ch" role="submix")"));
    test::ExpectCarried(session, Back());
}

TEST_F(DawProjectWriting, CharactersThatXmlCannotHoldAreCounted) {
    orvo::Session session = PlainSession();
    session.audioTracks[0].name = "a\x01\xFF";
    EXPECT_THAT(Written(session), HasSubstr("name=\"a\uFFFD\uFFFD\""));
    EXPECT_EQ(result_.report.lostByNature.at("characters that XML cannot hold"), 2u);
}

TEST_F(DawProjectWriting, ALoudFaderHasNoUpperBound) {
    orvo::Session session = PlainSession();
    session.audioTracks[0].fader = ControlAt(12);
    EXPECT_THAT(Written(session), Not(HasSubstr(R"(value="3.98107170553497251" min="0" max)")));
    EXPECT_THAT(Written(session), HasSubstr(R"(<Volume id="t1vol" unit="linear" value="3.98)"));
}

TEST_F(DawProjectWriting, SilenceAndInfinityComeBackFinite) {
    orvo::Session session = PlainSession();
    session.audioTracks[0].fader = ControlAt(-std::numeric_limits<float>::infinity());
    EXPECT_THAT(Written(session, {.ownData = false}), HasSubstr(R"(unit="linear" value="0")"));
    EXPECT_EQ(Back().audioTracks[0].fader->parameters.at(0).value, -144.0F);
}

TEST_F(DawProjectWriting, WhatHasNoPlaceIsReportedWithItsPlace) {
    orvo::Session session = PlainSession();
    session.smpteStart = 5;
    session.audioTracks[0].phaseInverted = true;
    session.audioTracks[0].sendList.emplace().slots = {orvo::SendSlot{.sendOutputId = 77}};
    session.audioTracks[0].clips[0].lockedInTime = true;
    session.audioTracks[0].clips[0].channelSources = {{0, 1}};
    session.files.push_back({.id = 6, .path = "/nowhere/b.wav"});
    Written(session);
    EXPECT_TRUE(Says(Fidelity::Lost, "/smpteStart"));
    EXPECT_TRUE(Says(Fidelity::Lost, "/audioTracks/0/phaseInverted"));
    EXPECT_TRUE(Says(Fidelity::Lost, "/audioTracks/0/sendList/sendSlots/0"));
    EXPECT_TRUE(Says(Fidelity::Lost, "/audioTracks/0/audioClips/0/lockedInTime"));
    EXPECT_TRUE(Says(Fidelity::Lost, "/audioTracks/0/audioClips/0/channelMap"));
    EXPECT_TRUE(Says(Fidelity::Lost, "/files/1"));
    EXPECT_FALSE(Says(Fidelity::Lost, "/files/0"));
}

TEST_F(DawProjectWriting, AnUntouchedFileComesBackWhole) {
    for (const char* name : {"music", "picture", "radio-spot", "sound-library", "spoken-word"}) {
        const std::filesystem::path file =
            test::SourceFolder() / "examples" / name / (std::string(name) + ".orvo");
        const orvo::ReadResult session = orvo::ReadSession(file);
        ASSERT_TRUE(session);
        Written(session.session);
        EXPECT_EQ(Back(), session.session) << name;
        EXPECT_TRUE(read_.report.facts.empty()) << name;
    }
}

TEST_F(DawProjectWriting, WhatIsCarriedComesBackWithoutOurEntry) {
    for (const char* name : {"music", "picture", "radio-spot", "spoken-word"}) {
        SCOPED_TRACE(name);
        const std::filesystem::path file =
            test::SourceFolder() / "examples" / name / (std::string(name) + ".orvo");
        const orvo::ReadResult session = orvo::ReadSession(file);
        ASSERT_TRUE(session);
        Written(session.session, {.ownData = false});
        test::ExpectCarried(session.session, Back());
    }
}

TEST_F(DawProjectWriting, WhatIsCarriedOfGeneratedSessionsComesBack) {
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        const auto number = static_cast<std::uint32_t>(seed);
        const orvo::Session session = toolkit::GenerateSession({.tracks = 2 + number % 20,
                                                                .clips = number % 7,
                                                                .slots = number % 4,
                                                                .keyframes = number % 6},
                                                               seed);
        Written(session, {.ownData = false});
        test::ExpectCarried(session, Back({.sampleRate = session.sampleRate}));
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST_F(DawProjectWriting, AChangedFileIsReadAnewAndThatIsSaid) {
    orvo::Session session = PlainSession();
    session.smpteStart = 5;
    Written(session);
    test::Entries entries = test::ReadArchive(File());
    std::string& project = entries[0].second;
    project.replace(project.find("Voice"), 5, "Choir");
    test::WriteArchive(File(), entries);
    const orvo::Session read = Back();
    EXPECT_EQ(read.audioTracks[0].name, "Choir");
    EXPECT_EQ(read.smpteStart, 0);
    ASSERT_EQ(read_.messages.size(), 1u);
    EXPECT_EQ(read_.messages[0].severity, orvo::Severity::Warning);
    EXPECT_THAT(read_.messages[0].what, HasSubstr("changed"));
}

TEST_F(DawProjectWriting, ADamagedSessionEntryIsNotNeeded) {
    Written(PlainSession());
    test::Entries entries = test::ReadArchive(File());
    const auto own =
        std::ranges::find(entries, "orvo/session.json", &test::Entries::value_type::first);
    ASSERT_NE(own, entries.end());
    own->second = "{";
    test::WriteArchive(File(), entries);
    EXPECT_EQ(Back().audioTracks[0].name, "Voice");
    EXPECT_EQ(read_.messages.size(), 1u);
}

TEST_F(DawProjectWriting, EqualSessionsGiveEqualFiles) {
    Written(PlainSession());
    const std::string first = test::ReadFile(File());
    Written(PlainSession());
    EXPECT_EQ(test::ReadFile(File()), first);
}

class DawProjectMedia : public DawProjectWriting {
protected:
    DawProjectMedia() {
        const std::filesystem::path sound =
            test::SourceFolder() / "examples" / "radio-spot" / "media" / "kick-drum.wav";
        content_ = test::ReadFile(sound);
        std::filesystem::create_directory(folder_ / "in");
        std::ofstream(folder_ / "in" / "kick.wav", std::ios::binary) << content_;
        session_ = PlainSession();
        session_.files[0].path = (folder_ / "in" / "kick.wav").string();
        session_.audioTracks[0].clips[0].sourceInPoint = 0;
    }

    std::string content_;
    orvo::Session session_;
};

TEST_F(DawProjectMedia, EmbeddedMediaAreAnEntryAsTheyAre) {
    const std::string project = Written(session_, {.embedMedia = true});
    EXPECT_THAT(project, HasSubstr(R"(<File path="audio/kick.wav" external="false"/>)"));
    EXPECT_EQ(test::EntryOf(File(), "audio/kick.wav"), content_);
}

TEST_F(DawProjectMedia, EntriesHaveDistinctNamesThatAllSystemsTake) {
    session_.files = {{.id = 1, .path = "/a/\u00DCber: 1.wav"},
                      {.id = 2, .path = "/b/kick.wav"},
                      {.id = 3, .path = "/c/KICK.wav"},
                      {.id = 4, .path = "/d/.."},
                      {.id = 5, .path = "\xFF"}};
    const auto entries = toolkit::interchange::dawproject::MediaEntriesOf(session_);
    EXPECT_THAT(entries,
                testing::ElementsAre(testing::Pair(1, "audio/\u00DCber_ 1.wav"),
                                     testing::Pair(2, "audio/kick.wav"),
                                     testing::Pair(3, "audio/KICK-2.wav"),
                                     testing::Pair(4, "audio/_.._"), testing::Pair(5, "audio/_")));
}

TEST_F(DawProjectMedia, ExtractionReplacesNothing) {
    Written(session_, {.embedMedia = true, .ownData = false});
    folder_.Write("kick.wav", "mine");
    const orvo::Session read = Back({.mediaFolder = folder_.Path()});
    EXPECT_EQ(test::ReadFile(folder_ / "kick.wav"), "mine");
    ASSERT_EQ(read.files.size(), 1u);
    EXPECT_EQ(read.files[0].path, (folder_ / "kick-2.wav").string());
    EXPECT_EQ(test::ReadFile(read.files[0].path), content_);
    EXPECT_FALSE(read.audioTracks[0].clips[0].offline);
}

TEST_F(DawProjectMedia, WithoutAFolderMediaStayInside) {
    Written(session_, {.embedMedia = true, .ownData = false});
    EXPECT_TRUE(Back().audioTracks[0].clips[0].offline);
}

TEST_F(DawProjectMedia, ARestoredSessionGetsBackWhatIsMissing) {
    Written(session_, {.embedMedia = true});
    EXPECT_EQ(Back({.mediaFolder = folder_ / "out"}), session_);  // nothing is missing
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out"));
    std::filesystem::remove(folder_ / "in" / "kick.wav");
    const orvo::Session read = Back({.mediaFolder = folder_ / "out"});
    EXPECT_EQ(read.files[0].path, (folder_ / "out" / "kick.wav").string());
    EXPECT_EQ(test::ReadFile(folder_ / "out" / "kick.wav"), content_);
}

TEST_F(DawProjectMedia, NothingIsExtractedFromAFileThatIsRefused) {
    Written(session_, {.embedMedia = true, .ownData = false});
    test::Entries entries = test::ReadArchive(File());
    std::string& project = entries[0].second;
    project.replace(project.find("time=\"2\""), 8, "time=\"x\"");
    test::WriteArchive(File(), entries);
    const orvo::ImportResult read =
        orvo::ImportSession(File(), InterchangeKind::DawProject, {.mediaFolder = folder_ / "out"});
    EXPECT_FALSE(read);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out"));
}

TEST_F(DawProjectWriting, ACancelledWritingLeavesNothing) {
    const orvo::ExportResult result =
        orvo::ExportSession(PlainSession(), InterchangeKind::DawProject, File(),
                            {.progress = [](double) { return false; }});
    EXPECT_TRUE(result.cancelled);
    EXPECT_FALSE(std::filesystem::exists(File()));
}

}  // namespace
