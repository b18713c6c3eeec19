#pragma once

#include <boost/function.hpp>
#include <string_view>
#include <vector>

#include "plugin/serializer/States.h"
#include "plugin/xml/AttributeMap.h"

namespace tses {

/// What happens at one element under one parent.
struct ElementEntry {
    std::u16string_view name;
    State parentState = states::unknown;
    /// Never empty. Pushes the element's own State, exactly once.
    boost::function<void(std::u16string_view name, const AttributeMap& attributes)> onStart;
    /// May be empty.
    boost::function<void(std::u16string_view name)> onEnd;
};

/// The accepted elements by name; several entries may share a name and differ in the parent.
/// Entries of one name keep the order in which they were given.
class ElementTable {
public:
    ElementTable() = default;
    explicit ElementTable(std::vector<ElementEntry> entries);

    /// The first entry of that name under that parent, null if there is none.
    const ElementEntry* Find(std::u16string_view name, State parentState) const;

    const std::vector<ElementEntry>& Entries() const { return entries_; }

private:
    std::vector<ElementEntry> entries_;
};

}  // namespace tses
