#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "format/Limits.h"

namespace tses {

/// Counts how many different names there were. Names are known by their hashes alone, so the count
/// may come out too low, by one for two names of one hash.
class DistinctNames {
public:
    /// Takes in a name and returns whether there are no more than `limits::kNames` now.
    bool Add(std::u16string_view name) noexcept {
        const std::size_t hash = std::hash<std::u16string_view>()(name) | 1;
        std::size_t place = hash % hashes_.size();
        while (hashes_[place] != hash) {
            if (hashes_[place] == 0) {
                return AddAt(place, hash);
            }
            place = (place + 1) % hashes_.size();
        }
        return true;
    }

    void Clear() noexcept {
        if (count_ != 0) {
            hashes_.fill(0);
            count_ = 0;
        }
    }

private:
    bool AddAt(std::size_t place, std::size_t hash) noexcept {
        if (count_ == limits::kNames) {
            return false;
        }
        hashes_[place] = hash;
        ++count_;
        return true;
    }

    std::array<std::size_t, 4 * limits::kNames> hashes_{};  // 0: free; so there is always one
    std::size_t count_ = 0;
};

}  // namespace tses
