#include "toolkit/interchange/ardour/Regions.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

#include <orvo/Lookup.h>
#include "toolkit/Saturating.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Failure.h"
#include "toolkit/interchange/Overlaps.h"

namespace toolkit::interchange {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Fidelity;

/// A time of a thousand years: beyond, the program cannot count.
constexpr std::int64_t kLastSecond = 31'556'952'000;

class Builder {
public:
    Builder(const PlannedTrack& planned, ArdourSources& sources, const Export& job)
        : planned_(planned),
          sources_(sources),
          job_(job),
          channels_(ArdourChannelsOf(*planned.track, job.session)) {}

    std::vector<ArdourRegion> All() {
        const std::vector<AudioClip>& clips = planned_.track->clips;
        for (std::size_t i = 0; i < clips.size(); ++i) {
            AddClip(clips[i], i);
        }
        SetLayers();
        if (job_.session.mixingOptions.playOverlappingClips) {
            for (ArdourRegion& region : regions_) {
                region.isOpaque = false;
            }
        } else {
            OpenCrossfades();
        }
        std::ranges::stable_sort(regions_, {}, &ArdourRegion::position);
        return std::move(regions_);
    }

private:
    ModelPath PlaceOf(std::size_t clip) const { return planned_.place / &AudioTrack::clips / clip; }

    void Report(Fidelity fidelity, std::size_t clip, std::string_view what,
                std::string_view value = {}) const {
        job_.reporter.Add(fidelity, PlaceOf(clip), what, value);
    }

    void AddClip(const AudioClip& clip, std::size_t number) {
        if (StretchOf(clip, job_.options.conventions.stretchRatio) != 1) {
            Report(Fidelity::Lost, number, "is not stretched",
                   fmt::format("{}", clip.stretch->stretchRatio));
        }
        if (clip.fileId == orvo::kNoId) {
            return Report(Fidelity::Lost, number, "plays no media", clip.name);
        }
        const MediaFact& media = job_.media.Of(clip.fileId);
        RequireRate(media, clip);
        const std::vector<Piece> pieces = PiecesOf(clip, 1, media.frames);
        if (clip.looped) {
            Report(Fidelity::Approximated, number, "the loop became regions",
                   fmt::format("{}", pieces.size()));
        }
        ArdourRegion region = {
            .clip = &clip, .clipNumber = number, .sources = SourcesOf(clip, number, media)};
        const FadeLengths fades =
            FadesOf(clip, job_.options.conventions, PlaceOf(number), job_.reporter);
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            region.beginsClip = i == 0;
            region.fadeIn = i == 0 ? fades.in : 0;
            region.fadeOut = i + 1 == pieces.size() ? fades.out : 0;
            AddPiece(region, pieces[i], media);
        }
    }

    void RequireRate(const MediaFact& media, const AudioClip& clip) const {
        if (media.sampleRate == job_.session.sampleRate || media.isGuessed) {
            return;
        }
        const orvo::File* const file = orvo::FindFile(job_.session, clip.fileId);
        throw Failure({.file = file != nullptr ? file->path : "",
                       .what = fmt::format("has {} samples a second, and the session {}; Ardour "
                                           "would play it at another speed",
                                           media.sampleRate, job_.session.sampleRate),
                       .advice = "convert the media to the session's rate first"});
    }

    std::vector<std::size_t> SourcesOf(const AudioClip& clip, std::size_t number,
                                       const MediaFact& media) {
        std::vector<std::size_t> sources;
        for (std::uint32_t channel = 0; channel < channels_; ++channel) {
            const auto choice = clip.channelSources.find(channel);
            const std::int64_t wanted =
                choice != clip.channelSources.end() ? choice->second : std::int64_t{channel};
            const bool isThere = wanted >= 0 && wanted < media.channels;
            if (!isThere) {
                Report(Fidelity::Guessed, number,
                       "a channel that the media do not have is fed by the first one",
                       fmt::format("{}: {}", channel, wanted));
            }
            sources.push_back(
                sources_.NumberOf({.fileId = clip.fileId,
                                   .channel = isThere ? static_cast<std::uint32_t>(wanted) : 0}));
        }
        for (const auto& [channel, source] : clip.channelSources) {
            if (channel >= channels_) {
                Report(Fidelity::Lost, number, "the track has no such channel",
                       fmt::format("{}: {}", channel, source));
            }
        }
        return sources;
    }

    void AddPiece(ArdourRegion region, const Piece& piece, const MediaFact& media) {
        const std::int64_t cut = std::max({std::int64_t{0}, -piece.start, -piece.sourceIn});
        region.position = SaturatingSum(piece.start, cut);
        region.start = SaturatingSum(piece.sourceIn, cut);
        region.offset =
            SaturatingSum(SaturatingDifference(piece.start, region.clip->startPoint), cut);
        const std::int64_t left = SaturatingDifference(media.frames, region.start);
        const std::int64_t wanted = SaturatingDifference(piece.duration, cut);
        region.length = std::min(wanted, left);
        const std::int64_t end = SaturatingSum(region.position, region.length);
        const auto report = [&](std::string_view what) {
            Report(Fidelity::Lost, region.clipNumber, what,
                   fmt::format("{} to {}, from {} in the media", piece.start,
                               SaturatingSum(piece.start, piece.duration), piece.sourceIn));
        };
        if (end / std::max<std::int64_t>(job_.session.sampleRate, 1) > kLastSecond) {
            return report("lies too late to be counted");
        }
        if (cut > 0) {
            report("what is before the start of the session or media is cut off");
            Shorten(region.fadeIn, cut, region, &AudioClip::fadeIn);
        }
        if (wanted > left) {
            report("what is after the end of the media is cut off");
            Shorten(region.fadeOut, wanted - left, region, &AudioClip::fadeOut);
        }
        if (region.length <= 0) {
            return report("nothing of the clip is left");
        }
        regions_.push_back(std::move(region));
    }

    /// A fade at an end that is cut off.
    void Shorten(std::int64_t& length, std::int64_t cut, const ArdourRegion& region,
                 std::optional<orvo::Fade> AudioClip::*fade) const {
        if (length == 0) {
            return;
        }
        length = std::max<std::int64_t>(length - cut, 0);
        job_.reporter.Add(Fidelity::Lost, PlaceOf(region.clipNumber) / fade,
                          "the fade is cut off with the end that it is at",
                          fmt::format("{}", fmt::streamed((region.clip->*fade)->type)));
    }

    /// By the order of the clips, then by their time.
    void SetLayers() {
        std::vector<std::size_t> order(regions_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::ranges::stable_sort(order, {}, [&](std::size_t i) {
            return std::pair(regions_[i].clip->zOrder, regions_[i].position);
        });
        for (std::size_t layer = 0; layer < order.size(); ++layer) {
            regions_[order[layer]].layer = layer;
        }
    }

    /// A region of a crossfade covers the other one where it is not fading. If its fade is shorter
    /// than the crossfade, it must not.
    void OpenCrossfades() {
        std::vector<std::vector<std::size_t>> regionsOfClips(planned_.track->clips.size());
        for (std::size_t i = 0; i < regions_.size(); ++i) {
            regionsOfClips[regions_[i].clipNumber].push_back(i);
        }
        for (const Overlap& overlap : OverlapsOf(planned_.track->clips)) {
            const auto& first = regionsOfClips[overlap.first];
            const auto& second = regionsOfClips[overlap.second];
            if (!overlap.isCrossfade || first.empty() || second.empty()) {
                continue;
            }
            ArdourRegion& before = regions_[first.back()];
            ArdourRegion& after = regions_[second.front()];
            const bool isAfterAbove = after.layer > before.layer;
            const std::int64_t fade = isAfterAbove ? after.fadeIn : before.fadeOut;
            if (fade < overlap.end - overlap.start) {
                (isAfterAbove ? after : before).isOpaque = false;
            }
        }
    }

    const PlannedTrack& planned_;
    ArdourSources& sources_;
    const Export& job_;
    std::uint32_t channels_;
    std::vector<ArdourRegion> regions_;
};

}  // namespace

std::size_t ArdourSources::NumberOf(const ArdourSource& source) {
    const auto [number, isNew] = numbers_.try_emplace(source, all_.size());
    if (isNew) {
        all_.push_back(source);
    }
    return number->second;
}

std::uint32_t ArdourChannelsOf(const AudioTrack& track, const orvo::Session& session) {
    constexpr std::uint32_t kStereo = 2;
    constexpr std::uint32_t kMost = 64;
    const auto own = static_cast<std::uint32_t>(track.audioChannelType);
    const auto common = static_cast<std::uint32_t>(session.audioChannelType);
    const std::uint32_t channels = own != 0 ? own : common != 0 ? common : kStereo;
    const bool isFed = track.kind == orvo::TrackKind::Bus || track.kind == orvo::TrackKind::Master;
    return std::clamp(channels, isFed ? kStereo : 1, kMost);
}

std::vector<ArdourRegion> ArdourRegionsOf(const PlannedTrack& planned, ArdourSources& sources,
                                          const Export& job) {
    return Builder(planned, sources, job).All();
}

}  // namespace toolkit::interchange
