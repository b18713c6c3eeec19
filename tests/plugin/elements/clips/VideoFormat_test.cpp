#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "platform/kelmediatypes/PixelAspectRatio.h"
#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::Session;
using orvo::VideoFormat;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class VideoFormatElement : public test::ElementFixture {
protected:
    static std::string InClip(const std::string& element) {
        return "<tracks><videoTrack id='7'><videoClip>" + element +
               "</videoClip></videoTrack></tracks>";
    }

    /// The calls of the format, which is object 4; the clip is object 3.
    std::vector<std::string> CallsOfFormat(const std::string& element,
                                           const test::HostSetup& host = {}) {
        return CallsOf(CallsIn(InClip(element), host), "VideoFormat");
    }

    VideoFormat ReadFormat(const std::string& attributes) {
        return ReadInSession(InClip("<videoFormat " + attributes + "/>"))
            .session.videoTracks.at(0)
            .clips.at(0)
            .format.value();
    }

    static Session With(std::optional<VideoFormat> format) {
        Session session;
        session.videoTracks.emplace_back().clips.emplace_back().format = format;
        return session;
    }
};

TEST_F(VideoFormatElement, EveryValueReachesTheClipsFormatInTheOrderThatHostsExpect) {
    EXPECT_THAT(
        CallsOfFormat("<videoFormat timeScale='24000' sampleSize='1001' pixelType='5' width='1920' "
                      "height='1080' parNumerator='16' parDenominator='15' fieldType='2'/>"),
        ElementsAre(
            "IEditVideoClip#3.GetVideoFormat() -> IEditVideoFormat#4",
            "IEditVideoFormat#4.SetFrameTiming(24000,1001)", "IEditVideoFormat#4.SetPixelType(5)",
            "IEditVideoFormat#4.SetDimensions(1920,1080)",
            "IEditVideoFormat#4.SetPixelAspectRatio(16,15)", "IEditVideoFormat#4.SetFieldType(2)"));
}

TEST_F(VideoFormatElement, WithoutAttributesItSetsTheDefaultsAndTheUnknownAspectRatio) {
    const std::string numerator =
        std::to_string(kelmediatypes::kPixelAspectRatio_Unknown.numerator);
    const std::string denominator =
        std::to_string(kelmediatypes::kPixelAspectRatio_Unknown.denominator);
    EXPECT_THAT(
        CallsOfFormat("<videoFormat/>"),
        ElementsAre("IEditVideoClip#3.GetVideoFormat() -> IEditVideoFormat#4",
                    "IEditVideoFormat#4.SetFrameTiming(0,0)", "IEditVideoFormat#4.SetPixelType(1)",
                    "IEditVideoFormat#4.SetDimensions(0,0)",
                    "IEditVideoFormat#4.SetPixelAspectRatio(" + numerator + "," + denominator + ")",
                    "IEditVideoFormat#4.SetFieldType(0)"));
}

TEST_F(VideoFormatElement, PixelTypeZeroReadsAsOne) {
    for (const std::string text : {"0", "-0", "00"}) {
        EXPECT_EQ(ReadFormat("pixelType='" + text + "'").pixelType, 1) << text;
    }
    EXPECT_EQ(ReadFormat("pixelType='-7'").pixelType, -7);
}

TEST_F(VideoFormatElement, NumbersThatDoNotParseAreTheDefaults) {
    EXPECT_EQ(CallsOfFormat("<videoFormat timeScale='x' sampleSize='' pixelType='a' width='1.5' "
                            "height='-' parNumerator='x' parDenominator='' fieldType='y'/>"),
              CallsOfFormat("<videoFormat/>"));
}

TEST_F(VideoFormatElement, AClipWithoutAFormatIgnoresIt) {
    EXPECT_THAT(CallsOfFormat("<videoFormat width='1'/>", Null("IEditVideoClip.GetVideoFormat")),
                ElementsAre("IEditVideoClip#3.GetVideoFormat() -> null"));
}

TEST_F(VideoFormatElement, IsWrittenWithEveryAttribute) {
    EXPECT_EQ(
        WrittenElement("videoFormat", With(VideoFormat{24000, 1001, -5, 1920, -1080, 4294967295,
                                                       4294967294, 4294967293})),
        "<videoFormat fieldType=\"4294967293\" height=\"-1080\" parDenominator=\"4294967294\" "
        "parNumerator=\"4294967295\" pixelType=\"-5\" sampleSize=\"1001\" "
        "timeScale=\"24000\" width=\"1920\"/>");
}

TEST_F(VideoFormatElement, IsNotWrittenForAClipWithoutAFormat) {
    EXPECT_THAT(*Write(With({})).file, Not(HasSubstr("videoFormat")));
}

TEST_F(VideoFormatElement, SurvivesAWriteAndARead) {
    const VideoFormat extreme{std::numeric_limits<kelcore::int64>::min(),
                              std::numeric_limits<kelcore::int64>::max(),
                              std::numeric_limits<kelcore::int32>::min(),
                              std::numeric_limits<kelcore::int32>::max(),
                              std::numeric_limits<kelcore::int32>::min(),
                              4294967295,
                              4294967294,
                              4294967293};
    for (const VideoFormat& format : {VideoFormat{}, extreme}) {
        EXPECT_EQ(ThroughFile(With(format)).videoTracks.at(0).clips.at(0).format, format);
    }
}

TEST_F(VideoFormatElement, PixelTypeZeroComesBackAsOne) {
    EXPECT_EQ(ThroughFile(With(VideoFormat{.pixelType = 0})).videoTracks.at(0).clips.at(0).format,
              VideoFormat{.pixelType = 1});
}

}  // namespace
}  // namespace tses
