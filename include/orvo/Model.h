#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/AudioDevice.h>
#include <orvo/AudioTrack.h>
#include <orvo/ClipGroup.h>
#include <orvo/EditorState.h>
#include <orvo/File.h>
#include <orvo/Metronome.h>
#include <orvo/TrackVisibility.h>
#include <orvo/VideoTrack.h>

/// A multitrack session as plain values, which own what they hold: they copy, move, compare and
/// print. Positions and lengths are counts of samples at the session's rate unless a comment says
/// otherwise. A field holds whatever a host may hold; nothing is checked.
///
/// Texts are UTF-8. An unpaired surrogate, which hosts and JSON may have and UTF-8 has no form
/// for, stands as the three bytes that its code point would have. It passes through JSON as it was;
/// in a session file it becomes U+FFFD, as does every other malformed sequence.
///
/// "The host's number" marks a number whose meaning is the application's own.
///
/// Different values may be used by different threads at once; one value as any standard container.
namespace orvo {

/// The version of the file format that a session is written as.
struct FormatVersion {
    std::int32_t major = 1;
    std::int32_t minor = 5;

    friend bool operator==(const FormatVersion&, const FormatVersion&) = default;
};

struct Session {
    FormatVersion formatVersion{};
    std::uint32_t sampleRate = 48000;  ///< samples per second
    ChannelType audioChannelType = ChannelType::Stereo;
    std::int64_t duration = 0;
    std::uint32_t bitDepth = 32;  ///< bits per sample

    /// Which application version wrote the file, as a sentence; set by a read, never written.
    std::string formatDescription{};
    /// The position that a read ends with: that of the current-time indicator for the oldest files,
    /// the start of the selection for all others. Never written.
    std::int64_t versionDependentValue = 0;

    std::vector<VideoTrack> videoTracks{};
    std::vector<AudioTrack> audioTracks{};
    std::vector<TrackVisibilityPreset> trackVisibilityPresets{};
    std::vector<ClipGroup> clipGroups{};
    Metronome metronome{};

    std::int64_t ctiPosition = 0;  ///< the current-time indicator
    std::int64_t smpteStart = 0;   ///< the timecode of the first sample, in the host's unit
    Selection selection{};
    ViewState viewState{};
    TimeFormat timeFormat{};
    MusicalTime musicalTime{};
    MixingOptions mixingOptions{};
    std::vector<Property> properties{};
    std::string xmpMetadata{};  ///< the XMP packet; empty: none

    std::vector<File> files{};
    AudioDevice audioDevice{};

    friend bool operator==(const Session&, const Session&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const FormatVersion& version);
ORVO_API std::ostream& operator<<(std::ostream& out, const Session& session);

}  // namespace orvo
