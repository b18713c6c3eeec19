#include "toolkit/interchange/dawproject/PointsReader.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange::dawproject {
namespace {

std::optional<double> ValueOf(const pugi::xml_node& point) {
    if (IsNamed(point, "BoolPoint")) {
        return IsTrue(point, "value", false) ? 1 : 0;
    }
    return NumberOf(point.attribute("value").value());
}

double ValueAt(const ReadPoint& point, const ReadPoint& next, std::int64_t offset) {
    if (point.holds || next.offset <= point.offset) {
        return point.value;
    }
    const double share = static_cast<double>(offset - point.offset) /
                         static_cast<double>(next.offset - point.offset);
    return point.value + share * (next.value - point.value);
}

/// Adds the keyframes between two points on a straight line of factors, without both: at even
/// steps of dB, wherever these lie on the line.
void AddPieces(std::vector<orvo::Keyframe>& keyframes, const ReadPoint& from, const ReadPoint& to,
               const ValueScale& scale) {
    // Steps that the writing made are a little more than its own limit, after rounding.
    constexpr double kNearEnough = 2.6;
    const double first = scale.ValueOf(from.value);
    const double last = scale.ValueOf(to.value);
    if (std::abs(last - first) <= kNearEnough) {
        return;
    }
    const std::size_t pieces = PiecesBetween(first, last, scale.levels);
    const double start = ToAmplitude(first, scale.levels);
    const double rise = ToAmplitude(last, scale.levels) - start;
    for (std::size_t i = 1; i < pieces; ++i) {
        const double level =
            first + (last - first) * static_cast<double>(i) / static_cast<double>(pieces);
        const double share =
            std::clamp((ToAmplitude(level, scale.levels) - start) / rise, 0.0, 1.0);
        const std::int64_t offset =
            from.offset + std::llround(share * static_cast<double>(to.offset - from.offset));
        if (offset > keyframes.back().sampleOffset && offset < to.offset) {
            keyframes.push_back({.value = static_cast<float>(level), .sampleOffset = offset});
        }
    }
}

}  // namespace

std::vector<ReadPoint> ReadPoints(
    const ProjectDocument& document, const pugi::xml_node& points,
    const std::function<std::int64_t(const pugi::xml_node&, double)>& samplesOf) {
    constexpr std::string_view kSuffix = "Point";
    std::vector<ReadPoint> read;
    for (const pugi::xml_node& point : points.children()) {
        if (!std::string_view(point.name()).ends_with(kSuffix)) {
            continue;
        }
        const std::optional<double> time = document.Number(point, "time");
        const std::optional<double> value = ValueOf(point);
        if (!time || !value) {
            document.Report(orvo::Fidelity::Lost, point, "the point has no time or no value");
            continue;
        }
        read.push_back(
            {.offset = samplesOf(point, *time),
             .value = *value,
             .holds = point.attribute("interpolation").value() != std::string_view("linear")});
    }
    std::ranges::stable_sort(read, {}, &ReadPoint::offset);
    return read;
}

orvo::AutomationLane AutomationOf(const std::vector<ReadPoint>& points, const ValueScale& scale) {
    orvo::AutomationLane lane;
    for (std::size_t i = 0; i < points.size(); ++i) {
        lane.keyframes.push_back(
            {.value = scale.ValueOf(points[i].value),
             .sampleOffset = points[i].offset,
             .type = points[i].holds ? orvo::KeyframeType::Hold : orvo::KeyframeType::Linear});
        if (!scale.IsStraight() && !points[i].holds && i + 1 < points.size()) {
            AddPieces(lane.keyframes, points[i], points[i + 1], scale);
        }
    }
    return lane;
}

std::vector<ReadPoint> Within(const std::vector<ReadPoint>& points, std::int64_t duration) {
    std::vector<ReadPoint> within;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const ReadPoint& point = points[i];
        const bool isLast = i + 1 == points.size();
        const ReadPoint& next = isLast ? point : points[i + 1];
        if (point.offset >= 0 && point.offset <= duration) {
            within.push_back(point);
        }
        for (const std::int64_t edge : {std::int64_t{0}, duration}) {
            if (point.offset < edge && (isLast ? edge == 0 : next.offset > edge)) {
                within.push_back(
                    {.offset = edge, .value = ValueAt(point, next, edge), .holds = point.holds});
            }
        }
    }
    if (within.empty() && !points.empty()) {
        within.push_back({.value = points.front().value});
    }
    return within;
}

}  // namespace toolkit::interchange::dawproject
