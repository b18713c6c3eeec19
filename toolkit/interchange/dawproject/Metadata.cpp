#include "toolkit/interchange/dawproject/Metadata.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <pugixml.hpp>
#include <vector>

#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Markers.h"
#include "toolkit/interchange/XmlWriter.h"
#include "toolkit/interchange/dawproject/Entries.h"

namespace toolkit::interchange::dawproject {
namespace {

struct Item {
    const char* element;
    std::string_view property;  // in XMP
};

/// In the order of the document. What XMP has no property for is in a namespace of its own.
constexpr std::array<Item, 13> kItems = {{
    {"Title", "dc:title"},
    {"Artist", "xmpDM:artist"},
    {"Album", "xmpDM:album"},
    {"OriginalArtist", "dawproject:originalArtist"},
    {"Composer", "xmpDM:composer"},
    {"Songwriter", "dawproject:songwriter"},
    {"Producer", "dawproject:producer"},
    {"Arranger", "dawproject:arranger"},
    {"Year", "xmpDM:releaseDate"},
    {"Genre", "xmpDM:genre"},
    {"Copyright", "dc:rights"},
    {"Website", "dawproject:website"},
    {"Comment", "xmpDM:logComment"},
}};

/// Names of namespaces, the tracks of markers and what the packet is about say nothing of the work.
bool IsOfWork(const WorkProperty& property) {
    return !property.name.starts_with("xmlns") && !property.name.starts_with("rdf:") &&
           property.name != "xmpDM:Tracks" && !property.value.empty();
}

}  // namespace

std::string MetadataOf(const orvo::Session& session, Reporter& reporter) {
    std::vector<WorkProperty> properties = WorkPropertiesOf(session);
    std::erase_if(properties, std::not_fn(IsOfWork));
    std::size_t written = 0;
    std::string text;
    XmlWriter xml([&](std::string_view block) { text += block; });
    xml.Open("MetaData");
    for (const Item& item : kItems) {
        const auto property = std::ranges::find(properties, item.property, &WorkProperty::name);
        if (property != properties.end()) {
            xml.Open(item.element).Text(property->value);
            xml.Close();
            ++written;
        }
    }
    xml.Close();
    reporter.CountLost("properties of the metadata", properties.size() - written);
    if (!session.xmpMetadata.empty()) {
        reporter.Add(orvo::Fidelity::Moved, ModelPath() / &orvo::Session::xmpMetadata,
                     "properties and markers of the packet are where the format has them",
                     fmt::format("{} bytes", session.xmpMetadata.size()));
    }
    return text;
}

std::string XmpOfMetadata(std::string_view document, Reporter& reporter) {
    pugi::xml_document metadata;
    if (!metadata.load_buffer(document.data(), document.size())) {
        reporter.Add(orvo::Fidelity::Lost, kMetadataEntry, "the metadata are no XML");
        return {};
    }
    std::vector<WorkProperty> properties;
    for (const Item& item : kItems) {
        const std::string value = metadata.child("MetaData").child(item.element).text().get();
        if (!value.empty()) {
            properties.push_back({.name = std::string(item.property), .value = value});
        }
    }
    return properties.empty() ? "" : WithWorkProperties({}, properties);
}

}  // namespace toolkit::interchange::dawproject
