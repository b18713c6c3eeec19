#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kelcore/Trace.h"
#include "tests/plugin/elements/ElementFixture.h"

namespace tses {
namespace {

using orvo::AudioTrack;
using testing::ElementsAre;
using testing::IsEmpty;

class ClipProperties : public test::ElementFixture {
protected:
    std::vector<std::string> CallsOfProperties(const std::string& element,
                                               const test::HostSetup& host = {}) {
        return CallsOf(CallsInTrack("<audioClip>" + element + "</audioClip>", host), "Propert");
    }

    static AudioTrack With(std::optional<std::string> properties) {
        AudioTrack track;
        track.clips.emplace_back().properties = std::move(properties);
        return track;
    }
};

TEST_F(ClipProperties, TheTextReachesThePropertiesOfTheClip) {
    EXPECT_THAT(CallsOfProperties("<properties properties=' {&quot;a&quot;:1} '/>"),
                ElementsAre("IEditAudioClip#3.GetProperties() -> IEditClipProperties#4",
                            "IEditClipProperties#4.SetProperties(\" {\\\"a\\\":1} \")"));
}

TEST_F(ClipProperties, AnEmptyTextIsAText) {
    EXPECT_THAT(CallsOfProperties("<properties properties=''/>"),
                ElementsAre("IEditAudioClip#3.GetProperties() -> IEditClipProperties#4",
                            "IEditClipProperties#4.SetProperties(\"\")"));
}

TEST_F(ClipProperties, WithoutTheAttributeTheElementIsIgnored) {
    EXPECT_THAT(CallsOfProperties("<properties/>"), IsEmpty());
    EXPECT_THAT(CallsOfProperties("<properties key='a'>text</properties>"), IsEmpty());
}

TEST_F(ClipProperties, AClipWithoutPropertiesIgnoresIt) {
    EXPECT_THAT(
        CallsOfProperties("<properties properties='p'/>", Null("IEditAudioClip.GetProperties")),
        ElementsAre("IEditAudioClip#3.GetProperties() -> null"));
}

TEST_F(ClipProperties, HaveNoChildren) {
    EXPECT_THAT(CallsOfProperties("<properties><property key='a'>b</property></properties>"),
                IsEmpty());
}

TEST_F(ClipProperties, AreWrittenAsOneAttribute) {
    EXPECT_EQ(WrittenElement("properties", With("{\"a\"}")),
              "<properties properties=\"{&quot;a&quot;}\"/>");
}

TEST_F(ClipProperties, ThatMakeTheirTagTooLongFailTheSave) {
    const auto isSaved = [&](std::string text) {
        orvo::Session session;
        session.audioTracks.push_back(With(std::move(text)));
        return Write(session).ok;
    };
    kelcore::trace::SetEnabled(kelcore::trace::kWriterCategory, false);
    EXPECT_TRUE(isSaved(std::string(1048000, 'a')));
    EXPECT_FALSE(isSaved(std::string(1048576, 'a')));
    EXPECT_FALSE(isSaved(std::string(1048000 / 3, '&'))) << "each is written as a reference";
    kelcore::trace::SetEnabled(kelcore::trace::kWriterCategory, true);
}

TEST_F(ClipProperties, AreNotWrittenWhenThereAreNoneOrTheyAreEmpty) {
    EXPECT_EQ(WrittenElement("audioClip", With({})), WrittenElement("audioClip", With("")));
    EXPECT_EQ(WrittenElement("audioClip", With("")).find("<properties"), std::string::npos);
}

TEST_F(ClipProperties, ATextThatTheHostDoesNotGiveIsWrittenEmpty) {
    EXPECT_EQ(
        WrittenElement("properties", With("p"), Null("IQueryClipProperties.GetPropertiesText")),
        "<properties properties=\"\"/>");
}

TEST_F(ClipProperties, SurviveAWriteAndAReadWithTheirBlanks) {
    const AudioTrack track = With(" a\n\tb ");
    EXPECT_EQ(ThroughFile(WithTrack(track)).audioTracks.at(0).clips, track.clips);
}

TEST_F(ClipProperties, EmptyOnesAreLostByAWriteAndARead) {
    EXPECT_EQ(ThroughFile(WithTrack(With(""))).audioTracks.at(0).clips, With({}).clips);
}

}  // namespace
}  // namespace tses
