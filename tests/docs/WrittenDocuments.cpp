#include "tests/docs/WrittenDocuments.h"

#include <rapidcheck.h>

#include <cstdint>

#include "platform/kelcore/Types.h"
#include "session/Schema.h"
#include "tests/plugin/RandomSession.h"
#include "tests/plugin/StoredSession.h"
#include "tests/session/Filled.h"

namespace test {
namespace {

using orvo::AudioTrack;
using orvo::Session;

constexpr std::uint64_t kRandomSessions = 16;
constexpr int kSize = 40;  // of numbers and lists, as rapidcheck counts it
constexpr kelcore::uint32 kKinds = 5;

template <class Struct>
concept HasSchema = requires {
    orvo::Schema<Struct>::kRows;
};

/// Everything is there, with nothing in it: one of each thing, no texts, no bytes, zeros.
template <class Value>
void MakeBare(Value& value) {
    value = {};
}

template <HasSchema Struct>
void MakeBare(Struct& value);

template <class Held>
void MakeBare(std::optional<Held>& value) {
    MakeBare(value.emplace());
}

template <class Element>
void MakeBare(std::vector<Element>& value) {
    if constexpr (!std::is_arithmetic_v<Element> && !std::is_enum_v<Element>) {
        MakeBare(value.emplace_back());
    }
}

template <class Held>
void MakeBare(std::map<kelcore::uint32, Held>& value) {
    MakeBare(value[0]);
}

template <HasSchema Struct>
void MakeBare(Struct& value) {
    orvo::ForEachRow<Struct>([&](const auto& row) { MakeBare(value.*row.member); });
}

Session WithTracksOf(kelcore::uint32 kind, Session session) {
    const auto change = [&](AudioTrack& track) {
        track.kind = orvo::TrackKind{kind};
        track.clipsOnly = false;
    };
    for (AudioTrack& track : session.audioTracks) {
        change(track);
    }
    change(*session.metronome.track);
    return session;
}

}  // namespace

std::vector<Session> AnySessions() {
    const auto full = orvo::test::Filler{}.Make<Session>();
    Session bare;
    MakeBare(bare);
    std::vector<Session> sessions;
    for (kelcore::uint32 kind = 1; kind <= kKinds; ++kind) {
        sessions.push_back(WithTracksOf(kind, full));
        sessions.push_back(WithTracksOf(kind, bare));
    }
    const auto generator = rc::gen::exec(DrawSession);
    for (std::uint64_t seed = 0; seed < kRandomSessions; ++seed) {
        sessions.push_back(generator(rc::Random(seed), kSize).value());
    }
    return sessions;
}

std::vector<Session> StoredSessions() {
    std::vector<Session> sessions = AnySessions();
    for (Session& session : sessions) {
        session = Stored(std::move(session), true);
    }
    return sessions;
}

}  // namespace test
