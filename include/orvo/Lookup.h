#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// Finds the things of a session: by their order, by their ids, and by what refers to them.
///
/// Results are pointers into the session and own nothing. They hold until the session goes, or
/// until something is added to, removed from or moved in the list that the thing stands in. What
/// takes a session that may be changed gives pointers to change things by: `Owner` below is
/// `Session` or `const Session`.
///
/// Nothing enforces that an id is given once. Of things with the same id the first in its list
/// counts, here as in a host. `kNoId` is the id of nothing.
///
/// The metronome's track stands beside the list of tracks, and files keep no id of it. So it comes
/// last in the order of tracks, its clips come last among clips, it may feed tracks, and it is not
/// found by an id.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// A part that may be changed if its owner may.
template <class Owner, class Part>
using PartOf = std::conditional_t<std::is_const_v<Owner>, const Part, Part>;

// Tracks

/// Tracks in the order of their indices; those of the same index in the order of the list. Files
/// keep no index of a video track, so that video tracks of a file come in the order of the list.
ORVO_API std::vector<VideoTrack*> VideoTracksInOrder(Session& session);
ORVO_API std::vector<const VideoTrack*> VideoTracksInOrder(const Session& session);
ORVO_API std::vector<AudioTrack*> AudioTracksInOrder(Session& session);
ORVO_API std::vector<const AudioTrack*> AudioTracksInOrder(const Session& session);

/// The track of an id; null if there is none. Takes a time that grows with the number of tracks.
/// Tracks of the two sides may have the same id.
ORVO_API VideoTrack* FindVideoTrack(Session& session, std::uint32_t id);
ORVO_API const VideoTrack* FindVideoTrack(const Session& session, std::uint32_t id);
ORVO_API AudioTrack* FindAudioTrack(Session& session, std::uint32_t id);
ORVO_API const AudioTrack* FindAudioTrack(const Session& session, std::uint32_t id);

/// Calls `visit` with each track of the audio side, in the order of the list.
template <class Owner, class Visitor>
void ForEachAudioTrack(Owner& session, Visitor visit) {
    for (auto& track : session.audioTracks) {
        visit(track);
    }
    if (session.metronome.track) {
        visit(*session.metronome.track);
    }
}

// Clips

/// A clip and the track that it stands on; both null if it was not found.
template <class Track, class Clip>
struct TrackClip {
    Track* track = nullptr;
    Clip* clip = nullptr;

    explicit operator bool() const { return clip != nullptr; }
    friend bool operator==(const TrackClip&, const TrackClip&) = default;
};

template <class Owner>
using TrackAudioClip = TrackClip<PartOf<Owner, AudioTrack>, PartOf<Owner, AudioClip>>;
template <class Owner>
using TrackMidiClip = TrackClip<PartOf<Owner, AudioTrack>, PartOf<Owner, MidiClip>>;
template <class Owner>
using TrackVideoClip = TrackClip<PartOf<Owner, VideoTrack>, PartOf<Owner, VideoClip>>;

/// Calls `visit` with the track and the clip for each clip of any kind: those of the video tracks,
/// then, audio track by audio track, the audio clips and the MIDI clips; all in the order of their
/// lists.
template <class Owner, class Visitor>
void ForEachClip(Owner& session, Visitor visit) {
    const auto visitAll = [&visit](auto& track, auto& clips) {
        for (auto& clip : clips) {
            visit(track, clip);
        }
    };
    for (auto& track : session.videoTracks) {
        visitAll(track, track.clips);
    }
    ForEachAudioTrack(session, [&visitAll](auto& track) {
        visitAll(track, track.clips);
        visitAll(track, track.midiClips);
    });
}

/// The clip of an id, with its track. Takes a time that grows with the number of clips. Crossfades
/// name clips by signed ids, which convert.
ORVO_API TrackAudioClip<Session> FindAudioClip(Session& session, std::uint32_t id);
ORVO_API TrackAudioClip<const Session> FindAudioClip(const Session& session, std::uint32_t id);
ORVO_API TrackMidiClip<Session> FindMidiClip(Session& session, std::uint32_t id);
ORVO_API TrackMidiClip<const Session> FindMidiClip(const Session& session, std::uint32_t id);
ORVO_API TrackVideoClip<Session> FindVideoClip(Session& session, std::uint32_t id);
ORVO_API TrackVideoClip<const Session> FindVideoClip(const Session& session, std::uint32_t id);

// Files

/// The file of an id, such as `fileId` of a clip; null if the session lists none.
ORVO_API File* FindFile(Session& session, std::uint32_t id);
ORVO_API const File* FindFile(const Session& session, std::uint32_t id);

/// The clips that play a file, in the order of `ForEachClip`.
template <class Owner>
struct FileClips {
    std::vector<TrackAudioClip<Owner>> audio{};
    std::vector<TrackVideoClip<Owner>> video{};

    friend bool operator==(const FileClips&, const FileClips&) = default;
};

/// The clips that play the file of an id, whether the session lists that file or not.
ORVO_API FileClips<Session> ClipsOfFile(Session& session, std::uint32_t fileId);
ORVO_API FileClips<const Session> ClipsOfFile(const Session& session, std::uint32_t fileId);

// Ports

/// The port of the audio device that an id such as `inputId` of a track means; null if the session
/// lists none.
ORVO_API AudioPort* FindInputPort(Session& session, std::int32_t id);
ORVO_API const AudioPort* FindInputPort(const Session& session, std::int32_t id);

/// The same for an id such as `hardwareOutputId`.
ORVO_API AudioPort* FindOutputPort(Session& session, std::int32_t id);
ORVO_API const AudioPort* FindOutputPort(const Session& session, std::int32_t id);

// Who feeds whom

/// Where a feed leads.
enum class FeedTarget {
    Nowhere,
    Track,
    Port  ///< an output of the audio device
};

/// Prints "nowhere", "track" or "port".
ORVO_API std::ostream& operator<<(std::ostream& out, FeedTarget target);

/// One way that the sound of a track takes: its own output, or a send.
template <class Owner>
struct Feed {
    PartOf<Owner, AudioTrack>* source = nullptr;  ///< never null
    PartOf<Owner, SendSlot>* send = nullptr;      ///< null: the track's own output
    FeedTarget targetKind = FeedTarget::Nowhere;
    std::int32_t targetId = kNone;                ///< of the track or port
    PartOf<Owner, AudioTrack>* target = nullptr;  ///< null: no track, or one that is not there
    /// Which component of the target the send feeds, as the side chain of an effect; none: the
    /// target itself.
    std::optional<std::int32_t> component{};

    friend bool operator==(const Feed&, const Feed&) = default;
};

/// The feeds of a track of this session: its own output first, then each send in the order of the
/// list; a slot that is none is left out. The output leads to the track `outputTrackId` if that is
/// above 0, as sessions are saved, else to the port `hardwareOutputId`, and nowhere if that is
/// negative. A send leads to the track `sendOutputId`, and nowhere if that is negative.
ORVO_API std::vector<Feed<Session>> FeedsOf(Session& session, AudioTrack& track);
ORVO_API std::vector<Feed<const Session>> FeedsOf(const Session& session, const AudioTrack& track);

/// The feeds that lead to a track of this session: what a bus or the master sums. In the order of
/// the tracks in their list.
ORVO_API std::vector<Feed<Session>> FeedsInto(Session& session, const AudioTrack& track);
ORVO_API std::vector<Feed<const Session>> FeedsInto(const Session& session,
                                                    const AudioTrack& track);

/// Finds by id in a time that does not grow with the session, for those who look up a lot. A value
/// that is made once; it must be made anew when pointers into the session would no longer hold, and
/// when an id was changed.
class SessionIndex {
public:
    /// @param session  must stay while the index is used
    ORVO_API explicit SessionIndex(const Session& session);
    explicit SessionIndex(const Session&& session) = delete;

    // What the functions of the same names find.
    ORVO_API const VideoTrack* FindVideoTrack(std::uint32_t id) const;
    ORVO_API const AudioTrack* FindAudioTrack(std::uint32_t id) const;
    ORVO_API TrackAudioClip<const Session> FindAudioClip(std::uint32_t id) const;
    ORVO_API TrackMidiClip<const Session> FindMidiClip(std::uint32_t id) const;
    ORVO_API TrackVideoClip<const Session> FindVideoClip(std::uint32_t id) const;
    ORVO_API const File* FindFile(std::uint32_t id) const;
    ORVO_API std::vector<Feed<const Session>> FeedsOf(const AudioTrack& track) const;

private:
    template <class Found>
    using ById = std::unordered_map<std::uint32_t, Found>;

    ById<const VideoTrack*> videoTracks_;
    ById<const AudioTrack*> audioTracks_;
    ById<TrackAudioClip<const Session>> audioClips_;
    ById<TrackMidiClip<const Session>> midiClips_;
    ById<TrackVideoClip<const Session>> videoClips_;
    ById<const File*> files_;
};

}  // namespace orvo
