#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Ids.h>

namespace orvo {

/// The format of a clip's video. The codes are the host's.
struct VideoFormat {
    std::int64_t timeScale = 0;   ///< units in a second
    std::int64_t sampleSize = 0;  ///< units in a frame
    std::int32_t pixelType = 1;
    std::int32_t width = 0;          ///< of the frame, in pixels
    std::int32_t height = 0;         ///< of the frame, in pixels
    std::uint32_t parNumerator = 0;  ///< the pixel aspect ratio; 0:1 is unknown
    std::uint32_t parDenominator = 1;
    std::uint32_t fieldType = 0;

    friend bool operator==(const VideoFormat&, const VideoFormat&) = default;
};

/// A region of a media file's video on a track.
struct VideoClip {
    std::uint32_t id = 0;
    std::uint32_t fileId = kNoId;
    std::int64_t sourceInPoint = 0;
    std::int64_t duration = 0;
    std::int64_t startPoint = 0;
    double hue = 0;  ///< the host's number
    std::string name{};
    bool offline = false;
    bool selected = false;
    bool lockedInTime = false;
    std::int32_t zOrder = 0;
    std::optional<VideoFormat> format{};

    friend bool operator==(const VideoClip&, const VideoClip&) = default;
};

struct VideoTrack {
    std::uint32_t id = 0;
    std::uint32_t index = 0;  ///< its place in the list of tracks; set by a read, never written
    std::string name{};
    double hue = -1;          ///< the host's number
    std::int32_t height = 0;  ///< the host's number
    bool selected = false;
    bool minimized = false;
    std::vector<VideoClip> clips{};

    friend bool operator==(const VideoTrack&, const VideoTrack&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const VideoFormat& format);
ORVO_API std::ostream& operator<<(std::ostream& out, const VideoClip& clip);
ORVO_API std::ostream& operator<<(std::ostream& out, const VideoTrack& track);

}  // namespace orvo
