#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "platform/kelappsupport/Features.h"
#include "session/json/SessionJson.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/plugin/elements/TrackSamples.h"

// From JSON to a file and back to JSON: for each kind of track everything comes back, except for
// the losses that these tests name.

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::Session;
using orvo::ToJson;
using orvo::json::Parse;
using testing::IsEmpty;

enum Kind : kelcore::uint32 { kAudio = 1, kBus = 2, kMaster = 3, kMetronome = 4, kInstrument = 5 };

class TrackRoundTrip : public test::ElementFixture {
protected:
    /// The JSON of a session that was JSON, was written to a file and read back.
    std::string JsonThroughFile(const std::string& json) {
        return ToJson(ThroughFile(Parse(json)));
    }

    /// A session as it comes back from a file, with these tracks instead of its own.
    Session WithTracks(std::vector<AudioTrack> tracks) {
        Session session = ThroughFile({});
        session.audioTracks = std::move(tracks);
        return session;
    }

    /// What comes back of the only track in a session.
    AudioTrack Back(const AudioTrack& track) {
        return ThroughFile(WithTrack(track)).audioTracks.at(0);
    }

    void ExpectLossless(const AudioTrack& track) {
        const std::string json = ToJson(WithTracks({track}));
        EXPECT_EQ(JsonThroughFile(json), json);
    }
};

TEST_F(TrackRoundTrip, AnAudioTrackLosesNothing) {
    ExpectLossless(test::FullTrack(kAudio, 1));
}

TEST_F(TrackRoundTrip, ABusTrackLosesNothing) {
    ExpectLossless(test::FullTrack(kBus, 1));
}

TEST_F(TrackRoundTrip, AnInstrumentTrackLosesNothing) {
    ExpectLossless(test::FullTrack(kInstrument, 1));
}

TEST_F(TrackRoundTrip, AMasterTrackLosesOnlyItsSends) {
    AudioTrack track = test::FullTrack(kMaster, 1);
    const std::string start = ToJson(WithTracks({track}));
    track.sendList.reset();
    EXPECT_EQ(JsonThroughFile(start), ToJson(WithTracks({track})));
}

TEST_F(TrackRoundTrip, TheMetronomesTrackLosesOnlyItsId) {
    Session session = WithTracks({});
    session.metronome.track = test::FullTrack(kMetronome, 1);
    const std::string start = ToJson(session);
    session.metronome.track->id = 4294967295;
    EXPECT_EQ(JsonThroughFile(start), ToJson(session));
}

TEST_F(TrackRoundTrip, AVideoTrackLosesOnlyItsIndex) {
    Session session = WithTracks({});
    session.videoTracks = {test::FullVideoTrack(1)};
    const std::string start = ToJson(session);
    session.videoTracks[0].index = 0;
    EXPECT_EQ(JsonThroughFile(start), ToJson(session));
}

TEST_F(TrackRoundTrip, TracksOfAllKindsComeBackInTheirOrder) {
    Session session = WithTracks({test::FullTrack(kBus, 9), test::FullTrack(kAudio, 2),
                                  test::FullTrack(kInstrument, 7), test::FullTrack(kAudio, 4)});
    const std::string json = ToJson(session);
    EXPECT_EQ(JsonThroughFile(json), json);
}

TEST_F(TrackRoundTrip, ABareTrackLosesNothing) {
    AudioTrack track;
    ExpectLossless(track);
    track.kind = orvo::TrackKind{kBus};
    ExpectLossless(track);
    track.kind = orvo::TrackKind{kMaster};
    ExpectLossless(track);
}

TEST_F(TrackRoundTrip, WritingReadingAndWritingAgainGivesTheSameBytes) {
    Session session = WithTracks(
        {test::FullTrack(kBus, 9), test::FullTrack(kInstrument, 2), test::FullTrack(kAudio, 7)});
    session.videoTracks = {test::FullVideoTrack(1)};
    const auto first = Write(session);
    ASSERT_TRUE(first.ok);
    EXPECT_EQ(*Write(ReadPath(Path()).session).file, *first.file);
}

// The losses

TEST_F(TrackRoundTrip, ATrackOfTheMetronomesKindAmongTheTracksIsLost) {
    EXPECT_THAT(ThroughFile(WithTrack(test::FullTrack(kMetronome, 1))).audioTracks, IsEmpty());
}

TEST_F(TrackRoundTrip, AMetronomesTrackOfAnotherKindIsLost) {
    Session session;
    session.metronome.track = test::FullTrack(kAudio, 1);
    EXPECT_FALSE(ThroughFile(session).metronome.track.has_value());
}

TEST_F(TrackRoundTrip, AnUnknownKindBecomesAnAudioTrack) {
    AudioTrack track = test::FullTrack(7, 1);
    AudioTrack expected = track;
    expected.kind = orvo::TrackKind::Audio;
    EXPECT_EQ(Back(track), expected);
}

TEST_F(TrackRoundTrip, ATrackThatShowsOnlyItsClipsIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.clipsOnly = true;
    EXPECT_THAT(ThroughFile(WithTrack(track)).audioTracks, IsEmpty());
}

TEST_F(TrackRoundTrip, AnInstrumentTrackIsLostWithoutTheHostsFeature) {
    ASSERT_TRUE(Write(WithTrack(test::FullTrack(kInstrument, 1))).ok);
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    const auto outcome = ReadPath(Path());
    EXPECT_TRUE(outcome.ok);
    EXPECT_THAT(outcome.session.audioTracks, IsEmpty());
}

TEST_F(TrackRoundTrip, AudioClipsOfABusAMasterAnInstrumentAndTheMetronomeAreLost) {
    for (const kelcore::uint32 kind : {kBus, kMaster, kInstrument}) {
        AudioTrack track = test::FullTrack(kind, 1);
        track.clips.resize(1);
        EXPECT_THAT(Back(track).clips, IsEmpty()) << kind;
    }
    Session session;
    session.metronome.track = test::FullTrack(kMetronome, 1);
    session.metronome.track->clips.resize(1);
    EXPECT_THAT(ThroughFile(session).metronome.track->clips, IsEmpty());
}

TEST_F(TrackRoundTrip, MidiClipsOfAnyTrackButAnInstrumentAreLost) {
    for (const kelcore::uint32 kind : {kAudio, kBus, kMaster}) {
        AudioTrack track = test::FullTrack(kind, 1);
        track.midiClips.resize(1);
        EXPECT_THAT(Back(track).midiClips, IsEmpty()) << kind;
    }
}

TEST_F(TrackRoundTrip, AnInstrumentsInputOnATrackOfAnotherKindIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.instrument = {"Keys", true};
    EXPECT_FALSE(Back(track).instrument.has_value());
}

TEST_F(TrackRoundTrip, AnInstrumentTrackWithoutAnInstrumentGetsOne) {
    AudioTrack track = test::FullTrack(kInstrument, 1);
    track.instrument.reset();
    EXPECT_EQ(Back(track).instrument, orvo::InstrumentTrack());
}

TEST_F(TrackRoundTrip, ANameIsTrimmed) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.name = " \t\r\nVoice  one\n ";
    EXPECT_EQ(Back(track).name, "Voice  one");
    track.name = " \n ";
    EXPECT_EQ(Back(track).name, "");
}

// A control character in a name makes the document XML 1.1. There, these two are line ends, and
// control characters can only be references.
TEST_F(TrackRoundTrip, NextLineLineSeparatorAndControlsSurviveBesideAControlCharacter) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.name = "a\u0085b\u2028c";
    EXPECT_EQ(Back(track).name, track.name);
    track.name = "a\u0085b\u2028c\t\u0001\u007F\u009Fd";
    track.preRenderedFile = "/\u0085\u2028\u0001\u0080";
    EXPECT_EQ(Back(track).name, track.name);
    EXPECT_EQ(Back(track).preRenderedFile, track.preRenderedFile);
}

TEST_F(TrackRoundTrip, AnUnpairedSurrogateBecomesAReplacementCharacter) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.name =
        "a\xED\xA0\x80"
        "b";
    track.preRenderedFile = "/\xED\xB0\x80";
    EXPECT_EQ(Back(track).name, "a\uFFFDb");
    EXPECT_EQ(Back(track).preRenderedFile, "/\uFFFD");
}

TEST_F(TrackRoundTrip, AHueThatIsNoNumberBecomesZero) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    for (const double hue :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        track.hue = hue;
        EXPECT_EQ(Back(track).hue, 0.0);
    }
}

TEST_F(TrackRoundTrip, ALayoutWithoutAKeywordBecomesZero) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.audioChannelType = orvo::ChannelType{4};
    EXPECT_EQ(Back(track).audioChannelType, orvo::ChannelType::NotSaid);
}

TEST_F(TrackRoundTrip, ATrackWithBothOutputsLosesTheHardwareOutput) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.outputTrackId = 9;
    track.hardwareOutputId = 2;
    EXPECT_EQ(Back(track).outputTrackId, 9);
    EXPECT_EQ(Back(track).hardwareOutputId, -1);
}

TEST_F(TrackRoundTrip, AnOutputTrackOfIdZeroIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.outputTrackId = 0;
    track.hardwareOutputId = 2;
    EXPECT_EQ(Back(track).outputTrackId, -1);
    EXPECT_EQ(Back(track).hardwareOutputId, 2);
}

TEST_F(TrackRoundTrip, AListOfSendsWithoutSlotsIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.sendList->slots.clear();
    EXPECT_FALSE(Back(track).sendList.has_value());
}

TEST_F(TrackRoundTrip, AListOfNothingButNullSlotsComesBackEmptyOnceAndIsThenLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.sendList->slots = {std::nullopt};
    const AudioTrack once = Back(track);
    EXPECT_EQ(once.sendList, orvo::SendList());
    EXPECT_FALSE(Back(once).sendList.has_value());
}

TEST_F(TrackRoundTrip, NullSlotsAreLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    const AudioTrack expected = track;
    track.sendList->slots.insert(track.sendList->slots.begin(), std::nullopt);
    track.effectsRack->slots.insert(track.effectsRack->slots.begin(), std::nullopt);
    EXPECT_EQ(Back(track), expected);
}

TEST_F(TrackRoundTrip, AnEditParameterThatNamesNoSlotIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    const AudioTrack expected = track;
    track.editParameters.insert(track.editParameters.begin(), {4294967295, 5});
    EXPECT_EQ(Back(track), expected);
}

TEST_F(TrackRoundTrip, ALaneWithoutKeyframesIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.pan->parameters[0].automation->keyframes.clear();
    EXPECT_FALSE(Back(track).pan->parameters.at(0).automation.has_value());
}

TEST_F(TrackRoundTrip, AParameterWithoutAValueIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    const AudioTrack expected = track;
    track.pan->parameters[1].name = "lost";
    EXPECT_EQ(Back(track), expected);
}

TEST_F(TrackRoundTrip, AnEditorWithoutAnAreaLosesItsPlace) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.pan->editorRect = {1, 2, 0, 4};
    EXPECT_EQ(Back(track).pan->editorRect, orvo::EditorRect());
}

TEST_F(TrackRoundTrip, APresetsStateOutsideOfASlotIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.pan->presetChunk = {kelcore::byte(1)};
    EXPECT_THAT(Back(track).pan->presetChunk, IsEmpty());
}

TEST_F(TrackRoundTrip, ThePowerOfAnEffectIsThatOfItsSlot) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.effectsRack->slots.at(0)->bypassed = true;
    track.effectsRack->slots.at(0)->component->powered = false;
    EXPECT_TRUE(Back(track).effectsRack->slots.at(0)->bypassed);
    EXPECT_TRUE(Back(track).effectsRack->slots.at(0)->component->powered);
}

TEST_F(TrackRoundTrip, TheWiringOfAnEmptySlotIsLost) {
    AudioTrack track = test::FullTrack(kAudio, 1);
    track.effectsRack->slots.at(0)->component.reset();
    const AudioTrack back = Back(track);
    EXPECT_EQ(back.effectsRack->slots.at(0)->busConfig, "");
    EXPECT_THAT(back.effectsRack->slots.at(0)->inputChannels, IsEmpty());
    EXPECT_THAT(back.effectsRack->slots.at(0)->outputChannels, IsEmpty());
}

TEST_F(TrackRoundTrip, ATrackWithoutAnIdIsWrittenAndEndsTheReadOfItsFile) {
    ASSERT_TRUE(Write(WithTrack(test::FullTrack(kAudio, 4294967295))).ok);
    EXPECT_FALSE(ReadPath(Path()).ok);
}

}  // namespace
}  // namespace tses
