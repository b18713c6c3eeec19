#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

#include "format/Elements.h"

namespace tses {

/// Whom a text in a session belongs to.
enum class TextMeaning {
    OfThePrograms,  ///< of the application and its effects: says nothing of the user
    Name,           ///< given by a person, or by the person's equipment
    Path,
    Free,  ///< anything that a program or a person wrote
};

struct TextOwner {
    std::u16string_view name;  ///< the attribute's; that of the element for its text
    State state;               ///< the element's; `unknown` for all others with the name
    TextMeaning meaning;
    const char* thing = "";  ///< what a name names
};

namespace text_owners {

using enum TextMeaning;
using namespace states;

/// The first row that fits holds.
inline constexpr TextOwner kAttributes[] = {
    {names::absolutePath, unknown, Path},
    {names::appBuild, unknown, OfThePrograms},
    {names::appVersion, unknown, OfThePrograms},
    {names::componentGuid, unknown, OfThePrograms},
    {names::componentID, unknown, OfThePrograms},
    {names::importerPrivateSettings, unknown, Free},
    {names::inputID, audioDevice, Name, "Device"},
    {names::key, property, Name, "Key"},
    {names::mediaHandler, unknown, OfThePrograms},
    {names::mediaHandlerID, unknown, OfThePrograms},
    {names::midiIn, unknown, Name, "Port"},
    {names::name, audioClip, Name, "Clip"},
    {names::name, audioPort, Name, "Port"},
    {names::name, component, OfThePrograms},
    {names::name, midiClip, Name, "Clip"},
    {names::name, parameter, OfThePrograms},
    {names::name, slotComponent, OfThePrograms},
    {names::name, trackVisibilityPreset, Name, "View"},
    {names::name, videoClip, Name, "Clip"},
    {names::outputID, audioDevice, Name, "Device"},
    {names::preRenderedFile, unknown, Path},
    {names::presetName, unknown, Name, "Preset"},
    {names::properties, unknown, Free},
    {names::recoveryID, unknown, Free},
    {names::relativePath, unknown, Path},
    {names::version, unknown, OfThePrograms},
};

/// Of elements with plain text, by the elements around them.
inline constexpr TextOwner kTexts[] = {
    {names::busConfig, slotComponent, OfThePrograms}, {names::name, clipGroup, Name, "Group"},
    {names::name, session, Name, "Session"},          {names::name, trackParameters, Name, "Track"},
    {names::property, sessionProperties, Free},       {names::xmpMetadata, session, Free},
};

constexpr bool IsText(ValueKind kind) {
    return kind == ValueKind::Text || kind == ValueKind::HandlerName;
}

}  // namespace text_owners

/// Whose the value of an attribute is; empty for numbers and keywords.
constexpr std::optional<TextOwner> OwnerOfAttribute(const Element& element,
                                                    const Attribute& attribute) {
    if (!text_owners::IsText(attribute.kind)) {
        return std::nullopt;
    }
    for (const TextOwner& row : text_owners::kAttributes) {
        if (row.name == attribute.name &&
            (row.state == states::unknown || row.state == element.state)) {
            return row;
        }
    }
    return std::nullopt;
}

/// Whose the plain text of an element is; empty if it has none.
/// @param parent  the State of the element around it
constexpr std::optional<TextOwner> OwnerOfText(const Element& element, State parent) {
    if (element.text != TextKind::Plain) {
        return std::nullopt;
    }
    for (const TextOwner& row : text_owners::kTexts) {
        if (row.name == element.name && row.state == parent) {
            return row;
        }
    }
    return std::nullopt;
}

namespace text_owners {

consteval bool AreComplete() {
    return std::ranges::all_of(kElements, [](const Element& element) {
        const bool attributes =
            std::ranges::all_of(element.attributes, [&](const Attribute& attribute) {
                return !IsText(attribute.kind) || OwnerOfAttribute(element, attribute).has_value();
            });
        const bool texts = std::ranges::all_of(element.parents, [&](State parent) {
            return element.text != TextKind::Plain || OwnerOfText(element, parent).has_value();
        });
        return attributes && texts;
    });
}
static_assert(AreComplete(), "every attribute and element with a text has a row");

}  // namespace text_owners

}  // namespace tses
