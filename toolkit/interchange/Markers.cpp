#include "toolkit/interchange/Markers.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

namespace toolkit::interchange {
namespace {

using pugi::xml_node;

// XMP is RDF: a property is an attribute of a description or a child of it. Prefixes are free in
// theory; all writers use these.
constexpr const char* kDescription = "rdf:Description";
constexpr const char* kTracks = "xmpDM:Tracks";
constexpr const char* kTrackName = "xmpDM:trackName";
constexpr const char* kMarkers = "xmpDM:markers";
constexpr const char* kFrameRate = "xmpDM:frameRate";
constexpr const char* kStartTime = "xmpDM:startTime";
constexpr const char* kDuration = "xmpDM:duration";
constexpr const char* kName = "xmpDM:name";
constexpr const char* kComment = "xmpDM:comment";

constexpr std::array<std::pair<const char*, const char*>, 4> kNamespaces = {
    {{"xmlns:rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
     {"xmlns:xmpDM", "http://ns.adobe.com/xmp/1.0/DynamicMedia/"},
     {"xmlns:dc", "http://purl.org/dc/elements/1.1/"},
     {"xmlns:dawproject", "urn:orvo:dawproject"}}};  // what only DAWproject knows of a work

/// Item of a list in RDF, which may hold its properties itself or in a description.
xml_node ContentOf(const xml_node& item) {
    const xml_node description = item.child(kDescription);
    return !description.empty() ? description : item;
}

std::string PropertyOf(const xml_node& owner, const char* name) {
    const pugi::xml_attribute attribute = owner.attribute(name);
    return !attribute.empty() ? attribute.value() : owner.child(name).text().get();
}

/// Calls `use` with the items of a list.
template <class Use>
void ForEachItem(const xml_node& list, const Use& use) {
    for (const xml_node& container : list.children()) {
        for (const xml_node& item : container.children("rdf:li")) {
            use(ContentOf(item));
        }
    }
}

std::optional<double> NumberOf(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The frames a second of "f48000" or "f30000s1001"; 1 for any other text.
double FrameRateOf(std::string_view text) {
    if (text.empty() || text[0] != 'f') {
        return 1;
    }
    const std::size_t separator = text.find('s');
    const auto count = NumberOf(text.substr(1, separator - 1));
    const auto base =
        separator == text.npos ? std::optional(1.0) : NumberOf(text.substr(separator + 1));
    return count && base && *count > 0 && *base > 0 ? *count / *base : 1;
}

std::optional<std::int64_t> SamplesOf(const std::string& text, double samplesPerFrame) {
    // The largest number of samples that a double counts exactly.
    constexpr double kMost = 9007199254740992.0;
    const auto frames = NumberOf(text);
    if (!frames || std::abs(*frames * samplesPerFrame) > kMost) {
        return std::nullopt;
    }
    return std::llround(*frames * samplesPerFrame);
}

void AddMarkers(std::vector<Marker>& markers, const xml_node& track, std::uint32_t sampleRate) {
    const double samplesPerFrame = sampleRate / FrameRateOf(PropertyOf(track, kFrameRate));
    ForEachItem(track.child(kMarkers), [&](const xml_node& item) {
        if (const auto start = SamplesOf(PropertyOf(item, kStartTime), samplesPerFrame)) {
            markers.push_back(
                {.start = *start,
                 .duration = SamplesOf(PropertyOf(item, kDuration), samplesPerFrame).value_or(0),
                 .name = PropertyOf(item, kName),
                 .comment = PropertyOf(item, kComment)});
        }
    });
}

/// The descriptions of the packet, in which all its properties stand.
std::vector<xml_node> DescriptionsOf(const pugi::xml_document& packet) {
    std::vector<xml_node> descriptions;
    const xml_node root = !packet.child("x:xmpmeta").empty()
                              ? packet.child("x:xmpmeta").child("rdf:RDF")
                              : packet.child("rdf:RDF");
    for (const xml_node& description : root.children(kDescription)) {
        descriptions.push_back(description);
    }
    return descriptions;
}

/// The packet as a document, empty if it is no XML.
pugi::xml_document Parsed(std::string_view packet) {
    pugi::xml_document document;
    if (!document.load_buffer(packet.data(), packet.size(), pugi::parse_full)) {
        document.reset();
    }
    return document;
}

/// A description of its own for what is added.
xml_node AddDescription(pugi::xml_document& packet) {
    xml_node meta = packet.child("x:xmpmeta");
    if (!meta) {
        packet.reset();
        meta = packet.append_child("x:xmpmeta");
        meta.append_attribute("xmlns:x") = "adobe:ns:meta/";
    }
    xml_node root = meta.child("rdf:RDF");
    if (!root) {
        root = meta.append_child("rdf:RDF");
        root.append_attribute(kNamespaces[0].first) = kNamespaces[0].second;
    }
    xml_node description = root.append_child(kDescription);
    description.append_attribute("rdf:about") = "";
    for (const auto& [name, address] : kNamespaces) {
        description.append_attribute(name) = address;
    }
    return description;
}

std::string TextOf(const pugi::xml_document& packet) {
    std::ostringstream text;
    packet.save(text, " ", pugi::format_default | pugi::format_no_declaration);
    return text.str();
}

void AddMarker(xml_node& list, const Marker& marker) {
    xml_node item = list.append_child("rdf:li").append_child(kDescription);
    item.append_attribute(kStartTime) = fmt::format("{}", marker.start).c_str();
    if (marker.duration != 0) {
        item.append_attribute(kDuration) = fmt::format("{}", marker.duration).c_str();
    }
    item.append_attribute(kName) = marker.name.c_str();
    if (!marker.comment.empty()) {
        item.append_attribute(kComment) = marker.comment.c_str();
    }
}

/// The text of a property: its own, or that of the first item of its list.
std::string SimpleTextOf(const xml_node& property) {
    const xml_node item = property.first_child().child("rdf:li");
    return !item.empty() ? item.text().get() : property.text().get();
}

}  // namespace

std::vector<Marker> MarkersOf(const orvo::Session& session) {
    std::vector<Marker> markers;
    const pugi::xml_document packet = Parsed(session.xmpMetadata);
    for (const xml_node& description : DescriptionsOf(packet)) {
        ForEachItem(description.child(kTracks),
                    [&](const xml_node& track) { AddMarkers(markers, track, session.sampleRate); });
    }
    return markers;
}

std::string WithMarkers(std::string_view xmpMetadata, const std::vector<Marker>& markers,
                        std::uint32_t sampleRate) {
    pugi::xml_document packet = Parsed(xmpMetadata);
    xml_node track = AddDescription(packet)
                         .append_child(kTracks)
                         .append_child("rdf:Bag")
                         .append_child("rdf:li")
                         .append_child(kDescription);
    track.append_attribute(kTrackName) = "Markers";
    track.append_attribute(kFrameRate) = fmt::format("f{}", sampleRate).c_str();
    xml_node list = track.append_child(kMarkers).append_child("rdf:Seq");
    for (const Marker& marker : markers) {
        AddMarker(list, marker);
    }
    return TextOf(packet);
}

std::vector<WorkProperty> WorkPropertiesOf(const orvo::Session& session) {
    std::vector<WorkProperty> properties;
    const pugi::xml_document packet = Parsed(session.xmpMetadata);
    for (const xml_node& description : DescriptionsOf(packet)) {
        for (const pugi::xml_attribute& attribute : description.attributes()) {
            properties.push_back({.name = attribute.name(), .value = attribute.value()});
        }
        for (const xml_node& property : description.children()) {
            properties.push_back({.name = property.name(), .value = SimpleTextOf(property)});
        }
    }
    return properties;
}

std::string WithWorkProperties(std::string_view xmpMetadata,
                               const std::vector<WorkProperty>& properties) {
    pugi::xml_document packet = Parsed(xmpMetadata);
    xml_node description = AddDescription(packet);
    for (const WorkProperty& property : properties) {
        description.append_child(property.name.c_str()).text().set(property.value.c_str());
    }
    return TextOf(packet);
}

}  // namespace toolkit::interchange
