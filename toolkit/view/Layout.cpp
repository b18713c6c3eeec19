#include <orvo/Layout.h>

#include <fnmatch.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <orvo/Lookup.h>
#include "session/MemberKey.h"
#include "toolkit/ClipSummary.h"
#include "toolkit/Saturating.h"
#include "toolkit/SessionSummary.h"
#include "toolkit/TrackSummary.h"
#include "toolkit/media/MediaFile.h"
#include "toolkit/view/FadeCurves.h"
#include "toolkit/view/Lanes.h"

namespace orvo {
namespace {

using toolkit::SaturatingDifference;
using toolkit::SaturatingSum;
using toolkit::TrackSummary;

std::optional<double> AngleOf(double hue) {
    constexpr double kCircle = 360;
    return hue >= 0 && std::isfinite(hue) ? std::optional(std::fmod(hue, kCircle)) : std::nullopt;
}

/// What stores no hue has the default one, which is not a choice of colour.
template <class Thing>
std::optional<double> HueOf(const Thing& thing) {
    static const double kDefault = Thing().hue;
    return thing.hue != kDefault ? AngleOf(thing.hue) : std::nullopt;
}

RowKind KindOf(const std::optional<TrackKind>& kind) {
    if (!kind) {
        return RowKind::Video;
    }
    switch (*kind) {
        case TrackKind::Bus:
            return RowKind::Bus;
        case TrackKind::Master:
            return RowKind::Master;
        case TrackKind::Metronome:
            return RowKind::Metronome;
        case TrackKind::Instrument:
            return RowKind::Instrument;
        case TrackKind::Audio:
            break;
    }
    return RowKind::Audio;
}

bool Fits(const std::string& name, const std::string& pattern) {
    return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

std::size_t EffectsIn(const std::optional<EffectsRack>& rack) {
    return rack ? static_cast<std::size_t>(std::ranges::count_if(
                      rack->slots, [](const auto& slot) { return slot && slot->component; }))
                : 0;
}

/// The largest range that a session can have.
struct Extent {
    std::int64_t begin = 0;
    std::int64_t end = 0;

    void Include(std::int64_t from, std::int64_t to) {
        begin = std::min(begin, from);
        end = std::max(end, to);
    }
};

Extent ExtentOf(const Session& session) {
    Extent extent{0, std::max<std::int64_t>(session.duration, 0)};
    ForEachClip(session, [&extent](const auto& /*track*/, const auto& clip) {
        extent.Include(clip.startPoint, SaturatingSum(clip.startPoint, clip.duration));
    });
    return extent;
}

/// A range that is not empty.
void SetRange(const Session& session, const LayoutOptions& options, Layout& layout) {
    const Extent extent = ExtentOf(session);
    layout.end = extent.end;
    layout.from = options.from.value_or(extent.begin);
    layout.to = options.to.value_or(extent.end);
    if (layout.to <= layout.from) {
        const std::int64_t second = std::max<std::int64_t>(session.sampleRate, 1);
        layout.from = std::min(layout.from, std::numeric_limits<std::int64_t>::max() - second);
        layout.to = layout.from + second;
    }
}

/// Makes the rows of a layout whose range is known.
class Rows {
public:
    Rows(const Session& session, const LayoutOptions& options, Layout& layout)
        : session_(session), options_(options), layout_(layout) {
        AddMedia();
        AddGroups();
    }

    void AddAll() {
        std::vector<TrackSummary> summaries = toolkit::SummariseTracks(session_);
        auto summary = summaries.begin();
        for (const VideoTrack* const track : VideoTracksInOrder(session_)) {
            Add(*track, *summary++,
                PathOf(KeyOf(&Session::videoTracks), session_.videoTracks, track));
        }
        for (const AudioTrack* const track : AudioTracksInOrder(session_)) {
            Add(*track, *summary++, PathOf(track));
        }
        layout_.curves = curves_.Take();
    }

private:
    void AddMedia() {
        for (const auto& file : toolkit::Summarise(session_, toolkit::IsMediaFile).media) {
            media_.try_emplace(file.id, layout_.media.size());
            layout_.media.push_back({file.id, file.path, file.found});
        }
    }

    void AddGroups() {
        for (const ClipGroup& group : session_.clipGroups) {
            for (const ClipGroupItem& item : group.items) {
                groups_.try_emplace({item.trackId, item.clipId}, layout_.groups.size());
            }
            layout_.groups.push_back({group.id, group.name, HueOf(group)});
        }
    }

    template <class Track>
    static std::string PathOf(std::string_view key, const std::vector<Track>& tracks,
                              const Track* track) {
        return "/" + std::string(key) + "/" + std::to_string(track - tracks.data());
    }

    std::string PathOf(const AudioTrack* track) const {
        const auto& metronome = session_.metronome.track;
        if (metronome && track == &*metronome) {
            return "/" + std::string(KeyOf(&Session::metronome)) + "/" +
                   std::string(KeyOf(&Metronome::track));
        }
        return PathOf(KeyOf(&Session::audioTracks), session_.audioTracks, track);
    }

    /// The facts that tracks of both sides have.
    template <class Track>
    static LayoutRow RowOf(const Track& track, TrackSummary& summary, std::string path) {
        return {.kind = KindOf(summary.kind),
                .id = track.id,
                .path = std::move(path),
                .name = track.name,
                .channels = summary.audioChannelType,
                .output = std::move(summary.output),
                .hue = HueOf(track),
                .muted = summary.muted,
                .solo = summary.solo,
                .armed = summary.recordArmed,
                .hidden = !summary.visible,
                .selected = track.selected,
                .sends = summary.sends.size()};
    }

    void Add(const VideoTrack& track, TrackSummary& summary, std::string path) {
        if (Fits(track.name, options_.tracks)) {
            LayoutRow row = RowOf(track, summary, std::move(path));
            AddBoxes(track, track.clips, row);
            Finish(row);
        }
    }

    void Add(const AudioTrack& track, TrackSummary& summary, std::string path) {
        if (!Fits(track.name, options_.tracks)) {
            return;
        }
        LayoutRow row = RowOf(track, summary, std::move(path));
        row.effects = EffectsIn(track.effectsRack);
        AddBoxes(track, track.clips, row);
        AddBoxes(track, track.midiClips, row);
        if (options_.lanes) {
            row.lanes = toolkit::LanesOf(track);
        }
        Finish(row);
    }

    template <class Track, class Clip>
    void AddBoxes(const Track& track, const std::vector<Clip>& clips, LayoutRow& row) {
        for (const Clip& clip : clips) {
            const std::int64_t end =
                std::max(clip.startPoint, SaturatingSum(clip.startPoint, clip.duration));
            if (end < layout_.from || clip.startPoint >= layout_.to ||
                (end == layout_.from && clip.startPoint < end)) {
                continue;
            }
            LayoutBox box{.id = clip.id,
                          .index = static_cast<std::size_t>(&clip - clips.data()),
                          .name = clip.name,
                          .start = clip.startPoint,
                          .end = end,
                          .hue = HueOf(clip),
                          .sourceStart = clip.sourceInPoint,
                          .locked = clip.lockedInTime,
                          .selected = clip.selected};
            if (const auto group = groups_.find({track.id, clip.id}); group != groups_.end()) {
                box.group = group->second;
            }
            SetKind(clip, box);
            orders_.push_back(OrderOf(clip));
            row.boxes.push_back(std::move(box));
        }
    }

    static std::int32_t OrderOf(const MidiClip& /*clip*/) { return 0; }
    template <class Clip>
    static std::int32_t OrderOf(const Clip& clip) {
        return clip.zOrder;
    }

    static void SetKind(const MidiClip& /*clip*/, LayoutBox& box) { box.kind = BoxKind::Midi; }

    void SetKind(const VideoClip& clip, LayoutBox& box) const {
        box.kind = BoxKind::Video;
        box.offline = clip.offline;
        box.media = MediaOf(clip.fileId);
    }

    void SetKind(const AudioClip& clip, LayoutBox& box) {
        box.media = MediaOf(clip.fileId);
        box.looped = clip.looped;
        box.offline = clip.offline;
        box.muted = toolkit::IsSwitchedOn(clip.mute);
        box.takes = clip.takes;
        box.effects = EffectsIn(clip.effectsRack);
        if (clip.stretch && clip.stretch->stretchMode != StretchMode::Off) {
            const double ratio = clip.stretch->stretchRatio;
            box.stretched = true;
            box.speed = ratio > 0 && std::isfinite(1 / ratio) ? 1 / ratio : 1;
        }
        box.fadeIn = FadeOf(clip.fadeIn, box);
        box.fadeOut = FadeOf(clip.fadeOut, box);
        if (options_.lanes) {
            box.lanes = toolkit::LanesOf(clip, clip.startPoint);
        }
        links_.push_back({clip.crossFadeHeadClipId, clip.crossFadeTailClipId});
    }

    std::optional<std::size_t> MediaOf(std::uint32_t fileId) const {
        const auto found = media_.find(fileId);
        return found != media_.end() ? std::optional(found->second) : std::nullopt;
    }

    std::optional<LayoutFade> FadeOf(const std::optional<Fade>& fade, const LayoutBox& box) {
        if (!fade) {
            return std::nullopt;
        }
        const std::int64_t length = std::min(SaturatingDifference(fade->endPoint, fade->startPoint),
                                             SaturatingDifference(box.end, box.start));
        return length > 0 ? std::optional(LayoutFade{length, curves_.NumberOf(fade->type)})
                          : std::nullopt;
    }

    void Finish(LayoutRow& row) {
        LinkCrossfades(row);
        Stack(row);
        orders_.clear();
        links_.clear();
        layout_.rows.push_back(std::move(row));
    }

    /// A crossfade is a link from either side between two clips of which the later one begins
    /// within the earlier one.
    void LinkCrossfades(LayoutRow& row) const {
        std::unordered_map<std::int64_t, std::size_t> boxes;
        for (std::size_t i = 0; i < links_.size(); ++i) {
            boxes.try_emplace(row.boxes[i].id, i);
        }
        const auto link = [&](std::size_t first, std::int32_t id, bool isTail) {
            const auto other = boxes.find(static_cast<std::uint32_t>(id));
            if (id < 0 || other == boxes.end() || other->second == first) {
                return;
            }
            LayoutBox& earlier = row.boxes[isTail ? first : other->second];
            const LayoutBox& later = row.boxes[isTail ? other->second : first];
            if (earlier.start <= later.start && later.start < earlier.end) {
                earlier.crossfadesInto = isTail ? other->second : first;
            }
        };
        for (std::size_t i = 0; i < links_.size(); ++i) {
            link(i, links_[i].tail, true);
            link(i, links_[i].head, false);
        }
    }

    /// Puts what covers others behind them in the list.
    void Stack(LayoutRow& row) const {
        std::vector<std::size_t> order(row.boxes.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::ranges::stable_sort(order, {}, [this](std::size_t i) { return orders_[i]; });
        std::vector<std::size_t> places(order.size());
        std::vector<LayoutBox> boxes;
        for (std::size_t place = 0; place < order.size(); ++place) {
            places[order[place]] = place;
            boxes.push_back(std::move(row.boxes[order[place]]));
        }
        for (LayoutBox& box : boxes) {
            if (box.crossfadesInto) {
                box.crossfadesInto = places[*box.crossfadesInto];
            }
        }
        row.boxes = std::move(boxes);
    }

    struct Links {
        std::int32_t head;
        std::int32_t tail;
    };

    const Session& session_;
    const LayoutOptions& options_;
    Layout& layout_;
    toolkit::FadeCurves curves_;
    std::unordered_map<std::uint32_t, std::size_t> media_;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> groups_;
    std::vector<std::int32_t> orders_;  // of the boxes of the row that is being made
    std::vector<Links> links_;          // of its audio clips, which come first
};

}  // namespace

Layout MakeLayout(const Session& session, const LayoutOptions& options) {
    Layout layout{.sampleRate = session.sampleRate,
                  .channels = session.audioChannelType,
                  .bitDepth = session.bitDepth,
                  .timeFormat = session.timeFormat,
                  .musicalTime = session.musicalTime,
                  .cursor = session.ctiPosition,
                  .selection = session.selection};
    SetRange(session, options, layout);
    Rows(session, options, layout).AddAll();
    return layout;
}

}  // namespace orvo
