#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/cli/Tool.h"

using test::kSmallSession;
using test::Outcome;
using test::RunTool;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class InfoTest : public test::ToolTest {};

TEST_F(InfoTest, ShowsASessionAsAlignedTables) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder_);
    EXPECT_EQ(outcome.output,
              "a.orvo\n"
              "  Format       Vantor Tembra 25.1 Multitrack Session\n"
              "  Duration     0:00:03.750 (180000 samples)\n"
              "  Sample rate  48000 Hz\n"
              "  Channels     2 (stereo)\n"
              "  Bit depth    24 bits\n"
              "  Input        Desk: 1 Mic, 2 Line\n"
              "  Output       none\n"
              "  Media        2 files, 1 missing\n"
              "\n"
              "  Id  State    Handler               Path\n"
              "   1  found    Waveform Audio (WAV)  here.wav\n"
              "  20  missing                        /nowhere/gone.wav\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.exitCode, 0);
}

constexpr const char* kMixedSession = R"(<orvo><session sampleRate="1000">
<tracks><audioTrack id="1"><trackParameters><name>Voice</name></trackParameters>
<trackAudioParameters audioChannelType="mono"><trackOutput type="trackID" outputID="2"/>
<component id="trackMute"><parameter index="0" parameterValue="1"/></component></trackAudioParameters>
<effectsRack><slot slotIndex="3" powered="false"><component name="Reverb" presetName="Hall">
<parameter index="0"><parameterKeyframes readOnly="true"><parameterKeyframe value="1"/></parameterKeyframes></parameter>
</component></slot></effectsRack>
<sendList><sendSlot slotIndex="0" sendOutputID="2" preFader="true"/></sendList>
<audioClip id="5" name="Line one" fileID="9" startPoint="1500" sourceInPoint="0" sourceOutPoint="250"/>
</audioTrack><busTrack id="2"><trackParameters><name>Mix</name></trackParameters></busTrack></tracks>
<sessionState><timeFormatState beatsPerMinute="90.5" beatsPerBar="3" noteLength="8"/></sessionState>
<clipGroups><clipGroup id="4"><name>Pair</name><item trackID="1" clipID="5"/><item trackID="1" clipID="6"/></clipGroup></clipGroups>
<metronome enabled="true" pattern="downBeat upBeat "/></session></orvo>)";

TEST_F(InfoTest, ShowsTracksGroupsTempoAndMetronome) {
    folder_.Write("a.orvo", kMixedSession);
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder_);
    EXPECT_THAT(
        outcome.output,
        HasSubstr("  Tempo        90.5 beats a minute, 3/8\n"
                  "  Metronome    on, 2 beats in the pattern\n"
                  "  Media        none\n"
                  "\n"
                  "  Track  Id  Name   Channels  Output  Sends  Effects  Clips  Lanes  Keyframes\n"
                  "  audio   1  Voice  mono      Mix         1        1      1      1          1\n"
                  "  bus     2  Mix\n"
                  "\n"
                  "  Group  Name  Clips  Notes\n"
                  "      4  Pair      2  1 clip missing\n"));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoTest, ShowsTheRequestedDetails) {
    folder_.Write("a.orvo", kMixedSession);
    const Outcome outcome =
        RunTool({"info", "--tracks", "--effects", "--clips", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("  audio 1: Voice\n"
                                          "    Input       none\n"
                                          "    Output      Mix\n"
                                          "    Switches    muted\n"
                                          "    Send        Mix (pre-fader)\n"
                                          "    Automation  1 lane, 1 keyframe\n"));
    EXPECT_THAT(outcome.output,
                HasSubstr("    Slot  Effect  State     Preset  Parameters  Automation\n"
                          "       3  Reverb  bypassed  Hall             1  1 lane, 1 keyframe\n"));
    EXPECT_THAT(
        outcome.output,
        HasSubstr(
            "  Track  Clip  Name            Start       Length  Media    Source in  Group  Notes\n"
            "  Voice     5  Line one  0:00:01.500  0:00:00.250      9  0:00:00.000  Pair   "
            "no media\n"));
}

constexpr const char* kSessionOfLittle = R"(<orvo><session sampleRate="0" duration="1"><tracks>
<videoTrack id="5"><trackParameters><name>Film</name></trackParameters>
<videoClip id="9"><videoFormat width="720" height="576" timeScale="0"/></videoClip>
<videoClip id="10"><videoFormat width="720" height="576" timeScale="25" sampleSize="0" parNumerator="0"/></videoClip>
<videoClip id="11"><videoFormat width="720" height="576" timeScale="25" sampleSize="1" parNumerator="1" parDenominator="1"/></videoClip></videoTrack>
<instrumentTrack id="1"><trackParameters><name>Keys</name></trackParameters>
<trackAudioParameters><trackInput inputID="4"/></trackAudioParameters>
<effectsRack><slot slotIndex="0"/></effectsRack>
<sendList><sendSlot slotIndex="0"><component id="sendComponent">
<parameter index="0" parameterValue="1"><parameterKeyframes><parameterKeyframe value="1"/></parameterKeyframes></parameter>
</component></sendSlot></sendList>
<midiClip id="6" name="Run" startPoint="7"/></instrumentTrack></tracks></session></orvo>)";

TEST_F(InfoTest, ShowsASessionThatOmitsMostFacts) {
    folder_.Write("a.orvo", kSessionOfLittle);
    const Outcome outcome =
        RunTool({"info", "--tracks", "--effects", "--clips", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("  Duration     1 sample\n"));
    EXPECT_THAT(outcome.output, HasSubstr("    Picture  720 x 576\n"
                                          "    Picture  720 x 576\n"
                                          "    Picture  720 x 576, 25 frames a second\n"));
    EXPECT_THAT(outcome.output, HasSubstr("nowhere (post-fader), 1 lane, 1 keyframe\n"));
    EXPECT_THAT(outcome.output, HasSubstr("(empty)"));
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(InfoTest, ShowsNoTableOfClipsIfThereAreNone) {
    folder_.Write("a.orvo", "<orvo/>");
    const Outcome outcome = RunTool({"info", "--clips", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, Not(HasSubstr("Clip")));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoTest, PrintsNullForMissingFacts) {
    folder_.Write("a.orvo", kSessionOfLittle);
    const Outcome outcome = RunTool({"info", "--json", "a.orvo"}, folder_);
    const auto session = nlohmann::json::parse(outcome.output).at(0);
    EXPECT_EQ(session.at("duration"), nullptr);
}

TEST_F(InfoTest, ShowsTheTitleOfATrackOnceAboveItsRoutingAndItsEffects) {
    folder_.Write("a.orvo", kMixedSession);
    const Outcome outcome = RunTool({"info", "--tracks", "--effects", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("    Automation  1 lane, 1 keyframe\n"
                                          "\n"
                                          "    Slot  Effect  State "));
    const Outcome effects = RunTool({"info", "--effects", "a.orvo"}, folder_);
    EXPECT_THAT(effects.output, HasSubstr("  audio 1: Voice\n"
                                          "    Slot  Effect  State "));
    EXPECT_THAT(effects.output, Not(HasSubstr("bus 2: Mix")));
}

constexpr const char* kSessionOfMany = R"(<orvo><session sampleRate="1000"><tracks>
<videoTrack id="5"><trackParameters><name>Film</name></trackParameters>
<videoClip id="9" offline="true"><videoFormat width="720" height="576" timeScale="30000" sampleSize="1001" parNumerator="16" parDenominator="15"/></videoClip></videoTrack>
<audioTrack id="1" phaseInverted="true" sumtomono="true"><trackAudioParameters monitoring="true" soloSafe="true"/>
<sendList><sendSlot slotIndex="0" sendOutputID="2" destCompIndex="3"/></sendList></audioTrack>
<instrumentTrack id="2" midiIn="Keys"><trackParameters><name>Piano</name></trackParameters>
<effectsRack><slot slotIndex="0" powered="true" sideChainChannels="2"><component name="Gate"/></slot></effectsRack></instrumentTrack>
</tracks><sessionState><timeFormatState timeFormat="timeFormatTimeCode" timeCodeFrameRate="24"/></sessionState>
<xmpMetadata><![CDATA[<x/>]]></xmpMetadata>
<metronome enabled="true"><metronomeTrack><trackParameters><name>Click</name></trackParameters></metronomeTrack>
<globalTrackInfo><tempoEvents>AQ==</tempoEvents><keySignatureEvents>AQ==</keySignatureEvents></globalTrackInfo></metronome>
<properties><property key="reel">2</property><property key="long">0123456789012345678901234567890123456789012345678901234567890123456789xyz</property></properties>
</session></orvo>)";

TEST_F(InfoTest, ShowsTimeFormatEventsPropertiesMetadataAndOfflineClips) {
    folder_.Write("a.orvo", kSessionOfMany);
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("  Events       tempo, key signature\n"
                                          "  Metronome    on, 0 beats in the pattern\n"
                                          "  Times        timecode, 24 frames a second\n"
                                          "  Properties   reel: 2\n"
                                          "               long: 73 characters\n"
                                          "  XMP          4 characters\n"
                                          "  Offline      1 clip\n"
                                          "  Media        none\n"));
}

TEST_F(InfoTest, ShowsSwitchesMidiInputsSideChainsAndPictures) {
    folder_.Write("a.orvo", kSessionOfMany);
    const Outcome outcome = RunTool({"info", "--tracks", "--effects", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output,
                HasSubstr("  video 5: Film\n"
                          "    Clips    1\n"
                          "    Picture  720 x 576, 29.97 frames a second, pixels 16:15\n"));
    EXPECT_THAT(outcome.output,
                HasSubstr("    Switches    solo safe, monitoring, phase inverted, summed to mono\n"
                          "    Send        Piano, component 3 (post-fader)\n"));
    EXPECT_THAT(outcome.output, HasSubstr("    MIDI input  Keys\n"));
    EXPECT_THAT(outcome.output, HasSubstr("       0  Gate    on, side chain  "));
}

TEST_F(InfoTest, ShowsNoIdForTheMetronomeTrack) {
    folder_.Write("a.orvo", kSessionOfMany);
    const Outcome outcome = RunTool({"info", "--tracks", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("  metronome: Click\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("4294967295")));
}

TEST_F(InfoTest, PrintsPicturesPropertiesAndSideChainsForPrograms) {
    folder_.Write("a.orvo", kSessionOfMany);
    const Outcome outcome = RunTool({"info", "--json", "a.orvo"}, folder_);
    const auto session = nlohmann::json::parse(outcome.output).at(0);
    EXPECT_EQ(session.at("properties").at(0).at("key"), "reel");
    EXPECT_EQ(session.at("clipsOffline"), 1);
    EXPECT_EQ(session.at("keySignatureChanges"), true);
    EXPECT_EQ(session.at("tracks").at(0).at("pictures").at(0).at("timeScale"), 30000);
    EXPECT_EQ(session.at("tracks").at(1).at("sends").at(0).at("component"), 3);
    EXPECT_EQ(session.at("tracks").at(2).at("effects").at(0).at("sideChainChannels"), 2);
}

TEST_F(InfoTest, PrintsTracksClipsAndGroupsForPrograms) {
    folder_.Write("a.orvo", kMixedSession);
    const Outcome outcome = RunTool({"info", "--json", "a.orvo"}, folder_);
    const auto session = nlohmann::json::parse(outcome.output).at(0);
    EXPECT_EQ(session.at("tracks").at(0).at("output"), "Mix");
    EXPECT_EQ(session.at("tracks").at(0).at("effects").at(0).at("preset"), "Hall");
    EXPECT_EQ(session.at("tracks").at(0).at("sends").at(0).at("preFader"), true);
    EXPECT_EQ(session.at("clips").at(0).at("durationSamples"), 250);
    EXPECT_EQ(session.at("groups").at(0).at("clipsMissing"), 1);
    EXPECT_EQ(session.at("beatsPerMinute"), 90.5);
}

TEST_F(InfoTest, ShowsSeveralSessionsWithABlankLineBetween) {
    folder_.Write("a.orvo", "<orvo/>");
    folder_.Write("b.orvo", "<orvo/>");
    const Outcome outcome = RunTool({"info", "a.orvo", "b.orvo"}, folder_);
    EXPECT_THAT(outcome.output, StartsWith("a.orvo\n"));
    EXPECT_THAT(outcome.output, HasSubstr("none\n\nb.orvo\n"));
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoTest, ShowsTheOtherSessionsWhenOneCannotBeRead) {
    folder_.Write("b.orvo", "<orvo/>");
    const Outcome outcome = RunTool({"info", "a.orvo", "b.orvo"}, folder_);
    EXPECT_THAT(outcome.output, StartsWith("b.orvo\n"));
    EXPECT_EQ(outcome.errors, "orvo: a.orvo: no such file: check the path\n");
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(InfoTest, ShowsAFileCompletelyAfterOneThatEndsInsideAnUnknownElement) {
    folder_.Write("b.orvo", kSmallSession);
    const std::string alone = RunTool({"info", "b.orvo"}, folder_).output;
    for (const char* const bad : {"<orvo><session sampleRate='8000'><zz><yy><x></session>",
                                  "<orvo><session><a><b></orvo>", "<orvo><orvo/></orvo>"}) {
        folder_.Write("bad.orvo", bad);
        EXPECT_THAT(RunTool({"info", "bad.orvo", "b.orvo"}, folder_).output, EndsWith(alone));
    }
}

TEST_F(InfoTest, PrintsJsonForPrograms) {
    folder_.Write("a.orvo", kSmallSession);
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"info", "--json", "a.orvo"}, folder_);
    nlohmann::json expected = nlohmann::json::parse(R"json([{
        "file": "a.orvo", "format": "Vantor Tembra 25.1 Multitrack Session",
        "sampleRate": 48000, "audioChannelType": "stereo", "bitDepth": 24,
        "durationSamples": 180000, "duration": "0:00:03.750",
        "input": {"device": "Desk", "ports": [{"id": 1, "name": "Mic"}, {"id": 2, "name": "Line"}]},
        "output": {"device": "", "ports": []},
        "beatsPerMinute": 0.0, "beatsPerBar": 0, "noteLength": 0,
        "timeFormat": "decimal", "smpteStartSamples": 0, "smpteStart": "0:00:00.000",
        "tempoChanges": false, "timeSignatureChanges": false,
        "keySignatureChanges": false, "properties": [], "xmpLength": 0, "clipsOffline": 0,
        "metronomeOn": false, "metronomeBeats": 0, "tracks": [], "clips": [], "groups": [],
        "mediaMissing": 1,
        "media": [
          {"id": 1, "path": "here.wav", "found": true,
           "handler": "Waveform Audio (WAV)", "handlerId": "kel.importer.wave",
           "absolutePath": null, "relativePath": null},
          {"id": 20, "path": "/nowhere/gone.wav", "found": false, "handler": "", "handlerId": "",
           "absolutePath": "/nowhere/gone.wav", "relativePath": ""}]}])json");
    expected[0]["media"][0]["path"] = folder_ / "here.wav";
    EXPECT_EQ(nlohmann::json::parse(outcome.output), expected);
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST_F(InfoTest, PrintsJsonForAnUnreadableFileToo) {
    folder_.Write("a.orvo", "<foo/>");
    const Outcome outcome = RunTool({"info", "--json", "a.orvo"}, folder_);
    EXPECT_EQ(nlohmann::json::parse(outcome.output), nlohmann::json::parse(R"([{
        "file": "a.orvo", "errors": [{"line": 1, "column": 1,
        "what": "the root element is <foo>, not <orvo>", "advice": "not a session file"}]}])"));
    EXPECT_EQ(outcome.exitCode, 1);
}

TEST_F(InfoTest, ReadsStandardInputWithPathsRelativeToTheWorkingDirectory) {
    folder_.Write("here.wav", "RIFF");
    const Outcome outcome = RunTool({"info", "-"}, folder_, kSmallSession);
    EXPECT_THAT(outcome.output, StartsWith("standard input\n"));
    EXPECT_THAT(outcome.output, HasSubstr("   1  found "));
    EXPECT_EQ(outcome.exitCode, 0);
    // The temporary file has been removed.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

TEST_F(InfoTest, ShowsControlCharactersAsText) {
    folder_.Write(
        "a.orvo",
        "<?xml version='1.1'?><orvo><audioDevice inputID='&#x1b;[31m' outputID=''/></orvo>");
    const Outcome outcome = RunTool({"info", "a.orvo"}, folder_);
    EXPECT_THAT(outcome.output, HasSubstr("\\x1b[31m"));
}

}  // namespace
