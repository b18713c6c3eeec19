#pragma once

#include <span>
#include <string_view>

#include "platform/kelcore/Types.h"
#include "toolkit/ValueKind.h"

/// What of a session file this version carries from file to file. The one list of it.
namespace toolkit {

struct CarriedAttribute {
    std::u16string_view name;
    ValueKind kind;
    std::span<const std::u16string_view> words = {};  ///< of a kind that has some
    /// The attribute beside which this one does not count; empty: there is none.
    std::u16string_view yieldsTo = {};
};

/// The id of no thing: what an element without an id has.
inline constexpr kelcore::uint32 kNoId = 4294967295;

/// How often an element counts.
struct Occurrence {
    /// Where two must not have the same key.
    enum class Unique { Nowhere, InParent, InSession };
    /// What becomes of an element without the key, or with that of no thing. One that is not saved
    /// is read, so that JSON has it.
    enum class WithoutKey { IsCarried, IsNotSaved, IsLost, EndsTheRead };

    /// Of several under one parent the last one's attributes hold; those of the others are lost.
    bool once = false;
    /// The attribute that tells the elements apart; empty: none does.
    std::u16string_view key = {};
    bool mayNameNone = false;  ///< whether the number `kNoId` is no key
    WithoutKey withoutKey = WithoutKey::IsCarried;
    Unique unique = Unique::Nowhere;
    /// What the elements of all names are that share their keys in the session.
    std::string_view among = {};
};

/// What the character data in an element are.
enum class TextKind { None, Plain, Base64 };

struct CarriedElement {
    std::u16string_view name;
    /// The scopes of the elements that it stands in; empty for the root.
    std::span<const std::u16string_view> parents;
    Occurrence occurrence;
    std::span<const CarriedAttribute> attributes;
    /// What its children name as their parent: its name, unless elements of one name differ in what
    /// may stand in them.
    std::u16string_view scope;
    TextKind text = TextKind::None;
};

/// The name that the root of a session file has.
inline constexpr std::u16string_view kRootElement = u"orvo";

/// The row of an element that stands in an element of that scope (empty: the row of the root); null
/// when it is not carried there.
const CarriedElement* FindCarriedElement(std::u16string_view name, std::u16string_view parentScope);

/// The row of an attribute of the element; null when it is not carried.
const CarriedAttribute* FindCarriedAttribute(const CarriedElement& element,
                                             std::u16string_view name);

}  // namespace toolkit
