#include "toolkit/view/Lanes.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "toolkit/Saturating.h"

namespace toolkit {
namespace {

using orvo::AutomationLane;
using orvo::Component;
using orvo::EffectsRack;
using orvo::Keyframe;
using orvo::LaneSegment;
using orvo::LayoutKeyframe;
using orvo::LayoutLane;
using orvo::Parameter;

/// What the values of a lane are, which decides its range.
enum class Scale { Level, Switch, Pan, Any };

struct Range {
    double low;
    double high;
};

/// The range that a lane has whatever its values; for any other parameter, that of its values.
Range UsualRange(Scale scale, double lowest, double highest) {
    constexpr double kQuiet = -36;
    constexpr double kLoud = 12;
    switch (scale) {
        case Scale::Level:
            return {kQuiet, kLoud};
        case Scale::Switch:
            return {0, 1};
        case Scale::Pan:
            return {-1, 1};
        case Scale::Any:
            break;
    }
    const double room = highest > lowest ? (highest - lowest) / 10 : 1;
    return {lowest - room, highest + room};
}

Range RangeOf(Scale scale, const std::vector<LayoutKeyframe>& keyframes) {
    double lowest = HUGE_VAL;
    double highest = -HUGE_VAL;
    for (const LayoutKeyframe& keyframe : keyframes) {
        if (std::isfinite(keyframe.value)) {
            lowest = std::min(lowest, keyframe.value);
            highest = std::max(highest, keyframe.value);
        }
    }
    if (lowest > highest) {
        lowest = highest = 0;
    }
    const Range usual = UsualRange(scale, lowest, highest);
    return {std::min(usual.low, lowest), std::max(usual.high, highest)};
}

double LevelOf(double value, const Range& range) {
    const double level = (value - range.low) / (range.high - range.low);
    return level > 0 ? std::min(level, 1.0) : 0;
}

LaneSegment SegmentOf(const AutomationLane& lane, const Keyframe& keyframe) {
    if (keyframe.type == orvo::KeyframeType::Hold) {
        return LaneSegment::Hold;
    }
    return lane.enableSplines ? LaneSegment::Spline : LaneSegment::Linear;
}

/// In the order of time. Of several at one position, the last one counts.
std::vector<LayoutKeyframe> KeyframesOf(const AutomationLane& lane, std::int64_t start) {
    std::vector<LayoutKeyframe> keyframes;
    for (const Keyframe& keyframe : lane.keyframes) {
        keyframes.push_back({.position = SaturatingSum(start, keyframe.sampleOffset),
                             .value = keyframe.value,
                             .segment = SegmentOf(lane, keyframe)});
    }
    std::ranges::stable_sort(keyframes, {}, &LayoutKeyframe::position);
    std::vector<LayoutKeyframe> last;
    for (const LayoutKeyframe& keyframe : keyframes) {
        if (!last.empty() && last.back().position == keyframe.position) {
            last.pop_back();
        }
        last.push_back(keyframe);
    }
    return last;
}

class Lanes {
public:
    explicit Lanes(std::int64_t start) : start_(start) {}

    /// A control has one parameter that matters, which needs no name of its own.
    void AddControl(const std::string& name, Scale scale, const std::optional<Component>& control) {
        if (control) {
            for (const auto& [index, parameter] : control->parameters) {
                Add(index == 0 ? name : NameIn(name, index, parameter), scale, parameter);
                scale = Scale::Any;
            }
        }
    }

    void AddEffect(const std::string& name, const std::optional<Component>& effect) {
        if (effect) {
            for (const auto& [index, parameter] : effect->parameters) {
                Add(NameIn(effect->name.empty() ? name : effect->name, index, parameter),
                    Scale::Any, parameter);
            }
        }
    }

    void AddRack(const std::optional<EffectsRack>& rack) {
        if (!rack) {
            return;
        }
        AddEffect("Mix", rack->mix);
        AddControl("Rack input", Scale::Level, rack->input);
        AddControl("Rack output", Scale::Level, rack->output);
        for (const auto& slot : rack->slots) {
            if (slot) {
                AddEffect("Slot " + std::to_string(slot->slotIndex), slot->component);
            }
        }
    }

    void AddSends(const std::optional<orvo::SendList>& sends) {
        if (!sends) {
            return;
        }
        for (const auto& send : sends->slots) {
            if (send) {
                const std::string name = "Send " + std::to_string(send->slotIndex);
                AddControl(name, Scale::Level, send->sendComponent);
                AddControl(name + " pan", Scale::Pan, send->panComponent);
            }
        }
    }

    std::vector<LayoutLane> Take() { return std::move(lanes_); }

private:
    static std::string NameIn(const std::string& owner, std::uint32_t index,
                              const Parameter& parameter) {
        return owner + ": " +
               (parameter.name.empty() ? "parameter " + std::to_string(index) : parameter.name);
    }

    void Add(const std::string& name, Scale scale, const Parameter& parameter) {
        if (!parameter.automation || parameter.automation->keyframes.empty()) {
            return;
        }
        LayoutLane lane{.name = name, .keyframes = KeyframesOf(*parameter.automation, start_)};
        const Range range = RangeOf(scale, lane.keyframes);
        lane.low = range.low;
        lane.high = range.high;
        for (LayoutKeyframe& keyframe : lane.keyframes) {
            keyframe.level = LevelOf(keyframe.value, range);
        }
        lanes_.push_back(std::move(lane));
    }

    std::int64_t start_;
    std::vector<LayoutLane> lanes_;
};

}  // namespace

std::vector<LayoutLane> LanesOf(const orvo::AudioTrack& track) {
    Lanes lanes(0);
    lanes.AddControl("Volume", Scale::Level, track.fader);
    lanes.AddControl("Mute", Scale::Switch, track.mute);
    lanes.AddControl("Pan", Scale::Pan, track.pan);
    lanes.AddEffect("Equaliser", track.eq);
    lanes.AddSends(track.sendList);
    lanes.AddRack(track.effectsRack);
    return lanes.Take();
}

std::vector<LayoutLane> LanesOf(const orvo::AudioClip& clip, std::int64_t start) {
    Lanes lanes(start);
    lanes.AddControl("Gain", Scale::Level, clip.gain);
    lanes.AddControl("Mute", Scale::Switch, clip.mute);
    lanes.AddControl("Pan", Scale::Pan, clip.pan);
    lanes.AddRack(clip.effectsRack);
    return lanes.Take();
}

}  // namespace toolkit
