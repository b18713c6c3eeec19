#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kelcore/ClientVersion.h"
#include "platform/kelcore/Localizer.h"
#include "tests/support/SerializerFixture.h"

namespace tses {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SessionElement : public test::SerializerFixture {};

TEST_F(SessionElement, WithoutAttributesTheHostGetsTheDefaultsAndTheFirstVersion) {
    const auto outcome = ReadInRoot("<session/>");
    EXPECT_THAT(
        outcome.calls,
        ElementsAre("IEditSession#1.SetSampleRate(48000)", "IEditSession#1.SetDuration(0)",
                    "IEditSession#1.SetBitDepth(32)",
                    "IEditSession#1.SetFormatDescription(\"Vantor Tembra 4.0 Multitrack Session\")",
                    "IEditSession#1.SetVersionDependentValue(0)"));
}

TEST_F(SessionElement, TheLayoutIsSetFirstAndThenRateLengthDepthAndDescription) {
    const auto outcome = ReadInRoot(
        "<session sampleRate='96000' duration='5000000000' bitDepth='24' "
        "audioChannelType='fivePointOne' "
        "appVersion='25.1'/>");
    EXPECT_THAT(
        outcome.calls,
        ElementsAre(
            "IEditSession#1.SetChannelCount(6)", "IEditSession#1.SetSampleRate(96000)",
            "IEditSession#1.SetDuration(5000000000)", "IEditSession#1.SetBitDepth(24)",
            "IEditSession#1.SetFormatDescription(\"Vantor Tembra 25.1 Multitrack Session\")",
            "IEditSession#1.SetVersionDependentValue(0)"));
}

TEST_F(SessionElement, EachLayoutHasItsNumberOfChannels) {
    EXPECT_THAT(ReadInRoot("<session audioChannelType='mono'/>").calls,
                Contains("IEditSession#1.SetChannelCount(1)"));
    EXPECT_THAT(ReadInRoot("<session audioChannelType='stereo'/>").calls,
                Contains("IEditSession#1.SetChannelCount(2)"));
}

TEST_F(SessionElement, AnUnknownLayoutLeavesTheHostsAndNothingElseChanges) {
    for (const char* const keyword : {"quad", "Mono", "stereo ", "", "2"}) {
        const auto outcome = ReadInRoot("<session sampleRate='44100' audioChannelType='" +
                                        std::string(keyword) + "'/>");
        EXPECT_THAT(CallsOf(outcome.calls, "SetChannelCount"), IsEmpty()) << keyword;
        EXPECT_THAT(outcome.calls, Contains("IEditSession#1.SetSampleRate(44100)")) << keyword;
    }
}

TEST_F(SessionElement, NumbersThatDoNotParseAreTheDefaults) {
    const auto outcome = ReadInRoot("<session sampleRate='48k' duration='' bitDepth='24.0'/>");
    EXPECT_THAT(outcome.calls, Contains("IEditSession#1.SetSampleRate(48000)"));
    EXPECT_THAT(outcome.calls, Contains("IEditSession#1.SetDuration(0)"));
    EXPECT_THAT(outcome.calls, Contains("IEditSession#1.SetBitDepth(32)"));
}

TEST_F(SessionElement, ARateThatWasWrittenUnsignedKeepsItsBitsThroughTheSignedReader) {
    EXPECT_THAT(ReadInRoot("<session sampleRate='4294967295'/>").calls,
                Contains("IEditSession#1.SetSampleRate(4294967295)"));
}

TEST_F(SessionElement, TheBuildAndUnknownAttributesAreNotRead) {
    EXPECT_EQ(ReadInRoot("<session appBuild='1.2.3' colour='red'/>").calls,
              ReadInRoot("<session/>").calls);
}

TEST_F(SessionElement, TheNameIsAcceptedAndIgnored) {
    EXPECT_EQ(ReadInRoot("<session><name>Song <b/> two</name></session>").calls,
              ReadInRoot("<session/>").calls);
}

TEST_F(SessionElement, APlaceInTheVersionTextIsNotReplacedAgain) {
    EXPECT_THAT(
        ReadInRoot("<session appVersion='@0 @1'/>").calls,
        Contains(
            "IEditSession#1.SetFormatDescription(\"Vantor Tembra @0 @1 Multitrack Session\")"));
}

TEST_F(SessionElement, TheDescriptionIsTranslated) {
    kelcore::Localizer::SetTranslation("$$$/SessionPlugIns/OrvoNative/FormatDescription",
                                       u"Mehrspursitzung von @0");
    const auto outcome = ReadInRoot("<session appVersion='25.1'/>");
    kelcore::Localizer::Clear();
    EXPECT_THAT(outcome.calls,
                Contains("IEditSession#1.SetFormatDescription(\"Mehrspursitzung von 25.1\")"));
}

// Writing

orvo::Session SampleSession() {
    orvo::Session session;
    session.sampleRate = 44100;
    session.audioChannelType = orvo::ChannelType::Mono;
    session.duration = 5'000'000'000;
    session.bitDepth = 24;
    return session;
}

TEST_F(SessionElement, IsWrittenWithItsAttributesSorted) {
    kelcore::SetClientVersion("25.1", 310);
    const auto outcome = Write(SampleSession());
    ASSERT_TRUE(outcome.ok);
    EXPECT_THAT(
        *outcome.file,
        HasSubstr("<session appBuild=\"25.1.310\" appVersion=\"25.1\" audioChannelType=\"mono\" "
                  "bitDepth=\"24\" duration=\"5000000000\" sampleRate=\"44100\""));
}

TEST_F(SessionElement, TheVersionOfTheApplicationIsUtf8) {
    const std::string before = kelcore::GetClientVersion();
    kelcore::SetClientVersion("25.1 \xCE\xB2", 310);
    const auto outcome = Write(SampleSession());
    kelcore::SetClientVersion(before, 310);
    EXPECT_THAT(*outcome.file, HasSubstr("<session appBuild=\"25.1 \xCE\xB2.310\" "
                                         "appVersion=\"25.1 \xCE\xB2\" "));
}

TEST_F(SessionElement, ADepthBeyondTheSignedRangeIsWrittenUnsigned) {
    auto session = SampleSession();
    session.bitDepth = 4294967294;
    EXPECT_THAT(*Write(session).file, HasSubstr("bitDepth=\"4294967294\""));
}

TEST_F(SessionElement, ALayoutWithoutAKeywordIsWrittenAsStereo) {
    for (const kelcore::int32 channels : {2, 4, 0, -1, 7}) {
        auto session = SampleSession();
        session.audioChannelType = static_cast<orvo::ChannelType>(channels);
        EXPECT_THAT(*Write(session).file, HasSubstr("audioChannelType=\"stereo\"")) << channels;
    }
    auto session = SampleSession();
    session.audioChannelType = orvo::ChannelType::FivePointOne;
    EXPECT_THAT(*Write(session).file, HasSubstr("audioChannelType=\"fivePointOne\""));
}

TEST_F(SessionElement, ARateBeyondTheSignedRangeIsWrittenUnsigned) {
    auto session = SampleSession();
    session.sampleRate = 4294967295;
    EXPECT_THAT(*Write(session).file, HasSubstr("sampleRate=\"4294967295\""));
}

TEST_F(SessionElement, SurvivesAWriteAndARead) {
    auto expected = SampleSession();
    ASSERT_TRUE(Write(expected).ok);
    const auto outcome = ReadPath(Path());
    ASSERT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.session.sampleRate, expected.sampleRate);
    EXPECT_EQ(outcome.session.audioChannelType, expected.audioChannelType);
    EXPECT_EQ(outcome.session.duration, expected.duration);
    EXPECT_EQ(outcome.session.bitDepth, expected.bitDepth);
}

}  // namespace
}  // namespace tses
