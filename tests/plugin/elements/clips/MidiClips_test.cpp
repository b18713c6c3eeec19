#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "platform/kelappsupport/Features.h"
#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::MidiClip;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class MidiClips : public test::ElementFixture {
protected:
    static std::string InTrack(const std::string& content) {
        return "<tracks><instrumentTrack id='7'>" + content + "</instrumentTrack></tracks>";
    }

    /// The calls from the list of clips on. The session is object 1, the track 2, its instrument 3,
    /// the list 4 and the clip 5.
    std::vector<std::string> CallsOfClips(const std::string& content,
                                          const test::HostSetup& host = {}) {
        return CallsOf(CallsIn(InTrack(content), host), "MIDI");
    }

    std::vector<MidiClip> ReadClips(const std::string& content) {
        return ReadInSession(InTrack(content)).session.audioTracks.at(0).midiClips;
    }

    static AudioTrack With(std::vector<MidiClip> clips) {
        AudioTrack track;
        track.kind = orvo::TrackKind::Instrument;
        track.midiClips = std::move(clips);
        return track;
    }
};

// Reading

TEST_F(MidiClips, EveryAttributeReachesTheHostInTheOrderThatHostsExpect) {
    EXPECT_THAT(
        CallsOfClips("<midiClip id='12' sourceInPoint='100' sourceOutPoint='300' startPoint='7' "
                     "endPoint='1' hue='30.5' name='Bass' select='true' lockedInTime='true'/>"),
        ElementsAre("IEditAudioTrack#2.GetMIDIClipList() -> IEditMIDIClipList#4",
                    "IEditMIDIClipList#4.CreateMIDIClip(12) -> IEditMIDIClip#5",
                    "IEditMIDIClip#5.SetSourceInPoint(100)", "IEditMIDIClip#5.SetDuration(200)",
                    "IEditMIDIClip#5.SetStartPoint(7)", "IEditMIDIClip#5.SetHue(30.5)",
                    "IEditMIDIClip#5.SetName(\"Bass\")", "IEditMIDIClip#5.SetSelected(true)",
                    "IEditMIDIClip#5.SetLockedInTime(true)"));
}

TEST_F(MidiClips, WithoutAttributesTheHostGetsTheDefaults) {
    EXPECT_THAT(
        CallsOfClips("<midiClip/>"),
        ElementsAre("IEditAudioTrack#2.GetMIDIClipList() -> IEditMIDIClipList#4",
                    "IEditMIDIClipList#4.CreateMIDIClip(4294967295) -> IEditMIDIClip#5",
                    "IEditMIDIClip#5.SetSourceInPoint(-1)", "IEditMIDIClip#5.SetDuration(0)",
                    "IEditMIDIClip#5.SetStartPoint(-1)", "IEditMIDIClip#5.SetHue(0)",
                    "IEditMIDIClip#5.SetName(\"\")", "IEditMIDIClip#5.SetSelected(false)",
                    "IEditMIDIClip#5.SetLockedInTime(false)"));
}

TEST_F(MidiClips, WhatOnlyAudioClipsHaveIsIgnored) {
    EXPECT_EQ(CallsOfClips("<midiClip id='1' fileID='3' looped='true' offline='true' zOrder='4' "
                           "crossFadeHeadClipID='5' crossFadeTailClipID='6' "
                           "clipAutoCrossfade='false'/>"),
              CallsOfClips("<midiClip id='1'/>"));
}

TEST_F(MidiClips, TakeOverNameAndHueOfTheClipBefore) {
    const auto clips = ReadClips("<midiClip name='a' hue='30'/><midiClip/>");
    EXPECT_EQ(clips.at(1).name, "a");
    EXPECT_EQ(clips.at(1).hue, 30.0);
}

TEST_F(MidiClips, NothingElseCarriesOver) {
    const auto clips = ReadClips(
        "<midiClip id='1' sourceInPoint='1' sourceOutPoint='3' startPoint='3' endPoint='4' "
        "select='true' lockedInTime='true'><midiEvents>AAEC</midiEvents></midiClip><midiClip/>");
    EXPECT_EQ(clips.at(1), ReadClips("<midiClip/>").at(0));
}

TEST_F(MidiClips, TheEventsAreDecodedWhenTheirElementEnds) {
    const auto calls = CallsOfClips("<midiClip><midiEvents>\n  AAEC\n  </midiEvents></midiClip>");
    EXPECT_EQ(calls.back(), "IEditMIDIClip#5.SetMIDIEvents({\"bytes\":3,\"base64\":\"AAEC\"})");
}

TEST_F(MidiClips, EventsWithoutContentSetNothing) {
    for (const std::string events : {"<midiEvents/>", "<midiEvents> \n </midiEvents>",
                                     "<midiEvents><![CDATA[]]></midiEvents>"}) {
        EXPECT_EQ(CallsOfClips("<midiClip>" + events + "</midiClip>"), CallsOfClips("<midiClip/>"))
            << events;
    }
}

TEST_F(MidiClips, EventsWithoutContentDoNotRepeatThoseOfTheClipBefore) {
    for (const std::string events : {"<midiEvents/>", "<midiEvents>*!</midiEvents>"}) {
        const auto clips =
            ReadClips("<midiClip><midiEvents>AAEC</midiEvents></midiClip><midiClip>" + events +
                      "</midiClip>");
        EXPECT_THAT(clips.at(0).events, ElementsAre(0, 1, 2)) << events;
        EXPECT_THAT(clips.at(1).events, IsEmpty()) << events;
    }
}

TEST_F(MidiClips, EventsThatDoNotDecodeSetNothing) {
    EXPECT_EQ(CallsOfClips("<midiClip><midiEvents>*!</midiEvents></midiClip>"),
              CallsOfClips("<midiClip/>"));
}

TEST_F(MidiClips, ATrackWithoutAListDropsTheClip) {
    EXPECT_THAT(CallsOfClips("<midiClip><midiEvents>AAEC</midiEvents></midiClip>",
                             Null("IEditAudioTrack.GetMIDIClipList")),
                ElementsAre("IEditAudioTrack#2.GetMIDIClipList() -> null"));
}

TEST_F(MidiClips, AClipThatTheHostDoesNotMakeIsDroppedWithItsEvents) {
    EXPECT_THAT(CallsOfClips("<midiClip id='1'><midiEvents>AAEC</midiEvents></midiClip>",
                             Null("IEditMIDIClipList.CreateMIDIClip")),
                ElementsAre("IEditAudioTrack#2.GetMIDIClipList() -> IEditMIDIClipList#4",
                            "IEditMIDIClipList#4.CreateMIDIClip(1) -> null"));
}

TEST_F(MidiClips, WithoutInstrumentTracksTheyAreSkippedWithTheirTrack) {
    kelappsupport::SetFeatureEnabled("Tembra.InstrumentTracks", false);
    serializer.emplace();
    EXPECT_EQ(CallsIn(InTrack("<midiClip><midiEvents>AAEC</midiEvents></midiClip>")),
              CallsIn("<tracks/>"));
}

// Writing

MidiClip SampleMidiClip() {
    MidiClip clip;
    clip.id = 12;
    clip.sourceInPoint = 100;
    clip.duration = 200;
    clip.startPoint = 5'000'000'000;
    clip.hue = 30.5;
    clip.name = "Bass";
    clip.selected = true;
    clip.lockedInTime = true;
    clip.events = {0, 1, 2};
    return clip;
}

TEST_F(MidiClips, AreWrittenWithTheCommonAttributesAndTheirEvents) {
    EXPECT_EQ(WrittenElement("midiClip", With({SampleMidiClip()})),
              "<midiClip endPoint=\"5000000200\" hue=\"30.5\" id=\"12\" lockedInTime=\"true\" "
              "name=\"Bass\" select=\"true\" sourceInPoint=\"100\" sourceOutPoint=\"300\" "
              "startPoint=\"5000000000\">\n"
              "  <midiEvents><![CDATA[AAEC\n]]></midiEvents>\n"
              "</midiClip>");
}

TEST_F(MidiClips, WithoutEventsAreWrittenWithoutTheChild) {
    MidiClip clip = SampleMidiClip();
    clip.events.clear();
    EXPECT_THAT(WrittenElement("midiClip", With({clip})), Not(HasSubstr("midiEvents")));
}

TEST_F(MidiClips, AreWrittenOnlyForInstrumentTracks) {
    for (const kelcore::uint32 kind : {1u, 2u, 3u, 4u}) {
        AudioTrack track = With({SampleMidiClip()});
        track.kind = orvo::TrackKind{kind};
        EXPECT_THAT(WrittenElement("midiClip", track), IsEmpty()) << kind;
    }
}

TEST_F(MidiClips, ATrackWithoutAListWritesNone) {
    EXPECT_THAT(WrittenElement("midiClip", With({SampleMidiClip()}),
                               Null("IQueryAudioTrack.GetMIDIClipList")),
                IsEmpty());
}

TEST_F(MidiClips, AClipThatTheHostReportsAsNullIsSkipped) {
    EXPECT_THAT(
        WrittenElement("midiClip", With({SampleMidiClip()}), Null("IQueryMIDIClipList.GetClip")),
        IsEmpty());
}

TEST_F(MidiClips, SurviveAWriteAndARead) {
    MidiClip large = SampleMidiClip();
    large.sourceInPoint = std::numeric_limits<kelcore::int64>::min();
    large.events.assign(100'000, 0);
    for (std::size_t i = 0; i < large.events.size(); ++i) {
        large.events[i] = static_cast<kelcore::byte>(i * 7);
    }
    const std::vector<MidiClip> clips = {MidiClip{}, SampleMidiClip(), large};
    EXPECT_EQ(ThroughFile(WithTrack(With(clips))).audioTracks.at(0).midiClips, clips);
}

TEST_F(MidiClips, AClipIsReleasedWhenItsElementEnds) {
    const auto calls = CallsWithReferences(
        "<orvo><session><tracks><instrumentTrack id='1'><midiClip id='5'/></instrumentTrack>"
        "<videoTrack id='2'/></tracks></session></orvo>");
    const auto released = std::ranges::find(calls, "IEditMIDIClip.Release");
    const auto next = std::ranges::find(calls, "IEditSession.GetVideoTrack");
    EXPECT_LT(released - calls.begin(), next - calls.begin());
}

TEST_F(MidiClips, TheListIsBorrowedForTheCallInBothDirections) {
    const auto read = CallsWithReferences("<orvo><session>" + InTrack("<midiClip id='5'/>") +
                                          "</session></orvo>");
    EXPECT_THAT(CallsOf(read, "IEditMIDIClipList"),
                ElementsAre("IEditMIDIClipList.CreateMIDIClip"));
    const auto written = CallsWithReferences(WithTrack(With({MidiClip{}})));
    EXPECT_THAT(CallsOf(written, "IQueryMIDIClipList"),
                ElementsAre("IQueryMIDIClipList.GetCount", "IQueryMIDIClipList.GetClip"));
}

TEST_F(MidiClips, AreQueriedInTheOrderThatHostsExpect) {
    EXPECT_THAT(QueriesOf("IQueryMIDIClip", WithTrack(With({MidiClip{}}))),
                ElementsAre("GetID", "GetSourceInPoint", "GetDuration", "GetStartPoint", "GetHue",
                            "GetName", "GetSelected", "GetLockedInTime", "GetMIDIEventsSize"));
}

}  // namespace
}  // namespace tses
