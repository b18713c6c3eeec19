#pragma once

#include <span>
#include <string_view>

#include "toolkit/Conversion.h"

namespace toolkit {

/// What an attribute's value must be for a reader to take it as it stands. Any other is read as if
/// the attribute had not been there, or as something else.
enum class ValueKind {
    Text,
    Number,           ///< whole, of 32 bits, with or without sign
    LongNumber,       ///< whole, of 64 bits
    Real,             ///< blanks around it, and a comma for the point, do not matter
    Real32,           ///< the same of single precision
    ExactReal32,      ///< where they do matter
    Boolean,          ///< "true", "false" or, which is false to every reader, "0"
    BooleanOr1,       ///< or "1"
    Keyword,          ///< one of some words
    KeywordOrNumber,  ///< or a word's place among them, from 0; in JSON, whole, of 32 bits
    Keywords,         ///< any number of them, with one blank behind each; the last may go without
    HandlerName,      ///< of a part of the program that reads media, for people
};

/// Whether the text is a value of that kind, and stays that in the target; `words` are those of a
/// kind that has some.
bool IsValue(ValueKind kind, std::span<const std::u16string_view> words, std::u16string_view text,
             Target target = Target::SessionFile);

}  // namespace toolkit
