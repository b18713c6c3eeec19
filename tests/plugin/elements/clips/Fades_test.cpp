#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Fade;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Fades : public test::ElementFixture {
protected:
    /// The calls from the fade on; it is object 4.
    std::vector<std::string> CallsOfFade(const std::string& element,
                                         const test::HostSetup& host = {}) {
        return CallsOf(CallsInTrack("<audioClip>" + element + "</audioClip>", host), "Fade");
    }

    Fade ReadFadeIn(const std::string& attributes) {
        return ReadInTrack("<audioClip><fadeIn " + attributes + "/></audioClip>")
            .clips.at(0)
            .fadeIn.value();
    }

    static AudioTrack With(std::optional<Fade> fadeIn, std::optional<Fade> fadeOut) {
        AudioClip clip;
        clip.fadeIn = fadeIn;
        clip.fadeOut = fadeOut;
        AudioTrack track;
        track.clips.push_back(clip);
        return track;
    }
};

TEST_F(Fades, EveryValueOfAFadeInReachesTheClipsFadeIn) {
    const auto calls = CallsInTrack(
        "<audioClip><fadeIn startPoint='100' endPoint='5000000000' type='cosine' shape='-50' "
        "crossFadeLinkType='linkedAsymmetric'/></audioClip>");
    EXPECT_THAT(
        std::vector<std::string>(calls.end() - 6, calls.end()),
        ElementsAre("IEditAudioClip#3.GetFadeIn() -> IEditClipFade#4",
                    "IEditClipFade#4.SetStartPoint(100)", "IEditClipFade#4.SetEndPoint(5000000000)",
                    "IEditClipFade#4.SetType(1)", "IEditClipFade#4.SetShape(-50)",
                    "IEditClipFade#4.SetCrossFadeLinkType(1)"));
}

TEST_F(Fades, AFadeOutReachesTheClipsFadeOut) {
    const auto clip = ReadInTrack("<audioClip><fadeOut shape='3'/></audioClip>").clips.at(0);
    EXPECT_EQ(clip.fadeIn, std::nullopt);
    EXPECT_EQ(clip.fadeOut, (Fade{.shape = 3}));
}

TEST_F(Fades, WithoutAttributesAFadeIsEmptyLogarithmicAndSymmetric) {
    const auto calls = CallsInTrack("<audioClip><fadeIn/></audioClip>");
    EXPECT_THAT(std::vector<std::string>(calls.end() - 5, calls.end()),
                ElementsAre("IEditClipFade#4.SetStartPoint(0)", "IEditClipFade#4.SetEndPoint(0)",
                            "IEditClipFade#4.SetType(0)", "IEditClipFade#4.SetShape(0)",
                            "IEditClipFade#4.SetCrossFadeLinkType(0)"));
}

TEST_F(Fades, OnlyTheExactTextLogIsLogarithmic) {
    EXPECT_EQ(ReadFadeIn("type='log'").type, orvo::FadeType::Logarithmic);
}

TEST_F(Fades, AnUnknownCurveNameReadsAsCosine) {
    for (const std::string text : {"cosine", "Log", "linear", "log ", "0", ""}) {
        EXPECT_EQ(ReadFadeIn("type='" + text + "'").type, orvo::FadeType::Cosine) << text;
    }
}

TEST_F(Fades, OnlyTheExactTextLinkedSymmetricIsSymmetric) {
    EXPECT_EQ(ReadFadeIn("crossFadeLinkType='linkedSymmetric'").crossFadeLinkType,
              orvo::CrossFadeLink::Symmetric);
    for (const std::string text : {"linkedAsymmetric", "LinkedSymmetric", "symmetric", "0", ""}) {
        EXPECT_EQ(ReadFadeIn("crossFadeLinkType='" + text + "'").crossFadeLinkType,
                  orvo::CrossFadeLink::Asymmetric)
            << text;
    }
}

TEST_F(Fades, NumbersThatDoNotParseAreZero) {
    EXPECT_EQ(ReadFadeIn("startPoint='x' endPoint='1.5' shape=''"), Fade{});
}

TEST_F(Fades, AFadeThatTheClipDoesNotHaveChangesNothing) {
    EXPECT_THAT(
        CallsOfFade("<fadeOut shape='3'/>", Null("IEditAudioClip.GetFadeOut")),
        ElementsAre(HasSubstr("SetCrossFadeHeadClipID"), HasSubstr("SetCrossFadeTailClipID"),
                    "IEditAudioClip#3.GetFadeOut() -> null"));
}

TEST_F(Fades, AFadeThatComesTwiceIsSetTwice) {
    EXPECT_EQ(
        CallsOf(CallsInTrack("<audioClip><fadeIn/><fadeIn shape='1'/></audioClip>"), "SetShape")
            .size(),
        2u);
}

// Writing

TEST_F(Fades, AreWrittenWithEveryAttribute) {
    const auto track =
        With(Fade{100, 5'000'000'000, orvo::FadeType::Cosine, -50, orvo::CrossFadeLink::Asymmetric},
             Fade{});
    EXPECT_EQ(WrittenElement("fadeIn", track),
              "<fadeIn crossFadeLinkType=\"linkedAsymmetric\" endPoint=\"5000000000\" "
              "shape=\"-50\" startPoint=\"100\" type=\"cosine\"/>");
    EXPECT_EQ(WrittenElement("fadeOut", track),
              "<fadeOut crossFadeLinkType=\"linkedSymmetric\" endPoint=\"0\" shape=\"0\" "
              "startPoint=\"0\" type=\"log\"/>");
}

TEST_F(Fades, AnyCodeButZeroIsWrittenAsTheSecondKeyword) {
    for (const kelcore::uint32 code : {1u, 2u, 4294967295u}) {
        EXPECT_THAT(
            WrittenElement("fadeIn", With(Fade{.type = orvo::FadeType{code},
                                               .crossFadeLinkType = orvo::CrossFadeLink{code}},
                                          {})),
            testing::AllOf(HasSubstr("type=\"cosine\""), HasSubstr("linkedAsymmetric")))
            << code;
    }
}

TEST_F(Fades, OneThatTheClipDoesNotHaveIsLeftOutAndTheOtherWritten) {
    EXPECT_THAT(WrittenElement("fadeOut", With(Fade{}, {})), IsEmpty());
    EXPECT_THAT(WrittenElement("fadeIn", With(Fade{}, {})), HasSubstr("<fadeIn "));
    EXPECT_THAT(WrittenElement("fadeIn", With({}, Fade{})), IsEmpty());
    EXPECT_THAT(WrittenElement("fadeOut", With({}, Fade{})), HasSubstr("<fadeOut "));
}

TEST_F(Fades, SurviveAWriteAndARead) {
    const Fade extreme{std::numeric_limits<kelcore::int64>::min(),
                       std::numeric_limits<kelcore::int64>::max(), orvo::FadeType::Cosine,
                       std::numeric_limits<kelcore::int32>::min(), orvo::CrossFadeLink::Asymmetric};
    const auto track = With(Fade{}, extreme);
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).clips, track.clips);
}

TEST_F(Fades, ACodeBeyondTheKeywordsComesBackAsOne) {
    const auto clip =
        ThroughFile(
            WithTrack(With(
                Fade{.type = orvo::FadeType{7}, .crossFadeLinkType = orvo::CrossFadeLink{8}}, {})))
            .audioTracks.at(0)
            .clips.at(0);
    EXPECT_EQ(clip.fadeIn->type, orvo::FadeType::Cosine);
    EXPECT_EQ(clip.fadeIn->crossFadeLinkType, orvo::CrossFadeLink::Asymmetric);
}

}  // namespace
}  // namespace tses
