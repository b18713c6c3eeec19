#include "toolkit/interchange/MediaFacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <variant>

#include "toolkit/ModelPath.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Reporter.h"
#include "toolkit/media/MediaFile.h"
#include "toolkit/media/MediaProperties.h"

namespace toolkit::interchange {
namespace {

constexpr std::uint32_t kMonoOrStereo = 2;

/// What the clips need of a file.
struct Need {
    std::int64_t frames = 0;
    std::uint32_t channels = 1;
};

void AddNeed(Need& need, const orvo::AudioTrack& track, const orvo::AudioClip& clip,
             const orvo::Conventions& conventions) {
    const double used =
        static_cast<double>(clip.duration) / StretchOf(clip, conventions.stretchRatio);
    const std::int64_t frames = std::llround(std::max(used, 0.0));
    need.frames = std::max(need.frames, clip.sourceInPoint + frames);
    if (clip.channelSources.empty()) {
        const auto channels = static_cast<std::uint32_t>(track.audioChannelType);
        need.channels = std::max(need.channels, channels == 0 ? kMonoOrStereo : channels);
    }
    for (const auto& [channel, source] : clip.channelSources) {
        need.channels =
            std::max(need.channels, static_cast<std::uint32_t>(std::max(source, 0)) + 1);
    }
}

std::unordered_map<std::uint32_t, Need> NeedsOf(const orvo::Session& session,
                                                const orvo::Conventions& conventions) {
    std::unordered_map<std::uint32_t, Need> needs;
    for (const orvo::AudioTrack& track : session.audioTracks) {
        for (const orvo::AudioClip& clip : track.clips) {
            AddNeed(needs[clip.fileId], track, clip, conventions);
        }
    }
    for (const orvo::VideoTrack& track : session.videoTracks) {
        for (const orvo::VideoClip& clip : track.clips) {
            Need& need = needs[clip.fileId];
            need.frames = std::max(need.frames, clip.sourceInPoint + clip.duration);
        }
    }
    return needs;
}

}  // namespace

MediaFacts::MediaFacts(const orvo::Session& session, const orvo::Conventions& conventions,
                       Reporter& reporter) {
    const std::uint32_t sampleRate = std::max(session.sampleRate, 1U);
    unknown_ = {.sampleRate = sampleRate, .channels = kMonoOrStereo, .isGuessed = true};
    auto needs = NeedsOf(session, conventions);
    std::size_t number = 0;
    for (const orvo::File& file : session.files) {
        const ModelPath place = ModelPath() / &orvo::Session::files / number++;
        const MediaResult found = ReadMediaProperties(file.path);
        if (const auto* properties = std::get_if<MediaProperties>(&found)) {
            facts_[file.id] = {.frames = static_cast<std::int64_t>(properties->frames),
                               .sampleRate = std::max(properties->sampleRate, 1U),
                               .channels = std::max(properties->channels, 1U),
                               .exists = true};
        } else {
            const Need need = needs[file.id];
            facts_[file.id] = {.frames = need.frames,
                               .sampleRate = sampleRate,
                               .channels = need.channels,
                               .isGuessed = true,
                               .exists = std::get<MediaObstacle>(found) == MediaObstacle::Unknown};
            reporter.Add(orvo::Fidelity::Guessed, place,
                         "the length, rate and channels of the media are unknown",
                         fmt::format("{} samples at {} Hz, {} channels", need.frames, sampleRate,
                                     need.channels));
        }
    }
}

const MediaFact& MediaFacts::Of(std::uint32_t fileId) const {
    const auto fact = facts_.find(fileId);
    return fact != facts_.end() ? fact->second : unknown_;
}

}  // namespace toolkit::interchange
