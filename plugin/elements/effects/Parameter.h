#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes one "parameter", with its lane, for every index of the component that has a value.
bool WriteParameters(SessionXMLWriter& writer, IQueryComponent& component);

}  // namespace tses
