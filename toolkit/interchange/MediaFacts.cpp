#include "toolkit/interchange/MediaFacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <variant>

#include "toolkit/ModelPath.h"
#include "toolkit/Saturating.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Reporter.h"
#include "toolkit/media/MediaProperties.h"

namespace toolkit::interchange {
namespace {

constexpr std::uint32_t kStereo = 2;

std::uint32_t RateOf(const orvo::Session& session) {
    return std::max(session.sampleRate, 1U);
}

}  // namespace

MediaFacts::MediaFacts(const orvo::Session& session, const orvo::Conventions& conventions,
                       Reporter& reporter)
    : session_(session), conventions_(conventions), reporter_(reporter), index_(session) {}

const MediaFact& MediaFacts::Of(std::uint32_t fileId) {
    const auto known = facts_.find(fileId);
    if (known != facts_.end()) {
        return known->second;
    }
    const orvo::File* const file = index_.FindFile(fileId);
    const MediaFact unknown = {
        .sampleRate = RateOf(session_), .channels = kStereo, .isGuessed = true};
    return facts_.emplace(fileId, file != nullptr ? LookInto(*file) : unknown).first->second;
}

MediaFact MediaFacts::LookInto(const orvo::File& file) {
    const MediaResult found = ReadMediaProperties(file.path);
    if (const auto* const properties = std::get_if<MediaProperties>(&found)) {
        return {.frames = static_cast<std::int64_t>(properties->frames),
                .sampleRate = std::max(properties->sampleRate, 1U),
                .channels = std::max(properties->channels, 1U),
                .exists = true};
    }
    MediaFact fact = Guess(file);
    fact.exists = std::get<MediaObstacle>(found) == MediaObstacle::Unknown;
    return fact;
}

MediaFact MediaFacts::Guess(const orvo::File& file) {
    if (needs_.empty()) {
        FindNeeds();
    }
    const Need need = needs_[file.id];
    const auto number = static_cast<std::size_t>(&file - session_.files.data());
    reporter_.Add(orvo::Fidelity::Guessed, ModelPath() / &orvo::Session::files / number,
                  "the length, rate and channels of the media are unknown",
                  fmt::format("{} samples at {} Hz, {} channels", need.frames, RateOf(session_),
                              need.channels));
    return {.frames = need.frames,
            .sampleRate = RateOf(session_),
            .channels = need.channels,
            .isGuessed = true};
}

void MediaFacts::FindNeeds() {
    for (const orvo::AudioTrack& track : session_.audioTracks) {
        for (const orvo::AudioClip& clip : track.clips) {
            AddNeed(track, clip);
        }
    }
    for (const orvo::VideoTrack& track : session_.videoTracks) {
        for (const orvo::VideoClip& clip : track.clips) {
            Need& need = needs_[clip.fileId];
            need.frames = std::max(need.frames, SaturatingSum(clip.sourceInPoint, clip.duration));
        }
    }
}

void MediaFacts::AddNeed(const orvo::AudioTrack& track, const orvo::AudioClip& clip) {
    Need& need = needs_[clip.fileId];
    const double used =
        static_cast<double>(clip.duration) / StretchOf(clip, conventions_.stretchRatio);
    const std::int64_t frames = ToSamples(std::max(used, 0.0));
    need.frames = std::max(need.frames, SaturatingSum(clip.sourceInPoint, frames));
    if (clip.channelSources.empty()) {
        const auto channels = static_cast<std::uint32_t>(track.audioChannelType);
        need.channels = std::max(need.channels, channels == 0 ? kStereo : channels);
    }
    for (const auto& [channel, source] : clip.channelSources) {
        need.channels =
            std::max(need.channels, static_cast<std::uint32_t>(std::max(source, 0)) + 1);
    }
}

}  // namespace toolkit::interchange
