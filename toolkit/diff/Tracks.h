#pragma once

#include <cstddef>

#include <orvo/Session.h>

namespace orvo::diff {

/// The track of an index as in `SessionMatch`: behind the last one stands the metronome's.
template <class Owner>
auto& AudioTrackAt(Owner& session, std::size_t index) {
    return index < session.audioTracks.size() ? session.audioTracks[index]
                                              : *session.metronome.track;
}

}  // namespace orvo::diff
