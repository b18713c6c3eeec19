#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// Finds things in a session: tracks in their order, anything by its id, and what refers to what.
///
/// Results are pointers into the session and own nothing. They stay valid as long as iterators
/// into the containing list. The pointers are to constants if the session is constant: in the
/// types below, `Owner` is `Session` or `const Session`.
///
/// Nothing enforces that ids are unique. If things have the same id, the first one in the list is
/// found. `kNoId` finds nothing.
///
/// The metronome's track is not in the list of tracks, and session files do not keep its id. It
/// and its clips come last. It may feed tracks. It cannot be found by id.
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// The type of a part: constant if its owner is.
template <class Owner, class Part>
using PartOf = std::conditional_t<std::is_const_v<Owner>, const Part, Part>;

// Tracks

/// Tracks in the order of their indices; tracks with the same index in the order of the list.
/// A save does not write the index of a video track, so the video tracks of a saved file come in
/// the order of the list.
ORVO_API std::vector<VideoTrack*> VideoTracksInOrder(Session& session);
ORVO_API std::vector<const VideoTrack*> VideoTracksInOrder(const Session& session);
ORVO_API std::vector<AudioTrack*> AudioTracksInOrder(Session& session);
ORVO_API std::vector<const AudioTrack*> AudioTracksInOrder(const Session& session);

/// The track with an id, or null. Searches the list. A video track and an audio track may have the
/// same id.
ORVO_API VideoTrack* FindVideoTrack(Session& session, std::uint32_t id);
ORVO_API const VideoTrack* FindVideoTrack(const Session& session, std::uint32_t id);
ORVO_API AudioTrack* FindAudioTrack(Session& session, std::uint32_t id);
ORVO_API const AudioTrack* FindAudioTrack(const Session& session, std::uint32_t id);

/// Calls `visit(track)` for each audio track, in the order of the list.
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

/// A clip and its track, or two nulls if no clip was found.
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

/// Calls `visit(track, clip)` for each clip of any kind: first those of the video tracks, then for
/// each audio track its audio clips and its MIDI clips, in the order of the lists.
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

/// The clip with an id, and its track. Searches all tracks. Convert the signed
/// `crossFadeHeadClipId` and `crossFadeTailClipId` of a clip to unsigned ids.
ORVO_API TrackAudioClip<Session> FindAudioClip(Session& session, std::uint32_t id);
ORVO_API TrackAudioClip<const Session> FindAudioClip(const Session& session, std::uint32_t id);
ORVO_API TrackMidiClip<Session> FindMidiClip(Session& session, std::uint32_t id);
ORVO_API TrackMidiClip<const Session> FindMidiClip(const Session& session, std::uint32_t id);
ORVO_API TrackVideoClip<Session> FindVideoClip(Session& session, std::uint32_t id);
ORVO_API TrackVideoClip<const Session> FindVideoClip(const Session& session, std::uint32_t id);

// Files

/// The file with an id, such as the `fileId` of a clip, or null.
ORVO_API File* FindFile(Session& session, std::uint32_t id);
ORVO_API const File* FindFile(const Session& session, std::uint32_t id);

/// The clips that play a file, in the order that `ForEachClip` visits them in.
template <class Owner>
struct FileClips {
    std::vector<TrackAudioClip<Owner>> audio{};
    std::vector<TrackVideoClip<Owner>> video{};

    friend bool operator==(const FileClips&, const FileClips&) = default;
};

/// The clips with a `fileId`. The session need not list such a file.
ORVO_API FileClips<Session> ClipsOfFile(Session& session, std::uint32_t fileId);
ORVO_API FileClips<const Session> ClipsOfFile(const Session& session, std::uint32_t fileId);

// Ports

/// The input of the audio device with an id, such as the `inputId` of a track, or null.
ORVO_API AudioPort* FindInputPort(Session& session, std::int32_t id);
ORVO_API const AudioPort* FindInputPort(const Session& session, std::int32_t id);

/// The output of the audio device with an id, such as the `hardwareOutputId` of a track, or null.
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

/// A connection from a track to what it feeds: the output of the track, or a send.
template <class Owner>
struct Feed {
    PartOf<Owner, AudioTrack>* source = nullptr;  ///< never null
    PartOf<Owner, SendSlot>* send = nullptr;      ///< null: the output of the track
    FeedTarget targetKind = FeedTarget::Nowhere;
    std::int32_t targetId = kNone;                ///< the id of the track or port
    PartOf<Owner, AudioTrack>* target = nullptr;  ///< null: not a track, or no track has the id
    /// The component of the target that the send feeds, such as an effect with a side chain. No
    /// value: the feed leads to the target itself.
    std::optional<std::int32_t> component{};

    friend bool operator==(const Feed&, const Feed&) = default;
};

/// What a track of the session feeds: first by its output, then by its sends in the order of the
/// list. As in session files, the output leads to the track `outputTrackId` if that is above 0, and
/// else to the port `hardwareOutputId`, or nowhere if that is negative. A send leads to the track
/// `sendOutputId`, or nowhere if that is negative.
ORVO_API std::vector<Feed<Session>> FeedsOf(Session& session, AudioTrack& track);
ORVO_API std::vector<Feed<const Session>> FeedsOf(const Session& session, const AudioTrack& track);

/// What feeds a track of the session, such as a bus: the feeds of all tracks that lead to it, in
/// the order of the list of tracks.
ORVO_API std::vector<Feed<Session>> FeedsInto(Session& session, const AudioTrack& track);
ORVO_API std::vector<Feed<const Session>> FeedsInto(const Session& session,
                                                    const AudioTrack& track);

/// Finds things by their ids without a search, for programs that look up many. It holds pointers
/// into the session; make a new index when they are no longer valid or when ids have changed.
class SessionIndex {
public:
    /// @param session  must outlive the index
    ORVO_API explicit SessionIndex(const Session& session);
    explicit SessionIndex(const Session&& session) = delete;

    // The same results as from the functions with these names.
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
