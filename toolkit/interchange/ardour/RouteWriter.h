#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/MixerPlan.h"
#include "toolkit/interchange/ardour/ArdourXml.h"

namespace toolkit::interchange {

/// A track, bus or master as Ardour has it.
struct ArdourRoute {
    PlannedTrack planned{};  ///< without a track for a master that the session does not have
    std::string name{};      ///< unlike that of any other
    std::uint64_t id = 0;
    std::uint64_t playlist = 0;  ///< its id; 0 for a bus and the master
    std::uint32_t channels = 2;
    std::size_t order = 0;
    bool isMaster = false;
};

/// A send of a route.
struct ArdourSend {
    PlannedSend send{};
    const ArdourRoute* target = nullptr;
    std::size_t slot = 0;  ///< unlike that of any other send
};

/// Writes a route. Reports what its controls lose.
/// @param output  the route that it feeds; null for the master
void WriteArdourRoute(const ArdourRoute& route, const ArdourRoute* output,
                      const std::vector<ArdourSend>& sends, ArdourXml& out, const Export& job);

}  // namespace toolkit::interchange
