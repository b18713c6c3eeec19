#include "session/json/SessionJson.h"
#include "platform/kelcore/Strings.h"

#include <gmock/gmock.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <stdexcept>

#include "session/json/Encode.h"
#include "session/json/JsonReader.h"

namespace orvo::json {
namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Gives a text byte by byte, so that a block ends everywhere.
TextSource ByteByByte(std::string_view text) {
    return [text]() mutable {
        const std::string_view block = text.substr(0, 1);
        text.remove_prefix(block.size());
        return block;
    };
}

std::optional<JsonError> FailureOf(const TextSource& source) {
    try {
        Parse(source);
    } catch (const JsonError& error) {
        return error;
    }
    return {};
}

std::string ErrorOf(std::string_view text) {
    const auto failure = FailureOf(WholeText(text));
    const auto byByte = FailureOf(ByteByByte(text));
    EXPECT_EQ(failure.has_value(), byByte.has_value());
    if (!failure || !byByte) {
        return {};
    }
    EXPECT_STREQ(failure->what(), byByte->what());
    return failure->what();
}

std::optional<TextPlace> PlaceOfError(std::string_view text) {
    const auto failure = FailureOf(WholeText(text));
    const auto byByte = FailureOf(ByteByByte(text));
    if (!failure || !byByte) {
        ADD_FAILURE() << "no error: " << text;
        return {};
    }
    EXPECT_EQ(failure->Place(), byByte->Place());
    return failure->Place();
}

template <class Value>
std::string Text(const Value& value) {
    return Encoded(value, {JsonWriter::Layout::Compact});
}

template <class Value>
Value Again(const Value& value) {
    Value again{};
    ReadDocument(WholeText(Text(value)), {}, TargetOf(again));
    return again;
}

TEST(SessionJsonTest, ADefaultSessionComesBack) {
    EXPECT_EQ(Parse(ToJson({})), orvo::Session{});
}

TEST(SessionJsonTest, AnEmptyObjectIsTheDefaultSession) {
    EXPECT_EQ(Parse("{}"), orvo::Session{});
}

TEST(SessionJsonTest, EveryValueComesBack) {
    const orvo::Session session{
        .formatVersion = {-1, std::numeric_limits<std::int32_t>::max()},
        .sampleRate = 4294967295,
        .audioChannelType = ChannelType{4294967295},
        .duration = std::numeric_limits<std::int64_t>::min(),
        .bitDepth = 0,
        .formatDescription = "quote \" backslash \\ line\n",
        .versionDependentValue = 9007199254740993,
        .files = {{.id = 4294967294, .path = "/m\u00fcsic/\U0001F3B5.wav"},
                  {.id = 0,
                   .recoveryId =
                       kelcore::UTF16to8(std::u16string{u'a', 0, 0xD800, u'b', 0xDC00, 0xD800})},
                  {.id = 1,
                   .importerPrivateSettings =
                       kelcore::UTF16to8(std::u16string{0xFDD0, 0xFFFE, 0xFFFF})}},
        .audioDevice = {"in", "", {{-7, "Mic"}}, {}}};
    EXPECT_EQ(Parse(ToJson(session)), session);
}

TEST(SessionJsonTest, AnUnpairedSurrogateStandsAsItsEscape) {
    const std::string json =
        ToJson({.formatDescription = kelcore::UTF16to8(std::u16string{0xD83C, u'x'})});
    EXPECT_THAT(json, HasSubstr(R"("formatDescription": "\ud83cx")"));
}

TEST(SessionJsonTest, WhatIsNoUtf8StandsAsReplacementCharacters) {
    EXPECT_EQ(Text(std::string("a\xFF\xE2\x82z")), "\"a\uFFFD\uFFFDz\"");
    EXPECT_EQ(Text(std::string("\xC3")), "\"\uFFFD\"");
}

TEST(SessionJsonTest, NumbersThatAreNoneComeBack) {
    EXPECT_EQ(Text(std::numeric_limits<double>::infinity()), R"("Infinity")");
    EXPECT_EQ(Text(-std::numeric_limits<float>::infinity()), R"("-Infinity")");
    EXPECT_EQ(Text(std::numeric_limits<double>::quiet_NaN()), R"("NaN")");
    EXPECT_TRUE(std::isnan(Again(std::numeric_limits<float>::quiet_NaN())));
    EXPECT_EQ(Again(-std::numeric_limits<double>::infinity()),
              -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Again(std::numeric_limits<double>::infinity()),
              std::numeric_limits<double>::infinity());
}

TEST(SessionJsonTest, RealNumbersAreExact) {
    for (const double value : {0.1, 1e308, 5e-324, 1.0 / 3, -0.0}) {
        EXPECT_EQ(Again(value), value);
    }
    EXPECT_TRUE(std::signbit(Again(-0.0)));
    for (const float value : {0.1F, 3.4028235e38F, 1e-45F, 1.0F / 3}) {
        EXPECT_EQ(Again(value), value);
    }
}

TEST(SessionJsonTest, ARealOfSinglePrecisionIsWrittenShort) {
    EXPECT_EQ(Text(0.1F), "0.1");
}

TEST(SessionJsonTest, ARealOfSinglePrecisionIsWrittenInFullWhereTheShortFormWouldBecomeAnother) {
    const float value = 7.038531e-26F;
    EXPECT_EQ(Again(value), value);
    EXPECT_EQ(Text(value), Text(static_cast<double>(value)));
}

TEST(SessionJsonTest, ANumberBeyondSinglePrecisionIsAnError) {
    float value = 0;
    EXPECT_THROW(ReadDocument(WholeText("1e39"), {}, TargetOf(value)), JsonError);
}

TEST(SessionJsonTest, ANumberThatSinglePrecisionTakesForZeroIsAnErrorUnlessItIsZero) {
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

TEST(SessionJsonTest, ANumberThatDoublePrecisionTakesForZeroIsAnErrorUnlessItIsZero) {
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

TEST(SessionJsonTest, BytesComeBack) {
    std::vector<std::uint8_t> block;
    EXPECT_EQ(Again(block), block);
    for (int i = 0; i < 1000; ++i) {
        block.push_back(static_cast<std::uint8_t>(i));
    }
    EXPECT_EQ(Again(block), block);
    EXPECT_THAT(Text(block), Not(HasSubstr("\\n")));
}

TEST(SessionJsonTest, BytesThatAreNotBase64AreAnError) {
    std::vector<std::uint8_t> block;
    EXPECT_THROW(ReadDocument(WholeText(R"("!")"), {}, TargetOf(block)), JsonError);
}

TEST(SessionJsonTest, AThingThatIsMissingIsNull) {
    EXPECT_EQ(Text(std::optional<bool>()), "null");
    EXPECT_EQ(Again(std::optional<bool>()), std::nullopt);
    EXPECT_EQ(Again(std::optional<bool>(false)), false);
}

TEST(SessionJsonTest, ATableHasNumbersAsKeys) {
    const std::string json = ToJson(
        Parse(R"({"audioTracks": [{"trackFader": {"parameters": {"4294967295": {}, "0": {}}}}]})"));
    EXPECT_LT(json.find(R"("0": {)"), json.find(R"("4294967295": {)"));
}

TEST(SessionJsonTest, AKeyOfATableThatIsNoNumberIsNamedWithItsPlace) {
    for (const std::string key : {"07", "+7", "-1", "4294967296", "x", ""}) {
        EXPECT_THAT(
            ErrorOf(R"({"audioTracks": [{"trackFader": {"parameters": {")" + key + R"(": {}}}}]})"),
            StartsWith("/audioTracks/0/trackFader/parameters/" + key + ": this key is no number"));
    }
}

TEST(SessionJsonTest, KeysAtTheirDefaultAreLeftOut) {
    EXPECT_EQ(ToJson({}), "{}\n");
    orvo::Session session;
    session.audioTracks.push_back({.kind = TrackKind::Bus, .fader = Component{}});
    session.metronome.soundSet = SoundSet::Kit;
    EXPECT_EQ(ToJson(session), R"({
  "audioTracks": [
    {
      "kind": "bus",
      "trackFader": {}
    }
  ],
  "metronome": {
    "soundSet": "kit"
  }
}
)");
    EXPECT_EQ(Parse(ToJson(session)), session);
}

TEST(SessionJsonTest, FullJsonHasEveryKey) {
    EXPECT_EQ(Encoded(Metronome{}, {JsonWriter::Layout::Compact, true}),
              R"({"enabled":false,"soundSet":"sticks","pattern":[],"metronomeTrack":null,)"
              R"("globalTrackInfo":null})");
    const std::string json = ToJson({}, {.full = true});
    EXPECT_THAT(json, HasSubstr("\"audioChannelType\": \"stereo\""));
    EXPECT_THAT(json, HasSubstr("\"mixingOptionState\": {\n    \"defaultPanModeLogarithmic\""));
    EXPECT_EQ(Parse(json), orvo::Session{});
}

TEST(SessionJsonTest, WhatOnlyLooksLikeADefaultIsNotLeftOut) {
    orvo::Session session;
    session.musicalTime.beatsPerMinute = -0.0;
    session.mixingOptions.panPower = std::numeric_limits<double>::quiet_NaN();
    session.audioTracks.push_back({.instrument = InstrumentTrack{}});
    const orvo::Session again = Parse(ToJson(session));
    EXPECT_TRUE(std::signbit(again.musicalTime.beatsPerMinute));
    EXPECT_TRUE(std::isnan(again.mixingOptions.panPower));
    EXPECT_EQ(again.audioTracks.at(0).instrument, InstrumentTrack{});
}

TEST(SessionJsonTest, AnOptionalValueThatIsThereIsNotLeftOut) {
    orvo::Component fader;
    fader.parameters[0].value = 0;
    EXPECT_EQ(Text(fader), R"({"parameters":{"0":{"parameterValue":0.0}}})");
    EXPECT_EQ(Again(fader), fader);
}

TEST(SessionJsonTest, ACodeIsItsWordAndWithoutOneItsNumber) {
    EXPECT_EQ(Text(TrackKind::Bus), R"("bus")");
    EXPECT_EQ(Text(TrackKind{7}), "7");
    EXPECT_EQ(Text(TimeDisplay{-1}), "-1");
    EXPECT_EQ(Text(Keyframe{.type = KeyframeType::Hold}), R"({"type":"hold"})");
    for (const auto kind : {TrackKind::Bus, TrackKind{0}, TrackKind{4294967295}}) {
        EXPECT_EQ(Again(kind), kind);
    }
    EXPECT_EQ(Again(TimeDisplay{-1}), TimeDisplay{-1});
}

TEST(SessionJsonTest, ANumberThatHasAWordIsReadToo) {
    EXPECT_EQ(Parse(R"({"metronome": {"soundSet": 4}})").metronome.soundSet, SoundSet::Kit);
}

TEST(SessionJsonTest, AnUnknownWordIsNamedWithTheWordsThatThereAre) {
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

TEST(SessionJsonTest, ASwitchWithWordsHasNoOtherValues) {
    orvo::Keyframe keyframe;
    EXPECT_THROW(ReadDocument(WholeText(R"({"type": 1})"), {}, TargetOf(keyframe)), JsonError);
    EXPECT_THAT(ErrorOf(R"({"audioTracks": [{"trackFader": {"parameters": {"0":
                {"parameterKeyframes": {"keyframes": [{"type": "spline"}]}}}}}]})"),
                EndsWith("/type: unknown word; give one of \"hold\", \"linear\""));
}

TEST(SessionJsonTest, ASlotMayBeNull) {
    const orvo::Session session =
        Parse(R"({"audioTracks": [{"kind": 7, "effectsRack": {"slots": [null, {}]}}]})");
    EXPECT_EQ(session.audioTracks[0].kind, orvo::TrackKind{7});
    EXPECT_EQ(session.audioTracks[0].effectsRack->slots,
              (std::vector<std::optional<orvo::EffectsSlot>>{std::nullopt, orvo::EffectsSlot{}}));
}

TEST(SessionJsonTest, AnUnknownKeyIsNamedWithItsPlace) {
    EXPECT_THAT(ErrorOf(R"({"files": [{}, {"idd": 1}]})"),
                AllOf(StartsWith("/files/1/idd: unknown key"), HasSubstr("id, path,")));
    EXPECT_THAT(ErrorOf(R"({"": 1})"), StartsWith("/: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"a/b~c": 1})"), StartsWith("/a~1b~0c: unknown key"));
}

TEST(SessionJsonTest, AKeyThatStandsTwiceIsNamedWithItsPlace) {
    EXPECT_THAT(ErrorOf(R"({"files": [{"id": 1}, {"id": 1, "path": "", "id": 2}]})"),
                StartsWith("/files/1/id: this key stands twice"));
}

TEST(SessionJsonTest, AValueOfTheWrongTypeIsNamedWithItsPlace) {
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

TEST(SessionJsonTest, ANumberThatDoesNotFitIsNamedWithItsPlaceAndRange) {
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

TEST(SessionJsonTest, TwoOfAListWithTheSameIdAreNamed) {
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"id": 5}, {"id": 6}, {"id": 5}]})"),
              "/audioTracks/2/id: 5 is the id of /audioTracks/0 too; give each its own");
    EXPECT_EQ(ErrorOf(R"({"videoTracks": [{}, {}]})"),
              "/videoTracks/1/id: 0 is the id of /videoTracks/0 too; give each its own");
    EXPECT_EQ(ErrorOf(R"({"files": [{"id": 1}, {"id": 1}]})"),
              "/files/1/id: 1 is the id of /files/0 too; give each its own");
}

TEST(SessionJsonTest, TracksOfTwoListsMayHaveTheSameId) {
    EXPECT_NO_THROW(Parse(R"({"videoTracks": [{"id": 5}], "audioTracks": [{"id": 5}]})"));
}

TEST(SessionJsonTest, TheIdThatMeansNoneIsAnErrorButForTheMetronome) {
    EXPECT_EQ(ErrorOf(R"({"audioTracks": [{"id": 4294967295}]})"),
              "/audioTracks/0/id: 4294967295 means none; give a number from 0 to 4294967294");
    EXPECT_EQ(ErrorOf(R"({"files": [{"id": 4294967295}]})"),
              "/files/0/id: 4294967295 means none; give a number from 0 to 4294967294");
    EXPECT_NO_THROW(Parse(R"({"metronome": {"track": {"id": 4294967295}}})"));
}

TEST(SessionJsonTest, MalformedJsonIsNamedWithLineAndColumn) {
    EXPECT_EQ(PlaceOfError("{\n  \"files\": [,]\n}"), (TextPlace{2, 13}));
    EXPECT_EQ(PlaceOfError(""), (TextPlace{1, 1}));
    EXPECT_EQ(PlaceOfError("{} x"), (TextPlace{1, 4}));
    EXPECT_EQ(PlaceOfError("{\"formatDescription\": \"\xFF\"}"), (TextPlace{1, 24}));
    EXPECT_EQ(PlaceOfError("[\n\n"), (TextPlace{3, 1}));
    EXPECT_THAT(ErrorOf("{\n  \"files\": [,]\n}"),
                AllOf(StartsWith("syntax error while parsing value"),
                      EndsWith("; correct the text there")));
}

TEST(SessionJsonTest, ALineEndInATextIsNamedWhereItStands) {
    EXPECT_EQ(PlaceOfError("{\"formatDescription\": \"a\n\"}"), (TextPlace{1, 25}));
}

TEST(SessionJsonTest, AnEscapeThatIsNoneIsNamedWhereItStopsToBeOne) {
    EXPECT_EQ(PlaceOfError(R"({"\i": 1})"), (TextPlace{1, 4}));
    EXPECT_EQ(PlaceOfError(R"({"\u12x4": 1})"), (TextPlace{1, 7}));
}

TEST(SessionJsonTest, ColumnsOfMalformedJsonCountTheCharactersOfTheFile) {
    for (const std::string text : {"a", "\u00e9", "\U0001F3B5", "\uFDD0", "\uFDD1"}) {
        EXPECT_EQ(PlaceOfError("{\"" + text + text + "\": ]"), (TextPlace{1, 8})) << text;
    }
    for (const std::string escape : {"\\ud800", "\\ufdd0", "\\u00e9"}) {
        EXPECT_EQ(PlaceOfError("{\"" + escape + "\": ]"), (TextPlace{1, 12})) << escape;
    }
    EXPECT_EQ(PlaceOfError("\xEF\xBB\xBF[,]"), (TextPlace{1, 2})) << "a byte order mark";
}

TEST(SessionJsonTest, AWrongValueHasNoPlaceInTheText) {
    EXPECT_EQ(PlaceOfError(R"({"sampleRate": -1})"), std::nullopt);
    EXPECT_EQ(PlaceOfError(R"({"sampleRate": 1, "sampleRate": 1})"), std::nullopt);
}

TEST(SessionJsonTest, AnErrorShowsAnUnpairedSurrogateAsItsEscape) {
    EXPECT_THAT(ErrorOf("{\"\\ud800\x01\"}"), HasSubstr("last read: '\"\\ud800<U+0001>'"));
    EXPECT_THAT(ErrorOf(R"({"\ud800": 1})"), StartsWith("/\\ud800: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"\udfff": 1, "\udfff": 1})"), StartsWith("/\\udfff: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"\ufdd0": 1})"), StartsWith("/\uFDD0: unknown key"));
}

TEST(SessionJsonTest, ANulCharacterIsNotTakenForTheEnd) {
    const std::string text("{}\n \0{\"sampleRate\": 1}", 21);
    EXPECT_EQ(ErrorOf(text), "a NUL character; remove it");
    EXPECT_EQ(PlaceOfError(text), (TextPlace{2, 2}));
}

TEST(SessionJsonTest, ManyKeysAndElementsTakeATimeThatGrowsWithTheirNumber) {
    std::string unknown = "{";
    std::string list = R"({"files": [)";
    std::string table = R"({"audioTracks": [{"trackFader": {"parameters": {)";
    constexpr int kKeys = 100'000;
    for (int key = 0; key < kKeys; ++key) {
        unknown += "\"x" + std::to_string(key) + "\": 0,";
        list += "{\"id\": " + std::to_string(key) + "},";
        table += "\"" + std::to_string(key) + "\": {},";
    }
    unknown.back() = '}';
    list.back() = ']';
    table.back() = '}';
    const std::clock_t before = std::clock();
    EXPECT_THAT(ErrorOf(unknown), HasSubstr("unknown key"));
    EXPECT_EQ(Parse(table + "}}]}").audioTracks[0].fader->parameters.size(), kKeys);
    EXPECT_EQ(Parse(list + "}").files.size(), kKeys);
    EXPECT_LT(std::clock() - before, 10 * CLOCKS_PER_SEC);
}

TEST(SessionJsonTest, AnErrorIsNotAsLongAsTheNumberThatItNames) {
    const std::string text = R"({"sampleRate": )" + std::string(100'000, '9') + "}";
    const std::string error = ErrorOf(text);
    EXPECT_THAT(error, StartsWith("number overflow"));
    EXPECT_EQ(PlaceOfError(text), (TextPlace{1, 100'015}));
    EXPECT_LT(error.size(), 400U);
}

TEST(SessionJsonTest, AnErrorThatQuotesALongTextEndsBehindAWholeCharacter) {
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += "\u00e9";
    }
    for (const std::string begin : {"", "x"}) {
        EXPECT_THAT(ErrorOf("{\"" + begin + text + "\x01\"}"),
                    EndsWith("\u00e9...; correct the text there"));
    }
}

TEST(SessionJsonTest, ANumberTooLargeForAnyFieldIsAnError) {
    EXPECT_THAT(ErrorOf("{\n  \"duration\": 1e999}"), HasSubstr("1e999"));
    EXPECT_EQ(PlaceOfError("{\n  \"duration\": 1e999}"), (TextPlace{2, 19}));
}

TEST(SessionJsonTest, OfWrongValuesTheFirstIsNamed) {
    EXPECT_THAT(ErrorOf(R"({"y": 1, "x": [2, {"": 3}], "sampleRate": -1})"),
                StartsWith("/y: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"sampleRate": -1, "sampleRate": 1, "files": [7]})"),
                StartsWith("/sampleRate: this is the number -1"));
    EXPECT_THAT(ErrorOf(R"({"files": [{"id": 1}, {"id": 1}], "sampleRate": -1})"),
                StartsWith("/sampleRate: "));
}

TEST(SessionJsonTest, MalformedJsonIsNamedRatherThanAWrongValue) {
    EXPECT_THAT(ErrorOf(R"({"sampleRate": -1, "files": ])"), StartsWith("syntax error"));
    EXPECT_THAT(ErrorOf(R"({"x": {"y": [1, }})"), StartsWith("syntax error"));
    EXPECT_EQ(ErrorOf(std::string("{\"x\": 1}\0", 9)), "a NUL character; remove it");
}

TEST(SessionJsonTest, AnObjectOrListInPlaceOfAnotherValueIsNamed) {
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

TEST(SessionJsonTest, AQuoteInAnErrorIsAsTheTextHasIt) {
    EXPECT_EQ(ErrorOf("{\"files\":  \n  nul, \"sampleRate\": 1}"),
              "syntax error while parsing value - invalid literal; last read: "
              "'\"files\":  <U+000A>  nul,'; correct the text there");
    EXPECT_EQ(ErrorOf("{\"files\": tru  \"\"}"),
              "syntax error while parsing value - invalid literal; last read: '\"files\": tru '; "
              "correct the text there");
}

TEST(SessionJsonTest, BlanksKeepNumbersAndWordsApart) {
    EXPECT_THAT(ErrorOf("{\"sampleRate\": 1 \n 2}"),
                HasSubstr("unexpected number literal; expected '}'"));
    EXPECT_THAT(ErrorOf("{\"sampleRate\": 1  \n\n  \"x\"}"),
                HasSubstr("unexpected string literal; expected '}'"));
}

TEST(SessionJsonTest, BlanksBetweenValuesAreCountedInPlaces) {
    EXPECT_EQ(PlaceOfError("{\n \t \"sampleRate\" \n : \r\n  1  ,\n\n  \"duration\"  : 1 2}"),
              (TextPlace{6, 19}));
}

TEST(SessionJsonTest, ATextComesBackAsItStoodWhereverABlockEnds) {
    const orvo::Session session{.formatDescription = kelcore::UTF16to8(std::u16string{
                                    u'a', 0xD800, 0xFDD0, 0xD83C, 0xDFB5, u'"', u'\\', u'\n',
                                    0xDFFF, 0xD7FF, u' ', u' ', 0xE9, 0xFFFD, 1, 0x7F})};
    EXPECT_EQ(Parse(ByteByByte(ToJson(session))), session);
    EXPECT_EQ(Parse(ByteByByte("\xEF\xBB\xBF" + ToJson(session))), session);
    EXPECT_EQ(
        Parse(ByteByByte(
            R"({"formatDescription": "a\ud800\ufdd0\ud83c\udfb5\"\\\n\udfff\ud7ff  \u00e9\ufffd\u0001\u007f"})")),
        session);
}

TEST(SessionJsonTest, EscapesAreTheShortOnesWhereThereAreSuch) {
    EXPECT_EQ(Text(std::string("\"\\/\b\f\n\r\t\u001f\u007f\u00e9\uD7FF\U0001F3B5")),
              "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u001f\x7F\u00e9\uD7FF\U0001F3B5\"");
    EXPECT_EQ(Text(kelcore::UTF16to8(std::u16string{0xDBFF, 0xD800, 0xDFFF + 1})),
              "\"\\udbff\\ud800\uE000\"");
}

TEST(SessionJsonTest, LongTextsAndBlocksOfBytesAreWrittenInPieces) {
    constexpr std::size_t kMany = 100'000;
    std::string text;
    while (text.size() < kMany) {
        text += text.size() % 7 == 0 ? "\U0001F3B5" : "x";
    }
    EXPECT_EQ(Again(text), text);
    std::vector<std::uint8_t> block(kMany);
    for (std::size_t i = 0; i < kMany; ++i) {
        block[i] = static_cast<std::uint8_t>(i * i);
    }
    EXPECT_EQ(Again(block), block);
    const std::string base64 = Text(block);
    EXPECT_EQ(base64.find('='), base64.size() - 3) << "padding inside";
}

TEST(SessionJsonTest, BothWaysTellHowManyBytesHaveGone) {
    orvo::Session session;
    session.files.resize(10'000);
    for (std::size_t i = 0; i < session.files.size(); ++i) {
        session.files[i].id = static_cast<std::uint32_t>(i);
    }
    std::string text;
    std::vector<std::uint64_t> written;
    ToJson(session, [&](std::string_view block) { text += block; },
           {.progress = [&](std::uint64_t bytes) {
               EXPECT_EQ(bytes, text.size());
               written.push_back(bytes);
           }});
    EXPECT_EQ(text, ToJson(session));
    EXPECT_GT(written.size(), 4U);
    EXPECT_EQ(written.back(), text.size());

    std::vector<std::uint64_t> read;
    EXPECT_EQ(Parse(WholeText(text), [&](std::uint64_t bytes) { read.push_back(bytes); }), session);
    EXPECT_GT(read.size(), 4U);
    EXPECT_EQ(read.back(), text.size());
}

TEST(SessionJsonTest, WhatASinkOrSourceThrowsEndsTheWork) {
    EXPECT_THROW(ToJson({}, [](std::string_view) { throw std::length_error("full"); }),
                 std::length_error);
    EXPECT_THROW(Parse(TextSource([]() -> std::string_view { throw std::length_error("gone"); })),
                 std::length_error);
}

}  // namespace
}  // namespace orvo::json
