#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"
#include "reference_host/model/AudioDevice.h"
#include "reference_host/model/AudioTrack.h"
#include "reference_host/model/ClipGroup.h"
#include "reference_host/model/EditorState.h"
#include "reference_host/model/File.h"
#include "reference_host/model/Metronome.h"
#include "reference_host/model/TrackVisibility.h"
#include "reference_host/model/VideoTrack.h"

/// A multitrack session as plain values. Positions and lengths are counts of samples at the
/// session's rate unless a comment says otherwise. A field holds whatever a host may hold; nothing
/// is checked.
namespace refhost::model {

/// The version of the file format that a session is written as.
struct FormatVersion {
    kelcore::int32 major = 1;
    kelcore::int32 minor = 5;

    friend bool operator==(const FormatVersion&, const FormatVersion&) = default;
};

struct Session {
    FormatVersion formatVersion{};
    kelcore::uint32 sampleRate = 48000;  ///< samples per second
    kelcore::int32 channelCount = 2;     ///< 1 mono, 2 stereo, 6 for 5.1
    kelcore::int64 duration = 0;
    kelcore::uint32 bitDepth = 32;  ///< bits per sample

    /// Which application version wrote the file, as a sentence; told by a read and never written.
    std::u16string formatDescription{};
    /// The position that a read ends with: that of the current-time indicator for the oldest files,
    /// the start of the selection for all others. Never written.
    kelcore::int64 versionDependentValue = 0;

    std::vector<VideoTrack> videoTracks{};
    std::vector<AudioTrack> audioTracks{};
    std::vector<TrackVisibilityPreset> trackVisibilityPresets{};
    std::vector<ClipGroup> clipGroups{};
    Metronome metronome{};

    kelcore::int64 ctiPosition = 0;  ///< the current-time indicator
    kelcore::int64 smpteStart = 0;   ///< the timecode of the first sample, in the host's unit
    Selection selection{};
    ViewState viewState{};
    TimeFormat timeFormat{};
    MusicalTime musicalTime{};
    MixingOptions mixingOptions{};
    std::vector<Property> properties{};
    std::u16string xmpMetadata{};  ///< the XMP packet; empty: none

    std::vector<File> files{};
    AudioDevice audioDevice{};

    friend bool operator==(const Session&, const Session&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const FormatVersion& version);
std::ostream& operator<<(std::ostream& out, const Session& session);

}  // namespace refhost::model
