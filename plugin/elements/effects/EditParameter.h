#pragma once

#include "format/effects/Parameter.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the "editParameter" elements of a track or clip, except those that name no slot.
template <class Owner>
bool WriteEditParameters(SessionXMLWriter& writer, Owner& owner) {
    return ForEachItem(writer, owner.GetEditParameterCount(), [&](kelcore::uint32 index) {
        EditParameterRecord record;
        owner.GetEditParameter(index, record.slotIndex, record.parameterIndex);
        return record.slotIndex == kNoId ||
               (writer.StartElement(names::editParameter,
                                    ToAttributes<kEditParameterRows>(record)) &&
                writer.EndElement());
    });
}

}  // namespace tses
