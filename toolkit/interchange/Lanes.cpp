#include "toolkit/interchange/Lanes.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "toolkit/Saturating.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange {
namespace {

constexpr std::uint32_t kOnlyParameter = 0;

std::int64_t OriginOf(const orvo::AudioClip& clip, orvo::ClipOrigin origin) {
    switch (origin) {
        case orvo::ClipOrigin::ClipStart:
            return 0;
        case orvo::ClipOrigin::Source:
            return clip.sourceInPoint;
        case orvo::ClipOrigin::Timeline:
            return clip.startPoint;
    }
    return 0;
}

/// Adds the points between two levels of dB, without both.
void AddPieces(std::vector<LanePoint>& amplitudes, const LanePoint& from, const LanePoint& to,
               orvo::LevelUnit unit) {
    const std::size_t pieces = PiecesBetween(from.value, to.value, unit);
    const double first = std::max(from.value, kSilence);
    const double last = std::max(to.value, kSilence);
    const double length = static_cast<double>(to.offset) - static_cast<double>(from.offset);
    for (std::size_t i = 1; i < pieces; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(pieces);
        const std::int64_t offset = from.offset + ToSamples(share * length);
        if (offset > amplitudes.back().offset && offset < to.offset) {
            // The level where the rounded offset lies, not where the piece would end.
            const double at = static_cast<double>(offset - from.offset) / length;
            amplitudes.push_back(
                {.offset = offset, .value = ToAmplitude(first + at * (last - first), unit)});
        }
    }
}

}  // namespace

std::vector<LanePoint> PointsOf(const orvo::AutomationLane& lane, const ModelPath& place,
                                Reporter& reporter) {
    std::vector<LanePoint> points;
    points.reserve(lane.keyframes.size());
    for (const orvo::Keyframe& keyframe : lane.keyframes) {
        points.push_back({.offset = keyframe.sampleOffset,
                          .value = keyframe.value,
                          .holds = keyframe.type == orvo::KeyframeType::Hold});
    }
    std::ranges::stable_sort(points, {}, &LanePoint::offset);
    const auto isReplaced = [&](const LanePoint& point) {
        return &point != &points.back() && (&point)[1].offset == point.offset;
    };
    std::vector<LanePoint> distinct;
    distinct.reserve(points.size());
    std::ranges::copy_if(points, std::back_inserter(distinct), std::not_fn(isReplaced));
    if (lane.enableSplines && distinct.size() > 1) {
        reporter.Add(orvo::Fidelity::Approximated, place / &orvo::AutomationLane::enableSplines,
                     "the splines became straight lines");
    }
    return distinct;
}

std::vector<LanePoint> AmplitudesOf(std::vector<LanePoint> points, orvo::LevelUnit unit) {
    std::vector<LanePoint> amplitudes;
    amplitudes.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        amplitudes.push_back({.offset = points[i].offset,
                              .value = ToAmplitude(points[i].value, unit),
                              .holds = points[i].holds});
        if (!points[i].holds && i + 1 < points.size()) {
            AddPieces(amplitudes, points[i], points[i + 1], unit);
        }
    }
    return amplitudes;
}

std::vector<LanePoint> WithoutHolds(const std::vector<LanePoint>& points) {
    std::vector<LanePoint> lines;
    lines.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        lines.push_back({.offset = points[i].offset, .value = points[i].value});
        if (points[i].holds && i + 1 < points.size() &&
            points[i + 1].offset - 1 > points[i].offset) {
            lines.push_back({.offset = points[i + 1].offset - 1, .value = points[i].value});
        }
    }
    return lines;
}

ParameterLane LaneOf(const std::optional<orvo::Component>& component, double absent,
                     const ModelPath& place, Reporter& reporter) {
    ParameterLane lane = {.value = absent};
    if (!component) {
        return lane;
    }
    const auto parameter = component->parameters.find(kOnlyParameter);
    if (parameter == component->parameters.end()) {
        return lane;
    }
    lane.value = parameter->second.value.value_or(static_cast<float>(absent));
    if (parameter->second.automation) {
        lane.points = PointsOf(
            *parameter->second.automation,
            place / &orvo::Component::parameters / kOnlyParameter / &orvo::Parameter::automation,
            reporter);
    }
    return lane;
}

ParameterLane ClipLaneOf(const std::optional<orvo::Component>& component, double absent,
                         const orvo::AudioClip& clip, const orvo::Conventions& conventions,
                         const ModelPath& place, Reporter& reporter) {
    ParameterLane lane = LaneOf(component, absent, place, reporter);
    const std::int64_t origin = OriginOf(clip, conventions.clipAutomation);
    for (LanePoint& point : lane.points) {
        point.offset = SaturatingDifference(point.offset, origin);
        if (point.offset < 0 || point.offset > clip.duration) {
            reporter.Warn("automation of clips lies outside of them",
                          "choose another origin of the automation of clips");
        }
    }
    return lane;
}

}  // namespace toolkit::interchange
