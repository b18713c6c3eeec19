#pragma once

#include <cstddef>
#include <string>

#include <orvo/Diff.h>
#include "session/MemberKey.h"
#include "toolkit/diff/Names.h"
#include "toolkit/diff/Tracks.h"

/// The kinds of clips: where those of a kind are, and the tracks that have them.
namespace orvo::diff {

struct VideoClips {
    using Clip = VideoClip;
    static constexpr auto kList = &VideoTrack::clips;
    static const VideoTrack& Track(const Session& session, std::size_t index) {
        return session.videoTracks[index];
    }
    static std::string TrackPlace(const Session&, std::size_t index) {
        return PlaceIn(KeyOf(&Session::videoTracks), index);
    }
    static const ListMatch& Tracks(const SessionMatch& match) { return match.videoTracks; }
};

struct OnAudioTracks {
    static const AudioTrack& Track(const Session& session, std::size_t index) {
        return AudioTrackAt(session, index);
    }
    static std::string TrackPlace(const Session& session, std::size_t index) {
        return PlaceOfAudioTrack(session, index);
    }
    static const ListMatch& Tracks(const SessionMatch& match) { return match.audioTracks; }
};

struct AudioClips : OnAudioTracks {
    using Clip = AudioClip;
    static constexpr auto kList = &AudioTrack::clips;
};

struct MidiClips : OnAudioTracks {
    using Clip = MidiClip;
    static constexpr auto kList = &AudioTrack::midiClips;
};

inline constexpr VideoClips kVideo{};

inline constexpr AudioClips kAudio{};

inline constexpr MidiClips kMidi{};

template <class Kind>
const auto& ClipAt(const Session& session, const ClipPlace& place, Kind) {
    return (Kind::Track(session, place.track).*Kind::kList)[place.clip];
}

}  // namespace orvo::diff
