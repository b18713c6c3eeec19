#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost {

/// The id that means none; a host makes nothing for it.
inline constexpr kelcore::uint32 kNoId = 4294967295;

/// Finds the things of a list by their ids, however long it is. The list may grow at its end only.
class IdIndex {
public:
    /// The place of the first thing with this id; a new thing, at the end, if there is none.
    template <class Thing>
    std::size_t FindOrAdd(std::vector<Thing>& things, kelcore::uint32 id) {
        for (; known_ < things.size(); ++known_) {
            places_.try_emplace(things[known_].id, known_);
        }
        const auto [place, isNew] = places_.try_emplace(id, things.size());
        if (isNew) {
            Thing thing;
            thing.id = id;
            things.push_back(std::move(thing));
            ++known_;
        }
        return place->second;
    }

private:
    std::unordered_map<kelcore::uint32, std::size_t> places_;
    std::size_t known_ = 0;
};

}  // namespace refhost
