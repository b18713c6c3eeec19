#include "toolkit/interchange/Overlaps.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <unordered_map>

#include "toolkit/Saturating.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioClip;

std::int64_t EndOf(const AudioClip& clip) {
    return SaturatingSum(clip.startPoint, clip.duration);
}

std::vector<std::size_t> InOrderOfTime(const std::vector<AudioClip>& clips) {
    std::vector<std::size_t> order(clips.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return clips[i].startPoint; });
    return order;
}

class Search {
public:
    explicit Search(const std::vector<AudioClip>& clips) : clips_(clips) {
        for (std::size_t i = 0; i < clips.size(); ++i) {
            byId_.emplace(clips[i].id, i);
            if (clips[i].crossFadeTailClipId >= 0) {
                byTail_.emplace(clips[i].crossFadeTailClipId, i);
            }
        }
    }

    std::vector<Overlap> All() {
        for (const std::size_t second : InOrderOfTime(clips_)) {
            ForgetBefore(clips_[second].startPoint);
            if (const std::optional<std::size_t> first = PartnerOf(second)) {
                overlaps_.push_back(OverlapOf(*first, second));
            }
            if (clips_[second].duration > 0) {
                sounding_.push_back(second);
            }
        }
        return std::move(overlaps_);
    }

private:
    /// Clips below one that still sounds may have ended; they come to light when it ends.
    void ForgetBefore(std::int64_t position) {
        while (!sounding_.empty() && EndOf(clips_[sounding_.back()]) <= position) {
            sounding_.pop_back();
        }
    }

    std::optional<std::size_t> PartnerOf(std::size_t second) const {
        if (clips_[second].duration <= 0) {
            return std::nullopt;
        }
        for (const std::optional<std::size_t> linked : {HeadOf(second), TailedBy(second)}) {
            if (linked && IsStaggered(*linked, second)) {
                return linked;
            }
        }
        return sounding_.empty() ? std::nullopt : std::optional(sounding_.back());
    }

    std::optional<std::size_t> HeadOf(std::size_t second) const {
        const std::int32_t head = clips_[second].crossFadeHeadClipId;
        const auto found = head < 0 ? byId_.end() : byId_.find(static_cast<std::uint32_t>(head));
        return found != byId_.end() ? std::optional(found->second) : std::nullopt;
    }

    std::optional<std::size_t> TailedBy(std::size_t second) const {
        const auto found = byTail_.find(static_cast<std::int64_t>(clips_[second].id));
        return found != byTail_.end() ? std::optional(found->second) : std::nullopt;
    }

    bool IsStaggered(std::size_t first, std::size_t second) const {
        const AudioClip& a = clips_[first];
        const AudioClip& b = clips_[second];
        return a.startPoint < b.startPoint && b.startPoint < EndOf(a) && EndOf(a) < EndOf(b);
    }

    Overlap OverlapOf(std::size_t first, std::size_t second) const {
        const AudioClip& a = clips_[first];
        const AudioClip& b = clips_[second];
        const bool isLinked = HeadOf(second) == first || TailedBy(second) == first;
        const bool isMeant = isLinked || (a.autoCrossfade && b.autoCrossfade);
        return {.first = first,
                .second = second,
                .isCrossfade = isMeant && IsStaggered(first, second),
                .start = b.startPoint,
                .end = std::min(EndOf(a), EndOf(b))};
    }

    const std::vector<AudioClip>& clips_;
    std::unordered_map<std::uint32_t, std::size_t> byId_;
    std::unordered_map<std::int64_t, std::size_t> byTail_;
    std::vector<std::size_t> sounding_;
    std::vector<Overlap> overlaps_;
};

}  // namespace

std::vector<Overlap> OverlapsOf(const std::vector<AudioClip>& clips) {
    return Search(clips).All();
}

}  // namespace toolkit::interchange
