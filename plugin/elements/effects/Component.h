#pragma once

#include <string_view>

#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the component of a control that a track, clip, send or rack has by nature, under its
/// keyword as "id". None is written for a component that the host does not have, and that is
/// success.
bool WriteKeywordComponent(SessionXMLWriter& writer, std::u16string_view keyword,
                           HostReference<IQueryComponent> component);

/// Adds the preset's name, if the component has one, and whether its editor window is open.
void QueryPresetAndVisibility(IQueryComponent& component, AttributeMap& attributes);

/// Adds the place of the editor window, if it has one.
void QueryEditorRect(IQueryComponent& component, AttributeMap& attributes);

}  // namespace tses
