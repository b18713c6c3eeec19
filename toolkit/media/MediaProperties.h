#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>

namespace toolkit {

/// What a sound file contains.
struct MediaProperties {
    std::uint64_t frames = 0;  ///< samples of each channel
    std::uint32_t sampleRate = 0;
    std::uint32_t channels = 0;

    friend bool operator==(const MediaProperties&, const MediaProperties&) = default;
};

/// Why nothing is known of a file.
enum class MediaObstacle {
    Missing,  ///< there is no regular file
    Silent,   ///< the file system does not answer
    Refused,  ///< the system refuses to open it
    Unknown,  ///< it is damaged, or of another kind than libsndfile knows
};

using MediaResult = std::variant<MediaProperties, MediaObstacle>;

/// How long a file system may take to answer. One that hangs, such as that of a server that is
/// gone, would otherwise hold up everything.
inline constexpr std::chrono::seconds kMediaPatience{10};

/// Looks into a media file. Opens regular files only, so that a pipe is not waited for. A thread
/// that gets no answer in time is left behind and ends when the answer comes.
/// @param path      as the system's calls take it
/// @param patience  how long to wait; if not above 0, every regular file is silent
MediaResult ReadMediaProperties(const std::string& path,
                                std::chrono::milliseconds patience = kMediaPatience);

}  // namespace toolkit
