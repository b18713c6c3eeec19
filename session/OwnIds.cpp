#include "session/OwnIds.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "format/Ids.h"
#include "session/MemberKey.h"

namespace orvo {
namespace {

static_assert(kNoId == tses::kNoId, "the library and the format have the same id for nothing");

template <class Thing>
std::optional<Message> FindIn(const std::vector<Thing>& things, std::string_view list) {
    std::map<std::uint32_t, std::size_t> places;
    for (std::size_t place = 0; place < things.size(); ++place) {
        const std::uint32_t id = things[place].id;
        if (id == kNoId) {
            return Message{.what = fmt::format("/{}/{}/id: {} means \"no id\"", list, place, id),
                           .advice = fmt::format("give a number from 0 to {}", kNoId - 1)};
        }
        if (const auto [other, isNew] = places.try_emplace(id, place); !isNew) {
            return Message{.what = fmt::format("/{}/{}/id: {} is the id of /{}/{} too", list, place,
                                               id, list, other->second),
                           .advice = "give each its own"};
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Message> FindIdThatIsNoOwn(const Session& session) {
    std::optional<Message> found;
    const auto look = [&](auto list) {
        found = FindIn(session.*list, KeyOf(list));
        return found.has_value();
    };
    std::apply([&](const auto... lists) { (void)(look(lists) || ...); }, kListsByOwnId);
    return found;
}

}  // namespace orvo
