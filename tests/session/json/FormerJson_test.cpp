#include <gmock/gmock.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "session/json/Encode.h"
#include "session/json/SessionJson.h"
#include "tests/session/Filled.h"
#include "tests/session/json/JsonErrors.h"

// JSON of versions before words stood for codes, and before keys had the format's terms.

namespace orvo::json {
namespace {

using Json = nlohmann::json;
using test::ErrorOf;

template <class Value>
Json Former(const Value& value);

template <class Element>
Json FormerList(const std::vector<Element>& list) {
    Json json = Json::array();
    for (const Element& element : list) {
        json.push_back(Former(element));
    }
    return json;
}

template <HasSchema Struct>
Json FormerObject(const Struct& value) {
    Json json = Json::object();
    const auto add = [&](const auto& row) {
        const std::string former = row.formerKey;
        json[former.empty() ? row.key : former] = Former(value.*row.member);
    };
    ForEachRow<Struct>(add);
    return json;
}

template <class Value>
struct FormerOf {
    static Json Make(const Value& value) {
        if constexpr (HasSchema<Value>) {
            return FormerObject(value);
        } else if constexpr (std::is_enum_v<Value>) {
            return static_cast<std::underlying_type_t<Value>>(value);
        } else {
            return Json::parse(Encoded(value, {JsonWriter::Layout::Compact}));
        }
    }
};
template <class Element>
requires(!std::is_same_v<Element, std::uint8_t>) struct FormerOf<std::vector<Element>> {
    static Json Make(const std::vector<Element>& list) { return FormerList(list); }
};
template <class Held>
struct FormerOf<std::optional<Held>> {
    static Json Make(const std::optional<Held>& value) { return value ? Former(*value) : Json(); }
};
template <class Held>
struct FormerOf<std::map<std::uint32_t, Held>> {
    static Json Make(const std::map<std::uint32_t, Held>& table) {
        Json json = Json::object();
        for (const auto& [number, value] : table) {
            json[std::to_string(number)] = Former(value);
        }
        return json;
    }
};

template <class Value>
Json Former(const Value& value) {
    return FormerOf<Value>::Make(value);
}

TEST(FormerJsonTest, EveryFormerKeyAndEveryNumberOfACodeIsRead) {
    const auto filled = test::Filler().Make<orvo::Session>();
    EXPECT_EQ(Parse(Former(filled).dump()), filled);
    EXPECT_EQ(Parse(Former(orvo::Session{}).dump()), orvo::Session{});
}

TEST(FormerJsonTest, AFormerTextIsRead) {
    const orvo::Session session = Parse(R"({
        "channelCount": 1,
        "audioTracks": [{
            "kind": 2, "hue": 20, "height": 64, "selected": true, "audioChannelType": 6,
            "automationLaneOpen": false, "sumToMono": false, "outputTrackId": 5, "inputId": -1,
            "eq": null,
            "fader": {
                "guid": "", "componentId": "kel.fader",
                "parameters": {"0": {"value": -3, "automation": {"keyframes": [
                    {"value": 1, "sampleOffset": 7, "hold": true, "selected": false}]}}}},
            "clips": [{
                "fileId": 1, "autoCrossfade": true, "gain": null, "channelSources": {"0": 1},
                "fadeIn": {"type": 1, "crossFadeLinkType": 0}}]}],
        "selection": {"start": 1, "duration": 2},
        "timeFormat": {"format": 14, "linkedToDefaults": false},
        "metronome": {"soundSet": 7, "pattern": [1, 0, 9]}})");
    EXPECT_EQ(session, Parse(R"({
        "audioChannelType": "mono",
        "audioTracks": [{
            "kind": "bus", "trackHue": 20, "trackHeight": 64, "select": true,
            "audioChannelType": "fivePointOne", "outputTrackID": 5,
            "trackFader": {
                "componentID": "kel.fader",
                "parameters": {"0": {"parameterValue": -3, "parameterKeyframes": {"keyframes": [
                    {"value": 1, "sampleOffset": 7, "type": "hold"}]}}}},
            "audioClips": [{
                "fileID": 1, "channelMap": {"0": 1}, "fadeIn": {"type": "cosine"}}]}],
        "selectionState": {"selectionStart": 1, "selectionDuration": 2},
        "timeFormatState": {"timeFormat": "timeFormatNTSC24", "linkToDefaultTimeSettings": false},
        "metronome": {"soundSet": "latin3", "pattern": ["downBeat", "none", 9]}})"));
    EXPECT_EQ(session.audioTracks.at(0).clips.at(0).fadeIn, Fade{.type = FadeType::Cosine});
}

TEST(FormerJsonTest, AKeyAndItsFormerOneAreTheSameKey) {
    EXPECT_EQ(ErrorOf(R"({"audioChannelType": "mono", "channelCount": 1})"),
              "/channelCount: this key appears twice; remove one");
    EXPECT_EQ(ErrorOf(R"({"selection": {}, "selectionState": {}})"),
              "/selectionState: this key appears twice; remove one");
}

TEST(FormerJsonTest, AFormerKeyIsReadOnlyInItsOwnObject) {
    EXPECT_THAT(ErrorOf(R"({"fileId": 1})"), testing::StartsWith("/fileId: unknown key"));
    EXPECT_THAT(ErrorOf(R"({"": 1})"), testing::StartsWith("/: unknown key"));
}

TEST(FormerJsonTest, ANumberOfChannelsMayHaveASign) {
    EXPECT_EQ(Parse(R"({"channelCount": -1})").audioChannelType, ChannelType{4294967295});
}

}  // namespace
}  // namespace orvo::json
