#pragma once

#include <span>
#include <string_view>

#include "platform/kelcore/Types.h"

/// What of a session file this version carries from file to file. The one list of it.
namespace toolkit {

/// What an attribute's value must be to be carried. Any other is read as if the attribute had not
/// been there.
enum class ValueKind { Text, Number, LongNumber, ChannelType, HandlerName };

struct CarriedAttribute {
    std::u16string_view name;
    ValueKind kind;
};

/// How often an element counts under one parent. Of several that count once the last one's
/// attributes hold, so that those of the others are lost. One that counts by id needs an "id" that
/// none of the others has.
enum class Occurrence { Once, ById, Many };

struct CarriedElement {
    std::u16string_view name;
    std::u16string_view parent;  ///< the name of the element that it stands in; empty for the root
    Occurrence occurrence;
    std::span<const CarriedAttribute> attributes;
};

/// The id of no thing: what an element without an id has.
inline constexpr kelcore::uint32 kNoId = 4294967295;

/// The name that the root of a session file has.
inline constexpr std::u16string_view kRootElement = u"orvo";

/// The row of an element that stands in `parent`; null when it is not carried there.
const CarriedElement* FindCarriedElement(std::u16string_view name, std::u16string_view parent);

/// The row of an attribute of the element; null when it is not carried.
const CarriedAttribute* FindCarriedAttribute(const CarriedElement& element,
                                             std::u16string_view name);

/// Whether the text is a value of that kind.
bool IsCarriedValue(ValueKind kind, std::u16string_view text);

}  // namespace toolkit
