#include "tests/plugin/RandomSession.h"

#include <rapidcheck.h>

#include <concepts>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/kelcore/Types.h"
#include "session/Schema.h"

namespace test {
namespace {

constexpr std::size_t kLongestList = 3;

/// Texts that are hard to carry: markup, outer blanks, line ends, characters beyond ASCII and
/// beyond 16 bits, and the end of a CDATA section.
const std::string kTexts[] = {
    "",           "a",   "Take 2", " b ", "\n\t",    "<&>\"'",  "]]>",    "\u00e4\u4e2d",
    "\U0001F3B5", "1.5", "true",   "-->", "a\tb\nc", "a\u0085", "\u0080", "\u2028"};

template <class Value>
void Draw(Value& value);

template <class Struct>
concept HasSchema = requires {
    orvo::Schema<Struct>::kRows;
};

void DrawValue(bool& value) {
    value = *rc::gen::arbitrary<bool>();
}

template <class Number>
requires std::integral<Number> || std::floating_point<Number>
void DrawValue(Number& value) {
    using Limits = std::numeric_limits<Number>;
    value = *rc::gen::weightedOneOf<Number>(
        {{4, rc::gen::arbitrary<Number>()},
         {1, rc::gen::element<Number>(Limits::lowest(), Limits::max(), Limits::min(), Number(0),
                                      Number(1), Number(2), Number(6), Number(14))}});
}

template <class Code>
requires std::is_enum_v<Code>
void DrawValue(Code& code) {
    std::underlying_type_t<Code> number{};
    DrawValue(number);
    code = Code{number};
}

void DrawValue(std::string& text) {
    const auto pieces = *rc::gen::container<std::vector<std::size_t>>(
        2, rc::gen::inRange<std::size_t>(0, std::size(kTexts)));
    for (const std::size_t piece : pieces) {
        text += kTexts[piece];
    }
}

void DrawValue(std::vector<kelcore::byte>& block) {
    block = *rc::gen::arbitrary<std::vector<kelcore::byte>>();
}

template <class Element>
void DrawValue(std::vector<Element>& list) {
    list.resize(*rc::gen::inRange<std::size_t>(0, kLongestList + 1));
    for (Element& element : list) {
        Draw(element);
    }
}

template <class Held>
void DrawValue(std::optional<Held>& value) {
    if (*rc::gen::arbitrary<bool>()) {
        Draw(value.emplace());
    }
}

/// The writer counts up to the largest key, so keys are small.
template <class Held>
void DrawValue(std::map<kelcore::uint32, Held>& values) {
    for (const kelcore::uint32 key : *rc::gen::container<std::vector<kelcore::uint32>>(
             2, rc::gen::inRange<kelcore::uint32>(0, 5))) {
        Draw(values[key]);
    }
}

template <HasSchema Struct>
void DrawValue(Struct& value) {
    orvo::ForEachRow<Struct>([&](const auto& row) { Draw(value.*row.member); });
}

template <class Value>
void Draw(Value& value) {
    DrawValue(value);
}

/// Hosts find these things by their ids.
template <class Thing>
void MakeIdsUnique(std::vector<Thing>& things) {
    kelcore::uint32 next = *rc::gen::inRange<kelcore::uint32>(0, 4294967000);
    for (Thing& thing : things) {
        thing.id = next++;
    }
}

void MakeKeysUnique(std::vector<orvo::Property>& properties) {
    for (std::size_t i = 0; i < properties.size(); ++i) {
        properties[i].key += static_cast<char>('0' + i);
    }
}

/// Gives half of the tracks a kind that exists.
void MakeKindsLikely(std::vector<orvo::AudioTrack>& tracks) {
    for (orvo::AudioTrack& track : tracks) {
        if (*rc::gen::arbitrary<bool>()) {
            track.kind = orvo::TrackKind{*rc::gen::inRange<kelcore::uint32>(1, 6)};
        }
    }
}

}  // namespace

orvo::Session DrawSession() {
    orvo::Session session;
    Draw(session);
    MakeIdsUnique(session.files);
    MakeIdsUnique(session.audioTracks);
    MakeIdsUnique(session.videoTracks);
    MakeKeysUnique(session.properties);
    MakeKindsLikely(session.audioTracks);
    if (session.metronome.track && *rc::gen::arbitrary<bool>()) {
        session.metronome.track->kind = orvo::TrackKind::Metronome;
    }
    for (orvo::File& file : session.files) {
        file.path = file.path.empty() ? "" : "/no/such/folder/" + file.path;
    }
    return session;
}

}  // namespace test
