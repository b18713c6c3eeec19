#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "toolkit/interchange/dawproject/DeviceReader.h"
#include "toolkit/interchange/dawproject/Targets.h"

namespace toolkit::interchange::dawproject {

/// Where a track of the document stands in the session.
struct TrackPlace {
    bool isVideo = false;
    std::size_t number = 0;  ///< in `videoTracks` or `audioTracks`
};

/// What else the reading needs of the structure.
struct Structure {
    std::unordered_map<std::string, TrackPlace> tracks{};  ///< by the ids of tracks and channels
    Targets targets{};
};

/// Reads the element "Structure" into the session's tracks, which have no clips yet.
Structure ReadStructure(const ProjectDocument& document, const EntryReader& readEntry,
                        orvo::Session& session);

}  // namespace toolkit::interchange::dawproject
