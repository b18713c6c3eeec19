#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using orvo::ClipStretch;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ClipStretchElement : public test::ElementFixture {
protected:
    ClipStretch ReadStretch(const std::string& attributes) {
        return ReadInTrack("<audioClip><clipStretch " + attributes + "/></audioClip>")
            .clips.at(0)
            .stretch.value();
    }

    static AudioTrack With(const ClipStretch& stretch) {
        AudioTrack track;
        track.clips.emplace_back().stretch = stretch;
        return track;
    }

    ClipStretch Again(const ClipStretch& stretch) {
        return ThroughFile(WithTrack(With(stretch))).audioTracks.at(0).clips.at(0).stretch.value();
    }
};

TEST_F(ClipStretchElement, EveryValueReachesTheClipsStretchInTheOrderThatHostsExpect) {
    const auto calls = CallsInTrack(
        "<audioClip><clipStretch stretchMode='realtime' stretchType='varispeed' "
        "stretchRatio='1.25' pitchAdjustment='-3.5' stretchQuality='low' transientSensitivity='-1' "
        "adaptiveWindowSize='64' preserveFormants='false'/></audioClip>");
    EXPECT_THAT(
        std::vector<std::string>(calls.end() - 9, calls.end()),
        ElementsAre("IEditAudioClip#3.GetClipStretch() -> IEditClipStretch#4",
                    "IEditClipStretch#4.SetStretchMode(1)", "IEditClipStretch#4.SetStretchType(2)",
                    "IEditClipStretch#4.SetStretchRatio(1.25)",
                    "IEditClipStretch#4.SetPitchAdjustment(-3.5)",
                    "IEditClipStretch#4.SetStretchQuality(2)",
                    "IEditClipStretch#4.SetTransientSensitivity(-1)",
                    "IEditClipStretch#4.SetAdaptiveWindowSize(64)",
                    "IEditClipStretch#4.SetPreserveFormants(false)"));
}

TEST_F(ClipStretchElement, WithoutAttributesItSetsTheDefaults) {
    const auto calls = CallsInTrack("<audioClip><clipStretch/></audioClip>");
    EXPECT_THAT(
        std::vector<std::string>(calls.end() - 8, calls.end()),
        ElementsAre("IEditClipStretch#4.SetStretchMode(0)", "IEditClipStretch#4.SetStretchType(0)",
                    "IEditClipStretch#4.SetStretchRatio(1)",
                    "IEditClipStretch#4.SetPitchAdjustment(0)",
                    "IEditClipStretch#4.SetStretchQuality(0)",
                    "IEditClipStretch#4.SetTransientSensitivity(40)",
                    "IEditClipStretch#4.SetAdaptiveWindowSize(37)",
                    "IEditClipStretch#4.SetPreserveFormants(true)"));
}

TEST_F(ClipStretchElement, EachKeywordHasItsCode) {
    EXPECT_EQ(ReadStretch("stretchMode='off'").stretchMode, orvo::StretchMode::Off);
    EXPECT_EQ(ReadStretch("stretchMode='realtime'").stretchMode, orvo::StretchMode::Realtime);
    EXPECT_EQ(ReadStretch("stretchMode='rendered'").stretchMode, orvo::StretchMode::Rendered);
    EXPECT_EQ(ReadStretch("stretchType='normal'").stretchType, orvo::StretchType::Normal);
    EXPECT_EQ(ReadStretch("stretchType='solo'").stretchType, orvo::StretchType::Solo);
    EXPECT_EQ(ReadStretch("stretchType='varispeed'").stretchType, orvo::StretchType::Varispeed);
    EXPECT_EQ(ReadStretch("stretchQuality='high'").stretchQuality, orvo::StretchQuality::High);
    EXPECT_EQ(ReadStretch("stretchQuality='medium'").stretchQuality, orvo::StretchQuality::Medium);
    EXPECT_EQ(ReadStretch("stretchQuality='low'").stretchQuality, orvo::StretchQuality::Low);
}

TEST_F(ClipStretchElement, ANumberStandsForItsKeyword) {
    EXPECT_EQ(ReadStretch("stretchMode='1'").stretchMode, orvo::StretchMode::Realtime);
    EXPECT_EQ(ReadStretch("stretchType='1'").stretchType, orvo::StretchType::Solo);
    EXPECT_EQ(ReadStretch("stretchQuality='2'").stretchQuality, orvo::StretchQuality::Low);
}

TEST_F(ClipStretchElement, ANumberBeyondTheKeywordsReachesTheHostAsItIs) {
    const ClipStretch stretch =
        ReadStretch("stretchMode='7' stretchType='8' stretchQuality='4294967295'");
    EXPECT_EQ(stretch.stretchMode, orvo::StretchMode{7});
    EXPECT_EQ(stretch.stretchType, orvo::StretchType{8});
    EXPECT_EQ(stretch.stretchQuality, orvo::StretchQuality{4294967295});
}

TEST_F(ClipStretchElement, AMisspeltKeywordIsNoNumberAndLeavesTheDefault) {
    for (const std::string text : {"High", "Low", "off ", "1.5", ""}) {
        const ClipStretch stretch = ReadStretch("stretchMode='" + text + "' stretchType='" + text +
                                                "' stretchQuality='" + text + "'");
        EXPECT_EQ(stretch, ClipStretch{}) << text;
    }
}

TEST_F(ClipStretchElement, RealNumbersMayHaveADecimalComma) {
    EXPECT_EQ(ReadStretch("stretchRatio='1,5'").stretchRatio, 1.5);
    EXPECT_EQ(ReadStretch("pitchAdjustment='-0,5'").pitchAdjustment, -0.5);
}

TEST_F(ClipStretchElement, RealNumbersThatDoNotParseAreZero) {
    EXPECT_EQ(ReadStretch("stretchRatio='fast'").stretchRatio, 0.0);
    EXPECT_EQ(ReadStretch("pitchAdjustment=''").pitchAdjustment, 0.0);
}

TEST_F(ClipStretchElement, IntegersThatDoNotParseAreTheDefaults) {
    EXPECT_EQ(ReadStretch("transientSensitivity='x' adaptiveWindowSize='1.5'"), ClipStretch{});
}

TEST_F(ClipStretchElement, FormantsArePreservedForTrueAndForOne) {
    EXPECT_TRUE(ReadStretch("preserveFormants='true'").preserveFormants);
    EXPECT_TRUE(ReadStretch("preserveFormants='1'").preserveFormants);
    for (const std::string text : {"yes", "True", "0", ""}) {
        EXPECT_FALSE(ReadStretch("preserveFormants='" + text + "'").preserveFormants) << text;
    }
}

TEST_F(ClipStretchElement, AClipWithoutAStretchIgnoresIt) {
    EXPECT_THAT(CallsOf(CallsInTrack("<audioClip><clipStretch stretchMode='1'/></audioClip>",
                                     Null("IEditAudioClip.GetClipStretch")),
                        "Stretch"),
                ElementsAre("IEditAudioClip#3.GetClipStretch() -> null"));
}

// Writing

TEST_F(ClipStretchElement, IsWrittenWithEveryAttribute) {
    EXPECT_EQ(WrittenElement("clipStretch",
                             With({orvo::StretchMode::Realtime, orvo::StretchType::Varispeed, 1.25,
                                   -3.5, orvo::StretchQuality::Medium, -1, 64, false})),
              "<clipStretch adaptiveWindowSize=\"64\" pitchAdjustment=\"-3.5\" "
              "preserveFormants=\"false\" stretchMode=\"realtime\" stretchQuality=\"medium\" "
              "stretchRatio=\"1.25\" stretchType=\"varispeed\" transientSensitivity=\"-1\"/>");
}

TEST_F(ClipStretchElement, ACodeBeyondTheKeywordsIsWrittenAsTheLastOne) {
    for (const kelcore::uint32 code : {2u, 3u, 7u, 4294967295u}) {
        EXPECT_THAT(
            WrittenElement("clipStretch", With({.stretchMode = orvo::StretchMode{code},
                                                .stretchType = orvo::StretchType{code},
                                                .stretchQuality = orvo::StretchQuality{code}})),
            AllOf(HasSubstr("stretchMode=\"rendered\""), HasSubstr("stretchQuality=\"low\""),
                  HasSubstr("stretchType=\"varispeed\"")))
            << code;
    }
}

TEST_F(ClipStretchElement, IsNotWrittenForAClipWithoutAStretch) {
    AudioTrack track;
    track.clips.emplace_back();
    EXPECT_THAT(WrittenElement("clipStretch", track), IsEmpty());
}

TEST_F(ClipStretchElement, SurvivesAWriteAndARead) {
    for (const kelcore::uint32 code : {0u, 1u, 2u}) {
        const ClipStretch stretch{
            orvo::StretchMode{code},    orvo::StretchType{code}, 0.1 + 0.2,  -1e-9,
            orvo::StretchQuality{code}, -2147483647 - 1,         2147483647, code != 1};
        EXPECT_EQ(Again(stretch), stretch);
    }
}

TEST_F(ClipStretchElement, ACodeBeyondTheKeywordsComesBackAsTheLastOne) {
    const ClipStretch again = Again({.stretchMode = orvo::StretchMode{7},
                                     .stretchType = orvo::StretchType{7},
                                     .stretchQuality = orvo::StretchQuality{7}});
    EXPECT_EQ(again.stretchMode, orvo::StretchMode::Rendered);
    EXPECT_EQ(again.stretchType, orvo::StretchType::Varispeed);
    EXPECT_EQ(again.stretchQuality, orvo::StretchQuality::Low);
}

}  // namespace
}  // namespace tses
