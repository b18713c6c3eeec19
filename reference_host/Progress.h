#pragma once

#include <functional>

#include "platform/kelcore/Types.h"

namespace refhost {

/// One report of a read or write: `done` of `total` steps are complete.
struct Progress {
    kelcore::uint32 done = 0;
    kelcore::uint32 total = 0;
    kelcore::uint32 reserved = 0;
    /// In a write, from the second report on: 1 if the document's version could be set.
    kelcore::uint32 flag = 0;

    friend bool operator==(const Progress&, const Progress&) = default;
};

/// `done` of `total` audio tracks have been written.
using TrackListener = std::function<void(kelcore::uint32 done, kelcore::uint32 total)>;

/// A read begins a part of the session: a file, a track, a clip, an effect, a send, ...
using PartListener = std::function<void()>;

using ProgressListener = std::function<void(const Progress&)>;

}  // namespace refhost
