#pragma once

#include "platform/kelcore/Types.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Calls `visit` with every index of a host's list, until `visit` returns false; then returns false
/// as well. Also returns false, without calling `visit`, if the list is longer than a document may
/// hold: a host may report any count, and nothing may be allocated or walked by it before this
/// check.
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
