#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include <orvo/Model.h>
#include "toolkit/media/MediaProperties.h"

namespace toolkit {

/// What a file must have to stand for a missing one: what the audio clips that play it need, and
/// its content if that is known.
struct MediaNeeds {
    std::uint32_t sampleRate = 0;  ///< the session's, in which `length` counts
    double length = 0;             ///< in samples; 0: any
    std::uint32_t channels = 0;    ///< 0: any
    std::string digest{};          ///< SHA-256; empty: any

    bool AnyOfSound() const { return length > 0 || channels != 0; }
};

/// What the audio clips need of each file, by id. Files without audio clips are left out. The
/// length is 0 if the session has no sample rate.
std::unordered_map<std::uint32_t, MediaNeeds> FindMediaNeeds(const orvo::Session& session);

/// Whether a sound is long enough and has enough channels.
bool Fulfils(const MediaProperties& properties, const MediaNeeds& needs);

}  // namespace toolkit
