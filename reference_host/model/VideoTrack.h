#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// The format of a clip's video. The codes are the host's.
struct VideoFormat {
    kelcore::int64 timeScale = 0;   ///< units in a second
    kelcore::int64 sampleSize = 0;  ///< units in a frame
    kelcore::int32 pixelType = 1;
    kelcore::int32 width = 0;          ///< of the frame, in pixels
    kelcore::int32 height = 0;         ///< of the frame, in pixels
    kelcore::uint32 parNumerator = 0;  ///< the pixel aspect ratio; 0 to 1 is unknown
    kelcore::uint32 parDenominator = 1;
    kelcore::uint32 fieldType = 0;

    friend bool operator==(const VideoFormat&, const VideoFormat&) = default;
};

/// A region of a media file's video on a track.
struct VideoClip {
    kelcore::uint32 id = 0;
    kelcore::uint32 fileId = 4294967295;
    kelcore::int64 sourceInPoint = 0;
    kelcore::int64 duration = 0;
    kelcore::int64 startPoint = 0;
    double hue = 0;  ///< the host's number
    std::u16string name{};
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    kelcore::int32 zOrder = 0;
    std::optional<VideoFormat> format{};

    friend bool operator==(const VideoClip&, const VideoClip&) = default;
};

struct VideoTrack {
    kelcore::uint32 id = 0;
    kelcore::uint32 index = 0;  ///< its place in the list of tracks; told by a read, never written
    std::u16string name{};
    double hue = -1;            ///< the host's number
    kelcore::int32 height = 0;  ///< the host's number
    bool selected = false;
    bool minimized = false;
    std::vector<VideoClip> clips{};

    friend bool operator==(const VideoTrack&, const VideoTrack&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const VideoFormat& format);
std::ostream& operator<<(std::ostream& out, const VideoClip& clip);
std::ostream& operator<<(std::ostream& out, const VideoTrack& track);

}  // namespace refhost::model
