#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

#include <orvo/Diff.h>

namespace orvo::diff {

/// Pairs the things of two lists in passes, from the surest sign that two are one thing to the
/// weakest. What is paired stays so.
class Pairing {
public:
    Pairing(std::size_t before, std::size_t after) : partner_(before), taken_(after) {}

    const std::optional<std::size_t>& PartnerOf(std::size_t before) const {
        return partner_[before];
    }
    bool IsTaken(std::size_t after) const { return taken_[after]; }

    void Pair(std::size_t before, std::size_t after) {
        partner_[before] = after;
        taken_[after] = true;
    }

    /// Pairs things with the same key, the first with the first.
    /// @param beforeKey  of a thing, by its index; a null has no partner in this pass
    /// @param accepts    a further condition
    template <class BeforeKey, class AfterKey, class Accepts>
    void Pass(const BeforeKey& beforeKey, const AfterKey& afterKey, const Accepts& accepts) {
        using Key = typename decltype(afterKey(0))::value_type;
        std::unordered_map<Key, std::vector<std::size_t>, typename Key::Hash> waiting;
        for (std::size_t after = taken_.size(); after-- > 0;) {
            if (taken_[after]) {
                continue;
            }
            if (const auto key = afterKey(after)) {
                waiting[*key].push_back(after);
            }
        }
        for (std::size_t before = 0; before < partner_.size() && !waiting.empty(); ++before) {
            if (partner_[before]) {
                continue;
            }
            if (const auto key = beforeKey(before)) {
                if (const auto found = waiting.find(*key); found != waiting.end()) {
                    PairFirst(before, found->second, accepts);
                }
            }
        }
    }

    template <class BeforeKey, class AfterKey>
    void Pass(const BeforeKey& beforeKey, const AfterKey& afterKey) {
        Pass(beforeKey, afterKey, [](std::size_t, std::size_t) { return true; });
    }

    bool IsComplete() const {
        return std::find(partner_.begin(), partner_.end(), std::nullopt) == partner_.end() ||
               std::find(taken_.begin(), taken_.end(), false) == taken_.end();
    }

    ListMatch Result() const {
        ListMatch match;
        for (std::size_t before = 0; before < partner_.size(); ++before) {
            if (partner_[before]) {
                match.same.emplace_back(before, *partner_[before]);
            } else {
                match.removed.push_back(before);
            }
        }
        for (std::size_t after = 0; after < taken_.size(); ++after) {
            if (!taken_[after]) {
                match.added.push_back(after);
            }
        }
        return match;
    }

private:
    /// The candidates stand from the last to the first.
    template <class Accepts>
    void PairFirst(std::size_t before, std::vector<std::size_t>& candidates,
                   const Accepts& accepts) {
        for (std::size_t i = candidates.size(); i-- > 0;) {
            if (accepts(before, candidates[i])) {
                Pair(before, candidates[i]);
                candidates.erase(candidates.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
    }

    std::vector<std::optional<std::size_t>> partner_;
    std::vector<bool> taken_;
};

}  // namespace orvo::diff
