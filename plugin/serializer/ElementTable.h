#pragma once

#include <boost/function.hpp>
#include <cstdint>
#include <string_view>
#include <vector>

#include "format/States.h"
#include "plugin/xml/TagAttributes.h"

namespace tses {

/// What happens at one element under one parent.
struct ElementEntry {
    std::u16string_view name;
    State parentState = states::unknown;
    /// Never empty. Pushes the element's own State, exactly once.
    boost::function<void(std::u16string_view name, const TagAttributes& attributes)> onStart;
    /// May be empty.
    boost::function<void(std::u16string_view name)> onEnd;
};

/// The accepted elements by name and parent; several entries may share a name and differ in the
/// parent.
class ElementTable {
public:
    explicit ElementTable(std::vector<ElementEntry> entries);

    /// The first entry of that name under that parent, null if there is none.
    const ElementEntry* Find(std::u16string_view name, State parentState) const;

    const std::vector<ElementEntry>& Entries() const { return entries_; }

private:
    std::vector<ElementEntry> entries_;  // in the order in which they were given
    // A hash table with linear probing. A place holds the number of an entry in the list, counted
    // from 1, or 0 if it is free.
    std::vector<std::uint16_t> places_;  // their number is a power of two
};

}  // namespace tses
