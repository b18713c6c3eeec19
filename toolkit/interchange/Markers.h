#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <orvo/Model.h>

namespace toolkit::interchange {

/// A marker of the session's XMP packet.
struct Marker {
    std::int64_t start = 0;     ///< in samples of the session
    std::int64_t duration = 0;  ///< in samples of the session
    std::string name{};
    std::string comment{};

    friend bool operator==(const Marker&, const Marker&) = default;
};

/// The markers of all tracks of `xmpMetadata`, in its order. None if the packet is no XML.
std::vector<Marker> MarkersOf(const orvo::Session& session);

/// The same packet with these markers in a track of their own; a new packet if it is empty.
std::string WithMarkers(std::string_view xmpMetadata, const std::vector<Marker>& markers,
                        std::uint32_t sampleRate);

/// A property of a work, such as its title.
struct WorkProperty {
    std::string name{};  ///< in XMP, with its usual prefix: "dc:title"
    std::string value{};

    friend bool operator==(const WorkProperty&, const WorkProperty&) = default;
};

/// The simple texts of the packet's description, and the first items of its lists.
std::vector<WorkProperty> WorkPropertiesOf(const orvo::Session& session);

/// The same packet with these properties.
std::string WithWorkProperties(std::string_view xmpMetadata,
                               const std::vector<WorkProperty>& properties);

}  // namespace toolkit::interchange
