#include "toolkit/interchange/dawproject/TimeFrame.h"

#include <cmath>

namespace toolkit::interchange::dawproject {

TimeUnit TimeUnitOf(const pugi::xml_node& element, const char* attribute, TimeUnit absent) {
    const std::string_view unit = element.attribute(attribute).value();
    return unit == "seconds" ? TimeUnit::Seconds : unit == "beats" ? TimeUnit::Beats : absent;
}

double TimeFrame::BeatAt(double time) const {
    return root_ == TimeUnit::Beats ? Root(time) : tempo_->BeatOf(Root(time));
}

double TimeFrame::SecondsAUnit(double time) const {
    constexpr double kSecondsAMinute = 60;
    if (unit_ == TimeUnit::Seconds) {
        return 1;
    }
    // Without a start, that of the timeline counts.
    return kSecondsAMinute / tempo_->BpmAt(std::isfinite(time) ? BeatAt(time) : 0);
}

double TimeFrame::AbsoluteSeconds(double time) const {
    return root_ == TimeUnit::Beats ? tempo_->SecondsOf(Root(time)) : Root(time);
}

bool TimeFrame::IsEvenOver(const Window& window) const {
    return root_ == TimeUnit::Seconds ||
           tempo_->IsEvenBetween(Root(window.start), Root(window.end));
}

TimeFrame TimeFrame::Inside(double outer, double inner, double scale, TimeUnit unit) const {
    TimeFrame frame = *this;
    frame.unit_ = unit;
    frame.offset_ = scale_ * (outer - inner * scale) + offset_;
    frame.scale_ = scale_ * scale;
    frame.isNested_ = true;
    return frame;
}

TimeFrame TimeFrame::In(TimeUnit unit, Window& window) const {
    if (unit == unit_) {
        return *this;
    }
    if (!isNested_) {
        const auto convert = [&](double time) {
            return unit == TimeUnit::Beats ? tempo_->BeatOf(time) : tempo_->SecondsOf(time);
        };
        window = {.start = convert(window.start), .end = convert(window.end)};
        return TimeFrame(*tempo_, unit);
    }
    constexpr double kSecondsAMinute = 60;
    const double secondsABeat =
        kSecondsAMinute / tempo_->BpmAt(std::isfinite(window.start) ? BeatAt(window.start) : 0);
    const double scale = unit == TimeUnit::Beats ? secondsABeat : 1 / secondsABeat;
    window = {.start = window.start / scale, .end = window.end / scale};
    return Inside(0, 0, scale, unit);
}

}  // namespace toolkit::interchange::dawproject
