#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <numeric>
#include <string>
#include <string_view>
#include <unordered_map>

#include <orvo/Diff.h>
#include <orvo/Lookup.h>
#include "toolkit/diff/Pairing.h"

namespace orvo {
namespace {

using diff::Pairing;

/// The traits that two things must share, as numbers; texts as their hashes.
template <std::size_t Size>
struct NumberKey {
    std::array<std::uint64_t, Size> numbers;

    struct Hash {
        std::size_t operator()(const NumberKey& key) const {
            std::uint64_t hash = 0;
            for (const std::uint64_t number : key.numbers) {
                constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
                hash = (hash ^ number) * kOdd;
                hash ^= hash >> 32U;
            }
            return hash;
        }
    };
    friend bool operator==(const NumberKey&, const NumberKey&) = default;
};

template <class... Traits>
std::optional<NumberKey<sizeof...(Traits)>> KeyOfTraits(Traits... traits) {
    return NumberKey<sizeof...(Traits)>{{static_cast<std::uint64_t>(traits)...}};
}

std::uint64_t HashOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

/// Passes over two lists with the same traits of both.
template <class Thing, class... KeyFunctions>
ListMatch MatchLists(const std::vector<Thing>& before, const std::vector<Thing>& after,
                     const KeyFunctions&... keys) {
    Pairing pairing(before.size(), after.size());
    const auto pass = [&](const auto& key) {
        if (!pairing.IsComplete()) {
            pairing.Pass([&](std::size_t i) { return key(before[i]); },
                         [&](std::size_t i) { return key(after[i]); });
        }
    };
    (pass(keys), ...);
    return pairing.Result();
}

ListMatch MatchFiles(const Session& before, const Session& after) {
    return MatchLists(
        before.files, after.files,
        [](const File& file) { return KeyOfTraits(HashOf(file.path), file.id); },
        [](const File& file) { return KeyOfTraits(HashOf(file.path)); },
        [](const File& file) { return KeyOfTraits(file.id); });
}

/// Things with an id and a name.
template <class Named>
ListMatch MatchNamed(const std::vector<Named>& before, const std::vector<Named>& after) {
    return MatchLists(
        before, after, [](const Named& one) { return KeyOfTraits(HashOf(one.name), one.id); },
        [](const Named& one) { return KeyOfTraits(HashOf(one.name)); },
        [](const Named& one) { return KeyOfTraits(one.id); });
}

// The media of clips

/// For each session, the media that an id means: a number that both share for a file that is the
/// same.
class MediaNumbers {
public:
    MediaNumbers(const std::vector<File>& files, const std::vector<File>& others,
                 const ListMatch& match) {
        std::uint64_t next = 0;
        for (const auto& [before, after] : match.same) {
            before_.try_emplace(files[before].id, next);
            after_.try_emplace(others[after].id, next++);
        }
        for (const std::size_t file : match.removed) {
            before_.try_emplace(files[file].id, next++);
        }
        for (const std::size_t file : match.added) {
            after_.try_emplace(others[file].id, next++);
        }
    }

    std::uint64_t Before(std::uint32_t fileId) const { return Find(before_, fileId); }
    std::uint64_t After(std::uint32_t fileId) const { return Find(after_, fileId); }

private:
    using Numbers = std::unordered_map<std::uint32_t, std::uint64_t>;

    /// An id that no file has stands for itself.
    static std::uint64_t Find(const Numbers& numbers, std::uint32_t fileId) {
        constexpr std::uint64_t kNoFile = 1ULL << 40U;
        const auto found = numbers.find(fileId);
        return found == numbers.end() ? kNoFile + fileId : found->second;
    }

    Numbers before_;
    Numbers after_;
};

/// A clip with what it is matched by.
template <class Clip>
struct Candidate {
    const Clip* clip;
    ClipPlace place;
    std::uint64_t media;
    std::uint64_t track;  ///< a number that both sessions share for the same track
};

std::uint64_t MediaOf(const MidiClip& clip, const MediaNumbers&, bool) {
    return HashOf({reinterpret_cast<const char*>(clip.events.data()), clip.events.size()});
}

template <class Clip>
std::uint64_t MediaOf(const Clip& clip, const MediaNumbers& media, bool isAfter) {
    return isAfter ? media.After(clip.fileId) : media.Before(clip.fileId);
}

/// The difference as a number for comparison; it wraps around.
std::uint64_t Distance(std::int64_t from, std::int64_t to) {
    return static_cast<std::uint64_t>(to) - static_cast<std::uint64_t>(from);
}

/// Where the media would start on the timeline. Trimming keeps it.
template <class Clip>
std::uint64_t Alignment(const Clip& clip) {
    return Distance(clip.sourceInPoint, clip.startPoint);
}

template <class Clip>
bool Overlap(const Clip& one, const Clip& other) {
    const std::int64_t first = std::min(one.sourceInPoint, other.sourceInPoint);
    const Clip& earlier = one.sourceInPoint == first ? one : other;
    const Clip& later = one.sourceInPoint == first ? other : one;
    return Distance(earlier.sourceInPoint, later.sourceInPoint) <
           static_cast<std::uint64_t>(std::max<std::int64_t>(earlier.duration, 0));
}

template <class Clip>
class ClipMatching {
public:
    using Candidates = std::vector<Candidate<Clip>>;

    ClipMatching(const Candidates& before, const Candidates& after)
        : before_(before), after_(after), pairing_(before.size(), after.size()) {}

    ClipMatch Match() {
        using C = Candidate<Clip>;
        const auto region = [](const C& c) { return HashOfRegion(c); };
        const auto name = [](const C& c) { return HashOf(c.clip->name); };
        // It stayed where it is.
        Pass([&](const C& c) {
            return KeyOfTraits(c.track, region(c), c.clip->startPoint, c.clip->id, name(c));
        });
        Pass([&](const C& c) {
            return KeyOfTraits(c.track, region(c), c.clip->startPoint, name(c));
        });
        Pass([&](const C& c) { return KeyOfTraits(c.track, region(c), c.clip->startPoint); });
        // It moved on its track.
        Pass([&](const C& c) { return KeyOfTraits(c.track, region(c), c.clip->id, name(c)); });
        Pass([&](const C& c) { return KeyOfTraits(c.track, region(c), name(c)); });
        // It was trimmed or split.
        Pass(
            [&](const C& c) {
                return KeyOfTraits(c.track, c.media, Alignment(*c.clip), c.clip->id);
            },
            Overlaps());
        // It moved to another track.
        Pass([&](const C& c) { return KeyOfTraits(region(c), c.clip->startPoint, c.clip->id); });
        Pass([&](const C& c) { return KeyOfTraits(region(c), c.clip->startPoint, name(c)); });
        Pass([&](const C& c) { return KeyOfTraits(region(c), c.clip->id, name(c)); });
        Pass([&](const C& c) { return KeyOfTraits(region(c), name(c)); });
        // It was trimmed, and its id says nothing.
        Pass([&](const C& c) { return KeyOfTraits(c.track, c.media, Alignment(*c.clip)); },
             Overlaps());
        Pass([&](const C& c) { return KeyOfTraits(c.track, region(c)); });
        Pass([&](const C& c) { return KeyOfTraits(c.track, c.media, c.clip->id); });
        // It plays something else in the same place.
        Pass([&](const C& c) { return KeyOfTraits(c.track, c.clip->id, c.clip->startPoint); });
        Pass([&](const C& c) { return KeyOfTraits(c.track, c.clip->id, name(c)); });
        Pass([&](const C& c) {
            return KeyOfTraits(c.track, c.clip->startPoint, c.clip->duration, name(c));
        });
        return Places(pairing_.Result());
    }

private:
    static std::uint64_t HashOfRegion(const Candidate<Clip>& candidate) {
        return typename NumberKey<3>::Hash()(
            *KeyOfTraits(candidate.media, candidate.clip->sourceInPoint, candidate.clip->duration));
    }

    auto Overlaps() const {
        return [this](std::size_t before, std::size_t after) {
            return Overlap(*before_[before].clip, *after_[after].clip);
        };
    }

    template <class Key, class... Condition>
    void Pass(const Key& key, const Condition&... condition) {
        if (!pairing_.IsComplete()) {
            pairing_.Pass([&](std::size_t i) { return key(before_[i]); },
                          [&](std::size_t i) { return key(after_[i]); }, condition...);
        }
    }

    ClipMatch Places(const ListMatch& match) const {
        ClipMatch places;
        for (const auto& [before, after] : match.same) {
            places.same.emplace_back(before_[before].place, after_[after].place);
        }
        for (const std::size_t before : match.removed) {
            places.removed.push_back(before_[before].place);
        }
        for (const std::size_t after : match.added) {
            places.added.push_back(after_[after].place);
        }
        return places;
    }

    const Candidates& before_;
    const Candidates& after_;
    Pairing pairing_;
};

// Tracks

template <class Track>
using Tracks = std::vector<const Track*>;

Tracks<AudioTrack> AudioTracksOf(const Session& session) {
    Tracks<AudioTrack> tracks;
    ForEachAudioTrack(session, [&](const AudioTrack& track) { tracks.push_back(&track); });
    return tracks;
}

Tracks<VideoTrack> VideoTracksOf(const Session& session) {
    Tracks<VideoTrack> tracks;
    for (const VideoTrack& track : session.videoTracks) {
        tracks.push_back(&track);
    }
    return tracks;
}

std::uint64_t KindOf(const AudioTrack& track) {
    return static_cast<std::uint64_t>(track.kind);
}
std::uint64_t KindOf(const VideoTrack&) {
    return 0;
}

/// The regions that a track plays. Two tracks that share half of them are one.
template <class Track>
std::vector<std::uint64_t> RegionsOf(const Track& track, const MediaNumbers& media, bool isAfter) {
    std::vector<std::uint64_t> regions;
    for (const auto& clip : track.clips) {
        regions.push_back(typename NumberKey<3>::Hash()(
            *KeyOfTraits(MediaOf(clip, media, isAfter), clip.sourceInPoint, clip.duration)));
    }
    std::sort(regions.begin(), regions.end());
    return regions;
}

bool ShareHalf(const std::vector<std::uint64_t>& one, const std::vector<std::uint64_t>& other) {
    std::vector<std::uint64_t> common;
    std::set_intersection(one.begin(), one.end(), other.begin(), other.end(),
                          std::back_inserter(common));
    return !common.empty() && common.size() * 2 >= std::max(one.size(), other.size());
}

template <class Track>
void PairByContent(const Tracks<Track>& before, const Tracks<Track>& after,
                   const MediaNumbers& media, Pairing& pairing) {
    std::vector<std::vector<std::uint64_t>> regions(after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (!pairing.IsTaken(i)) {
            regions[i] = RegionsOf(*after[i], media, true);
        }
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (pairing.PartnerOf(i)) {
            continue;
        }
        const auto mine = RegionsOf(*before[i], media, false);
        for (std::size_t j = 0; j < after.size(); ++j) {
            if (!pairing.IsTaken(j) && KindOf(*before[i]) == KindOf(*after[j]) &&
                ShareHalf(mine, regions[j])) {
                pairing.Pair(i, j);
                break;
            }
        }
    }
}

template <class Track>
void PairByNameAndId(const Tracks<Track>& before, const Tracks<Track>& after,
                     const MediaNumbers& media, Pairing& pairing) {
    const auto pass = [&](const auto& key) {
        if (!pairing.IsComplete()) {
            pairing.Pass([&](std::size_t i) { return key(*before[i]); },
                         [&](std::size_t i) { return key(*after[i]); });
        }
    };
    pass([](const Track& t) { return KeyOfTraits(KindOf(t), HashOf(t.name), t.id); });
    pass([](const Track& t) {
        return t.name.empty() ? std::nullopt : KeyOfTraits(KindOf(t), HashOf(t.name));
    });
    if (!pairing.IsComplete()) {
        PairByContent(before, after, media, pairing);
    }
    pass([](const Track& t) { return KeyOfTraits(KindOf(t), t.id); });
    pass([](const Track& t) { return KeyOfTraits(t.id, HashOf(t.name)); });
    pass([](const Track& t) { return KeyOfTraits(KindOf(t), HashOf(t.name)); });
}

ListMatch MatchVideoTracks(const Session& before, const Session& after, const MediaNumbers& media) {
    Pairing pairing(before.videoTracks.size(), after.videoTracks.size());
    PairByNameAndId(VideoTracksOf(before), VideoTracksOf(after), media, pairing);
    return pairing.Result();
}

/// The metronome's track stands for itself only, so it is taken out before the others are paired.
ListMatch MatchAudioTracks(const Session& before, const Session& after, const MediaNumbers& media) {
    Tracks<AudioTrack> ones;
    Tracks<AudioTrack> others;
    for (const AudioTrack& track : before.audioTracks) {
        ones.push_back(&track);
    }
    for (const AudioTrack& track : after.audioTracks) {
        others.push_back(&track);
    }
    Pairing pairing(ones.size(), others.size());
    PairByNameAndId(ones, others, media, pairing);
    ListMatch match = pairing.Result();
    const bool had = before.metronome.track.has_value();
    const bool has = after.metronome.track.has_value();
    if (had && has) {
        match.same.emplace_back(ones.size(), others.size());
    } else if (had) {
        match.removed.push_back(ones.size());
    } else if (has) {
        match.added.push_back(others.size());
    }
    return match;
}

/// For the tracks of each session, a number that both share for the same track.
struct TrackNumbers {
    TrackNumbers(const ListMatch& match, std::size_t beforeCount, std::size_t afterCount)
        : before(beforeCount), after(afterCount) {
        std::iota(before.begin(), before.end(), 0);
        std::iota(after.begin(), after.end(), beforeCount);
        for (const auto& [one, other] : match.same) {
            after[other] = before[one];
        }
    }

    std::vector<std::uint64_t> before;
    std::vector<std::uint64_t> after;
};

/// In the order of the timeline, so that clips of which nothing else tells which is which are
/// paired in that order.
template <class Track, class Clip>
std::vector<Candidate<Clip>> CandidatesOf(const Tracks<Track>& tracks,
                                          std::vector<Clip> Track::*clips,
                                          const std::vector<std::uint64_t>& numbers,
                                          const MediaNumbers& media, bool isAfter) {
    std::vector<Candidate<Clip>> candidates;
    for (std::size_t track = 0; track < tracks.size(); ++track) {
        const std::vector<Clip>& list = tracks[track]->*clips;
        for (std::size_t clip = 0; clip < list.size(); ++clip) {
            candidates.push_back(
                {&list[clip], {track, clip}, MediaOf(list[clip], media, isAfter), numbers[track]});
        }
    }
    std::stable_sort(candidates.begin(), candidates.end(), [](const auto& one, const auto& other) {
        return one.clip->startPoint < other.clip->startPoint;
    });
    return candidates;
}

template <class Track, class Clip>
ClipMatch MatchClips(const Tracks<Track>& before, const Tracks<Track>& after,
                     std::vector<Clip> Track::*clips, const ListMatch& tracks,
                     const MediaNumbers& media) {
    const TrackNumbers numbers(tracks, before.size(), after.size());
    const auto ones = CandidatesOf(before, clips, numbers.before, media, false);
    const auto others = CandidatesOf(after, clips, numbers.after, media, true);
    return ClipMatching<Clip>(ones, others).Match();
}

// Slots

/// The entries of a list that are not null.
template <class Slot>
std::vector<std::size_t> Filled(const std::vector<std::optional<Slot>>& slots) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i]) {
            places.push_back(i);
        }
    }
    return places;
}

template <class Slot, class... KeyFunctions>
ListMatch MatchSlots(const std::vector<std::optional<Slot>>& before,
                     const std::vector<std::optional<Slot>>& after, const KeyFunctions&... keys) {
    const std::vector<std::size_t> ones = Filled(before);
    const std::vector<std::size_t> others = Filled(after);
    Pairing pairing(ones.size(), others.size());
    const auto pass = [&](const auto& key) {
        pairing.Pass([&](std::size_t i) { return key(*before[ones[i]]); },
                     [&](std::size_t i) { return key(*after[others[i]]); });
    };
    (pass(keys), ...);
    ListMatch match = pairing.Result();
    for (auto& [one, other] : match.same) {
        one = ones[one];
        other = others[other];
    }
    for (std::size_t& one : match.removed) {
        one = ones[one];
    }
    for (std::size_t& other : match.added) {
        other = others[other];
    }
    return match;
}

/// What an effect is; the same number for all empty slots.
std::uint64_t EffectOf(const EffectsSlot& slot) {
    return slot.component ? HashOf(slot.component->componentId + '\n' + slot.component->guid) : 0;
}

}  // namespace

SessionMatch MatchSessions(const Session& before, const Session& after) {
    SessionMatch match;
    match.files = MatchFiles(before, after);
    const MediaNumbers media(before.files, after.files, match.files);
    match.videoTracks = MatchVideoTracks(before, after, media);
    match.audioTracks = MatchAudioTracks(before, after, media);
    match.visibilityPresets =
        MatchNamed(before.trackVisibilityPresets, after.trackVisibilityPresets);
    match.clipGroups = MatchNamed(before.clipGroups, after.clipGroups);
    match.inputPorts = MatchNamed(before.audioDevice.inputPorts, after.audioDevice.inputPorts);
    match.outputPorts = MatchNamed(before.audioDevice.outputPorts, after.audioDevice.outputPorts);
    match.videoClips = MatchClips(VideoTracksOf(before), VideoTracksOf(after), &VideoTrack::clips,
                                  match.videoTracks, media);
    match.audioClips = MatchClips(AudioTracksOf(before), AudioTracksOf(after), &AudioTrack::clips,
                                  match.audioTracks, media);
    match.midiClips = MatchClips(AudioTracksOf(before), AudioTracksOf(after),
                                 &AudioTrack::midiClips, match.audioTracks, media);
    return match;
}

ListMatch MatchEffects(const EffectsRack& before, const EffectsRack& after) {
    return MatchSlots(
        before.slots, after.slots,
        [](const EffectsSlot& slot) { return KeyOfTraits(EffectOf(slot), slot.slotIndex); },
        [](const EffectsSlot& slot) { return KeyOfTraits(EffectOf(slot)); });
}

ListMatch MatchSends(const SendList& before, const SendList& after) {
    return MatchSlots(
        before.slots, after.slots,
        [](const SendSlot& slot) { return KeyOfTraits(slot.sendOutputId, slot.slotIndex); },
        [](const SendSlot& slot) { return KeyOfTraits(slot.sendOutputId); },
        [](const SendSlot& slot) { return KeyOfTraits(slot.slotIndex); });
}

}  // namespace orvo
