#pragma once

#include <string>
#include <string_view>

#include "format/effects/Component.h"
#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Reads the attributes of one of an owner's `Controls`.
template <const auto& Controls>
ComponentRecord ReadControl(const TagAttributes& attributes) {
    return ReadRecord<ComponentRecord, kComponentKeywordRows<Controls>, kKeywordComponentRows,
                      kEditorRectRows>(attributes);
}

/// Writes the component of a built-in control of a track, clip, send or rack, with the keyword as
/// its "id". If the host has no such component, writes nothing and succeeds.
bool WriteKeywordComponent(SessionXMLWriter& writer, std::u16string_view keyword,
                           HostReference<IQueryComponent> component);

/// The texts of a component while it is written.
struct ComponentTexts {
    InlineText guid;
    InlineText id;
    InlineText name;
    InlineText presetName;
};

/// Asks a component of any kind for its values. The record refers to `texts`.
ComponentRecord QueryComponent(IQueryComponent& component, ComponentTexts& texts);

/// Adds the place of the editor window, if the component has one.
void QueryEditorRect(IQueryComponent& component, AttributeMap& attributes);

}  // namespace tses
