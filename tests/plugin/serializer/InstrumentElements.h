#pragma once

#include <string_view>

namespace tses {

/// The elements that are read only if the host supports instrument tracks.
inline constexpr std::string_view kInstrumentElements[] = {
    "instrumentTrack",     "midiClip",          "midiEvents", "globalTrackInfo", "tempoEvents",
    "timeSignatureEvents", "keySignatureEvents"};

}  // namespace tses
