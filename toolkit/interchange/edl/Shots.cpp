#include "toolkit/interchange/edl/Shots.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <unordered_map>

#include "toolkit/Saturating.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Overlaps.h"
#include "toolkit/interchange/edl/ShotLists.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::VideoTrack;

/// The shots of a track, then its lists.
template <class Track>
class Builder {
public:
    Builder(const Track& track, const ModelPath& place, const FrameClock& clock, const Export& job)
        : track_(track), place_(place), clock_(clock), job_(job) {}

    std::vector<ShotList> Lists() {
        for (std::size_t i = 0; i < track_.clips.size(); ++i) {
            Add(track_.clips[i], i);
        }
        std::ranges::stable_sort(shots_, {}, &Shot::recordIn);
        const std::unordered_map<std::size_t, std::size_t> partners = Partners();
        ShotLists lists;
        for (const Shot& shot : shots_) {
            const auto partner = shot.beginsClip ? partners.find(shot.clip) : partners.end();
            const std::size_t list = lists.Add(
                shot, partner != partners.end() ? partner->second : ShotLists::kNoPartner);
            if (list > 0) {
                Report(Fidelity::Moved, shot.clip,
                       "overlaps another clip and is in a list of its own",
                       fmt::format("list {}", list + 1));
            }
        }
        std::vector<ShotList> taken = lists.Take();
        ReportDissolves(taken);
        return taken;
    }

private:
    void Report(Fidelity fidelity, std::size_t clip, std::string_view what,
                std::string_view value) const {
        job_.reporter.Add(fidelity, place_ / &Track::clips / clip, what, value);
    }

    /// For each clip the one that crossfades into it.
    std::unordered_map<std::size_t, std::size_t> Partners() const {
        std::unordered_map<std::size_t, std::size_t> partners;
        if constexpr (std::is_same_v<Track, AudioTrack>) {
            for (const Overlap& overlap : OverlapsOf(track_.clips)) {
                if (overlap.isCrossfade) {
                    partners.emplace(overlap.second, overlap.first);
                }
            }
        }
        return partners;
    }

    void ReportDissolves(const std::vector<ShotList>& lists) const {
        for (const ShotList& list : lists) {
            for (const Shot& shot : list) {
                if (shot.dissolve > 0) {
                    Report(Fidelity::Approximated, shot.clip, "the crossfade became a dissolve",
                           fmt::format("{} frames", shot.dissolve));
                }
            }
        }
    }

    void Add(const orvo::VideoClip& clip, std::size_t number) {
        Place(
            {.fileId = clip.fileId, .clip = number, .name = &clip.name},
            {.start = clip.startPoint, .duration = clip.duration, .sourceIn = clip.sourceInPoint});
    }

    void Add(const AudioClip& clip, std::size_t number) {
        const double stretch = StretchOf(clip, job_.options.conventions.stretchRatio);
        const std::vector<Piece> pieces = PiecesOf(clip, stretch, FileLengthOf(clip));
        if (clip.looped) {
            Report(Fidelity::Approximated, number, "the loop became events",
                   fmt::format("{}", pieces.size()));
        }
        Shot shot = {.speed = 1 / stretch,
                     .fileId = clip.fileId,
                     .isSecondChannel = PlaysSecondChannelOnly(clip),
                     .clip = number,
                     .name = &clip.name};
        if (!clip.channelSources.empty() && !shot.isSecondChannel) {
            Report(Fidelity::Lost, number, "the choice of channels has no place", ChoiceOf(clip));
        }
        const FadeLengths fades = FadesOf(clip, job_.options.conventions,
                                          place_ / &AudioTrack::clips / number, job_.reporter);
        const std::int64_t end = SaturatingSum(clip.startPoint, clip.duration);
        const std::int64_t fadeIn =
            FramesOfFade(clip.startPoint, SaturatingSum(clip.startPoint, fades.in), clip.fadeIn,
                         number, "the fade in has a length in frames and no curve");
        const std::int64_t fadeOut =
            FramesOfFade(SaturatingDifference(end, fades.out), end, clip.fadeOut, number,
                         "the fade out has a length in frames and no curve");
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            shot.beginsClip = i == 0;
            shot.fadeIn = i == 0 ? fadeIn : 0;
            shot.fadeOut = i + 1 == pieces.size() ? fadeOut : 0;
            Place(shot, pieces[i]);
        }
    }

    /// At the session's rate; 0 unless the clip needs it.
    std::int64_t FileLengthOf(const AudioClip& clip) const {
        return clip.looped
                   ? ToSamples(job_.media.Of(clip.fileId).Seconds() * job_.session.sampleRate)
                   : 0;
    }

    bool PlaysSecondChannelOnly(
        const AudioClip& clip) const requires std::is_same_v<Track, AudioTrack> {
        return track_.audioChannelType == orvo::ChannelType::Mono &&
               clip.channelSources == std::map<std::uint32_t, std::int32_t>{{0, 1}};
    }

    static std::string ChoiceOf(const AudioClip& clip) {
        std::string choice;
        for (const auto& [channel, source] : clip.channelSources) {
            choice += fmt::format("{}{}: {}", choice.empty() ? "" : ", ", channel, source);
        }
        return choice;
    }

    /// Boundaries are rounded, not lengths.
    std::int64_t FramesOfFade(std::int64_t from, std::int64_t to,
                              const std::optional<orvo::Fade>& fade, std::size_t clip,
                              std::string_view what) const {
        if (!fade || to == from) {
            return 0;
        }
        const std::int64_t frames =
            std::min(clock_.FramesOf(to) - clock_.FramesOf(from), kLongestDissolve);
        Report(
            Fidelity::Approximated, clip, what,
            fmt::format("{} samples, {}, {} became {} frames", to - from, fmt::streamed(fade->type),
                        fmt::streamed(fade->crossFadeLinkType), frames));
        return frames;
    }

    void Place(Shot shot, const Piece& piece) {
        const std::int64_t end = SaturatingSum(piece.start, piece.duration);
        const auto report = [&](Fidelity fidelity, std::string_view what) {
            Report(fidelity, shot.clip, what,
                   fmt::format("{} to {}, from {} in the media", piece.start, end, piece.sourceIn));
        };
        shot.recordIn = clock_.FramesOf(piece.start);
        shot.recordOut = clock_.FramesOf(end);
        shot.sourceIn = clock_.FramesOf(piece.sourceIn);
        if (shot.recordOut > clock_.EndOfDay() ||
            shot.SourceAt(shot.recordOut) > clock_.EndOfDay()) {
            return report(Fidelity::Lost, "timecode ends after a day");
        }
        if (shot.recordIn < 0 || shot.sourceIn < 0) {
            report(Fidelity::Lost, "what is before the start of the session or media is cut off");
            CutBeforeStart(shot);
        }
        if (shot.recordOut <= shot.recordIn) {
            return report(Fidelity::Lost, "lasts less than half a frame");
        }
        if (!clock_.IsOnFrame(piece.start) || !clock_.IsOnFrame(end) ||
            !clock_.IsOnFrame(piece.sourceIn)) {
            report(Fidelity::Approximated, "the boundaries are rounded to frames");
        }
        shot.fadeIn = std::min(shot.fadeIn, shot.Length());
        shots_.push_back(shot);
    }

    static void CutBeforeStart(Shot& shot) {
        const auto framesBeforeMedia =
            static_cast<double>(-std::min<std::int64_t>(shot.sourceIn, 0));
        const std::int64_t cut =
            std::max(-shot.recordIn, ToSamples(framesBeforeMedia / shot.speed));
        shot.sourceIn = std::max<std::int64_t>(shot.SourceAt(shot.recordIn + cut), 0);
        shot.recordIn += cut;
    }

    const Track& track_;
    const ModelPath& place_;
    const FrameClock& clock_;
    const Export& job_;
    std::vector<Shot> shots_;
};

}  // namespace

std::int64_t Shot::SourceAt(std::int64_t record) const {
    return SaturatingSum(
        sourceIn, ToSamples(static_cast<double>(SaturatingDifference(record, recordIn)) * speed));
}

std::vector<ShotList> ShotsOf(const AudioTrack& track, const ModelPath& place,
                              const FrameClock& clock, const Export& job) {
    return Builder(track, place, clock, job).Lists();
}

std::vector<ShotList> ShotsOf(const VideoTrack& track, const ModelPath& place,
                              const FrameClock& clock, const Export& job) {
    return Builder(track, place, clock, job).Lists();
}

}  // namespace toolkit::interchange
