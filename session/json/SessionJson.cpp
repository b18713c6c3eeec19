#include "session/json/SessionJson.h"

#include <cstdint>
#include <map>
#include <set>

#include "session/Schema.h"
#include "session/json/JsonReader.h"

namespace orvo::json {
namespace {

template <HasSchema Struct>
std::vector<std::string> KeysOf() {
    return std::apply([](const auto&... rows) { return std::vector<std::string>{rows.key...}; },
                      Schema<Struct>::kRows);
}

/// A reader finds these things by their ids: those without one would end it, and of two with the
/// same it would make one.
template <class Thing>
void RequireOwnIds(const std::vector<Thing>& things, const std::string& list) {
    std::map<std::uint32_t, std::size_t> places;
    for (std::size_t place = 0; place < things.size(); ++place) {
        const std::uint32_t id = things[place].id;
        const std::string where = "/" + list + "/" + std::to_string(place) + "/id: ";
        if (id == kNoId) {
            throw JsonError(where + std::to_string(id) +
                            " means none; give a number from 0 to 4294967294");
        }
        if (const auto [other, isNew] = places.try_emplace(id, place); !isNew) {
            throw JsonError(where + std::to_string(id) + " is the id of /" + list + "/" +
                            std::to_string(other->second) + " too; give each its own");
        }
    }
}

/// Names the keys of a type and of all that it is made of, each struct once.
class KeyList {
public:
    template <HasSchema Struct>
    void Add(const Struct&) {
        if (!structs_.insert(Schema<Struct>::kName).second) {
            return;
        }
        for (const std::string& key : KeysOf<Struct>()) {
            keys_.push_back(std::string(Schema<Struct>::kName) + "." + key);
        }
        const Struct value{};
        std::apply([&](const auto&... rows) { (Add(value.*rows.member), ...); },
                   Schema<Struct>::kRows);
    }
    template <class Element>
    void Add(const std::vector<Element>&) {
        Add(Element{});
    }
    template <class Held>
    void Add(const std::optional<Held>&) {
        Add(Held{});
    }
    template <class Held>
    void Add(const std::map<std::uint32_t, Held>&) {
        Add(Held{});
    }
    void Add(const std::string&) {}
    template <class Number>
    requires std::is_arithmetic_v<Number> || std::is_enum_v<Number>
    void Add(Number) {}

    std::vector<std::string> Take() { return std::move(keys_); }

private:
    std::set<std::string> structs_;
    std::vector<std::string> keys_;
};

}  // namespace

Session Parse(const TextSource& source, const ByteProgress& progress) {
    Session session;
    ReadDocument(source, progress, TargetOf(session));
    RequireOwnIds(session.files, "files");
    RequireOwnIds(session.videoTracks, "videoTracks");
    RequireOwnIds(session.audioTracks, "audioTracks");
    return session;
}

Session Parse(std::string_view text) {
    return Parse(WholeText(text));
}

std::vector<std::string> JsonKeys() {
    KeyList keys;
    keys.Add(Session{});
    return keys.Take();
}

}  // namespace orvo::json
