#include "toolkit/interchange/otio/LanePlan.h"

#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace toolkit::interchange::otio {
namespace {

class Placing {
public:
    explicit Placing(const std::vector<Span>& spans) : spans_(spans), laneOf_(spans.size()) {}

    void Place(std::size_t clip) {
        FreeBefore(spans_[clip].start);
        const std::optional<std::size_t> crossed = LaneToCrossfadeOn(clip);
        const std::size_t lane = crossed ? *crossed : FreeLane();
        ends_[lane] = {.before = crossed ? ends_[lane].last : spans_[clip].start,
                       .last = spans_[clip].end};
        busy_.emplace(spans_[clip].end, lane);
        lanes_[lane].push_back({.clip = clip, .isCrossfade = crossed.has_value()});
        laneOf_[clip] = lane;
    }

    std::vector<Lane> TakeLanes() {
        if (lanes_.empty()) {
            lanes_.emplace_back();
        }
        return std::move(lanes_);
    }

private:
    template <class Value>
    using LeastFirst = std::priority_queue<Value, std::vector<Value>, std::greater<>>;

    /// Where the last two clips of a lane end.
    struct Ends {
        std::int64_t before = std::numeric_limits<std::int64_t>::min();
        std::int64_t last = 0;
    };

    void FreeBefore(std::int64_t start) {
        while (!busy_.empty() && busy_.top().first <= start) {
            const auto [end, lane] = busy_.top();
            busy_.pop();
            // A crossfade made the lane end later.
            if (ends_[lane].last == end) {
                free_.push(lane);
            }
        }
    }

    std::optional<std::size_t> LaneToCrossfadeOn(std::size_t clip) const {
        const std::optional<std::size_t> first = spans_[clip].crossfadesWith;
        if (!first || spans_[*first].end <= spans_[clip].start ||
            spans_[*first].end >= spans_[clip].end || spans_[*first].start >= spans_[clip].start) {
            return std::nullopt;
        }
        const std::size_t lane = laneOf_[*first];
        const bool isLast = lanes_[lane].back().clip == *first;
        return isLast && ends_[lane].before <= spans_[clip].start ? std::optional(lane)
                                                                  : std::nullopt;
    }

    std::size_t FreeLane() {
        if (free_.empty()) {
            lanes_.emplace_back();
            ends_.emplace_back();
            return lanes_.size() - 1;
        }
        const std::size_t lane = free_.top();
        free_.pop();
        return lane;
    }

    const std::vector<Span>& spans_;
    std::vector<std::size_t> laneOf_;
    std::vector<Lane> lanes_;
    std::vector<Ends> ends_;
    LeastFirst<std::pair<std::int64_t, std::size_t>> busy_;
    LeastFirst<std::size_t> free_;
};

}  // namespace

std::vector<Lane> LanesOf(const std::vector<Span>& spans, const std::vector<std::size_t>& order) {
    Placing placing(spans);
    for (const std::size_t clip : order) {
        placing.Place(clip);
    }
    return placing.TakeLanes();
}

}  // namespace toolkit::interchange::otio
