#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

#include "reference_host/SessionNode.h"
#include "reference_host/recorder/Recorder.h"
#include "tests/plugin/elements/ElementFixture.h"
#include "tests/plugin/elements/HostOutputs.h"

namespace tses {
namespace {

using namespace std::string_literals;
using orvo::AudioClip;
using orvo::AudioTrack;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class AudioClips : public test::ElementFixture {
protected:
    static AudioTrack WithClips(std::vector<AudioClip> clips) {
        AudioTrack track;
        track.clips = std::move(clips);
        return track;
    }

    std::vector<AudioClip> ReadClips(std::string_view content) {
        return ReadInTrack(content).clips;
    }
};

// Reading

TEST_F(AudioClips, EveryAttributeReachesTheHostInTheOrderThatHostsExpect) {
    EXPECT_THAT(
        CallsInTrack(
            "<audioClip id='12' fileID='3' sourceInPoint='100' sourceOutPoint='48100' "
            "startPoint='5000000000' endPoint='5000048000' hue='212.5' name='Take &amp; 2' "
            "select='true' lockedInTime='true' looped='true' offline='true' zOrder='-4' "
            "crossFadeHeadClipID='11' crossFadeTailClipID='13' "
            "clipAutoCrossfade='false'/>"),
        ElementsAre("IEditAudioTrack#2.CreateAudioClip(12) -> IEditAudioClip#3",
                    "IEditAudioClip#3.SetFileID(3)", "IEditAudioClip#3.SetLooped(true)",
                    "IEditAudioClip#3.SetOffline(true)", "IEditAudioClip#3.SetZOrder(-4)",
                    "IEditAudioClip#3.SetCrossFadeHeadClipID(11)",
                    "IEditAudioClip#3.SetCrossFadeTailClipID(13)",
                    "IEditAudioClip#3.SetClipAutoCrossfade(false)",
                    "IEditAudioClip#3.SetSourceInPoint(100)", "IEditAudioClip#3.SetDuration(48000)",
                    "IEditAudioClip#3.SetStartPoint(5000000000)", "IEditAudioClip#3.SetHue(212.5)",
                    "IEditAudioClip#3.SetName(\"Take & 2\")", "IEditAudioClip#3.SetSelected(true)",
                    "IEditAudioClip#3.SetLockedInTime(true)"));
}

TEST_F(AudioClips, WithoutAttributesTheHostGetsTheDefaults) {
    EXPECT_THAT(
        CallsInTrack("<audioClip/>"),
        ElementsAre("IEditAudioTrack#2.CreateAudioClip(4294967295) -> IEditAudioClip#3",
                    "IEditAudioClip#3.SetFileID(4294967295)", "IEditAudioClip#3.SetLooped(false)",
                    "IEditAudioClip#3.SetOffline(false)", "IEditAudioClip#3.SetZOrder(0)",
                    "IEditAudioClip#3.SetCrossFadeHeadClipID(-1)",
                    "IEditAudioClip#3.SetCrossFadeTailClipID(-1)",
                    "IEditAudioClip#3.SetClipAutoCrossfade(true)",
                    "IEditAudioClip#3.SetSourceInPoint(-1)", "IEditAudioClip#3.SetDuration(0)",
                    "IEditAudioClip#3.SetStartPoint(-1)", "IEditAudioClip#3.SetHue(0)",
                    "IEditAudioClip#3.SetName(\"\")", "IEditAudioClip#3.SetSelected(false)",
                    "IEditAudioClip#3.SetLockedInTime(false)"));
}

TEST_F(AudioClips, TheElementNameOfOlderDocumentsMeansExactlyTheSame) {
    const std::string content =
        " id='1' name='a' fileID='2'><fadeIn/><take/><component id='clipGain'/>"
        "<channelMap><channel index='0' sourceIndex='1'/></channelMap><clipStretch/>"
        "<editParameter/><properties properties='p'/><effectsRack/></";
    EXPECT_EQ(CallsInTrack("<clip" + content + "clip>"),
              CallsInTrack("<audioClip" + content + "audioClip>"));
}

TEST_F(AudioClips, TheEndPointIsIgnored) {
    const std::string clip = "id='1' sourceInPoint='10' sourceOutPoint='30' startPoint='100'";
    const auto without = CallsInTrack("<audioClip " + clip + "/>");
    EXPECT_EQ(CallsInTrack("<audioClip " + clip + " endPoint='120'/>"), without);
    EXPECT_EQ(CallsInTrack("<audioClip " + clip + " endPoint='7'/>"), without);
    EXPECT_EQ(CallsInTrack("<audioClip " + clip + " endPoint='x'/>"), without);
}

TEST_F(AudioClips, AnEndPointThatDisagreesIsCorrectedOnWriting) {
    const auto track = ReadInTrack(
        "<audioClip id='1' sourceInPoint='10' sourceOutPoint='30' startPoint='100' endPoint='7'/>");
    EXPECT_THAT(WrittenElement("audioClip", track), HasSubstr(" endPoint=\"120\""));
}

TEST_F(AudioClips, ByDefaultAClipCrossfadesAutomaticallyAndIsLinkedToNoOther) {
    const auto track = ReadInTrack("<audioClip id='1'/>");
    EXPECT_TRUE(track.clips.at(0).autoCrossfade);
    EXPECT_EQ(track.clips.at(0).crossFadeHeadClipId, -1);
    EXPECT_EQ(track.clips.at(0).crossFadeTailClipId, -1);
    EXPECT_THAT(WrittenElement("audioClip", track),
                HasSubstr("clipAutoCrossfade=\"true\" crossFadeHeadClipID=\"-1\" "
                          "crossFadeTailClipID=\"-1\""));
}

TEST_F(AudioClips, ACrossfadeIdIsAlsoReadAsAnUnsignedNumber) {
    const auto clips = ReadClips(
        "<audioClip id='1' crossFadeHeadClipID='4294967295' crossFadeTailClipID='4294967294'/>");
    EXPECT_EQ(clips.at(0).crossFadeHeadClipId, -1);
    EXPECT_EQ(clips.at(0).crossFadeTailClipId, -2);
}

TEST_F(AudioClips, AClipWithoutANameTakesOverTheNameOfTheClipBefore) {
    const auto clips =
        ReadClips("<audioClip name='a'/><audioClip/><audioClip name=''/><audioClip/>");
    EXPECT_EQ(clips.at(1).name, "a");
    EXPECT_EQ(clips.at(2).name, "");
    EXPECT_EQ(clips.at(3).name, "");
}

TEST_F(AudioClips, AClipWithoutAHueTakesOverTheHueOfTheClipBefore) {
    const auto clips =
        ReadClips("<audioClip hue='30'/><audioClip/><audioClip hue='x'/><audioClip/>");
    EXPECT_EQ(clips.at(1).hue, 30.0);
    EXPECT_EQ(clips.at(2).hue, 0.0);
    EXPECT_EQ(clips.at(3).hue, 0.0);
}

TEST_F(AudioClips, NameAndHueCarryOverToTheClipsOfTheNextTrackAndOfEveryKind) {
    const auto session = ReadInSession(
                             "<tracks><audioTrack id='1'><audioClip name='a' hue='7'/></audioTrack>"
                             "<videoTrack id='2'><videoClip/></videoTrack>"
                             "<instrumentTrack id='3'><midiClip/></instrumentTrack></tracks>")
                             .session;
    EXPECT_EQ(session.videoTracks.at(0).clips.at(0).name, "a");
    EXPECT_EQ(session.videoTracks.at(0).clips.at(0).hue, 7.0);
    EXPECT_EQ(session.audioTracks.at(1).midiClips.at(0).name, "a");
    EXPECT_EQ(session.audioTracks.at(1).midiClips.at(0).hue, 7.0);
}

TEST_F(AudioClips, NothingElseCarriesOver) {
    const auto clips = ReadClips(
        "<audioClip id='1' fileID='3' sourceInPoint='1' sourceOutPoint='2' startPoint='3' "
        "select='true' lockedInTime='true' looped='true' offline='true' zOrder='4' "
        "crossFadeHeadClipID='5' crossFadeTailClipID='6' clipAutoCrossfade='false'>"
        "<channelMap><channel index='0' sourceIndex='1'/></channelMap></audioClip>"
        "<audioClip/>");
    EXPECT_EQ(clips.at(1), ReadClips("<audioClip/>").at(0));
}

TEST_F(AudioClips, TheNextReadBeginsWithoutANameAndWithoutAHue) {
    ReadClips("<audioClip name='a' hue='30'/>");
    const auto clips = ReadClips("<audioClip/>");
    EXPECT_EQ(clips.at(0).name, "");
    EXPECT_EQ(clips.at(0).hue, 0.0);
}

constexpr std::array kSwitches = {
    std::pair("looped", &AudioClip::looped), std::pair("offline", &AudioClip::offline),
    std::pair("select", &AudioClip::selected), std::pair("lockedInTime", &AudioClip::lockedInTime)};

TEST_F(AudioClips, EachSwitchHasAnAttributeOfItsOwn) {
    for (const auto& [name, isOn] : kSwitches) {
        const auto clip = ReadClips("<audioClip "s + name + "='true'/>").at(0);
        for (const auto& [otherName, isOtherOn] : kSwitches) {
            EXPECT_EQ(clip.*isOtherOn, isOtherOn == isOn) << name << ", " << otherName;
        }
    }
}

TEST_F(AudioClips, SwitchesAreOnOnlyForTheExactTextTrue) {
    for (const std::string text : {"True", "TRUE", "1", " true", "yes", ""}) {
        const auto clip =
            ReadClips("<audioClip select='" + text + "' lockedInTime='" + text + "' looped='" +
                      text + "' offline='" + text + "' clipAutoCrossfade='" + text + "'/>")
                .at(0);
        EXPECT_FALSE(clip.selected || clip.lockedInTime || clip.looped || clip.offline ||
                     clip.autoCrossfade)
            << text;
    }
}

TEST_F(AudioClips, NumbersThatDoNotParseAreTheDefaults) {
    EXPECT_EQ(CallsInTrack("<audioClip id='x' fileID='' sourceInPoint='1.5' sourceOutPoint='1 ' "
                           "startPoint='0x1' zOrder='-' crossFadeHeadClipID='none' "
                           "crossFadeTailClipID='4294967296'/>"),
              CallsInTrack("<audioClip/>"));
}

TEST_F(AudioClips, AHueMayHaveADecimalComma) {
    EXPECT_EQ(ReadClips("<audioClip hue='212,5'/>").at(0).hue, 212.5);
}

TEST_F(AudioClips, UnknownAttributesAreIgnored) {
    EXPECT_EQ(CallsInTrack("<audioClip colour='red' Name='x' fileId='3'/>"),
              CallsInTrack("<audioClip/>"));
}

TEST_F(AudioClips, ADurationBeyondTheRangeWrapsAround) {
    const auto clip = ReadClips(
                          "<audioClip sourceInPoint='-9223372036854775808' "
                          "sourceOutPoint='9223372036854775807'/>")
                          .at(0);
    EXPECT_EQ(clip.duration, -1);
}

TEST_F(AudioClips, AClipThatTheHostDoesNotMakeIsDroppedWithItsChildren) {
    EXPECT_THAT(
        CallsInTrack("<audioClip id='1'><fadeIn/><fadeOut/><clipStretch/><take/>"
                     "<component id='clipGain' name='x'><parameter index='0'/></component>"
                     "<effectsRack><slot/></effectsRack><editParameter slotIndex='0'/>"
                     "<properties properties='p'/>"
                     "<channelMap><channel index='0' sourceIndex='1'/></channelMap></audioClip>",
                     Null("IEditAudioTrack.CreateAudioClip")),
        ElementsAre("IEditAudioTrack#2.CreateAudioClip(1) -> null"));
}

TEST_F(AudioClips, AreReadOnlyInAudioTracks) {
    for (const std::string track : {"busTrack", "masterTrack", "instrumentTrack", "videoTrack"}) {
        const auto with = [&](const std::string& clip) {
            return CallsIn("<tracks><" + track + " id='1'>" + clip + "</" + track + "></tracks>");
        };
        EXPECT_EQ(with("<audioClip id='1'/><clip id='2'/>"), with("")) << track;
    }
}

// Built-in components

TEST_F(AudioClips, TheClipIsAskedForEachBuiltInComponentByItsKeyword) {
    const std::vector<std::pair<std::string, std::string>> operations = {
        {"clipGain", "GetClipGainComponent"},
        {"clipMute", "GetClipMuteComponent"},
        {"clipPan", "GetClipPanComponent"}};
    for (const auto& [id, operation] : operations) {
        const auto calls = CallsInTrack("<audioClip><component id='" + id +
                                        "' name='n'><parameter index='2' "
                                        "parameterValue='0.5'/></component></audioClip>");
        EXPECT_THAT(calls, Contains("IEditAudioClip#3." + operation + "() -> IEditComponent#4"));
        EXPECT_THAT(calls, Contains("IEditComponent#4.SetName(\"n\")"));
        EXPECT_THAT(calls, Contains("IEditComponent#4.SetParameterValue(2,0.5)"));
    }
}

TEST_F(AudioClips, AComponentWithAnotherKeywordOrNoneCausesNoCall) {
    for (const std::string attribute : {"", "id='clipgain'", "id='trackFader'", "id=''"}) {
        EXPECT_EQ(CallsInTrack("<audioClip><component " + attribute +
                               " name='n'>"
                               "<parameter index='2' parameterValue='0.5'/></component>"
                               "</audioClip>"),
                  CallsInTrack("<audioClip/>"))
            << attribute;
    }
}

TEST_F(AudioClips, AClipComponentOutsideAClipIsNotTheClips) {
    const auto calls = CallsInTrack(
        "<audioClip/><trackAudioParameters><component id='clipGain'/></trackAudioParameters>"
        "<component id='clipGain'/>");
    EXPECT_THAT(CallsOf(calls, "GetClipGainComponent"), IsEmpty());
}

TEST_F(AudioClips, AComponentThatTheHostDoesNotHaveIsDropped) {
    EXPECT_THAT(CallsOf(CallsInTrack("<audioClip><component id='clipPan' name='n'/></audioClip>",
                                     Null("IEditAudioClip.GetClipPanComponent")),
                        "Component"),
                ElementsAre("IEditAudioClip#3.GetClipPanComponent() -> null"));
}

TEST_F(AudioClips, AClipIsReleasedWhenItsElementEnds) {
    const auto calls = CallsWithReferences(
        "<orvo><session><tracks><audioTrack id='1'><audioClip id='5'/></audioTrack>"
        "<videoTrack id='2'/></tracks></session></orvo>");
    const auto released = std::ranges::find(calls, "IEditAudioClip.Release");
    const auto next = std::ranges::find(calls, "IEditSession.GetVideoTrack");
    EXPECT_LT(released - calls.begin(), next - calls.begin());
}

// Writing

AudioClip SampleAudioClip() {
    AudioClip clip;
    clip.id = 12;
    clip.fileId = 3;
    clip.sourceInPoint = 100;
    clip.duration = 48000;
    clip.startPoint = 5'000'000'000;
    clip.hue = 212.5;
    clip.name = "Take & 2";
    clip.looped = true;
    clip.offline = true;
    clip.selected = true;
    clip.lockedInTime = true;
    clip.zOrder = -4;
    clip.autoCrossfade = false;
    clip.crossFadeHeadClipId = 11;
    clip.crossFadeTailClipId = 13;
    return clip;
}

TEST_F(AudioClips, AreWrittenWithEveryAttributeAndBothEnds) {
    EXPECT_EQ(WrittenElement("audioClip", WithClips({SampleAudioClip()})),
              "<audioClip clipAutoCrossfade=\"false\" crossFadeHeadClipID=\"11\" "
              "crossFadeTailClipID=\"13\" endPoint=\"5000048000\" fileID=\"3\" hue=\"212.5\" "
              "id=\"12\" lockedInTime=\"true\" looped=\"true\" name=\"Take &amp; 2\" "
              "offline=\"true\" select=\"true\" sourceInPoint=\"100\" sourceOutPoint=\"48100\" "
              "startPoint=\"5000000000\" zOrder=\"-4\"/>");
}

TEST_F(AudioClips, EachSwitchIsWrittenToItsOwnAttribute) {
    for (const auto& [name, isOn] : kSwitches) {
        AudioClip clip;
        clip.*isOn = true;
        const std::string element = WrittenElement("audioClip", WithClips({clip}));
        for (const auto& [otherName, isOtherOn] : kSwitches) {
            const std::string expected = isOtherOn == isOn ? "=\"true\"" : "=\"false\"";
            EXPECT_THAT(element, HasSubstr(" "s + otherName + expected)) << name;
        }
    }
}

TEST_F(AudioClips, IdsAreWrittenUnsignedAndLinksSigned) {
    AudioClip clip;
    clip.id = 4294967294;
    clip.fileId = 4294967295;
    clip.crossFadeHeadClipId = -2;
    const std::string element = WrittenElement("audioClip", WithClips({clip}));
    EXPECT_THAT(element, HasSubstr(" id=\"4294967294\""));
    EXPECT_THAT(element, HasSubstr(" fileID=\"4294967295\""));
    EXPECT_THAT(element, HasSubstr(" crossFadeHeadClipID=\"-2\""));
}

TEST_F(AudioClips, ANameThatTheHostDoesNotHaveIsWrittenEmpty) {
    EXPECT_THAT(WrittenElement("audioClip", WithClips({SampleAudioClip()}),
                               Null("IQueryAudioClip.GetName")),
                HasSubstr(" name=\"\""));
    EXPECT_THAT(WrittenElement("audioClip", WithClips({AudioClip{}})), HasSubstr(" name=\"\""));
}

TEST_F(AudioClips, ATrackWithoutClipsWritesNone) {
    EXPECT_THAT(*Write(WithTrack({})).file, Not(HasSubstr("<audioClip")));
}

TEST_F(AudioClips, AClipThatTheHostReportsAsNullIsSkipped) {
    EXPECT_EQ(WrittenElement("audioClip", WithClips({SampleAudioClip()}),
                             Null("IQueryAudioTrack.GetClip")),
              "");
}

TEST_F(AudioClips, AreWrittenForEveryTrackButMasterAndInstrument) {
    for (const kelcore::uint32 kind : {1u, 2u, 4u, 0u, 9u}) {
        AudioTrack track = WithClips({SampleAudioClip()});
        track.kind = orvo::TrackKind{kind};
        EXPECT_THAT(WrittenElement("audioClip", track), Not(IsEmpty())) << kind;
    }
    for (const kelcore::uint32 kind : {3u, 5u}) {
        AudioTrack track = WithClips({SampleAudioClip()});
        track.kind = orvo::TrackKind{kind};
        EXPECT_EQ(WrittenElement("audioClip", track), "") << kind;
    }
}

AudioClip WithEveryChild() {
    AudioClip clip = SampleAudioClip();
    clip.properties = "p";
    clip.effectsRack.emplace();
    clip.gain.emplace();
    clip.mute.emplace();
    clip.pan.emplace();
    clip.fadeIn.emplace();
    clip.fadeOut.emplace();
    clip.stretch.emplace();
    clip.takes = {1, 2};
    clip.editParameters = {{0, 3}, {1, 4}};
    clip.channelSources = {{0, 1}, {1, 0}};
    return clip;
}

std::vector<std::string> ChildrenIn(const std::string& element) {
    std::vector<std::string> children;
    for (std::size_t at = element.find("\n  <"); at != std::string::npos;
         at = element.find("\n  <", at + 1)) {
        const std::size_t name = at + 4;
        if (element[name] != '/') {
            std::size_t end = element.find_first_of(" />", name);
            if (element.compare(name, 9, "component") == 0) {
                end = element.find('"', element.find(" id=\"", name) + 5);
            }
            children.push_back(element.substr(name, end - name));
        }
    }
    return children;
}

TEST_F(AudioClips, TheirChildrenAreWrittenInOneOrder) {
    std::vector<std::string> children;
    for (const std::string& child :
         ChildrenIn(WrittenElement("audioClip", WithClips({WithEveryChild()})))) {
        const std::size_t id = child.find(" id=\"");
        children.push_back(id == std::string::npos ? child : child.substr(id + 5));
    }
    EXPECT_THAT(children, ElementsAre("properties", "effectsRack", "clipGain", "clipMute",
                                      "clipPan", "fadeIn", "fadeOut", "clipStretch", "take", "take",
                                      "editParameter", "editParameter", "channelMap"));
}

TEST_F(AudioClips, WhatAClipDoesNotHaveIsNotWritten) {
    EXPECT_THAT(ChildrenIn(WrittenElement("audioClip", WithClips({AudioClip{}}))), IsEmpty());
}

TEST_F(AudioClips, AnEditParameterWithoutASlotIsNotWritten) {
    AudioClip clip;
    clip.editParameters = {{4294967295, 1}, {4294967294, 2}};
    EXPECT_THAT(ChildrenIn(WrittenElement("audioClip", WithClips({clip}))),
                ElementsAre("editParameter"));
}

TEST_F(AudioClips, AreQueriedInTheOrderThatHostsExpect) {
    auto queries = QueriesOf("IQueryAudioClip", WithTrack(WithClips({AudioClip{}})));
    ASSERT_GE(queries.size(), 15u);
    queries.resize(15);
    EXPECT_THAT(queries, ElementsAre("GetID", "GetFileID", "GetLooped", "GetOffline", "GetZOrder",
                                     "GetCrossFadeHeadClipID", "GetCrossFadeTailClipID",
                                     "GetClipAutoCrossfade", "GetSourceInPoint", "GetDuration",
                                     "GetStartPoint", "GetHue", "GetName", "GetSelected",
                                     "GetLockedInTime"));
}

TEST_F(AudioClips, AnEditParameterIsAskedForWithNoSlotAndTheFirstParameter) {
    AudioClip clip;
    clip.editParameters = {{1, 2}};
    const auto outputs = test::OutputsBefore("IQueryAudioClip.GetEditParameter",
                                             WithTrack(WithClips({clip})), *serializer, Path());
    EXPECT_THAT(outputs, ElementsAre(ElementsAre(std::uint64_t{4294967295}, std::uint64_t{0})));
}

TEST_F(AudioClips, SurviveAWriteAndARead) {
    AudioClip extreme = WithEveryChild();
    extreme.id = 4294967295;
    extreme.sourceInPoint = std::numeric_limits<kelcore::int64>::min();
    extreme.duration = std::numeric_limits<kelcore::int64>::max();
    extreme.startPoint = std::numeric_limits<kelcore::int64>::max();
    extreme.hue = -1e-300;
    extreme.zOrder = std::numeric_limits<kelcore::int32>::min();
    const std::vector<AudioClip> clips = {AudioClip{}, WithEveryChild(), extreme};
    EXPECT_EQ(ThroughFile(WithTrack(WithClips(clips))).audioTracks.at(0).clips, clips);
}

TEST_F(AudioClips, AnEditParameterWithoutASlotIsLostByAWriteAndARead) {
    AudioClip clip;
    clip.editParameters = {{4294967295, 1}, {0, 2}};
    const auto again = ThroughFile(WithTrack(WithClips({clip}))).audioTracks.at(0).clips.at(0);
    ASSERT_EQ(again.editParameters.size(), 1u);
    EXPECT_EQ(again.editParameters.at(0).parameterIndex, 2u);
}

}  // namespace
}  // namespace tses
