#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include <orvo/Interchange.h>
#include "tests/support/TemporaryFolder.h"
#include "tests/toolkit/interchange/dawproject/Archive.h"

namespace {

using orvo::AudioClip;
using orvo::Fidelity;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Reads documents as other programs write them.
class DawProjectReading : public testing::Test {
protected:
    /// @param structure    within "Structure"
    /// @param arrangement  within "Arrangement"
    orvo::Session Read(std::string_view structure, std::string_view arrangement,
                       std::string_view transport = kUsualTransport) {
        std::string project = "<Project version=\"1.0\"><Application name=\"a\" version=\"1\"/>";
        project += transport;
        project.append("<Structure>").append(structure).append("</Structure>");
        project.append("<Arrangement>").append(arrangement).append("</Arrangement></Project>");
        test::WriteArchive(folder_ / "a.dawproject", {{"project.xml", project}});
        result_ = orvo::ImportSession(folder_ / "a.dawproject", orvo::InterchangeKind::DawProject);
        EXPECT_TRUE(result_) << testing::PrintToString(result_.messages);
        return result_.session;
    }

    /// Reads the content of one track, in beats, at 120 beats a minute and 48000 samples a second:
    /// 24000 samples a beat.
    std::vector<AudioClip> ReadClips(std::string_view clips) {
        const orvo::Session session = Read(kTrack, "<Lanes timeUnit=\"beats\"><Lanes track=\"t\">" +
                                                       std::string(clips) + "</Lanes></Lanes>");
        return session.audioTracks.at(0).clips;
    }

    bool Says(Fidelity fidelity, std::string_view what) const {
        return std::ranges::any_of(result_.report.facts, [&](const orvo::InterchangeFact& fact) {
            return fact.fidelity == fidelity && fact.what.find(what) != std::string::npos;
        });
    }

    static constexpr std::string_view kUsualTransport =
        R"(<Transport><Tempo unit="bpm" value="120"/></Transport>)";
    static constexpr std::string_view kTrack =
        R"(<Track id="t" name="T" contentType="audio"><Channel id="c" role="regular"/></Track>)";

    test::TemporaryFolder folder_;
    orvo::ImportResult result_;
};

/// A sound of four seconds.
const std::string kSound =
    R"(<Audio sampleRate="48000" channels="2" duration="4"><File path="/a.wav" external="true"/></Audio>)";

auto Placed(std::int64_t start, std::int64_t duration, std::int64_t sourceIn) {
    return testing::AllOf(Field("startPoint", &AudioClip::startPoint, start),
                          Field("duration", &AudioClip::duration, duration),
                          Field("sourceInPoint", &AudioClip::sourceInPoint, sourceIn));
}

TEST_F(DawProjectReading, SoundBelowBeatsPlaysAtItsOwnSpeed) {
    const auto clips = ReadClips(R"(<Clips><Clip time="4" duration="2" playStart="1">)" + kSound +
                                 "</Clip></Clips>");
    ASSERT_THAT(clips, ElementsAre(Placed(96000, 48000, 24000)));
    EXPECT_FALSE(clips[0].stretch);
}

TEST_F(DawProjectReading, ContentMayCountInSeconds) {
    EXPECT_THAT(ReadClips(R"(<Clips><Clip time="4" duration="2" contentTimeUnit="seconds"
                                          playStart="1">)" +
                          kSound + "</Clip></Clips>"),
                ElementsAre(Placed(96000, 48000, 48000)));
}

TEST_F(DawProjectReading, ClipsWithoutADurationEndWhereTheyStop) {
    EXPECT_THAT(ReadClips(R"(<Clips><Clip time="0" contentTimeUnit="seconds" playStart="1"
                                          playStop="3">)" +
                          kSound + R"(</Clip><Clip time="8" contentTimeUnit="seconds">)" + kSound +
                          "</Clip></Clips>"),
                ElementsAre(Placed(0, 96000, 48000), Placed(192000, 192000, 0)));
}

TEST_F(DawProjectReading, NestedClipsAndWarpsAreFlattened) {
    // An outer clip of which the inner one is a stretched event, as one program writes all clips.
    const auto clips = ReadClips(R"(<Clips>
      <Clip time="2" duration="4" playStart="1" fadeTimeUnit="beats" fadeInTime="0.5" name="Outer">
        <Clips><Clip time="0" duration="16" contentTimeUnit="beats" playStart="0">
          <Warps contentTimeUnit="seconds" timeUnit="beats">)" +
                                 kSound + R"(
            <Warp time="0" contentTime="0"/><Warp time="16" contentTime="4"/>
          </Warps></Clip></Clips></Clip></Clips>)");
    // 16 beats are 8 seconds: twice as long.
    ASSERT_THAT(clips, ElementsAre(Placed(48000, 96000, 12000)));
    ASSERT_TRUE(clips[0].stretch);
    EXPECT_NEAR(clips[0].stretch->stretchRatio, 2, 1e-12);
    EXPECT_EQ(clips[0].name, "Outer");
    EXPECT_EQ(clips[0].fadeIn, (orvo::Fade{.endPoint = 12000}));
}

TEST_F(DawProjectReading, LoopsOfAPartAreRepeatedAndGrouped) {
    const orvo::Session session =
        Read(kTrack, R"(<Lanes timeUnit="seconds"><Clips track="t"><Clip time="1" duration="3.5"
        playStart="0.5" loopStart="1" loopEnd="2" name="Loop">)" +
                         kSound + "</Clip></Clips></Lanes>");
    EXPECT_THAT(session.audioTracks.at(0).clips,
                ElementsAre(Placed(48000, 72000, 24000), Placed(120000, 48000, 48000),
                            Placed(168000, 48000, 48000)));
    ASSERT_THAT(session.clipGroups, SizeIs(1));
    EXPECT_THAT(session.clipGroups[0].items, SizeIs(3));
    EXPECT_EQ(session.clipGroups[0].name, "Loop");
    EXPECT_EQ(session.duration, 216000);
}

TEST_F(DawProjectReading, ALoopOfAWholeFileStaysOne) {
    const auto clips = ReadClips(R"(<Clips><Clip time="0" duration="40" contentTimeUnit="seconds"
        playStart="1" loopStart="0" loopEnd="4">)" +
                                 kSound + "</Clip></Clips>");
    ASSERT_THAT(clips, ElementsAre(Placed(0, 960000, 48000)));
    EXPECT_TRUE(clips[0].looped);
}

TEST_F(DawProjectReading, MoreWarpsSplitTheClip) {
    const auto clips = ReadClips(R"(<Clips><Clip time="0" duration="8" contentTimeUnit="beats">
        <Warps contentTimeUnit="seconds" timeUnit="beats">)" +
                                 kSound + R"(<Warp time="0" contentTime="0"/>
        <Warp time="2" contentTime="1"/><Warp time="8" contentTime="4"/></Warps></Clip>
        <Clip time="8" duration="8" contentTimeUnit="beats">
        <Warps contentTimeUnit="seconds" timeUnit="beats">)" +
                                 kSound + R"(<Warp time="0" contentTime="0"/>
        <Warp time="2" contentTime="1"/><Warp time="8" contentTime="2"/></Warps></Clip></Clips>)");
    // The first one's warps lie on one line of the sound's own speed.
    ASSERT_THAT(clips, ElementsAre(Placed(0, 192000, 0), Placed(192000, 48000, 0),
                                   Placed(240000, 144000, 48000)));
    EXPECT_FALSE(clips[0].stretch);
    EXPECT_FALSE(clips[1].stretch);
    EXPECT_NEAR(clips[2].stretch.value().stretchRatio, 3, 1e-12);
}

TEST_F(DawProjectReading, MediaAreNotPlayedBeyondTheirEnd) {
    EXPECT_THAT(ReadClips(R"(<Clips><Clip time="0" duration="100">)" + kSound + "</Clip></Clips>"),
                ElementsAre(Placed(0, 192000, 0)));
}

TEST_F(DawProjectReading, ReferencesAreFollowedAndDisabledClipsMuted) {
    const std::string named = R"(<Audio id="a" sampleRate="48000" channels="2" duration="4">
        <File path="/a.wav" external="true"/></Audio>)";
    const auto clips = ReadClips(R"(<Clips><Clip time="0" duration="2" enable="false">)" + named +
                                 R"(</Clip><Clip time="4" duration="2" reference="a"/></Clips>)");
    ASSERT_THAT(clips, ElementsAre(Placed(0, 48000, 0), Placed(96000, 48000, 0)));
    EXPECT_EQ(clips[0].mute.value().parameters.at(0).value, 1.0F);
    EXPECT_FALSE(clips[1].mute);
}

TEST_F(DawProjectReading, ACrossfadeBeginsBeforeItsClip) {
    const auto clips = ReadClips(R"(<Clips><Clip time="0" duration="4" fadeOutTime="1">)" + kSound +
                                 R"(</Clip><Clip time="3.5" duration="2" playStart="1"
                                           fadeInTime="-0.5">)" +
                                 kSound + "</Clip></Clips>");
    ASSERT_THAT(clips, ElementsAre(Placed(0, 96000, 0), Placed(72000, 60000, 12000)));
    EXPECT_EQ(clips[0].crossFadeTailClipId, static_cast<std::int32_t>(clips[1].id));
    EXPECT_EQ(clips[1].crossFadeHeadClipId, static_cast<std::int32_t>(clips[0].id));
    EXPECT_EQ(clips[1].fadeIn, (orvo::Fade{.endPoint = 12000}));
}

TEST_F(DawProjectReading, EnvelopesCountFromTheStartOfTheClip) {
    const auto clips = ReadClips(R"(<Clips><Clip time="4" duration="2" contentTimeUnit="seconds"
        playStart="1"><Lanes>)" + kSound +
                                 R"(<Points unit="linear"><Target expression="gain"/>
        <RealPoint time="0.5" value="1"/><RealPoint time="1.5" value="0.5"/></Points>
        <Points unit="normalized"><Target expression="pan"/><RealPoint time="0" value="1"/></Points>
        </Lanes></Clip></Clips>)");
    ASSERT_THAT(clips, SizeIs(1));
    const auto& keyframes = clips[0].gain.value().parameters.at(0).automation.value().keyframes;
    ASSERT_THAT(keyframes, SizeIs(2));
    EXPECT_EQ(keyframes[0], (orvo::Keyframe{.type = orvo::KeyframeType::Hold}));
    EXPECT_EQ(keyframes[1].sampleOffset, 24000);
    EXPECT_NEAR(keyframes[1].value, -6.0206, 1e-4);
    EXPECT_EQ(clips[0].pan.value().parameters.at(0).value, 1.0F);
}

TEST_F(DawProjectReading, TempoAutomationMovesClips) {
    const orvo::Session session =
        Read(kTrack,
             R"(<Lanes timeUnit="beats"><Clips track="t"><Clip time="8" duration="4">)" + kSound +
                 R"(</Clip></Clips></Lanes><TempoAutomation timeUnit="beats"><Target parameter="x"/>
        <RealPoint time="0" value="120"/><RealPoint time="4" value="60"/></TempoAutomation>)");
    // Four beats of half a second, four of a whole one.
    EXPECT_THAT(session.audioTracks.at(0).clips, ElementsAre(Placed(288000, 192000, 0)));
    EXPECT_TRUE(Says(Fidelity::Lost, "one tempo"));
}

TEST_F(DawProjectReading, ARampOfTheTempoIsEvenByBeats) {
    const orvo::Session session =
        Read(kTrack, R"(<Lanes timeUnit="beats"><Clips track="t"><Clip time="4" duration="2">)" +
                         kSound +
                         R"(</Clip></Clips></Lanes><TempoAutomation><Target parameter="x"/>
        <RealPoint time="0" value="60" interpolation="linear"/><RealPoint time="4" value="120"/>
        </TempoAutomation>)");
    // 60 · 4 · ln 2 / 60 seconds
    EXPECT_EQ(session.audioTracks.at(0).clips.at(0).startPoint, 133084);
}

TEST_F(DawProjectReading, TrackLanesAreLevelsInDecibels) {
    const orvo::Session session = Read(
        R"(<Track id="t" contentType="audio"><Channel id="c" role="regular">
        <Mute id="m" value="true"/><Pan id="p" unit="linear" min="-1" max="1" value="0.5"/>
        <Volume id="v" unit="decibel" value="-3"/></Channel></Track>)",
        R"(<Lanes timeUnit="seconds"><Lanes track="t">
        <Points unit="linear"><Target parameter="v"/><RealPoint time="0" value="1" interpolation="linear"/>
        <RealPoint time="1" value="0" interpolation="linear"/></Points>
        <Points><Target parameter="m"/><BoolPoint time="1" value="true"/></Points>
        <Points><Target parameter="nobody"/><RealPoint time="1" value="1"/></Points></Lanes></Lanes>)");
    const orvo::AudioTrack& track = session.audioTracks.at(0);
    EXPECT_EQ(track.fader.value().parameters.at(0).value, -3.0F);
    EXPECT_EQ(track.pan.value().parameters.at(0).value, 0.5F);
    EXPECT_EQ(track.mute.value().parameters.at(0).value, 1.0F);
    const auto& keyframes = track.fader.value().parameters.at(0).automation.value().keyframes;
    EXPECT_EQ(keyframes.front().value, 0.0F);
    EXPECT_EQ(keyframes.back().value, -144.0F);
    // Half the way is half the amplitude.
    const auto half = std::ranges::min_element(keyframes, {}, [](const orvo::Keyframe& keyframe) {
        return std::abs(keyframe.sampleOffset - 24000);
    });
    const double share = 1 - static_cast<double>(half->sampleOffset) / 48000;
    EXPECT_NEAR(half->value, 20 * std::log10(share), 0.01);
    EXPECT_EQ(track.mute->parameters.at(0).automation.value().keyframes,
              (std::vector<orvo::Keyframe>{
                  {.value = 1, .sampleOffset = 48000, .type = orvo::KeyframeType::Hold}}));
    EXPECT_TRUE(Says(Fidelity::Lost, "moves nothing known"));
}

TEST_F(DawProjectReading, TracksWithoutADestinationFeedTheirGroupOrTheMaster) {
    const orvo::Session session = Read(
        R"(<Track id="g" name="Group" contentType="tracks"><Channel id="gc" role="regular"/>
             <Track name="In" contentType="audio"><Channel role="regular"/></Track></Track>
           <Track name="Out" contentType="audio"><Channel role="regular"/></Track>
           <Channel id="m" name="Main" role="master"/>)",
        "");
    const auto& tracks = session.audioTracks;
    ASSERT_THAT(tracks, SizeIs(4));
    EXPECT_EQ(tracks[0].kind, orvo::TrackKind::Bus);
    EXPECT_EQ(tracks[1].outputTrackId, static_cast<std::int32_t>(tracks[0].id));
    EXPECT_EQ(tracks[0].outputTrackId, static_cast<std::int32_t>(tracks[3].id));
    EXPECT_EQ(tracks[2].outputTrackId, static_cast<std::int32_t>(tracks[3].id));
    EXPECT_EQ(tracks[3].kind, orvo::TrackKind::Master);
    EXPECT_EQ(tracks[3].outputTrackId, orvo::kNone);
}

TEST_F(DawProjectReading, ClipsThatAMasterCannotHoldGetATrack) {
    const orvo::Session session =
        Read(R"(<Track id="t" name="Main" contentType="audio"><Channel role="master"/></Track>)",
             R"(<Lanes timeUnit="seconds"><Clips track="t"><Clip time="0" duration="1">)" + kSound +
                 "</Clip></Clips></Lanes>");
    ASSERT_THAT(session.audioTracks, SizeIs(2));
    EXPECT_THAT(session.audioTracks[0].clips, IsEmpty());
    EXPECT_THAT(session.audioTracks[1].clips, SizeIs(1));
    EXPECT_EQ(session.audioTracks[1].outputTrackId, 1);
    EXPECT_TRUE(Says(Fidelity::Moved, "new one"));
}

TEST_F(DawProjectReading, NotesKeepTheirPlace) {
    const orvo::Session session =
        Read(R"(<Track id="t" name="Keys" contentType="notes"><Channel role="regular"/></Track>)",
             R"(<Lanes timeUnit="beats"><Clips track="t"><Clip time="4" duration="4"><Notes>
        <Note time="0" duration="1" channel="0" key="60"/><Note time="1" duration="1" channel="0"
        key="62"/></Notes></Clip></Clips></Lanes>)");
    ASSERT_THAT(session.audioTracks.at(0).midiClips, SizeIs(1));
    EXPECT_EQ(session.audioTracks[0].kind, orvo::TrackKind::Instrument);
    EXPECT_EQ(session.audioTracks[0].midiClips[0].startPoint, 96000);
    EXPECT_EQ(session.audioTracks[0].midiClips[0].duration, 96000);
    EXPECT_EQ(result_.report.lostByNature.at("notes"), 2u);
}

TEST_F(DawProjectReading, DevicesKeepTheirParametersInTheirOwnUnits) {
    const orvo::Session session = Read(
        R"(<Track contentType="audio"><Channel role="regular"><Devices>
        <Equalizer deviceName="EQ" deviceRole="audioFX"><Enabled value="false"/>
          <Band type="bell"><Freq unit="hertz" value="440"/><Gain unit="decibel" value="-3"/></Band>
        </Equalizer>
        <Vst3Plugin deviceName="Verb" deviceID="0123456789ABCDEF" deviceRole="audioFX"><Parameters>
          <RealParameter name="Size" parameterID="17" unit="normalized" value="0.25"/>
          <BoolParameter name="Freeze" parameterID="17" value="true"/></Parameters>
          <State path="missing.bin"/></Vst3Plugin></Devices></Channel></Track>)",
        "");
    const auto& slots = session.audioTracks.at(0).effectsRack.value().slots;
    ASSERT_THAT(slots, SizeIs(2));
    EXPECT_TRUE(slots[0]->bypassed);
    const orvo::Component& equaliser = *slots[0]->component;
    EXPECT_EQ(equaliser.parameters.at(0).name, "Band 1 (bell) Freq");
    EXPECT_EQ(equaliser.parameters.at(0).value, 440.0F);
    EXPECT_TRUE(Says(Fidelity::Guessed, "keeps its unit"));
    const orvo::Component& reverb = *slots[1]->component;
    EXPECT_EQ(reverb.componentId, "0123456789ABCDEF");
    EXPECT_EQ(reverb.parameters.at(17).value, 0.25F);
    EXPECT_EQ(reverb.parameters.at(0).name, "Freeze");
    EXPECT_TRUE(Says(Fidelity::Approximated, "another number"));
    EXPECT_TRUE(Says(Fidelity::Lost, "state of the device"));
}

TEST_F(DawProjectReading, AByteOrderMarkAndMarkersAndMetadataAreRead) {
    test::WriteArchive(
        folder_ / "a.dawproject",
        {{"project.xml",
          "\xEF\xBB\xBF<?xml version=\"1.0\"?><Project version=\"1.0\"><Arrangement><Markers "
          "timeUnit=\"seconds\"><Marker time=\"1.5\" name=\"Chorus\"/></Markers></Arrangement>"
          "</Project>"},
         {"metadata.xml", "<MetaData><Title>Song</Title><Producer>P</Producer></MetaData>"}});
    result_ = orvo::ImportSession(folder_ / "a.dawproject", orvo::InterchangeKind::DawProject);
    ASSERT_TRUE(result_) << testing::PrintToString(result_.messages);
    EXPECT_THAT(result_.session.xmpMetadata, HasSubstr("Chorus"));
    EXPECT_THAT(result_.session.xmpMetadata, HasSubstr("<dc:title>Song</dc:title>"));
    EXPECT_EQ(result_.session.sampleRate, 48000u);
    ASSERT_TRUE(orvo::ExportSession(result_.session, orvo::InterchangeKind::DawProject,
                                    folder_ / "b.dawproject"));
    EXPECT_THAT(
        test::EntryOf(folder_ / "b.dawproject", "metadata.xml"),
        testing::AllOf(HasSubstr("<Title>Song</Title>"), HasSubstr("<Producer>P</Producer>")));
    EXPECT_THAT(test::EntryOf(folder_ / "b.dawproject", "project.xml"),
                HasSubstr(R"(<Marker time="1.5" name="Chorus"/>)"));
}

TEST_F(DawProjectReading, WhatASessionHasNothingForIsCounted) {
    Read(R"(<Track id="t" contentType="audio" comment="loud"><Channel role="regular"><Devices>
         <ClapPlugin deviceName="A" deviceRole="audioFX" deviceVendor="V" pluginVersion="2"/>
         </Devices></Channel></Track>)",
         "");
    EXPECT_EQ(result_.report.lostByNature.at("comments"), 1u);
    EXPECT_EQ(result_.report.lostByNature.at("vendors of devices"), 1u);
    EXPECT_EQ(result_.report.lostByNature.at("versions of devices"), 1u);
}

TEST_F(DawProjectReading, RelativeMediaLieBesideTheFile) {
    const orvo::Session session =
        Read(kTrack, R"(<Lanes timeUnit="seconds"><Clips track="t"><Clip time="0" duration="1">
        <Audio sampleRate="48000" channels="2" duration="4"><File path="x/../a.wav" external="true"/>
        </Audio></Clip><Clip time="2" duration="1"><Audio sampleRate="48000" channels="2"
        duration="4"><File path="file:///b%20c.wav" external="true"/></Audio></Clip></Clips></Lanes>)");
    ASSERT_THAT(session.files, SizeIs(2));
    EXPECT_EQ(session.files[0].path, (folder_ / "a.wav").string());
    EXPECT_EQ(session.files[1].path, "/b c.wav");
}

}  // namespace
