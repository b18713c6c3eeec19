#include "session/Words.h"

#include <gmock/gmock.h>

#include <set>
#include <sstream>
#include <string>

#include <orvo/Session.h>

namespace orvo {
namespace {

template <class Code>
std::string Printed(Code code) {
    std::ostringstream out;
    out << code;
    return out.str();
}

template <class Code>
void ExpectWord(Code code, std::string_view word) {
    EXPECT_EQ(WordOf(code), word);
    EXPECT_EQ(CodeOf<Code>(word), code);
    EXPECT_EQ(Printed(code), word);
}

TEST(WordsTest, EveryNamedValueHasTheFormatsWord) {
    ExpectWord(FadeType::Logarithmic, "log");
    ExpectWord(FadeType::Cosine, "cosine");
    ExpectWord(CrossFadeLink::Symmetric, "linkedSymmetric");
    ExpectWord(CrossFadeLink::Asymmetric, "linkedAsymmetric");
    ExpectWord(StretchMode::Off, "off");
    ExpectWord(StretchMode::Realtime, "realtime");
    ExpectWord(StretchMode::Rendered, "rendered");
    ExpectWord(StretchType::Normal, "normal");
    ExpectWord(StretchType::Solo, "solo");
    ExpectWord(StretchType::Varispeed, "varispeed");
    ExpectWord(StretchQuality::High, "high");
    ExpectWord(StretchQuality::Medium, "medium");
    ExpectWord(StretchQuality::Low, "low");
    ExpectWord(KeyframeType::Linear, "linear");
    ExpectWord(KeyframeType::Hold, "hold");
    ExpectWord(ChannelType::Mono, "mono");
    ExpectWord(ChannelType::Stereo, "stereo");
    ExpectWord(ChannelType::FivePointOne, "fivePointOne");
    ExpectWord(SoundSet::African1, "african1");
    ExpectWord(SoundSet::African2, "african2");
    ExpectWord(SoundSet::Beeps, "beeps");
    ExpectWord(SoundSet::Cymbals, "cymbals");
    ExpectWord(SoundSet::Kit, "kit");
    ExpectWord(SoundSet::Latin1, "latin1");
    ExpectWord(SoundSet::Latin2, "latin2");
    ExpectWord(SoundSet::Latin3, "latin3");
    ExpectWord(SoundSet::Sticks, "sticks");
    ExpectWord(SoundSet::Tabla, "tabla");
    ExpectWord(Beat::Silent, "none");
    ExpectWord(Beat::DownBeat, "downBeat");
    ExpectWord(Beat::UpBeat, "upBeat");
    ExpectWord(Beat::Subdivision, "subdivision");
    ExpectWord(TimeDisplay::Decimal, "timeFormatDecimal");
    ExpectWord(TimeDisplay::Samples, "timeFormatSamples");
    ExpectWord(TimeDisplay::Timecode, "timeFormatTimeCode");
    ExpectWord(TimeDisplay::BarsAndBeats, "timeFormatBarsAndBeats");
}

TEST(WordsTest, WhatTheFormatHasNoWordForHasOneOfItsOwn) {
    ExpectWord(TrackKind::Audio, "audio");
    ExpectWord(TrackKind::Bus, "bus");
    ExpectWord(TrackKind::Master, "master");
    ExpectWord(TrackKind::Metronome, "metronome");
    ExpectWord(TrackKind::Instrument, "instrument");
    ExpectWord(ChannelType::NotSaid, "notSaid");
    ExpectWord(TimeDisplay::Ntsc30, "timeFormatNTSC30");
    ExpectWord(TimeDisplay::Ntsc30Drop, "timeFormatNTSC30DropFrame");
    ExpectWord(TimeDisplay::Ntsc60, "timeFormatNTSC60");
    ExpectWord(TimeDisplay::Ntsc60Drop, "timeFormatNTSC60DropFrame");
    ExpectWord(TimeDisplay::Ntsc24, "timeFormatNTSC24");
}

template <class Code>
void ExpectRoundTrips() {
    std::set<std::string_view> texts;
    for (const Word<Code>& word : Words<Code>::kTable) {
        ExpectWord(word.code, word.text);
        EXPECT_TRUE(texts.insert(word.text).second) << word.text;
    }
}

TEST(WordsTest, EveryWordLeadsToItsValueAndBack) {
    ExpectRoundTrips<FadeType>();
    ExpectRoundTrips<CrossFadeLink>();
    ExpectRoundTrips<StretchMode>();
    ExpectRoundTrips<StretchType>();
    ExpectRoundTrips<StretchQuality>();
    ExpectRoundTrips<KeyframeType>();
    ExpectRoundTrips<TrackKind>();
    ExpectRoundTrips<ChannelType>();
    ExpectRoundTrips<SoundSet>();
    ExpectRoundTrips<Beat>();
    ExpectRoundTrips<TimeDisplay>();
    ExpectRoundTrips<FeedTarget>();
    ExpectRoundTrips<Severity>();
}

TEST(WordsTest, AnUnknownValueHasNoWordAndPrintsAsItsNumber) {
    EXPECT_EQ(WordOf(TrackKind{6}), std::nullopt);
    EXPECT_EQ(CodeOf<TrackKind>("Bus"), std::nullopt);
    EXPECT_EQ(CodeOf<TrackKind>(""), std::nullopt);
    EXPECT_EQ(Printed(TrackKind{4294967295}), "4294967295");
    EXPECT_EQ(Printed(TimeDisplay{-1}), "-1");
}

TEST(WordsTest, ASeverityPrintsAsAWord) {
    EXPECT_EQ(Printed(Severity::Error), "error");
    EXPECT_EQ(Printed(Severity::Warning), "warning");
}

TEST(WordsTest, AFeedsTargetPrintsAsAWord) {
    EXPECT_EQ(Printed(FeedTarget::Nowhere), "nowhere");
    EXPECT_EQ(Printed(FeedTarget::Track), "track");
    EXPECT_EQ(Printed(FeedTarget::Port), "port");
}

}  // namespace
}  // namespace orvo
