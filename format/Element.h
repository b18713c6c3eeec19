#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "format/Attribute.h"
#include "format/States.h"

namespace tses {

/// What the character data in an element is.
enum class TextKind {
    None,  ///< layout
    Plain,
    Base64,  ///< bytes
};

/// How often an element counts, and what tells several apart.
struct Occurrence {
    /// Where two elements must not have the same key.
    enum class Unique { Nowhere, InParent, InSession };
    /// What becomes of an element without the key, or whose key is `kNoId`.
    enum class WithoutKey {
        IsCarried,
        IsNotSaved,  ///< the host gets it, but it is not written
        IsLost,
        EndsTheRead,
    };

    /// Of several under one parent, the attributes of the last one hold.
    bool once = false;
    /// The attribute that tells the elements apart; empty if there is none.
    std::u16string_view key = {};
    bool mayNameNone = false;  ///< whether `kNoId` counts as a missing key
    WithoutKey withoutKey = WithoutKey::IsCarried;
    Unique unique = Unique::Nowhere;
    /// What people call the elements, of whatever name, that share their keys in the session.
    std::string_view among = {};
};

/// One kind of element, at the places where it stands. If its start or end means something else in
/// another place, it is another kind there.
struct Element {
    std::u16string_view name;
    std::span<const State> parents;  ///< empty only for the root
    State state;                     ///< what its start pushes
    Occurrence occurrence = {};
    std::span<const Attribute> attributes = {};
    TextKind text = TextKind::None;
    /// Whether it is accepted in old files but ignored, with everything in it.
    bool isDropped = false;
    /// Whether it exists only with the application's feature of instrument tracks.
    bool needsInstrumentTracks = false;

    constexpr bool StandsIn(State parent) const {
        return std::ranges::find(parents, parent) != parents.end();
    }

    /// The attribute of that name; null if the element has none.
    constexpr const Attribute* FindAttribute(std::u16string_view attributeName) const {
        const auto found = std::ranges::find(attributes, attributeName, &Attribute::name);
        return found != attributes.end() ? &*found : nullptr;
    }
};

}  // namespace tses
