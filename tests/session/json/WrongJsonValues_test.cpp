#include <gmock/gmock.h>

#include "session/json/JsonReader.h"
#include "session/json/SessionJson.h"
#include "tests/session/json/JsonErrors.h"

// JSON that is well formed but means no session: each error names its place in the session.

namespace orvo::json {
namespace {

using test::ErrorOf;
using test::PlaceOfError;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(WrongJsonValuesTest, ANumberBeyondSinglePrecisionIsAnError) {
    float value = 0;
    EXPECT_THROW(ReadDocument(WholeText("1e39"), {}, TargetOf(value)), JsonError);
}

TEST(WrongJsonValuesTest, ANumberThatSinglePrecisionRoundsToZeroIsAnErrorUnlessItIsZero) {
    const auto withHeight = [](const char* number) {
        return std::string(
                   R"({"trackVisibilityPresets": [{"trackVisibilities": [{"trackHeight": )") +
               number + "}]}]}";
    };
    for (const char* const number : {"1e-60", "-1e-60", "7e-46", "-7e-46", "5e-324"}) {
        EXPECT_EQ(ErrorOf(withHeight(number)),
                  "/trackVisibilityPresets/0/trackVisibilities/0/trackHeight: this is the number " +
                      std::string(number) +
                      "; give 0 or a number that is at least 7.1e-46 away from it");
    }
    for (const char* const number : {"7.1e-46", "-7.1e-46", "1e-45"}) {
        const orvo::Session session = Parse(withHeight(number));
        EXPECT_NE(session.trackVisibilityPresets[0].tracks[0].height, 0) << number;
    }
    for (const char* const number : {"0", "-0.0", "0e9"}) {
        const orvo::Session session = Parse(withHeight(number));
        EXPECT_EQ(session.trackVisibilityPresets[0].tracks[0].height, 0) << number;
    }
}

TEST(WrongJsonValuesTest, ANumberThatDoublePrecisionRoundsToZeroIsAnErrorUnlessItIsZero) {
    const auto withTempo = [](const char* number) {
        return std::string(R"({"musicalTime": {"beatsPerMinute": )") + number + "}}";
    };
    for (const char* const number : {"1e-400", "-1e-400", "0.1E-399"}) {
        EXPECT_EQ(ErrorOf(withTempo(number)),
                  "/musicalTime/beatsPerMinute: this is the number " + std::string(number) +
                      "; give 0 or a number that is at least 2.5e-324 away from it");
    }
    EXPECT_NE(Parse(withTempo("5e-324")).musicalTime.beatsPerMinute, 0);
    EXPECT_EQ(Parse(withTempo("0.0e-400")).musicalTime.beatsPerMinute, 0);
}

TEST(WrongJsonValuesTest, BytesThatAreNotBase64AreAnError) {
    std::vector<std::uint8_t> block;
    EXPECT_THROW(ReadDocument(WholeText(R"("!")"), {}, TargetOf(block)), JsonError);
}

TEST(WrongJsonValuesTest, ATableKeyThatIsNotANumberIsNamedWithItsPlace) {
    for (const std::string key : {"07", "+7", "-1", "4294967296", "x", ""}) {
        EXPECT_THAT(
            ErrorOf(R"({"audioTracks": [{"trackFader": {"parameters": {")" + key + R"(": {}}}}]})"),
            StartsWith("/audioTracks/0/trackFader/parameters/" + key +
                       ": this key is not a number"));
    }
}

TEST(WrongJsonValuesTest, AnUnknownWordIsNamedWithTheKnownOnes) {
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"kind": "Bus"}]})"),
              "/audioTracks/0/kind: unknown word; give one of \"audio\", \"bus\", \"master\", "
              "\"metronome\", \"instrument\", or a whole number from -2147483648 to 4294967295");
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"kind": 4294967296}]})"),
              "/audioTracks/0/kind: this is the number 4294967296; give one of \"audio\", \"bus\", "
              "\"master\", \"metronome\", \"instrument\", or a whole number from -2147483648 to "
              "4294967295");
    EXPECT_THAT(ErrorOf(R"({"metronome": {"pattern": [true]}})"),
                StartsWith("/metronome/pattern/0: this is true; give one of \"none\", "));
}

TEST(WrongJsonValuesTest, ASwitchWithWordsHasNoOtherValues) {
    orvo::Keyframe keyframe;
    EXPECT_THROW(ReadDocument(WholeText(R"({"type": 1})"), {}, TargetOf(keyframe)), JsonError);
    EXPECT_THAT(ErrorOf(R"({"audioTracks": [{"trackFader": {"parameters": {"0":
                {"parameterKeyframes": {"keyframes": [{"type": "spline"}]}}}}}]})"),
                EndsWith("/type: unknown word; give one of \"hold\", \"linear\""));
}

TEST(WrongJsonValuesTest, AnUnknownKeyIsNamedWithItsPlace) {
    EXPECT_THAT(ErrorOf(R"({"files": [{}, {"idd": 1}]})"),
                AllOf(StartsWith("/files/1/idd: unknown key"), HasSubstr("id, path,")));
    EXPECT_THAT(ErrorOf(R"({"": 1})"), StartsWith("/: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"a/b~c": 1})"), StartsWith("/a~1b~0c: unknown key"));
}

TEST(WrongJsonValuesTest, ADuplicateKeyIsNamedWithItsPlace) {
    EXPECT_THAT(ErrorOf(R"({"files": [{"id": 1}, {"id": 1, "path": "", "id": 2}]})"),
                StartsWith("/files/1/id: this key appears twice"));
}

TEST(WrongJsonValuesTest, AValueOfTheWrongTypeIsNamedWithItsPlace) {
    EXPECT_THAT(ErrorOf(R"({"files": [{"id": "7"}]})"),
                AllOf(StartsWith("/files/0/id: this is a text"),
                      HasSubstr("give a whole number from 0 to 4294967295")));
    EXPECT_THAT(ErrorOf(R"({"files": {}})"), StartsWith("/files: this is an object; give a list"));
    EXPECT_THAT(ErrorOf(R"({"audioDevice": []})"),
                StartsWith("/audioDevice: this is a list; give an object"));
    EXPECT_THAT(ErrorOf(R"({"formatDescription": null})"),
                StartsWith("/formatDescription: this is null; give a text"));
    EXPECT_THAT(ErrorOf(R"({"formatDescription": true})"),
                StartsWith("/formatDescription: this is true; give a text"));
    EXPECT_THAT(ErrorOf(R"({"metronome": {"enabled": 1}})"),
                StartsWith("/metronome/enabled: this is the number 1; give true or false"));
    EXPECT_THAT(
        ErrorOf(
            R"({"audioTracks": [{"trackFader": {"parameters": {"0": {"parameterValue": "1"}}}}]})"),
        AllOf(StartsWith("/audioTracks/0/trackFader/parameters/0/parameterValue: this is a text"),
              HasSubstr("give a number, or one of the texts \"NaN\"")));
    EXPECT_THAT(ErrorOf(R"({"metronome": {"globalTrackInfo": {"tempoEvents": [1]}}})"),
                StartsWith("/metronome/globalTrackInfo/tempoEvents: this is a list; give the bytes "
                           "as a text in Base64"));
    EXPECT_THAT(ErrorOf("[]"), StartsWith("the whole document: this is a list"));
}

TEST(WrongJsonValuesTest, ANumberThatDoesNotFitIsNamedWithItsPlaceAndRange) {
    EXPECT_THAT(ErrorOf(R"({"sampleRate": 4294967296})"),
                AllOf(StartsWith("/sampleRate: this is the number 4294967296"),
                      HasSubstr("0 to 4294967295")));
    EXPECT_THAT(ErrorOf(R"({"sampleRate": -1})"), StartsWith("/sampleRate: "));
    EXPECT_THAT(ErrorOf(R"({"smpteStart": -9223372036854775809})"), StartsWith("/smpteStart: "));
    EXPECT_THAT(ErrorOf(R"({"formatVersion": {"major": 2147483648}})"),
                StartsWith("/formatVersion/major: "));
    EXPECT_THAT(ErrorOf(R"({"formatVersion": {"minor": -2147483649}})"),
                StartsWith("/formatVersion/minor: "));
    EXPECT_THAT(ErrorOf(R"({"duration": 9223372036854775808})"), StartsWith("/duration: "));
    EXPECT_THAT(ErrorOf(R"({"duration": 1.5})"), StartsWith("/duration: "));
}

TEST(WrongJsonValuesTest, AnIdThatOccursTwiceInAListIsNamed) {
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"id": 5}, {"id": 6}, {"id": 5}]})"),
              "/audioTracks/2/id: 5 is the id of /audioTracks/0 too; give each its own");
    EXPECT_EQ(ErrorOf(R"({"videoTracks": [{}, {}]})"),
              "/videoTracks/1/id: 0 is the id of /videoTracks/0 too; give each its own");
    EXPECT_EQ(ErrorOf(R"({"files": [{"id": 1}, {"id": 1}]})"),
              "/files/1/id: 1 is the id of /files/0 too; give each its own");
}

TEST(WrongJsonValuesTest, TracksOfTwoListsMayHaveTheSameId) {
    EXPECT_NO_THROW(Parse(R"({"videoTracks": [{"id": 5}], "audioTracks": [{"id": 5}]})"));
}

TEST(WrongJsonValuesTest, TheIdThatMeansNoIdIsAnErrorExceptForTheMetronome) {
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"id": 4294967295}]})"),
              "/audioTracks/0/id: 4294967295 means \"no id\"; give a number from 0 to 4294967294");
    EXPECT_EQ(ErrorOf(R"({"files": [{"id": 4294967295}]})"),
              "/files/0/id: 4294967295 means \"no id\"; give a number from 0 to 4294967294");
    EXPECT_NO_THROW(Parse(R"({"metronome": {"track": {"id": 4294967295}}})"));
}

TEST(WrongJsonValuesTest, AWrongValueHasNoPlaceInTheText) {
    EXPECT_EQ(PlaceOfError(R"({"sampleRate": -1})"), std::nullopt);
    EXPECT_EQ(PlaceOfError(R"({"sampleRate": 1, "sampleRate": 1})"), std::nullopt);
}

TEST(WrongJsonValuesTest, TheFirstOfSeveralWrongValuesIsNamed) {
    EXPECT_THAT(ErrorOf(R"({"y": 1, "x": [2, {"": 3}], "sampleRate": -1})"),
                StartsWith("/y: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"sampleRate": -1, "sampleRate": 1, "files": [7]})"),
                StartsWith("/sampleRate: this is the number -1"));
    EXPECT_THAT(ErrorOf(R"({"files": [{"id": 1}, {"id": 1}], "sampleRate": -1})"),
                StartsWith("/sampleRate: "));
}

TEST(WrongJsonValuesTest, AnObjectOrListInPlaceOfAnotherValueIsNamed) {
    EXPECT_EQ(ErrorOf(R"({"sampleRate": {}})"),
              "/sampleRate: this is an object; give a whole number from 0 to 4294967295, without "
              "point or exponent");
    EXPECT_EQ(ErrorOf(R"({"files": [[]]})"), "/files/0: this is a list; give an object");
    EXPECT_EQ(ErrorOf(R"({"files": {}})"), "/files: this is an object; give a list");
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"trackFader": []}]})"),
              "/audioTracks/0/trackFader: this is a list; give an object");
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"audioClips": [{"properties": {}}]}]})"),
              "/audioTracks/0/audioClips/0/properties: this is an object; give a text");
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"trackFader": {"parameters": []}}]})"),
              "/audioTracks/0/trackFader/parameters: this is a list; give an object");
}

}  // namespace
}  // namespace orvo::json
