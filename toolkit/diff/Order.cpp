#include "toolkit/diff/Order.h"

#include <algorithm>

namespace orvo::diff {

std::vector<bool> KeepsOrder(const std::vector<std::size_t>& sequence) {
    constexpr auto kFirst = static_cast<std::size_t>(-1);
    std::vector<std::size_t> tails;  // by length: where the best subsequence of it ends
    std::vector<std::size_t> previous(sequence.size(), kFirst);
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        const auto tail = std::lower_bound(
            tails.begin(), tails.end(), sequence[i],
            [&](std::size_t at, std::size_t value) { return sequence[at] < value; });
        previous[i] = tail == tails.begin() ? kFirst : *(tail - 1);
        if (tail == tails.end()) {
            tails.push_back(i);
        } else {
            *tail = i;
        }
    }
    std::vector<bool> keeps(sequence.size());
    for (std::size_t i = tails.empty() ? kFirst : tails.back(); i != kFirst; i = previous[i]) {
        keeps[i] = true;
    }
    return keeps;
}

}  // namespace orvo::diff
