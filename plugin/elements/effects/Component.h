#pragma once

#include <string>
#include <string_view>

#include "format/effects/Component.h"
#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Reads the component of one of an owner's `Controls`.
template <const auto& Controls>
ComponentRecord ReadControl(const TagAttributes& attributes) {
    return ReadRecord<ComponentRecord, kComponentKeywordRows<Controls>, kKeywordComponentRows,
                      kEditorRectRows>(attributes);
}

/// Writes the component of a control that a track, clip, send or rack has by nature, under its
/// keyword as "id". Nothing for a component that the host does not have, and that is success.
bool WriteKeywordComponent(SessionXMLWriter& writer, std::u16string_view keyword,
                           HostReference<IQueryComponent> component);

/// The texts of a component that is written.
struct ComponentTexts {
    std::u16string guid;
    std::u16string id;
    std::u16string name;
    std::u16string presetName;
};

/// Asks a component of any kind what it is. The record refers to `texts`.
ComponentRecord QueryComponent(IQueryComponent& component, ComponentTexts& texts);

/// Adds the place of the editor window, if it has one.
void QueryEditorRect(IQueryComponent& component, AttributeMap& attributes);

}  // namespace tses
