#include "toolkit/interchange/dawproject/TempoMap.h"

#include <algorithm>
#include <cmath>

namespace toolkit::interchange::dawproject {
namespace {

constexpr double kSecondsAMinute = 60;

/// How long so many beats last if the tempo begins at `bpm` and changes by `slope` with each.
double LengthOf(double beats, double bpm, double slope) {
    return slope == 0 ? kSecondsAMinute * beats / bpm
                      : kSecondsAMinute / slope * std::log1p(beats * slope / bpm);
}

}  // namespace

TempoMap::TempoMap(double bpm, std::vector<TempoPoint> points) {
    for (TempoPoint& point : points) {
        point.beat = std::max(point.beat, 0.0);
    }
    std::ranges::stable_sort(points, {}, &TempoPoint::beat);
    segments_.push_back({.bpm = points.empty() ? bpm : points.front().bpm});
    for (std::size_t i = 0; i < points.size(); ++i) {
        const TempoPoint& point = points[i];
        const Segment& last = segments_.back();
        const double seconds =
            last.seconds + LengthOf(point.beat - last.beat, last.bpm, last.slope);
        const bool ramps = point.ramps && i + 1 < points.size() && points[i + 1].beat > point.beat;
        const double slope =
            ramps ? (points[i + 1].bpm - point.bpm) / (points[i + 1].beat - point.beat) : 0;
        segments_.push_back(
            {.beat = point.beat, .seconds = seconds, .bpm = point.bpm, .slope = slope});
    }
}

/// The last segment that begins at the position or before it.
template <class Member>
const TempoMap::Segment& TempoMap::At(double position, Member member) const {
    const auto after = std::upper_bound(
        segments_.begin(), segments_.end(), position,
        [&](double value, const Segment& segment) { return value < segment.*member; });
    return after == segments_.begin() ? segments_.front() : *std::prev(after);
}

double TempoMap::SecondsOf(double beat) const {
    const Segment& segment = At(beat, &Segment::beat);
    return segment.seconds + LengthOf(beat - segment.beat, segment.bpm, segment.slope);
}

double TempoMap::BpmAt(double beat) const {
    const Segment& segment = At(beat, &Segment::beat);
    return segment.bpm + segment.slope * (beat - segment.beat);
}

double TempoMap::BeatOf(double seconds) const {
    const Segment& segment = At(seconds, &Segment::seconds);
    const double length = (seconds - segment.seconds) / kSecondsAMinute;
    return segment.beat + (segment.slope == 0
                               ? length * segment.bpm
                               : segment.bpm / segment.slope * std::expm1(length * segment.slope));
}

bool TempoMap::IsEvenBetween(double beat, double end) const {
    const Segment* segment = &At(beat, &Segment::beat);
    const Segment* const last = &At(end, &Segment::beat);
    for (; segment != last; ++segment) {
        if (segment->slope != 0 || segment[1].bpm != segment->bpm) {
            return false;
        }
    }
    return last->slope == 0;
}

}  // namespace toolkit::interchange::dawproject
