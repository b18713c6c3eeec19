#include "toolkit/interchange/edl/ShotLists.h"

#include <algorithm>

namespace toolkit::interchange {

std::size_t ShotLists::Add(const Shot& shot, std::size_t partner) {
    const auto partnersList = listOfClip_.find(partner);
    const bool dissolves = partnersList != listOfClip_.end() &&
                           lists_[partnersList->second].back().clip == partner &&
                           DissolvesInto(partnersList->second, shot);
    const std::size_t list = dissolves ? partnersList->second : FreeList(shot.recordIn);
    lists_[list].push_back(shot);
    if (dissolves) {
        Shot& from = *(lists_[list].end() - 2);
        Shot& into = lists_[list].back();
        into.dissolve = from.recordOut - into.recordIn;
        into.fadeIn = 0;
        from.fadeOut = 0;
        from.fadeIn = std::min(from.fadeIn, into.recordIn - from.recordIn);
    }
    // A fade in or a dissolve leaves at least a frame before the fade out.
    Shot& added = lists_[list].back();
    const std::int64_t head = std::max({added.fadeIn, added.dissolve, std::int64_t{1}});
    added.fadeOut = std::clamp<std::int64_t>(added.Length() - head, 0, added.fadeOut);
    listOfClip_[shot.clip] = list;
    busy_.emplace(shot.recordOut, list);
    return list;
}

bool ShotLists::DissolvesInto(std::size_t list, const Shot& shot) const {
    const Shot& from = lists_[list].back();
    const std::int64_t length = from.recordOut - shot.recordIn;
    return length > 0 && length < shot.Length() && length <= kLongestDissolve &&
           from.recordIn < shot.recordIn && from.recordIn + from.dissolve <= shot.recordIn;
}

std::size_t ShotLists::FreeList(std::int64_t from) {
    while (!busy_.empty() && busy_.top().first <= from) {
        const auto [end, list] = busy_.top();
        busy_.pop();
        // Lists go on after a dissolve: then the end is not that of the last shot.
        if (lists_[list].back().recordOut == end) {
            free_.insert(list);
        }
    }
    if (free_.empty()) {
        lists_.emplace_back();
        return lists_.size() - 1;
    }
    return free_.extract(free_.begin()).value();
}

}  // namespace toolkit::interchange
