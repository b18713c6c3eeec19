#include <orvo/Lookup.h>

#include <algorithm>
#include <functional>
#include <type_traits>
#include <utility>

namespace orvo {
namespace {

template <class List>
auto* FindById(List& list, std::uint32_t id) {
    const auto found =
        std::ranges::find_if(list, [id](const auto& each) { return each.id == id && id != kNoId; });
    return found == list.end() ? nullptr : &*found;
}

template <class Ports>
auto* FindPort(Ports& ports, std::int32_t id) {
    const auto found = std::ranges::find(ports, id, &AudioPort::id);
    return found == ports.end() ? nullptr : &*found;
}

template <class Track>
std::vector<Track*> Sorted(std::vector<Track*> tracks) {
    std::ranges::stable_sort(tracks, {}, [](const Track* track) { return track->index; });
    return tracks;
}

template <class Owner>
auto SortedVideoTracks(Owner& session) {
    std::vector<PartOf<Owner, VideoTrack>*> tracks;
    for (auto& track : session.videoTracks) {
        tracks.push_back(&track);
    }
    return Sorted(std::move(tracks));
}

template <class Owner>
auto SortedAudioTracks(Owner& session) {
    std::vector<PartOf<Owner, AudioTrack>*> tracks;
    for (auto& track : session.audioTracks) {
        tracks.push_back(&track);
    }
    tracks = Sorted(std::move(tracks));
    if (session.metronome.track) {
        tracks.push_back(&*session.metronome.track);
    }
    return tracks;
}

template <class Clip>
auto& ClipsOf(auto& track) {
    if constexpr (std::is_same_v<Clip, MidiClip>) {
        return track.midiClips;
    } else {
        return track.clips;
    }
}

/// Finds the first clip with an id on the tracks that it is called with.
template <class Found, class Clip>
struct Search {
    std::uint32_t id = 0;
    Found found{};

    void operator()(auto& track) {
        if (!found) {
            if (auto* const clip = FindById(ClipsOf<Clip>(track), id)) {
                found = {&track, clip};
            }
        }
    }
};

template <class Found, class Clip, class Owner>
Found FindOnAudioTracks(Owner& session, std::uint32_t id) {
    Search<Found, Clip> search{id};
    ForEachAudioTrack(session, std::ref(search));
    return search.found;
}

template <class Owner>
TrackVideoClip<Owner> FindOnVideoTracks(Owner& session, std::uint32_t id) {
    Search<TrackVideoClip<Owner>, VideoClip> search{id};
    std::ranges::for_each(session.videoTracks, std::ref(search));
    return search.found;
}

template <class Owner>
FileClips<Owner> AllClipsOfFile(Owner& session, std::uint32_t fileId) {
    FileClips<Owner> clips;
    if (fileId == kNoId) {
        return clips;
    }
    ForEachClip(session, [&](auto& track, auto& clip) {
        using Clip = std::remove_cvref_t<decltype(clip)>;
        if constexpr (std::is_same_v<Clip, AudioClip>) {
            if (clip.fileId == fileId) {
                clips.audio.push_back({&track, &clip});
            }
        } else if constexpr (std::is_same_v<Clip, VideoClip>) {
            if (clip.fileId == fileId) {
                clips.video.push_back({&track, &clip});
            }
        }
    });
    return clips;
}

// Feeds. `findTrack` searches the session or asks an index.

template <class Owner>
void LeadToTrack(Feed<Owner>& feed, std::int32_t id, const auto& findTrack) {
    feed.targetKind = FeedTarget::Track;
    feed.targetId = id;
    feed.target = findTrack(static_cast<std::uint32_t>(id));
}

template <class Owner>
Feed<Owner> OutputOf(PartOf<Owner, AudioTrack>& track, const auto& findTrack) {
    Feed<Owner> feed{.source = &track};
    if (track.outputTrackId > 0) {
        LeadToTrack(feed, track.outputTrackId, findTrack);
    } else if (track.hardwareOutputId >= 0) {
        feed.targetKind = FeedTarget::Port;
        feed.targetId = track.hardwareOutputId;
    }
    return feed;
}

template <class Owner>
Feed<Owner> FeedOf(PartOf<Owner, AudioTrack>& track, PartOf<Owner, SendSlot>& send,
                   const auto& findTrack) {
    Feed<Owner> feed{.source = &track, .send = &send};
    if (send.sendOutputId >= 0) {
        LeadToTrack(feed, send.sendOutputId, findTrack);
    }
    if (send.destCompIndex >= 0) {
        feed.component = send.destCompIndex;
    }
    return feed;
}

template <class Owner>
std::vector<Feed<Owner>> AllFeedsOf(PartOf<Owner, AudioTrack>& track, const auto& findTrack) {
    std::vector<Feed<Owner>> feeds{OutputOf<Owner>(track, findTrack)};
    if (track.sendList) {
        for (auto& slot : track.sendList->slots) {
            if (slot) {
                feeds.push_back(FeedOf<Owner>(track, *slot, findTrack));
            }
        }
    }
    return feeds;
}

template <class Owner>
std::vector<Feed<Owner>> AllFeedsInto(Owner& session, const AudioTrack& track) {
    std::vector<Feed<Owner>> feeds;
    auto* const target = FindAudioTrack(session, track.id);
    if (target != &track) {
        return feeds;
    }
    const auto findTarget = [&](std::uint32_t id) { return id == track.id ? target : nullptr; };
    ForEachAudioTrack(session, [&](auto& source) {
        for (const Feed<Owner>& feed : AllFeedsOf<Owner>(source, findTarget)) {
            if (feed.target != nullptr) {
                feeds.push_back(feed);
            }
        }
    });
    return feeds;
}

// The index

template <class Map>
void AddFirst(Map& map, std::uint32_t id, const typename Map::mapped_type& found) {
    if (id != kNoId) {
        map.try_emplace(id, found);
    }
}

template <class Map>
typename Map::mapped_type FoundIn(const Map& map, std::uint32_t id) {
    const auto found = map.find(id);
    return found == map.end() ? typename Map::mapped_type{} : found->second;
}

}  // namespace

std::vector<VideoTrack*> VideoTracksInOrder(Session& session) {
    return SortedVideoTracks(session);
}
std::vector<const VideoTrack*> VideoTracksInOrder(const Session& session) {
    return SortedVideoTracks(session);
}
std::vector<AudioTrack*> AudioTracksInOrder(Session& session) {
    return SortedAudioTracks(session);
}
std::vector<const AudioTrack*> AudioTracksInOrder(const Session& session) {
    return SortedAudioTracks(session);
}

VideoTrack* FindVideoTrack(Session& session, std::uint32_t id) {
    return FindById(session.videoTracks, id);
}
const VideoTrack* FindVideoTrack(const Session& session, std::uint32_t id) {
    return FindById(session.videoTracks, id);
}
AudioTrack* FindAudioTrack(Session& session, std::uint32_t id) {
    return FindById(session.audioTracks, id);
}
const AudioTrack* FindAudioTrack(const Session& session, std::uint32_t id) {
    return FindById(session.audioTracks, id);
}

TrackAudioClip<Session> FindAudioClip(Session& session, std::uint32_t id) {
    return FindOnAudioTracks<TrackAudioClip<Session>, AudioClip>(session, id);
}
TrackAudioClip<const Session> FindAudioClip(const Session& session, std::uint32_t id) {
    return FindOnAudioTracks<TrackAudioClip<const Session>, AudioClip>(session, id);
}
TrackMidiClip<Session> FindMidiClip(Session& session, std::uint32_t id) {
    return FindOnAudioTracks<TrackMidiClip<Session>, MidiClip>(session, id);
}
TrackMidiClip<const Session> FindMidiClip(const Session& session, std::uint32_t id) {
    return FindOnAudioTracks<TrackMidiClip<const Session>, MidiClip>(session, id);
}
TrackVideoClip<Session> FindVideoClip(Session& session, std::uint32_t id) {
    return FindOnVideoTracks(session, id);
}
TrackVideoClip<const Session> FindVideoClip(const Session& session, std::uint32_t id) {
    return FindOnVideoTracks(session, id);
}

File* FindFile(Session& session, std::uint32_t id) {
    return FindById(session.files, id);
}
const File* FindFile(const Session& session, std::uint32_t id) {
    return FindById(session.files, id);
}

FileClips<Session> ClipsOfFile(Session& session, std::uint32_t fileId) {
    return AllClipsOfFile(session, fileId);
}
FileClips<const Session> ClipsOfFile(const Session& session, std::uint32_t fileId) {
    return AllClipsOfFile(session, fileId);
}

AudioPort* FindInputPort(Session& session, std::int32_t id) {
    return FindPort(session.audioDevice.inputPorts, id);
}
const AudioPort* FindInputPort(const Session& session, std::int32_t id) {
    return FindPort(session.audioDevice.inputPorts, id);
}
AudioPort* FindOutputPort(Session& session, std::int32_t id) {
    return FindPort(session.audioDevice.outputPorts, id);
}
const AudioPort* FindOutputPort(const Session& session, std::int32_t id) {
    return FindPort(session.audioDevice.outputPorts, id);
}

std::vector<Feed<Session>> FeedsOf(Session& session, AudioTrack& track) {
    return AllFeedsOf<Session>(
        track, [&session](std::uint32_t id) { return FindAudioTrack(session, id); });
}
std::vector<Feed<const Session>> FeedsOf(const Session& session, const AudioTrack& track) {
    return AllFeedsOf<const Session>(
        track, [&session](std::uint32_t id) { return FindAudioTrack(session, id); });
}
std::vector<Feed<Session>> FeedsInto(Session& session, const AudioTrack& track) {
    return AllFeedsInto(session, track);
}
std::vector<Feed<const Session>> FeedsInto(const Session& session, const AudioTrack& track) {
    return AllFeedsInto(session, track);
}

SessionIndex::SessionIndex(const Session& session) {
    for (const VideoTrack& track : session.videoTracks) {
        AddFirst(videoTracks_, track.id, &track);
    }
    for (const AudioTrack& track : session.audioTracks) {
        AddFirst(audioTracks_, track.id, &track);
    }
    for (const File& file : session.files) {
        AddFirst(files_, file.id, &file);
    }
    ForEachClip(session, [this](const auto& track, const auto& clip) {
        using Clip = std::remove_cvref_t<decltype(clip)>;
        if constexpr (std::is_same_v<Clip, AudioClip>) {
            AddFirst(audioClips_, clip.id, {&track, &clip});
        } else if constexpr (std::is_same_v<Clip, MidiClip>) {
            AddFirst(midiClips_, clip.id, {&track, &clip});
        } else {
            AddFirst(videoClips_, clip.id, {&track, &clip});
        }
    });
}

const VideoTrack* SessionIndex::FindVideoTrack(std::uint32_t id) const {
    return FoundIn(videoTracks_, id);
}
const AudioTrack* SessionIndex::FindAudioTrack(std::uint32_t id) const {
    return FoundIn(audioTracks_, id);
}
TrackAudioClip<const Session> SessionIndex::FindAudioClip(std::uint32_t id) const {
    return FoundIn(audioClips_, id);
}
TrackMidiClip<const Session> SessionIndex::FindMidiClip(std::uint32_t id) const {
    return FoundIn(midiClips_, id);
}
TrackVideoClip<const Session> SessionIndex::FindVideoClip(std::uint32_t id) const {
    return FoundIn(videoClips_, id);
}
const File* SessionIndex::FindFile(std::uint32_t id) const {
    return FoundIn(files_, id);
}
std::vector<Feed<const Session>> SessionIndex::FeedsOf(const AudioTrack& track) const {
    return AllFeedsOf<const Session>(track,
                                     [this](std::uint32_t id) { return FindAudioTrack(id); });
}

}  // namespace orvo
