#include "toolkit/ClipSummary.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include <orvo/Lookup.h>
#include "toolkit/TrackSummary.h"

namespace toolkit {
namespace {

using ClipKey = std::pair<kelcore::uint32, kelcore::uint32>;  // track, clip

class Context {
public:
    Context(const orvo::Session& session, const std::vector<MediaSummary>& media) {
        for (const MediaSummary& file : media) {
            isFound_.emplace(file.id, file.found);
        }
        for (const orvo::ClipGroup& group : session.clipGroups) {
            for (const orvo::ClipGroupItem& item : group.items) {
                Join(groups_[{item.trackId, item.clipId}], NameOf(group));
            }
        }
    }

    /// What a person should know about a clip's media; null if they are there.
    const char* MarkOfMedia(kelcore::uint32 fileId) const {
        const auto file = isFound_.find(fileId);
        if (file == isFound_.end()) {
            return "no media";
        }
        return file->second ? nullptr : "missing";
    }

    std::string GroupsOf(const ClipKey& key) const {
        const auto groups = groups_.find(key);
        return groups != groups_.end() ? groups->second : std::string();
    }

private:
    static std::string NameOf(const orvo::ClipGroup& group) {
        return group.name.empty() ? "group " + std::to_string(group.id) : group.name;
    }

    static void Join(std::string& list, const std::string& name) {
        list += list.empty() ? name : ", " + name;
    }

    std::map<kelcore::uint32, bool> isFound_;
    std::map<ClipKey, std::string> groups_;
};

template <class Track, class Clip>
ClipSummary Begin(const Track& track, const Clip& clip, const Context& context) {
    ClipSummary summary;
    summary.trackId = track.id;
    summary.trackName = track.name;
    summary.id = clip.id;
    summary.name = clip.name;
    summary.start = clip.startPoint;
    summary.duration = clip.duration;
    summary.group = context.GroupsOf({track.id, clip.id});
    return summary;
}

void MarkIf(ClipSummary& summary, bool holds, std::string mark) {
    if (holds) {
        summary.marks.push_back(std::move(mark));
    }
}

bool Fades(const std::optional<orvo::Fade>& fade) {
    return fade && fade->startPoint != fade->endPoint;
}

/// A map that feeds every channel from the one of the same number changes nothing.
bool MapsChannels(const orvo::AudioClip& clip) {
    return std::any_of(
        clip.channelSources.begin(), clip.channelSources.end(),
        [](const auto& entry) { return static_cast<kelcore::int64>(entry.second) != entry.first; });
}

ClipSummary Summarise(const orvo::AudioTrack& track, const orvo::AudioClip& clip,
                      const Context& context) {
    ClipSummary summary = Begin(track, clip, context);
    summary.fileId = clip.fileId;
    summary.sourceInPoint = clip.sourceInPoint;
    if (const char* const mark = context.MarkOfMedia(clip.fileId)) {
        summary.marks.emplace_back(mark);
    }
    MarkIf(summary, clip.offline, "offline");
    MarkIf(summary, IsSwitchedOn(clip.mute), "muted");
    MarkIf(summary, clip.lockedInTime, "locked");
    MarkIf(summary, clip.looped, "looped");
    MarkIf(summary, clip.stretch && clip.stretch->stretchMode != orvo::StretchMode::Off,
           "stretched");
    MarkIf(summary, Fades(clip.fadeIn) || Fades(clip.fadeOut), "fades");
    MarkIf(summary,
           clip.crossFadeHeadClipId != orvo::kNone || clip.crossFadeTailClipId != orvo::kNone,
           "crossfades");
    MarkIf(summary, !clip.takes.empty(), "takes " + std::to_string(clip.takes.size()));
    MarkIf(summary, MapsChannels(clip), "channel map");
    MarkIf(summary, clip.effectsRack && !clip.effectsRack->slots.empty(), "effects");
    MarkIf(summary, CountAutomation(clip).lanes != 0, "automation");
    return summary;
}

ClipSummary Summarise(const orvo::AudioTrack& track, const orvo::MidiClip& clip,
                      const Context& context) {
    ClipSummary summary = Begin(track, clip, context);
    MarkIf(summary, clip.lockedInTime, "locked");
    MarkIf(summary, clip.events.empty(), "empty");
    return summary;
}

ClipSummary Summarise(const orvo::VideoTrack& track, const orvo::VideoClip& clip,
                      const Context& context) {
    ClipSummary summary = Begin(track, clip, context);
    summary.fileId = clip.fileId;
    summary.sourceInPoint = clip.sourceInPoint;
    if (const char* const mark = context.MarkOfMedia(clip.fileId)) {
        summary.marks.emplace_back(mark);
    }
    MarkIf(summary, clip.offline, "offline");
    MarkIf(summary, clip.lockedInTime, "locked");
    return summary;
}

template <class Track, class Clips>
void Append(std::vector<ClipSummary>& summaries, const Track& track, const Clips& clips,
            const Context& context) {
    for (const auto& clip : clips) {
        summaries.push_back(Summarise(track, clip, context));
    }
}

void SortFrom(std::vector<ClipSummary>& summaries, std::size_t first) {
    std::stable_sort(
        summaries.begin() + static_cast<std::ptrdiff_t>(first), summaries.end(),
        [](const ClipSummary& left, const ClipSummary& right) { return left.start < right.start; });
}

std::set<ClipKey> AllClips(const orvo::Session& session) {
    std::set<ClipKey> keys;
    orvo::ForEachClip(session, [&keys](const auto& track, const auto& clip) {
        keys.insert({track.id, clip.id});
    });
    return keys;
}

}  // namespace

std::vector<ClipSummary> SummariseClips(const orvo::Session& session,
                                        const std::vector<MediaSummary>& media) {
    const Context context(session, media);
    std::vector<ClipSummary> summaries;
    for (const orvo::VideoTrack* const track : orvo::VideoTracksInOrder(session)) {
        const std::size_t first = summaries.size();
        Append(summaries, *track, track->clips, context);
        SortFrom(summaries, first);
    }
    for (const orvo::AudioTrack* const track : orvo::AudioTracksInOrder(session)) {
        const std::size_t first = summaries.size();
        Append(summaries, *track, track->clips, context);
        Append(summaries, *track, track->midiClips, context);
        SortFrom(summaries, first);
    }
    return summaries;
}

std::vector<GroupSummary> SummariseGroups(const orvo::Session& session) {
    const std::set<ClipKey> clips = AllClips(session);
    std::vector<GroupSummary> summaries;
    for (const orvo::ClipGroup& group : session.clipGroups) {
        GroupSummary summary{group.id, group.name, group.items.size(), 0};
        summary.dangling = static_cast<std::size_t>(std::count_if(
            group.items.begin(), group.items.end(), [&](const orvo::ClipGroupItem& item) {
                return !clips.contains({item.trackId, item.clipId});
            }));
        summaries.push_back(summary);
    }
    return summaries;
}

}  // namespace toolkit
