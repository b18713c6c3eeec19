#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "format/Limits.h"

namespace tses {

/// Counts different names. It keeps only their hashes, so two names with the same hash count as
/// one.
class DistinctNames {
public:
    /// Adds a name. Returns false if it would be one more than `limits::kNames`.
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

    std::array<std::size_t, 4 * limits::kNames> hashes_{};  // 0 is a free place; there is one
    std::size_t count_ = 0;
};

}  // namespace tses
