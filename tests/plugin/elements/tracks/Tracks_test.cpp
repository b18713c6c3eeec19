#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "host/Bases.h"
#include "platform/kelappsupport/Features.h"
#include "reference_host/SessionNode.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/plugin/elements/HostOutputs.h"
#include "tests/reference_host/recorder/HostStubs.h"
#include "tests/support/SerializerTestAccess.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::Session;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Tracks : public test::ElementFixture {
protected:
    /// The calls of a track element that is alone in "tracks".
    std::vector<std::string> CallsOfTrack(const std::string& element,
                                          const test::HostSetup& host = {}) {
        return CallsIn("<tracks>" + element + "</tracks>", host);
    }

    AudioTrack ReadTrack(const std::string& element) {
        return ReadInSession("<tracks>" + element + "</tracks>").session.audioTracks.at(0);
    }

    void ExpectInvalidTrackId(const std::string& content, const test::HostSetup& host = {}) {
        const auto outcome = ReadInRoot("<session>" + content + "</session><files/>", host);
        EXPECT_FALSE(outcome.ok) << content;
        EXPECT_THAT(outcome.calls, Not(Contains(HasSubstr("SetKind")))) << content;
        EXPECT_THAT(CallsOf(outcome.calls, "SetVersionDependentValue"), IsEmpty()) << content;
    }
};

// Reading

TEST_F(Tracks, ATrackWithOnlyAnIdIsFirstNotSelectedVisibleWithClosedLanesAndNoPreRenderedFile) {
    EXPECT_THAT(
        CallsOfTrack("<audioTrack id='7'/>"),
        ElementsAre("IEditSession#1.GetAudioTrack(7) -> IEditAudioTrack#2",
                    "IEditAudioTrackPrivate#2.SetIndex(0)", "IEditAudioTrackPrivate#2.SetKind(1)",
                    "IEditAudioTrackPrivate#2.SetSelected(false)",
                    "IEditAudioTrackPrivate#2.SetAutomationLaneOpenState(false)",
                    "IEditAudioTrackPrivate#2.SetVisible(true)",
                    "IEditAudioTrackPrivate#2.SetPhaseInverted(false)",
                    "IEditAudioTrackPrivate#2.SetPreRendered(false)",
                    "IEditAudioTrackPrivate#2.SetSumToMono(false)"));
}

TEST_F(Tracks, EveryAttributeReachesTheTrackInTheOrderOfTheCalls) {
    EXPECT_THAT(
        CallsOfTrack("<audioTrack automationLaneOpenState='true' id='4294967294' index='3' "
                     "phaseInverted='true' preRendered='true' preRenderedFile='/r.wav' "
                     "select='true' sumtomono='true' visible='false'/>"),
        ElementsAre("IEditSession#1.GetAudioTrack(4294967294) -> IEditAudioTrack#2",
                    "IEditAudioTrackPrivate#2.SetIndex(3)", "IEditAudioTrackPrivate#2.SetKind(1)",
                    "IEditAudioTrackPrivate#2.SetSelected(true)",
                    "IEditAudioTrackPrivate#2.SetAutomationLaneOpenState(true)",
                    "IEditAudioTrackPrivate#2.SetVisible(false)",
                    "IEditAudioTrackPrivate#2.SetPhaseInverted(true)",
                    "IEditAudioTrackPrivate#2.SetPreRendered(true)",
                    "IEditAudioTrackPrivate#2.SetSumToMono(true)",
                    "IEditAudioTrackPrivate#2.SetPreRenderedFile(\"/r.wav\")"));
}

TEST_F(Tracks, AnEmptyPreRenderedFileIsNotSet) {
    EXPECT_EQ(CallsOfTrack("<audioTrack id='7' preRenderedFile=''/>"),
              CallsOfTrack("<audioTrack id='7'/>"));
}

TEST_F(Tracks, UnknownAttributesAndThoseOfOtherKindsChangeNothing) {
    EXPECT_EQ(CallsOfTrack("<audioTrack id='7' colour='red' sumToMono='true' midiIn='A' "
                           "midiAll='true' trackHeight='9'/>"),
              CallsOfTrack("<audioTrack id='7'/>"));
}

TEST_F(Tracks, EachElementHasItsKind) {
    EXPECT_THAT(CallsOfTrack("<audioTrack id='7'/>"), Contains(HasSubstr("SetKind(1)")));
    EXPECT_THAT(CallsOfTrack("<busTrack id='7'/>"), Contains(HasSubstr("SetKind(2)")));
    EXPECT_THAT(CallsOfTrack("<masterTrack id='7'/>"), Contains(HasSubstr("SetKind(3)")));
    EXPECT_THAT(CallsOfTrack("<instrumentTrack id='7'/>"), Contains(HasSubstr("SetKind(5)")));
}

TEST_F(Tracks, OnlyTheExactTextTrueSwitchesATracksFlagOn) {
    const auto allOff = CallsOfTrack("<audioTrack id='7' visible='false'/>");
    for (const std::string text : {"TRUE", "True", "1", "yes", " true", "", "false"}) {
        std::string element = "<audioTrack id='7'";
        for (const char* const flag : {"automationLaneOpenState", "phaseInverted", "preRendered",
                                       "select", "sumtomono", "visible"}) {
            element += " " + std::string(flag) + "='" + text + "'";
        }
        EXPECT_EQ(CallsOfTrack(element + "/>"), allOff) << text;
    }
}

TEST_F(Tracks, SelectInCapitalsReadsAsFalse) {
    EXPECT_FALSE(ReadTrack("<audioTrack id='7' select='TRUE'/>").selected);
}

TEST_F(Tracks, AnIndexThatIsNoNumberIsZero) {
    for (const std::string text : {"", "x", "3.0", "3 ", "4294967296"}) {
        EXPECT_EQ(ReadTrack("<audioTrack id='7' index='" + text + "'/>").index, 0u) << text;
    }
}

TEST_F(Tracks, ATrackWithoutAnIdEndsTheRead) {
    ExpectInvalidTrackId("<tracks><audioTrack index='2'/></tracks>");
    ExpectInvalidTrackId("<tracks><audioTrack id='x'/></tracks>");
}

TEST_F(Tracks, AnIdThatTheHostDoesNotKnowEndsTheRead) {
    for (const std::string element : {"audioTrack", "busTrack", "masterTrack", "instrumentTrack"}) {
        ExpectInvalidTrackId("<tracks><" + element + " id='7'/></tracks>",
                             Null("IEditSession.GetAudioTrack"));
    }
}

/// Begins a track in the first "tracks" of a session.
void StartTrackIn(IEditSession& session) {
    Serializer::Impl impl{WriterFault{}, MakeDomDocument};
    SerializerTestAccess::Attach(impl, &session);
    SAXContentHandler& events = SerializerTestAccess::Content(impl);
    for (const std::u16string_view name : {u"orvo", u"session", u"tracks", u"audioTrack"}) {
        events.StartElementEvent(u"", name, name, {});
    }
}

TEST_F(Tracks, TheHandlerThrowsThatTheIdIsInvalid) {
    const auto session = refhost::SessionNode::Make();
    EXPECT_THAT([&] { StartTrackIn(session->Edit()); },
                testing::ThrowsMessage<std::runtime_error>("Invalid Track Id"));
}

/// A session whose tracks have no private interface.
class PublicTracks final : public EditSessionBase {
public:
    IEditAudioTrack* GetAudioTrack(kelcore::uint32 /*id*/) override { return &track; }

    refhost::PublicOnly<IEditAudioTrack> track;
};

TEST_F(Tracks, ATrackWithoutAPrivateInterfaceCountsAsAnInvalidId) {
    PublicTracks session;
    EXPECT_THAT([&] { StartTrackIn(session); },
                testing::ThrowsMessage<std::runtime_error>("Invalid Track Id"));
    EXPECT_EQ(session.ReferenceCount(), 1U);
    EXPECT_EQ(session.track.ReferenceCount(), 1U);
}

TEST_F(Tracks, WhatCameBeforeAnInvalidIdIsInTheHost) {
    const auto outcome = ReadInRoot(
        "<session><tracks><audioTrack id='7' index='4'/><audioTrack/></tracks></session>");
    EXPECT_FALSE(outcome.ok);
    ASSERT_EQ(outcome.session.audioTracks.size(), 1u);
    EXPECT_EQ(outcome.session.audioTracks[0].index, 4u);
}

TEST_F(Tracks, AnInstrumentsInputIsSetAfterEverythingElseEvenIfItIsEmpty) {
    const auto calls = CallsOfTrack("<instrumentTrack id='7' preRenderedFile='/r.wav'/>");
    ASSERT_EQ(calls.size(), 13u);
    EXPECT_THAT(std::vector<std::string>(calls.end() - 4, calls.end()),
                ElementsAre("IEditAudioTrackPrivate#2.SetPreRenderedFile(\"/r.wav\")",
                            "IEditAudioTrackPrivate#2.GetInstrument() -> IEditInstrumentTrack#3",
                            "IEditInstrumentTrack#3.SetMidiIn(\"\")",
                            "IEditInstrumentTrack#3.SetMidiAll(false)"));
}

TEST_F(Tracks, AnInstrumentReadsItsInput) {
    const AudioTrack track = ReadTrack("<instrumentTrack id='7' midiIn='Keys' midiAll='true'/>");
    ASSERT_TRUE(track.instrument.has_value());
    EXPECT_EQ(track.instrument->midiIn, "Keys");
    EXPECT_TRUE(track.instrument->midiAll);
    EXPECT_FALSE(ReadTrack("<instrumentTrack id='7' midiAll='1'/>").instrument->midiAll);
}

TEST_F(Tracks, AnInstrumentTrackWithoutAnInstrumentInTheHostIsReadWithoutIt) {
    const auto calls =
        CallsOfTrack("<instrumentTrack id='7'/>", Null("IEditAudioTrackPrivate.GetInstrument"));
    EXPECT_THAT(calls.back(), "IEditAudioTrackPrivate#2.GetInstrument() -> null");
}

TEST_F(Tracks, OnlyInstrumentTracksAskForAnInstrument) {
    for (const std::string element : {"audioTrack", "busTrack", "masterTrack"}) {
        EXPECT_THAT(CallsOfTrack("<" + element + " id='7' midiIn='A'/>"),
                    Not(Contains(HasSubstr("GetInstrument"))));
    }
}

TEST_F(Tracks, WithoutTheHostsFeatureAnInstrumentTrackIsSkippedCompletely) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    EXPECT_THAT(CallsOfTrack("<instrumentTrack><trackParameters/></instrumentTrack>"), IsEmpty());
}

TEST_F(Tracks, AMetronomeTrackComesFromTheMetronomeWhateverItsId) {
    const auto calls =
        CallsIn("<metronome><metronomeTrack id='4294967295' index='2'/></metronome>");
    EXPECT_THAT(calls, Not(Contains(HasSubstr("GetAudioTrack"))));
    EXPECT_THAT(calls, Contains(HasSubstr(".GetTrack() -> IEditAudioTrack#")));
    EXPECT_THAT(calls, Contains(HasSubstr(".SetIndex(2)")));
    EXPECT_THAT(calls, Contains(HasSubstr(".SetKind(4)")));
}

TEST_F(Tracks, AMetronomeTrackWithoutAnIdSucceeds) {
    const auto outcome = ReadInSession("<metronome><metronomeTrack select='true'/></metronome>");
    ASSERT_TRUE(outcome.session.metronome.track.has_value());
    EXPECT_TRUE(outcome.session.metronome.track->selected);
    EXPECT_THAT(outcome.session.audioTracks, IsEmpty());
}

TEST_F(Tracks, AMetronomeWithoutATrackEndsTheRead) {
    ExpectInvalidTrackId("<metronome><metronomeTrack id='7'/></metronome>",
                         Null("IEditMetronomeInfo.GetTrack"));
}

TEST_F(Tracks, AMetronomeTrackWithoutAMetronomeEndsTheRead) {
    ExpectInvalidTrackId("<metronome><metronomeTrack id='7'/></metronome>",
                         Null("IEditSession.GetMetronomeInfo"));
}

TEST_F(Tracks, AMetronomeTrackAmongTheTracksIsSkipped) {
    EXPECT_THAT(CallsOfTrack("<metronomeTrack><trackParameters/></metronomeTrack>"), IsEmpty());
}

TEST_F(Tracks, AttributesOfTheListMeanNothing) {
    EXPECT_THAT(CallsIn("<tracks id='7' select='true'/>"), IsEmpty());
}

TEST_F(Tracks, EachTrackStartsFromTheDefaultsAgain) {
    const auto tracks =
        ReadInSession(
            "<tracks><audioTrack id='1' index='5' select='true' visible='false' "
            "preRenderedFile='/r.wav'><trackParameters trackHeight='9' trackHue='30' "
            "trackMinimized='true'><name>One</name></trackParameters>"
            "<trackAudioParameters audioChannelType='stereo' solo='true' automationMode='3'>"
            "<trackInput inputID='4'/><trackOutput outputID='5'/></trackAudioParameters>"
            "</audioTrack><busTrack id='2'><trackParameters/><trackAudioParameters/></busTrack>"
            "</tracks>")
            .session.audioTracks;
    ASSERT_EQ(tracks.size(), 2u);
    AudioTrack expected;
    expected.id = 2;
    expected.kind = orvo::TrackKind::Bus;
    EXPECT_EQ(tracks[1], expected);
}

TEST_F(Tracks, ATrackThatComesTwiceIsAppliedTwiceToTheSameTrack) {
    const auto tracks = ReadInSession(
                            "<tracks><audioTrack id='1' index='5' preRenderedFile='/r'/>"
                            "<busTrack id='1'/></tracks>")
                            .session.audioTracks;
    ASSERT_EQ(tracks.size(), 1u);
    EXPECT_EQ(tracks[0].index, 0u);
    EXPECT_EQ(tracks[0].kind, orvo::TrackKind::Bus);
    EXPECT_EQ(tracks[0].preRenderedFile, "/r");
}

// Writing

AudioTrack SampleTrack() {
    AudioTrack track;
    track.id = 4294967294;
    track.index = 4294967295;
    return track;
}

/// Only the start tag of a track.
std::string StartTag(const std::string& element) {
    return element.substr(0, element.find('\n'));
}

TEST_F(Tracks, FiveAttributesAreAlwaysWritten) {
    EXPECT_EQ(StartTag(WrittenElement("audioTrack", SampleTrack())),
              "<audioTrack automationLaneOpenState=\"false\" id=\"4294967294\" "
              "index=\"4294967295\" select=\"false\" visible=\"true\">");
}

TEST_F(Tracks, FlagsThatAreOnAndThePreRenderedFileAreWrittenToo) {
    AudioTrack track = SampleTrack();
    track.selected = true;
    track.automationLaneOpen = true;
    track.visible = false;
    track.phaseInverted = true;
    track.preRendered = true;
    track.sumToMono = true;
    track.preRenderedFile = "/r.wav";
    EXPECT_EQ(StartTag(WrittenElement("audioTrack", track)),
              "<audioTrack automationLaneOpenState=\"true\" id=\"4294967294\" "
              "index=\"4294967295\" phaseInverted=\"true\" preRendered=\"true\" "
              "preRenderedFile=\"/r.wav\" select=\"true\" sumtomono=\"true\" visible=\"false\">");
}

TEST_F(Tracks, EachKindHasItsElement) {
    AudioTrack track = SampleTrack();
    for (const auto& [kind, element] : {std::pair<kelcore::uint32, const char*>{1, "audioTrack"},
                                        {2, "busTrack"},
                                        {3, "masterTrack"},
                                        {4, "metronomeTrack"},
                                        {5, "instrumentTrack"}}) {
        track.kind = orvo::TrackKind{kind};
        EXPECT_THAT(WrittenElement(element, track), Not(IsEmpty())) << kind;
    }
}

TEST_F(Tracks, AKindWithoutAnElementIsWrittenAsAnAudioTrack) {
    for (const kelcore::uint32 kind : {7u, 0u, 6u, 4294967295u}) {
        AudioTrack track = SampleTrack();
        track.kind = orvo::TrackKind{kind};
        EXPECT_THAT(WrittenElement("audioTrack", track), Not(IsEmpty())) << kind;
    }
}

TEST_F(Tracks, OnlyAnInstrumentTrackWritesItsInputUnlessItIsOffOrEmpty) {
    AudioTrack track = SampleTrack();
    track.instrument = {"Keys", true};
    EXPECT_THAT(WrittenElement("audioTrack", track), Not(HasSubstr("midi")));
    track.kind = orvo::TrackKind::Instrument;
    EXPECT_EQ(StartTag(WrittenElement("instrumentTrack", track)),
              "<instrumentTrack automationLaneOpenState=\"false\" id=\"4294967294\" "
              "index=\"4294967295\" midiAll=\"true\" midiIn=\"Keys\" select=\"false\" "
              "visible=\"true\">");
    track.instrument = {"", false};
    EXPECT_THAT(WrittenElement("instrumentTrack", track), Not(HasSubstr("midi")));
    track.instrument.reset();
    EXPECT_THAT(WrittenElement("instrumentTrack", track), Not(HasSubstr("midi")));
}

TEST_F(Tracks, OnlyAnInstrumentTrackIsAskedForItsInstrument) {
    AudioTrack track = SampleTrack();
    EXPECT_THAT(CallsOf(Write(WithTrack(track)).calls, "GetInstrument"), IsEmpty());
    track.kind = orvo::TrackKind::Instrument;
    EXPECT_THAT(CallsOf(Write(WithTrack(track)).calls, "GetInstrument"), testing::SizeIs(1));
}

TEST_F(Tracks, TheChildrenOfATrackAreWrittenInTheirOrder) {
    AudioTrack track = SampleTrack();
    track.effectsRack.emplace();
    track.editParameters = {{0, 1}};
    track.sendList.emplace().slots.resize(1);
    track.clips.resize(1);
    const std::string element = WrittenElement("audioTrack", track);
    std::size_t last = 0;
    for (const char* const child :
         {"  <trackParameters ", "  <trackAudioParameters ", "  <effectsRack ", "  <editParameter ",
          "  <sendList", "  <audioClip "}) {
        const std::size_t at = element.find(child);
        ASSERT_NE(at, std::string::npos) << child;
        EXPECT_GT(at, last) << child;
        last = at;
    }
}

TEST_F(Tracks, WhatATrackDoesNotHaveIsNotWritten) {
    const std::string element = WrittenElement("audioTrack", SampleTrack());
    for (const char* const child : {"effectsRack", "editParameter", "sendList", "lip"}) {
        EXPECT_THAT(element, Not(HasSubstr(child)));
    }
}

TEST_F(Tracks, AMastersClipsAreNeverAskedFor) {
    AudioTrack track = SampleTrack();
    track.kind = orvo::TrackKind::Master;
    track.clips.resize(1);
    track.midiClips.resize(1);
    const auto outcome = Write(WithTrack(track));
    EXPECT_THAT(test::ElementOf(*outcome.file, "masterTrack"), Not(HasSubstr("lip")));
    EXPECT_THAT(CallsOf(outcome.calls, ".GetClipCount("), IsEmpty());
    EXPECT_THAT(CallsOf(outcome.calls, "GetMIDIClipList"), IsEmpty());
}

TEST_F(Tracks, AnInstrumentTrackWritesItsMidiClipsAndAllOthersTheirAudioClips) {
    AudioTrack track = SampleTrack();
    track.clips.resize(1);
    track.midiClips.resize(1);
    for (const kelcore::uint32 kind : {1u, 2u, 4u, 7u}) {
        track.kind = orvo::TrackKind{kind};
        const std::string file = *Write(WithTrack(track)).file;
        EXPECT_THAT(file, HasSubstr("<audioClip ")) << kind;
        EXPECT_THAT(file, Not(HasSubstr("<midiClip "))) << kind;
    }
    track.kind = orvo::TrackKind::Instrument;
    const std::string file = *Write(WithTrack(track)).file;
    EXPECT_THAT(file, HasSubstr("<midiClip "));
    EXPECT_THAT(file, Not(HasSubstr("<audioClip ")));
}

TEST_F(Tracks, VideoTracksStandBeforeAllOthers) {
    Session session = WithTrack(SampleTrack());
    session.videoTracks.resize(1);
    const std::string tracks = WrittenElement("tracks", session);
    EXPECT_THAT(tracks, StartsWith("<tracks>\n  <videoTrack "));
    EXPECT_LT(tracks.find("<videoTrack "), tracks.find("<audioTrack "));
}

TEST_F(Tracks, ASessionWithoutTracksHasAnEmptyList) {
    EXPECT_EQ(WrittenElement("tracks", Session()), "<tracks/>");
}

TEST_F(Tracks, ATrackThatShowsNothingButItsClipsIsSkipped) {
    Session session = WithTrack(SampleTrack());
    session.audioTracks[0].clipsOnly = true;
    session.audioTracks[0].clips.resize(1);
    session.audioTracks.push_back(SampleTrack());
    session.audioTracks[1].id = 2;
    const std::string tracks = WrittenElement("tracks", session);
    EXPECT_THAT(tracks, Not(HasSubstr("4294967294")));
    EXPECT_THAT(tracks, HasSubstr("id=\"2\""));
}

TEST_F(Tracks, TracksThatTheHostReportsAsNullAreSkipped) {
    Session session = WithTrack(SampleTrack());
    session.videoTracks.resize(1);
    EXPECT_EQ(WrittenElement("tracks", session, Null("IQuerySession.GetAudioTrack")).find("audio"),
              std::string::npos);
    EXPECT_EQ(WrittenElement("tracks", session, Null("IQuerySession.GetVideoTrack")).find("video"),
              std::string::npos);
}

TEST_F(Tracks, TextsThatTheHostReportsAsNullAreEmpty) {
    AudioTrack track = SampleTrack();
    track.preRenderedFile = "/r.wav";
    EXPECT_THAT(
        WrittenElement("audioTrack", track, Null("IQueryAudioTrackPrivate.GetPreRenderedFile")),
        Not(HasSubstr("preRenderedFile")));
}

TEST_F(Tracks, AnEditParameterIsAskedForWithNoSlotAndTheFirstParameter) {
    AudioTrack track;
    track.editParameters = {{1, 2}};
    const auto outputs = test::OutputsBefore("IQueryAudioTrackPrivate.GetEditParameter",
                                             WithTrack(track), *serializer, Path());
    EXPECT_THAT(outputs, ElementsAre(ElementsAre(std::uint64_t{4294967295}, std::uint64_t{0})));
}

}  // namespace
}  // namespace tses
