#include "toolkit/interchange/otio/SessionBuilder.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>
#include <type_traits>
#include <unordered_set>
#include <utility>

#include "toolkit/Saturating.h"
#include "toolkit/interchange/ClipTime.h"
#include "toolkit/interchange/Fades.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/otio/Edges.h"
#include "toolkit/interchange/otio/MediaFiles.h"
#include "toolkit/interchange/otio/Metadata.h"
#include "toolkit/interchange/otio/TrackPlan.h"

namespace toolkit::interchange::otio {
namespace {

using orvo::AudioClip;
using orvo::AudioTrack;
using orvo::Fidelity;
using orvo::MidiClip;
using orvo::Session;
using orvo::VideoClip;
using orvo::VideoTrack;

/// The number of an own key; no value if it is none.
std::optional<std::int64_t> IntegerOf(const std::optional<Node>& own, std::string_view key,
                                      std::int64_t highest) {
    const ParsedJson* const value = own ? own->Find(key) : nullptr;
    return value != nullptr ? orvo::json::FindSigned(*value, 0, highest) : std::nullopt;
}

std::optional<Node> OwnOf(const Node& node) {
    const ParsedJson* const metadata = node.Find("metadata");
    if (metadata == nullptr || !metadata->is_object()) {
        return std::nullopt;
    }
    const auto own = metadata->find(kOwnKey);
    const std::optional<Node> holder = node.Object("metadata");
    return own != metadata->end() && own->is_object() ? holder->Object(kOwnKey) : std::nullopt;
}

/// The first rate of sound in a document, without its metadata.
double FirstSoundRate(const ParsedJson& value) {
    constexpr double kLeast = 8000;
    double found = 0;
    if (value.is_object()) {
        const auto rate = value.find("rate");
        if (rate != value.end() && rate->is_number() && rate->get<double>() >= kLeast) {
            return rate->get<double>();
        }
    }
    if (value.is_structured()) {
        for (const auto& [key, member] : value.items()) {
            if (found == 0 && !(value.is_object() && key == "metadata")) {
                found = FirstSoundRate(member);
            }
        }
    }
    return found;
}

/// A clip and what is still to be known of it.
template <class Clip>
struct Built {
    Clip clip{};
    bool hasId = false;
    bool hasOwn = false;
    std::size_t lane = 0;
    std::optional<std::int64_t> order{};
    const FoundClip* found = nullptr;
    const FoundClip* crossfadesWith = nullptr;
};

/// A track and what is still to be known of it.
template <class Track>
struct BuiltTrack {
    Track track{};
    bool hasId = false;
    bool hasOwn = false;
    std::optional<std::int64_t> position{};
    std::set<std::int64_t> lanes{};
    std::vector<Built<VideoClip>> videoClips{};
    std::vector<Built<AudioClip>> audioClips{};
    std::vector<Built<MidiClip>> midiClips{};
};

class Building {
public:
    Building(const FoundTimeline& found, std::uint32_t sampleRate, const Import& job)
        : found_(found), job_(job), samples_(*Rate::Of(sampleRate)) {
        TakeOwnSession();
        session_.sampleRate = sampleRate;
    }

    BuiltSession Run() {
        MediaFiles files(session_, job_.file.parent_path());
        files_ = &files;
        for (const FoundTrack& track : found_.tracks) {
            if (track.isVideo) {
                AddTrack(track, videoTracks_);
            } else {
                AddTrack(track, audioTracks_);
            }
            job_.Progress(0.6);
        }
        FinishTracks(videoTracks_, session_.videoTracks);
        FinishTracks(audioTracks_, session_.audioTracks);
        TakeMarkers();
        TakeStart();
        session_.duration = std::max(session_.duration, end_);
        return {.session = std::move(session_), .media = files.TakeRelative()};
    }

private:
    // The session

    void TakeOwnSession() {
        const std::optional<Node> own =
            found_.timeline ? OwnOf(*found_.timeline) : std::optional<Node>();
        if (!own) {
            return;
        }
        hasOwn_ = IntegerOf(own, "version", kMetadataVersion) == kMetadataVersion;
        if (!hasOwn_) {
            job_.reporter.Add(Fidelity::Lost, own->Place(), "it is of a version that is not known");
            return;
        }
        Take(*own, "session", session_);
        std::erase_if(session_.files,
                      [ids = std::unordered_set<std::uint32_t>()](const orvo::File& file) mutable {
                          return file.id == orvo::kNoId || !ids.insert(file.id).second;
                      });
    }

    /// Takes a value of the metadata; one that is wrong is reported and leaves `value` as it is.
    template <class Value>
    bool Take(const Node& own, std::string_view key, Value& value) {
        const ParsedJson* const json = own.Find(key);
        if (json == nullptr) {
            return false;
        }
        Value taken;
        try {
            DecodeInto(*json, taken);
        } catch (const orvo::json::WrongValue& wrong) {
            job_.reporter.Add(Fidelity::Lost, fmt::format("{}/{}", own.Place(), key),
                              "the metadata cannot be understood", wrong.what());
            return false;
        }
        value = std::move(taken);
        return true;
    }

    void TakeStart() {
        const std::optional<Node> time =
            found_.timeline ? found_.timeline->Object("global_start_time") : std::optional<Node>();
        if (!time) {
            return;
        }
        const std::int64_t start = Rounded(SamplesOf(*time, samples_).value_or(0));
        const std::int64_t own = session_.smpteStart;
        const bool isBeyond =
            std::abs(static_cast<double>(own)) >= static_cast<double>(kMostCounted);
        const auto difference = static_cast<double>(SaturatingDifference(start, own));
        if (!isBeyond && std::abs(difference) > ToleranceOf(*time)) {
            session_.smpteStart = start;
        }
    }

    /// Within how many samples a rounded time still says the same: none if it counts samples.
    double ToleranceOf(const Node& time) const {
        const std::optional<Rate> rate = Rate::Of(time.Number("rate").value_or(0));
        const auto samples = rate ? static_cast<double>(rate->To(samples_, 1)) : 1;
        return samples > 1 ? samples : 0;
    }

    void TakeMarkers() {
        const std::vector<Marker> known = MarkersOf(session_);
        std::vector<Marker> added;
        for (const FoundMarker& found : found_.markers) {
            Marker marker{.start = Rounded(found.start),
                          .duration = Rounded(found.duration),
                          .name = found.node.Text("name"),
                          .comment = found.node.Text("comment")};
            const double tolerance = MarkerTolerance(found.node);
            const bool isKnown = std::ranges::any_of(known, [&](const Marker& other) {
                return other.name == marker.name && other.comment == marker.comment &&
                       std::abs(static_cast<double>(other.start - marker.start)) <= tolerance;
            });
            if (!isKnown) {
                added.push_back(std::move(marker));
            }
        }
        if (!added.empty()) {
            session_.xmpMetadata = WithMarkers(session_.xmpMetadata, added, session_.sampleRate);
        }
    }

    double MarkerTolerance(const Node& marker) const {
        const std::optional<Node> range = marker.Object("marked_range");
        const std::optional<Node> start = range ? range->Object("start_time") : std::nullopt;
        return start ? ToleranceOf(*start) : 0;
    }

    // Tracks

    template <class Track>
    using Tracks = std::vector<BuiltTrack<Track>>;

    template <class Track>
    void AddTrack(const FoundTrack& found, Tracks<Track>& tracks) {
        const std::optional<Node> own =
            hasOwn_ && found.node ? OwnOf(*found.node) : std::optional<Node>();
        const auto id = IntegerOf(own, "trackId", orvo::kNoId - std::int64_t{1});
        const std::int64_t lane = IntegerOf(own, "lane", kMostCounted).value_or(1);
        const std::size_t place = PlaceOf(id, lane, tracks);
        BuiltTrack<Track>& built = tracks[place];
        if (built.lanes.empty()) {
            Begin(built, found, own, id);
        }
        built.lanes.insert(lane);
        AddClips(found, own, built, static_cast<std::size_t>(lane));
    }

    /// The track to which a lane belongs, or a new one.
    template <class Track>
    std::size_t PlaceOf(std::optional<std::int64_t> id, std::int64_t lane, Tracks<Track>& tracks) {
        auto& places = std::is_same_v<Track, VideoTrack> ? videoPlaces_ : audioPlaces_;
        if (id && lane > 1) {
            const auto known = places.find(*id);
            if (known != places.end() && !tracks[known->second].lanes.contains(lane)) {
                return known->second;
            }
        }
        tracks.emplace_back();
        if (id && lane == 1 && places.emplace(*id, tracks.size() - 1).second) {
            tracks.back().hasId = true;
        }
        return tracks.size() - 1;
    }

    template <class Track>
    void Begin(BuiltTrack<Track>& built, const FoundTrack& found, const std::optional<Node>& own,
               std::optional<std::int64_t> id) {
        built.hasOwn = own && Take(*own, "track", built.track);
        built.position = IntegerOf(own, "position", kMostCounted);
        built.track.name = found.name;
        if (built.hasId) {
            built.track.id = static_cast<std::uint32_t>(*id);
        }
        if constexpr (std::is_same_v<Track, AudioTrack>) {
            if (!built.hasOwn) {
                built.track.audioChannelType = orvo::ChannelType::Stereo;
            }
            SetMuted(built.track.mute, !found.isEnabled);
        }
    }

    static void SetMuted(std::optional<orvo::Component>& mute, bool isMuted) {
        if (IsMuted(mute) != isMuted) {
            (mute ? *mute : mute.emplace()).parameters[0].value = isMuted ? 1.0F : 0.0F;
        }
    }

    template <class Track>
    void AddClips(const FoundTrack& found, const std::optional<Node>& own, BuiltTrack<Track>& built,
                  std::size_t lane) {
        const ParsedJson* order = own ? own->Find("order") : nullptr;
        if (order != nullptr && (!order->is_array() || order->size() != found.clips.size())) {
            order = nullptr;
        }
        for (std::size_t i = 0; i < found.clips.size(); ++i) {
            const FoundClip& clip = found.clips[i];
            const auto place = order != nullptr
                                   ? orvo::json::FindSigned((*order)[i], 0, kMostCounted)
                                   : std::nullopt;
            const FoundClip* const before =
                clip.crossfadesWith ? &found.clips[*clip.crossfadesWith] : nullptr;
            const std::optional<Node> ownClip = hasOwn_ ? OwnOf(clip.node) : std::nullopt;
            if constexpr (std::is_same_v<Track, VideoTrack>) {
                Add(built.videoClips, "videoClip", ownClip, clip, lane, place, before);
            } else if (ownClip && ownClip->Find("midiClip") != nullptr) {
                Add(built.midiClips, "midiClip", ownClip, clip, lane, place, before);
            } else {
                Add(built.audioClips, "clip", ownClip, clip, lane, place, before);
            }
        }
    }

    // Clips

    template <class Clip>
    void Add(std::vector<Built<Clip>>& clips, std::string_view key, const std::optional<Node>& own,
             const FoundClip& found, std::size_t lane, std::optional<std::int64_t> order,
             const FoundClip* before) {
        Built<Clip>& built = clips.emplace_back();
        built.hasOwn = own && Take(*own, key, built.clip);
        built.hasId = built.hasOwn && clipIds_.insert(built.clip.id).second;
        built.lane = lane;
        built.order = order;
        built.found = &found;
        built.crossfadesWith = before;
        Clip& clip = built.clip;
        clip.name = found.node.Text("name");
        clip.startPoint = found.Start();
        clip.duration = found.End() - found.Start();
        clip.sourceInPoint = found.sourceIn - Rounded(found.head.reach * found.scalar);
        end_ = std::max(end_, found.End());
        if constexpr (!std::is_same_v<Clip, MidiClip>) {
            TakeFile(clip, found, built.hasOwn);
        }
        if constexpr (std::is_same_v<Clip, AudioClip>) {
            SetMuted(clip.mute, !found.isEnabled);
            TakeStretch(clip, found);
            TakeFades(built);
        } else if (!found.isEnabled) {
            job_.reporter.Add(Fidelity::Lost, found.node.Place(), "such a clip cannot be disabled");
        }
    }

    template <class Clip>
    void TakeFile(Clip& clip, const FoundClip& found, bool hasOwn) {
        clip.fileId = files_->Of(found.url, clip.fileId);
        if (found.isOffline || (!hasOwn && found.url.empty())) {
            clip.offline = true;
        }
        if (!hasOwn && found.url.empty()) {
            job_.reporter.Add(Fidelity::Lost, found.node.Place(),
                              "it names no media, so that the clip is offline");
        }
    }

    void TakeStretch(AudioClip& clip, const FoundClip& found) const {
        constexpr double kTolerance = 1e-12;
        const orvo::StretchMeaning meaning = job_.options.conventions.stretchRatio;
        const double own = 1 / StretchOf(clip, meaning);
        if (std::abs(own - found.scalar) <= kTolerance * found.scalar) {
            return;
        }
        orvo::ClipStretch& stretch = clip.stretch ? *clip.stretch : clip.stretch.emplace();
        if (found.scalar == 1) {
            stretch.stretchMode = orvo::StretchMode::Off;
            return;
        }
        if (stretch.stretchMode == orvo::StretchMode::Off) {
            stretch.stretchMode = orvo::StretchMode::Realtime;
        }
        stretch.stretchRatio =
            meaning == orvo::StretchMeaning::TimelineBySource ? 1 / found.scalar : found.scalar;
    }

    void TakeFades(Built<AudioClip>& built) {
        AudioClip& clip = built.clip;
        const FoundClip& found = *built.found;
        const FoundEdge& head = found.head;
        const FoundEdge& tail = found.tail;
        const std::int64_t item = clip.duration - (head.isCrossfade ? Rounded(head.reach) : 0) -
                                  (tail.isCrossfade ? Rounded(tail.reach) : 0);
        const Edges expected =
            EdgesOf(item, head.isCrossfade ? std::optional(Rounded(head.inside)) : std::nullopt,
                    tail.isCrossfade ? std::optional(Rounded(tail.inside)) : std::nullopt,
                    LengthOf(clip.fadeIn, clip.duration), LengthOf(clip.fadeOut, clip.duration));
        const double tolerance = ClipTolerance(found.node);
        const auto differs = [&](const FoundEdge& edge, std::int64_t own) {
            const auto shown = static_cast<double>(edge.reach + edge.inside);
            return std::abs(shown - static_cast<double>(own)) > tolerance;
        };
        const bool isNewHead = head.isCrossfade ? !built.hasOwn : differs(head, expected.head);
        const bool isNewTail = tail.isCrossfade ? !built.hasOwn : differs(tail, expected.tail);
        const std::int64_t headLength = Rounded(head.reach + head.inside);
        const std::int64_t tailLength = Rounded(tail.reach + tail.inside);
        if (isNewHead) {
            Change(clip.fadeIn, MakeFadeIn(headLength), headLength);
        }
        if (isNewTail) {
            Change(clip.fadeOut, MakeFadeOut(tailLength, clip.duration), tailLength);
        }
    }

    static std::int64_t LengthOf(const std::optional<orvo::Fade>& fade, std::int64_t duration) {
        return fade ? std::clamp<std::int64_t>(
                          SaturatingDifference(fade->endPoint, fade->startPoint), 0, duration)
                    : 0;
    }

    /// Gives a fade another length and keeps its curve.
    static void Change(std::optional<orvo::Fade>& fade, orvo::Fade changed, std::int64_t length) {
        if (length == 0) {
            fade.reset();
            return;
        }
        if (fade) {
            changed.type = fade->type;
            changed.shape = fade->shape;
            changed.crossFadeLinkType = fade->crossFadeLinkType;
        }
        fade = changed;
    }

    double ClipTolerance(const Node& clip) const {
        const std::optional<Node> range = clip.Object("source_range");
        const std::optional<Node> time = range ? range->Object("duration") : std::nullopt;
        return time ? ToleranceOf(*time) : 0;
    }

    // At last

    template <class Track>
    void FinishTracks(Tracks<Track>& tracks, std::vector<Track>& finished) {
        const bool hasPositions = std::ranges::all_of(
            tracks, [](const auto& built) { return built.hasOwn && built.position.has_value(); });
        std::uint32_t index = 0;
        for (BuiltTrack<Track>& built : tracks) {
            if (!built.hasOwn) {
                built.track.index = index;
            }
            ++index;
            if (!built.hasId) {
                auto& places = std::is_same_v<Track, VideoTrack> ? videoPlaces_ : audioPlaces_;
                while (videoPlaces_.contains(nextTrackId_) || audioPlaces_.contains(nextTrackId_)) {
                    ++nextTrackId_;
                }
                places.emplace(nextTrackId_, 0);
                built.track.id = static_cast<std::uint32_t>(nextTrackId_);
            }
            FinishClips(built);
        }
        if (hasPositions) {
            std::ranges::stable_sort(tracks, {}, [](const auto& built) { return *built.position; });
        }
        for (BuiltTrack<Track>& built : tracks) {
            finished.push_back(std::move(built.track));
        }
        if constexpr (std::is_same_v<Track, AudioTrack>) {
            MoveClipsOffMasters(finished);
        }
    }

    void FinishClips(BuiltTrack<VideoTrack>& built) {
        FinishList(built.videoClips, built.track.clips);
    }

    void FinishClips(BuiltTrack<AudioTrack>& built) {
        GiveIds(built.audioClips);
        LinkCrossfades(built.audioClips);
        FinishList(built.audioClips, built.track.clips);
        FinishList(built.midiClips, built.track.midiClips);
    }

    template <class Clip>
    void GiveIds(std::vector<Built<Clip>>& clips) {
        for (Built<Clip>& built : clips) {
            if (built.hasId) {
                continue;
            }
            while (!clipIds_.insert(nextClipId_).second) {
                ++nextClipId_;
            }
            built.clip.id = nextClipId_;
            built.hasId = true;
        }
    }

    /// Sorts clips and appends them to those that stood in the metadata only.
    template <class Clip>
    void FinishList(std::vector<Built<Clip>>& clips, std::vector<Clip>& list) {
        GiveIds(clips);
        const bool isOrdered =
            std::ranges::all_of(clips, [](const auto& built) { return built.order.has_value(); });
        std::ranges::stable_sort(clips, {}, [&](const Built<Clip>& built) {
            return isOrdered ? std::tuple(*built.order, std::size_t{0})
                             : std::tuple(built.clip.startPoint, built.lane);
        });
        for (Built<Clip>& built : clips) {
            list.push_back(std::move(built.clip));
        }
    }

    static void LinkCrossfades(std::vector<Built<AudioClip>>& clips) {
        std::map<const FoundClip*, Built<AudioClip>*> byFound;
        for (Built<AudioClip>& built : clips) {
            byFound.emplace(built.found, &built);
        }
        for (Built<AudioClip>& second : clips) {
            const auto found = byFound.find(second.crossfadesWith);
            if (found == byFound.end()) {
                continue;
            }
            Built<AudioClip>& first = *found->second;
            const auto firstId = static_cast<std::int32_t>(first.clip.id);
            const auto secondId = static_cast<std::int32_t>(second.clip.id);
            const bool isKnown = first.clip.crossFadeTailClipId == secondId ||
                                 second.clip.crossFadeHeadClipId == firstId ||
                                 (first.hasOwn && second.hasOwn && first.clip.autoCrossfade &&
                                  second.clip.autoCrossfade);
            if (!isKnown) {
                first.clip.crossFadeTailClipId = secondId;
                second.clip.crossFadeHeadClipId = firstId;
            }
        }
    }

    /// Session files keep no clips of masters and no audio of instruments.
    void MoveClipsOffMasters(std::vector<AudioTrack>& tracks) {
        const std::size_t count = tracks.size();
        for (std::size_t i = 0; i < count; ++i) {
            const bool keepsNone = tracks[i].kind == orvo::TrackKind::Master ||
                                   tracks[i].kind == orvo::TrackKind::Instrument;
            if (!keepsNone || tracks[i].clips.empty()) {
                continue;
            }
            job_.reporter.Add(Fidelity::Moved, ModelPath() / &Session::audioTracks / i,
                              "its clips are on a new track, because session files keep none there",
                              tracks[i].name);
            while (videoPlaces_.contains(nextTrackId_) || audioPlaces_.contains(nextTrackId_)) {
                ++nextTrackId_;
            }
            audioPlaces_.emplace(nextTrackId_, 0);
            AudioTrack added{.id = static_cast<std::uint32_t>(nextTrackId_),
                             .index = static_cast<std::uint32_t>(tracks.size()),
                             .name = tracks[i].name,
                             .audioChannelType = orvo::ChannelType::Stereo,
                             .clips = std::move(tracks[i].clips)};
            tracks[i].clips.clear();
            tracks.push_back(std::move(added));
        }
    }

    const FoundTimeline& found_;
    const Import& job_;
    Rate samples_;
    bool hasOwn_ = false;
    Session session_;
    MediaFiles* files_ = nullptr;
    Tracks<VideoTrack> videoTracks_;
    Tracks<AudioTrack> audioTracks_;
    std::map<std::int64_t, std::size_t> videoPlaces_;  // by the tracks' ids
    std::map<std::int64_t, std::size_t> audioPlaces_;
    std::unordered_set<std::uint32_t> clipIds_;
    std::int64_t nextTrackId_ = 1;
    std::uint32_t nextClipId_ = 1;
    std::int64_t end_ = 0;
};

}  // namespace

std::uint32_t SampleRateOf(const Node& top, const Import& job) {
    const std::optional<Node> own = OwnOf(top);
    constexpr std::int64_t kMost = 1'000'000'000;
    if (const auto rate = IntegerOf(own, "sampleRate", kMost); rate && *rate > 0) {
        return static_cast<std::uint32_t>(*rate);
    }
    const double found = FirstSoundRate(top.Value());
    const bool isWhole = found > 0 && found <= kMost && found == std::floor(found);
    const std::uint32_t rate =
        isWhole ? static_cast<std::uint32_t>(found) : std::max(job.options.sampleRate, 1U);
    job.reporter.Add(Fidelity::Guessed, ModelPath() / &Session::sampleRate,
                     isWhole ? "it is that of the first sound" : "the file does not say it",
                     fmt::format("{}", rate));
    return rate;
}

BuiltSession BuildSession(const FoundTimeline& found, std::uint32_t sampleRate, const Import& job) {
    return Building(found, sampleRate, job).Run();
}

}  // namespace toolkit::interchange::otio
