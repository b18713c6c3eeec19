#include "toolkit/interchange/ardour/RegionWriter.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/ControlRest.h"
#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioClip;

/// The shape of a fade in.
/// @param length  above 0
std::vector<LanePoint> FadeInPoints(std::int64_t length, orvo::FadeType type) {
    constexpr std::int64_t kMostPieces = 128;  // error below 1e-4
    if (type != orvo::FadeType::Cosine) {
        return {{.offset = 0, .value = 0}, {.offset = length, .value = 1}};
    }
    const std::int64_t pieces = std::min(length, kMostPieces);
    std::vector<LanePoint> points;
    for (std::int64_t i = 0; i <= pieces; ++i) {
        const std::int64_t offset = length / pieces * i + length % pieces * i / pieces;
        const double share = static_cast<double>(offset) / static_cast<double>(length);
        points.push_back(
            {.offset = offset, .value = 0.5 - 0.5 * std::cos(std::numbers::pi * share)});
    }
    return points;
}

std::vector<LanePoint> Mirrored(std::vector<LanePoint> points) {
    std::ranges::reverse(points);
    const std::int64_t length = points.front().offset;
    for (LanePoint& point : points) {
        point.offset = length - point.offset;
    }
    return points;
}

/// A list that nothing uses must have two points all the same, or the program makes its own.
constexpr std::int64_t kLeastFade = 1;

std::vector<LanePoint> FlatPoints(std::int64_t length) {
    return {{.offset = 0, .value = 1}, {.offset = std::max(length, kLeastFade), .value = 1}};
}

/// The value of a lane at an offset between its points.
double ValueAt(const std::vector<LanePoint>& points, std::int64_t offset) {
    const auto next = std::ranges::upper_bound(points, offset, {}, &LanePoint::offset);
    if (next == points.begin()) {
        return points.front().value;
    }
    const LanePoint& last = *(next - 1);
    if (next == points.end() || last.holds) {
        return last.value;
    }
    const double share =
        static_cast<double>(offset - last.offset) / static_cast<double>(next->offset - last.offset);
    return last.value + share * (next->value - last.value);
}

/// The part of a lane that a region plays, from the region's start.
std::vector<LanePoint> PartOf(const std::vector<LanePoint>& points, std::int64_t from,
                              std::int64_t length) {
    std::vector<LanePoint> part = {{.offset = 0, .value = ValueAt(points, from)}};
    for (const LanePoint& point : points) {
        const std::int64_t offset = point.offset - from;
        if (offset > 0 && offset < length) {
            part.push_back({.offset = offset, .value = point.value});
        }
    }
    part.push_back({.offset = length, .value = ValueAt(points, from + length)});
    return part;
}

/// A gain that moves: points of up to `kHighestGain`, and the region's own gain for what is above.
struct Envelope {
    std::vector<LanePoint> points{};
    const char* style = "Linear";
    double factor = 1;
};

Envelope EnvelopeOf(const std::vector<LanePoint>& levels, const ArdourRegion& region,
                    orvo::LevelUnit unit) {
    const auto isHeard = [](const LanePoint& point) { return point.value > kSilence; };
    Envelope envelope;
    // Between two levels, the program's own logarithmic line is the same as ours.
    const bool isLogarithmic =
        unit == orvo::LevelUnit::Decibels && std::ranges::all_of(levels, isHeard);
    if (isLogarithmic) {
        envelope.style = "Logarithmic";
        envelope.points = PartOf(WithoutHolds(levels), region.offset, region.length);
        for (LanePoint& point : envelope.points) {
            point.value = ToAmplitude(point.value, unit);
        }
    } else {
        envelope.points =
            PartOf(WithoutHolds(AmplitudesOf(levels, unit)), region.offset, region.length);
    }
    const double highest = std::ranges::max_element(envelope.points, {}, &LanePoint::value)->value;
    if (highest > kHighestGain) {
        envelope.factor = highest / kHighestGain;
        for (LanePoint& point : envelope.points) {
            point.value /= envelope.factor;
        }
    }
    return envelope;
}

class RegionWriting {
public:
    RegionWriting(const ArdourRegion& region, const ModelPath& place, ArdourXml& out,
                  const Export& job)
        : region_(region),
          place_(place),
          out_(out),
          xml_(out.Xml()),
          job_(job),
          reporter_(region.beginsClip ? job.reporter : unused_) {}

    void Write(std::uint64_t firstSource) {
        const AudioClip& clip = *region_.clip;
        const ParameterLane gain = GainOf(clip);
        const std::optional<Envelope> envelope =
            gain.points.empty() ? std::nullopt
                                : std::optional(EnvelopeOf(gain.points, region_, Levels()));
        xml_.Open("Region")
            .Attribute("name", clip.name.empty() ? "clip" : clip.name)
            .Attribute("id", out_.NewId())
            .Attribute("type", "audio")
            .Attribute("start", out_.TimeOf(region_.start))
            .Attribute("length", fmt::format("{}@{}", out_.TimeOf(region_.length),
                                             out_.TimeOf(region_.position)))
            .Attribute("layering-index", region_.layer)
            .Attribute("opaque", region_.isOpaque ? 1 : 0)
            .Attribute("muted", IsMuted(clip) ? 1 : 0)
            .Attribute("locked", 0)
            .Attribute("position-locked", clip.lockedInTime ? 1 : 0)
            .Attribute("scale-amplitude",
                       envelope ? envelope->factor : ToAmplitude(gain.value, Levels()))
            .Attribute("channels", region_.sources.size())
            .Attribute("default-fade-in", 0)
            .Attribute("default-fade-out", 0)
            .Attribute("fade-in-active", region_.fadeIn > 0 ? 1 : 0)
            .Attribute("fade-out-active", region_.fadeOut > 0 ? 1 : 0)
            .Attribute("envelope-active", envelope ? 1 : 0);
        WriteSources(firstSource);
        WriteEnvelope(envelope);
        WriteFades(clip);
        xml_.Close();
    }

private:
    ParameterLane GainOf(const AudioClip& clip) {
        const ModelPath where = place_ / &AudioClip::gain;
        ParameterLane gain =
            ClipLaneOf(clip.gain, 0, clip, job_.options.conventions, where, reporter_);
        ReportRestOf(clip.gain, where, reporter_);
        if (!gain.points.empty() && gain.value != 0) {
            reporter_.CountLost("values under automation");
        }
        return gain;
    }

    bool IsMuted(const AudioClip& clip) {
        const ModelPath where = place_ / &AudioClip::mute;
        ReportRestOf(clip.mute, where, reporter_);
        ReportLostLane(clip.mute, where, reporter_);
        return LaneOf(clip.mute, 0, where, reporter_).value >= kOnFrom;
    }

    void WriteSources(std::uint64_t firstSource) {
        for (std::size_t i = 0; i < region_.sources.size(); ++i) {
            const std::uint64_t id = firstSource + region_.sources[i];
            xml_.Attribute(fmt::format("source-{}", i), id);
            xml_.Attribute(fmt::format("master-source-{}", i), id);
        }
    }

    void WriteEnvelope(const std::optional<Envelope>& envelope) {
        xml_.Open("Envelope");
        if (envelope) {
            out_.List("envelope", envelope->style, envelope->points);
        } else {
            out_.List("envelope", "Linear", FlatPoints(region_.length));
        }
        xml_.Close();
    }

    void WriteFades(const AudioClip& clip) {
        const auto typeOf = [](const std::optional<orvo::Fade>& fade) {
            return fade ? fade->type : orvo::FadeType::Logarithmic;
        };
        for (const std::optional<orvo::Fade>& fade : {clip.fadeIn, clip.fadeOut}) {
            if (fade && fade->crossFadeLinkType != orvo::CrossFadeLink::Symmetric) {
                reporter_.CountLost("links of crossfades");
            }
        }
        WriteFade(
            "FadeIn", "fadein",
            region_.fadeIn > 0 ? FadeInPoints(region_.fadeIn, typeOf(clip.fadeIn)) : FlatPoints(0));
        WriteFade("InverseFadeIn", "fadein", FlatPoints(region_.fadeIn));
        WriteFade("FadeOut", "fadeout",
                  region_.fadeOut > 0
                      ? Mirrored(FadeInPoints(region_.fadeOut, typeOf(clip.fadeOut)))
                      : FlatPoints(0));
        WriteFade("InverseFadeOut", "fadeout", FlatPoints(region_.fadeOut));
    }

    void WriteFade(const char* name, const char* kind, const std::vector<LanePoint>& points) {
        xml_.Open(name);
        out_.List(kind, "Linear", points);
        xml_.Close();
    }

    orvo::LevelUnit Levels() const { return job_.options.conventions.levels; }

    const ArdourRegion& region_;
    const ModelPath& place_;
    ArdourXml& out_;
    XmlWriter& xml_;
    const Export& job_;
    Reporter unused_ = Reporter(0);  // the first region of a loop has said all
    Reporter& reporter_;
};

}  // namespace

void WriteArdourRegion(const ArdourRegion& region, const ModelPath& place,
                       std::uint64_t firstSource, ArdourXml& out, const Export& job) {
    RegionWriting(region, place, out, job).Write(firstSource);
}

}  // namespace toolkit::interchange
