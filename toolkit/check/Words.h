#pragma once

#include <cstdint>
#include <string>

#include <orvo/Model.h>

/// The wording of findings.
namespace toolkit {

/// A text in quotes, on one line.
std::string InQuotes(const std::string& text);

/// `clip 4 "Drums"`; without the name if there is none.
std::string Named(const char* kind, std::uint32_t id, const std::string& name);

inline std::string NameOf(const orvo::AudioTrack& track) {
    return Named("track", track.id, track.name);
}

/// A media file is known by its path.
inline std::string NameOf(const orvo::File& file) {
    return Named("file", file.id, file.path);
}

template <class Clip>
requires requires(const Clip& clip) {
    clip.sourceInPoint;
}
std::string NameOf(const Clip& clip) {
    return Named("clip", clip.id, clip.name);
}

}  // namespace toolkit
