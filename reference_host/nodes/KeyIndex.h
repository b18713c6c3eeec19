#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace refhost {

template <auto member>
class KeyIndex;

/// Finds the things in a list by one of their members, however long the list is. The list may only
/// grow at its end, and the keys must not change.
template <class Thing, class Key, Key Thing::*member>
class KeyIndex<member> {
public:
    /// The place of the first thing with this key, if there is one.
    std::optional<std::size_t> Find(const std::vector<Thing>& things, const Key& key) {
        for (; known_ < things.size(); ++known_) {
            places_.try_emplace(things[known_].*member, known_);
        }
        const auto found = places_.find(key);
        return found == places_.end() ? std::nullopt : std::optional(found->second);
    }

    /// The place of the first thing with this key. If there is none, adds one at the end.
    std::size_t FindOrAdd(std::vector<Thing>& things, const Key& key) {
        if (const auto place = Find(things, key)) {
            return *place;
        }
        Thing thing;
        thing.*member = key;
        things.push_back(std::move(thing));
        return things.size() - 1;
    }

private:
    std::unordered_map<Key, std::size_t> places_;
    std::size_t known_ = 0;
};

}  // namespace refhost
