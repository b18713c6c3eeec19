#include "toolkit/interchange/otio/TrackPlan.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <numeric>
#include <tuple>
#include <type_traits>

#include "toolkit/Saturating.h"
#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/Carried.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Overlaps.h"

namespace toolkit::interchange::otio {
namespace {

using orvo::AudioClip;
using orvo::Fidelity;
using orvo::MidiClip;
using orvo::VideoClip;

/// What a control for muting has besides its state.
void ReportMute(orvo::Component rest, const ModelPath& place, Reporter& reporter) {
    if (rest.parameters.contains(0)) {
        rest.parameters[0].value = 0.0F;
    }
    if (!IsNeutral(rest)) {
        reporter.Add(Fidelity::Lost, place, "only whether it is on has a place");
    }
}

class Planning {
public:
    Planning(const ModelPath& place, const Units& units, const Export& job)
        : units_(units), job_(job) {
        plan_.place = place;
    }

    void Add(const std::vector<AudioClip>& clips) {
        placeOfAudio_.assign(clips.size(), kUnplaced);
        for (std::size_t i = 0; i < clips.size(); ++i) {
            if (PlannedClip* const planned = AddClip(clips, i, plan_.audioClips)) {
                placeOfAudio_[i] = plan_.clips.size() - 1;
                AddSound(clips[i], *planned);
            }
        }
        AddCrossfades(clips);
    }

    template <class Clip>
    void AddOthers(const std::vector<Clip>& clips, std::vector<Clip>& unplaced) {
        for (std::size_t i = 0; i < clips.size(); ++i) {
            AddClip(clips, i, unplaced);
        }
    }

    TrackPlan& Plan() { return plan_; }

    TrackPlan Finish() {
        std::vector<std::size_t> order(plan_.clips.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t i) { return plan_.spans[i].start; });
        plan_.lanes = LanesOf(plan_.spans, order);
        FindWhetherInOrder();
        ReportCoverings();
        ReportLinks();
        return std::move(plan_);
    }

private:
    static constexpr std::size_t kUnplaced = static_cast<std::size_t>(-1);

    template <class Clip>
    PlannedClip* AddClip(const std::vector<Clip>& clips, std::size_t number,
                         std::vector<Clip>& unplaced) {
        const Clip& clip = clips[number];
        PlannedClip planned{.clip = &clip, .number = number};
        const std::int64_t end = SaturatingSum(clip.startPoint, clip.duration);
        const bool isCounted = clip.sourceInPoint > -kMostCounted && end < kMostCounted &&
                               clip.sourceInPoint < kMostCounted;
        if (clip.startPoint < 0 || clip.duration < 0 || !isCounted) {
            job_.reporter.Add(Fidelity::Lost, plan_.PlaceOf(planned),
                              "a clip that does not lie between the session's start and the "
                              "largest time stands only in the metadata",
                              clip.name);
            unplaced.push_back(clip);
            return nullptr;
        }
        planned.sourceIn = units_.Of(clip.sourceInPoint);
        plan_.spans.push_back({.start = units_.Of(clip.startPoint), .end = units_.Of(end)});
        plan_.clips.push_back(planned);
        ReportRounding(clip.startPoint, end, clip.sourceInPoint);
        return &plan_.clips.back();
    }

    void ReportRounding(std::int64_t start, std::int64_t end, std::int64_t sourceIn) {
        const auto isWhole = [&](std::int64_t samples) {
            const auto counts = static_cast<long double>(units_.Of(samples));
            return Rounded(units_.counts.To(units_.samples, counts)) == samples;
        };
        if (!units_.AreSamples() && !(isWhole(start) && isWhole(end) && isWhole(sourceIn))) {
            job_.reporter.Add(Fidelity::Approximated, plan_.PlaceOf(plan_.clips.back()),
                              "its boundaries are rounded to frames",
                              fmt::format("{} to {} samples", start, end));
        }
    }

    void AddSound(const AudioClip& clip, PlannedClip& planned) {
        const orvo::Conventions& conventions = job_.options.conventions;
        planned.scalar = 1 / StretchOf(clip, conventions.stretchRatio);
        planned.isEnabled = !IsMuted(clip.mute);
        if (clip.mute) {
            ReportMute(*clip.mute, plan_.PlaceOf(planned) / &AudioClip::mute, job_.reporter);
        }
        if (clip.fadeIn || clip.fadeOut) {
            const FadeLengths fades =
                FadesOf(clip, conventions, plan_.PlaceOf(planned), job_.reporter);
            planned.fadeIn = units_.Of(fades.in);
            planned.fadeOut = units_.Of(fades.out);
            ReportCurve(clip.fadeIn, plan_.PlaceOf(planned) / &AudioClip::fadeIn);
            ReportCurve(clip.fadeOut, plan_.PlaceOf(planned) / &AudioClip::fadeOut);
        }
        if (clip.looped) {
            job_.reporter.Add(Fidelity::Approximated, plan_.PlaceOf(planned) / &AudioClip::looped,
                              "other programs do not play it again from its start");
        }
    }

    void ReportCurve(const std::optional<orvo::Fade>& fade, const ModelPath& place) {
        const orvo::Fade usual;
        if (fade &&
            (fade->type != usual.type || fade->crossFadeLinkType != usual.crossFadeLinkType)) {
            job_.reporter.Add(Fidelity::Lost, place, "a transition has no curve",
                              fmt::format("{}, {}", fmt::streamed(fade->type),
                                          fmt::streamed(fade->crossFadeLinkType)));
        }
    }

    void AddCrossfades(const std::vector<AudioClip>& clips) {
        for (const Overlap& overlap : OverlapsOf(clips)) {
            const std::size_t first = placeOfAudio_[overlap.first];
            const std::size_t second = placeOfAudio_[overlap.second];
            if (overlap.isCrossfade && first != kUnplaced && second != kUnplaced) {
                plan_.spans[second].crossfadesWith = first;
            }
        }
    }

    /// A reading sorts clips by their start and then by their lane.
    void FindWhetherInOrder() {
        std::vector<std::size_t> laneOf(plan_.clips.size());
        for (std::size_t lane = 0; lane < plan_.lanes.size(); ++lane) {
            for (const LaneClip& clip : plan_.lanes[lane]) {
                laneOf[clip.clip] = lane;
            }
        }
        for (std::size_t i = 1; i < plan_.clips.size(); ++i) {
            if (std::tuple(plan_.spans[i].start, laneOf[i]) <
                std::tuple(plan_.spans[i - 1].start, laneOf[i - 1])) {
                plan_.isInOrder = false;
            }
        }
    }

    /// Links of crossfades that are no transitions.
    void ReportLinks() {
        std::vector<std::optional<std::uint32_t>> heads(plan_.clips.size());
        std::vector<std::optional<std::uint32_t>> tails(plan_.clips.size());
        for (const Lane& lane : plan_.lanes) {
            for (std::size_t i = 1; i < lane.size(); ++i) {
                if (lane[i].isCrossfade) {
                    heads[lane[i].clip] = IdOf(lane[i - 1].clip);
                    tails[lane[i - 1].clip] = IdOf(lane[i].clip);
                }
            }
        }
        for (std::size_t i = 0; i < plan_.clips.size(); ++i) {
            if (const auto* const clip = std::get_if<const AudioClip*>(&plan_.clips[i].clip)) {
                const auto report = [&](std::int32_t AudioClip::*link, const auto& linked) {
                    ReportLink((*clip)->*link, linked, plan_.clips[i], link);
                };
                report(&AudioClip::crossFadeHeadClipId, heads[i]);
                report(&AudioClip::crossFadeTailClipId, tails[i]);
            }
        }
    }

    std::uint32_t IdOf(std::size_t clip) const {
        return std::visit([](const auto* typed) { return typed->id; }, plan_.clips[clip].clip);
    }

    void ReportLink(std::int32_t id, std::optional<std::uint32_t> linked, const PlannedClip& clip,
                    std::int32_t AudioClip::*link) {
        if (id >= 0 && linked != static_cast<std::uint32_t>(id)) {
            job_.reporter.Add(Fidelity::Lost, plan_.PlaceOf(clip) / link,
                              "no transition leads to the clip that it names",
                              fmt::format("{}", id));
        }
    }

    void ReportCoverings() {
        if (job_.session.mixingOptions.playOverlappingClips) {
            return;
        }
        for (std::size_t lane = 1; lane < plan_.lanes.size(); ++lane) {
            for (const LaneClip& clip : plan_.lanes[lane]) {
                job_.reporter.Add(Fidelity::Lost, plan_.PlaceOf(plan_.clips[clip.clip]),
                                  "it overlaps another clip; that one covers the other is lost");
            }
        }
    }

    const Units& units_;
    const Export& job_;
    TrackPlan plan_;
    std::vector<std::size_t> placeOfAudio_;
};

}  // namespace

ModelPath TrackPlan::PlaceOf(const PlannedClip& clip) const {
    return std::visit(
        [&](const auto* typed) {
            using Clip = std::remove_cvref_t<decltype(*typed)>;
            if constexpr (std::is_same_v<Clip, AudioClip>) {
                return place / &orvo::AudioTrack::clips / clip.number;
            } else if constexpr (std::is_same_v<Clip, MidiClip>) {
                return place / &orvo::AudioTrack::midiClips / clip.number;
            } else {
                return place / &orvo::VideoTrack::clips / clip.number;
            }
        },
        clip.clip);
}

TrackPlan PlanOf(const orvo::AudioTrack& track, const ModelPath& place, const Units& units,
                 const Export& job) {
    Planning planning(place, units, job);
    if (track.mute) {
        ReportMute(*track.mute, place / &orvo::AudioTrack::mute, job.reporter);
    }
    planning.Add(track.clips);
    planning.AddOthers(track.midiClips, planning.Plan().midiClips);
    return planning.Finish();
}

TrackPlan PlanOf(const orvo::VideoTrack& track, const ModelPath& place, const Units& units,
                 const Export& job) {
    Planning planning(place, units, job);
    planning.AddOthers(track.clips, planning.Plan().videoClips);
    return planning.Finish();
}

bool IsMuted(const std::optional<orvo::Component>& mute) {
    if (!mute) {
        return false;
    }
    const auto parameter = mute->parameters.find(0);
    return parameter != mute->parameters.end() && parameter->second.value.value_or(0) >= kOnFrom;
}

}  // namespace toolkit::interchange::otio
