#include "session/json/SessionJson.h"

#include <gmock/gmock.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <stdexcept>

#include "platform/kelcore/Strings.h"
#include "session/json/Encode.h"
#include "session/json/JsonReader.h"
#include "tests/session/json/JsonErrors.h"

// What values become as JSON, and that they come back.

namespace orvo::json {
namespace {

using ::testing::HasSubstr;

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

TEST(SessionJsonTest, AnUnpairedSurrogateIsWrittenAsItsEscape) {
    const std::string json =
        ToJson({.formatDescription = kelcore::UTF16to8(std::u16string{0xD83C, u'x'})});
    EXPECT_THAT(json, HasSubstr(R"("formatDescription": "\ud83cx")"));
}

TEST(SessionJsonTest, InvalidUtf8IsWrittenAsReplacementCharacters) {
    EXPECT_EQ(Text(std::string("a\xFF\xE2\x82z")), "\"a\uFFFD\uFFFDz\"");
    EXPECT_EQ(Text(std::string("\xC3")), "\"\uFFFD\"");
}

TEST(SessionJsonTest, InfinitiesAndNotANumberComeBack) {
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

TEST(SessionJsonTest, ARealOfSinglePrecisionIsWrittenInFullIfTheShortFormWouldBecomeAnother) {
    const float value = 7.038531e-26F;
    EXPECT_EQ(Again(value), value);
    EXPECT_EQ(Text(value), Text(static_cast<double>(value)));
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

TEST(SessionJsonTest, AMissingValueIsNull) {
    EXPECT_EQ(Text(std::optional<bool>()), "null");
    EXPECT_EQ(Again(std::optional<bool>()), std::nullopt);
    EXPECT_EQ(Again(std::optional<bool>(false)), false);
}

TEST(SessionJsonTest, ATableHasNumbersAsKeys) {
    const std::string json = ToJson(
        Parse(R"({"audioTracks": [{"trackFader": {"parameters": {"4294967295": {}, "0": {}}}}]})"));
    EXPECT_LT(json.find(R"("0": {)"), json.find(R"("4294967295": {)"));
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

TEST(SessionJsonTest, TextsOfAScriptElementCannotEndIt) {
    const std::string text = "<!--</script\xE2\x80\xA8y\xE2\x82\xAC\xE2\x80\xA9";
    EXPECT_EQ(Encoded(text, {.isInScript = true}),
              "\"\\u003c!--\\u003c/script\\u2028y\xE2\x82\xAC\\u2029\"");
    EXPECT_EQ(Encoded(text, {}), '"' + text + '"');
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

TEST(SessionJsonTest, AnOptionalValueIsNotLeftOutIfItIsPresent) {
    orvo::Component fader;
    fader.parameters[0].value = 0;
    EXPECT_EQ(Text(fader), R"({"parameters":{"0":{"parameterValue":0.0}}})");
    EXPECT_EQ(Again(fader), fader);
}

TEST(SessionJsonTest, ACodeIsWrittenAsItsWordOrElseAsItsNumber) {
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

TEST(SessionJsonTest, ASlotMayBeNull) {
    const orvo::Session session =
        Parse(R"({"audioTracks": [{"kind": 7, "effectsRack": {"slots": [null, {}]}}]})");
    EXPECT_EQ(session.audioTracks[0].kind, orvo::TrackKind{7});
    EXPECT_EQ(session.audioTracks[0].effectsRack->slots,
              (std::vector<std::optional<orvo::EffectsSlot>>{std::nullopt, orvo::EffectsSlot{}}));
}

TEST(SessionJsonTest, TheTimeForManyKeysAndElementsGrowsWithTheirNumber) {
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
    EXPECT_THAT(test::ErrorOf(unknown), HasSubstr("unknown key"));
    EXPECT_EQ(Parse(table + "}}]}").audioTracks[0].fader->parameters.size(), kKeys);
    EXPECT_EQ(Parse(list + "}").files.size(), kKeys);
    EXPECT_LT(std::clock() - before, 10 * CLOCKS_PER_SEC);
}

TEST(SessionJsonTest, ATextComesBackAsItStoodWhereverABlockEnds) {
    const orvo::Session session{.formatDescription = kelcore::UTF16to8(std::u16string{
                                    u'a', 0xD800, 0xFDD0, 0xD83C, 0xDFB5, u'"', u'\\', u'\n',
                                    0xDFFF, 0xD7FF, u' ', u' ', 0xE9, 0xFFFD, 1, 0x7F})};
    EXPECT_EQ(Parse(test::ByteByByte(ToJson(session))), session);
    EXPECT_EQ(Parse(test::ByteByByte("\xEF\xBB\xBF" + ToJson(session))), session);
    EXPECT_EQ(
        Parse(test::ByteByByte(
            R"({"formatDescription": "a\ud800\ufdd0\ud83c\udfb5\"\\\n\udfff\ud7ff  \u00e9\ufffd\u0001\u007f"})")),
        session);
}

TEST(SessionJsonTest, EscapesAreTheShortOnesIfJsonHasThem) {
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

TEST(SessionJsonTest, WritingAndReadingReportTheirBytes) {
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

TEST(SessionJsonTest, AnExceptionOfASinkOrSourceReachesTheCaller) {
    EXPECT_THROW(ToJson({}, [](std::string_view) { throw std::length_error("full"); }),
                 std::length_error);
    EXPECT_THROW(Parse(TextSource([]() -> std::string_view { throw std::length_error("gone"); })),
                 std::length_error);
}

}  // namespace
}  // namespace orvo::json
