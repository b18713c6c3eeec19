#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <queue>
#include <set>
#include <utility>
#include <vector>

#include "toolkit/interchange/edl/Shots.h"

namespace toolkit::interchange {

/// Distributes shots to as few lists as they need.
class ShotLists {
public:
    /// Shots come in order of their record in.
    /// @param partner  the clip that crossfades into the shot; `kNoPartner` if there is none
    /// @return the number of the list
    std::size_t Add(const Shot& shot, std::size_t partner);

    static constexpr std::size_t kNoPartner = static_cast<std::size_t>(-1);

    std::vector<ShotList> Take() { return std::move(lists_); }

private:
    bool DissolvesInto(std::size_t list, const Shot& shot) const;
    std::size_t FreeList(std::int64_t from);

    std::vector<ShotList> lists_;
    std::map<std::size_t, std::size_t> listOfClip_;
    std::set<std::size_t> free_;
    std::priority_queue<std::pair<std::int64_t, std::size_t>,
                        std::vector<std::pair<std::int64_t, std::size_t>>, std::greater<>>
        busy_;  // with the frame where they end
};

}  // namespace toolkit::interchange
