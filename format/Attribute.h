#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tses {

/// What the text of an attribute's value may be.
enum class ValueKind {
    Text,
    Unsigned,     ///< whole, of 32 bits; -1 is 4294967295
    Signed,       ///< whole, of 32 bits; 4294967295 is -1
    Long,         ///< whole, of 64 bits
    Real,         ///< of double precision; blanks around it, and a comma for the point, are fine
    Real32,       ///< of single precision, otherwise the same
    ExactReal32,  ///< of single precision, and nothing but the number
    Boolean,      ///< "true"; anything else is false
    BooleanOr1,   ///< "true" or "1"; anything else is false
    Keyword,      ///< one of some words
    KeywordOrNumber,  ///< one of some words, or the number that a word stands for
    Keywords,         ///< any number of some words, each followed by a space
    HandlerName,      ///< the name that people know a media handler by
};

/// When an attribute is written.
enum class Written {
    Always,
    UnlessEmpty,
    IfTrue,
    IfKnown,    ///< if the value is there and has a text
    Sometimes,  ///< the element's writer decides
    Never,
};

/// What the format says about an attribute, without the record that holds it.
struct Attribute {
    std::u16string_view name;
    ValueKind kind;
    std::span<const std::u16string_view> words;  ///< of the kinds that have some
    bool isRead;                                 ///< false for one that only people read
    Written written;
    bool isDropped;   ///< accepted in old files but ignored
    bool isAsBefore;  ///< if absent, that of the previous element of its kind
    /// The attribute whose presence makes this one ignored; empty if there is none.
    std::u16string_view yieldsTo;
    /// Returns the text that means the same as an absent attribute, or no value if absence has a
    /// meaning of its own. Null for an attribute that is not read or is ignored.
    std::optional<std::u16string> (*defaultText)();
    /// Returns the text that means the same as a value, such as the default for a text that is no
    /// number; no value if the value counts as an absent attribute. Null where `defaultText` is.
    std::optional<std::u16string> (*meaningOf)(std::u16string_view value);
};

}  // namespace tses
