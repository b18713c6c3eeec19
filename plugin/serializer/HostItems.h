#pragma once

#include "platform/kelcore/Types.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Calls `visit` with every index of a host's list, until it returns false. False if it did, or,
/// without a single call, if the list is longer than the document takes: the count is the host's
/// word alone, and nothing may be sized or walked by it before it is checked.
template <class Visit>
bool ForEachItem(SessionXMLWriter& writer, kelcore::uint32 count, Visit&& visit) {
    if (!writer.TakesItems(count)) {
        return false;
    }
    for (kelcore::uint32 index = 0; index < count; ++index) {
        if (!visit(index)) {
            return false;
        }
    }
    return true;
}

}  // namespace tses
