#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Model.h>
#include "platform/kelcore/Types.h"
#include "toolkit/scan/StoredPaths.h"

namespace toolkit {

/// One row of a session's media table.
struct MediaSummary {
    kelcore::uint32 id = 0;
    std::string path;
    std::string handlerId;
    std::string handlerName;  ///< for people; the identifier of a handler without a name
    bool found = false;
    std::optional<StoredPaths> stored;  ///< of missing media, as the document has them

    friend bool operator==(const MediaSummary&, const MediaSummary&) = default;
};

/// What a person wants to know about a session at first sight.
struct SessionSummary {
    std::string format;  ///< the sentence that names the application; may be empty
    kelcore::uint32 sampleRate = 0;
    orvo::ChannelType audioChannelType = orvo::ChannelType::NotSaid;
    kelcore::uint32 bitDepth = 0;
    kelcore::int64 duration = 0;  ///< in samples
    orvo::AudioDevice audioDevice;
    double beatsPerMinute = 0;  ///< 0: unknown
    kelcore::int32 beatsPerBar = 0;
    kelcore::int32 noteLength = 0;
    orvo::TimeFormat timeFormat;
    kelcore::int64 smpteStart = 0;  ///< the timecode of the first sample, taken as samples
    bool tempoChanges = false;      ///< the musical timeline has such events
    bool timeSignatureChanges = false;
    bool keySignatureChanges = false;
    bool metronomeOn = false;
    std::size_t metronomeBeats = 0;          ///< in the pattern of a bar
    std::vector<orvo::Property> properties;  ///< what the host keeps with the session
    std::size_t xmpLength = 0;               ///< of the XMP packet, in UTF-16 code units
    std::size_t clipsOffline = 0;            ///< on tracks of all kinds
    std::vector<MediaSummary> media;         ///< in the session's order

    std::vector<MediaSummary> MissingMedia() const;
    std::size_t MissingCount() const;

    /// `smpteStart` as the session shows times: as timecode if it uses timecode, else as
    /// `orvo::FormatTime`.
    std::optional<std::string> FormatSmpteStart() const;

    /// Gives missing media the paths that the document has for them.
    void AddStoredPaths(const std::map<kelcore::uint32, StoredPaths>& paths);
};

/// Whether there is a file at a full path.
using FileTest = std::function<bool(const std::string& path)>;

SessionSummary Summarise(const orvo::Session& session, const FileTest& exists);

/// How times are shown, as people call it: "samples", "timecode, 25 frames a second", ...
std::string TimeFormatName(const orvo::TimeFormat& format);

/// "mono", "stereo", "5.1"; no value for numbers of channels without a name.
std::optional<std::string> ChannelLayoutName(orvo::ChannelType type);

}  // namespace toolkit
