#include "session/json/SessionJson.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "session/Schema.h"
#include "session/json/JsonReader.h"

namespace orvo::json {
namespace {

/// A thing without an id would end a reader, and of two with the same it would make one.
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

/// The key of a member of the session.
template <class Member>
std::string KeyOf(Member Session::*member) {
    std::string key;
    const auto find = [&](const auto& row) {
        if constexpr (std::is_same_v<decltype(row.member), Member Session::*>) {
            key = row.member == member ? row.key : key;
        }
    };
    std::apply([&](const auto&... rows) { (find(rows), ...); }, Schema<Session>::kRows);
    return key;
}

}  // namespace

Session Parse(const TextSource& source, const ByteProgress& progress) {
    Session session;
    ReadDocument(source, progress, TargetOf(session));
    std::apply([&](const auto... lists) { (RequireOwnIds(session.*lists, KeyOf(lists)), ...); },
               kListsByOwnId);
    return session;
}

Session Parse(std::string_view text) {
    return Parse(WholeText(text));
}

}  // namespace orvo::json
