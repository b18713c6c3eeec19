#pragma once

#include <algorithm>
#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "format/Attribute.h"
#include "format/InlineText.h"
#include "format/Keywords.h"
#include "format/ValueEncoding.h"
#include "format/ValueText.h"

/// How the values of attributes stand in a document, one type per encoding:
///
///     kKind, Words()      what its text may be
///     Read(text, value)   sets the value. A `bool` result says whether the text means one.
///     Write(value, text)  appends the text. Whether the value has one: others are not written.
///
/// Each encoding says what it makes of a text or a value outside its range.
namespace tses::encoding {

struct Plain {
    static constexpr std::span<const std::u16string_view> Words() { return {}; }
};

inline bool Put(std::u16string_view value, ValueText& text) {
    text.Append(value);
    return true;
}

template <class Value>
bool PutNumber(Value value, ValueText& text) {
    AppendNumber(value, text);
    return true;
}

struct Text : Plain {
    static constexpr ValueKind kKind = ValueKind::Text;

    static void Read(std::u16string_view text, std::u16string& value) { value = text; }
    static void Read(std::u16string_view text, InlineText& value) { value = text; }
    /// A view of the tag's own text, which is zero-terminated.
    static void Read(std::u16string_view text, std::u16string_view& value) { value = text; }
    static bool Write(std::u16string_view value, ValueText& text) { return Put(value, text); }
};

/// The whole text must be a number; any other text leaves the default.
template <class Value>
struct Number : Plain {
    static constexpr ValueKind kKind = std::same_as<Value, kelcore::uint32>  ? ValueKind::Unsigned
                                       : std::same_as<Value, kelcore::int32> ? ValueKind::Signed
                                       : std::same_as<Value, kelcore::int64>
                                           ? ValueKind::Long
                                           : ValueKind::ExactReal32;

    static void Read(std::u16string_view text, Value& value) { ParseNumber(text, value); }
    static bool Write(Value value, ValueText& text) { return PutNumber(value, text); }
};

/// A number, except that 0 reads as another one.
template <class Value, Value InsteadOf0>
struct NumberExcept0 : Number<Value> {
    static void Read(std::u16string_view text, Value& value) {
        ParseNumber(text, value);
        if (value == 0) {
            value = InsteadOf0;
        }
    }
};

/// Reads like a stream: leading blanks, a tail, and a comma for the point do no harm. A text that
/// does not begin with a number is 0.
template <class Value>
struct LenientReal : Plain {
    static constexpr ValueKind kKind =
        std::same_as<Value, double> ? ValueKind::Real : ValueKind::Real32;

    static void Read(std::u16string_view text, float& value) { value = ParseFloatLenient(text); }
    static void Read(std::u16string_view text, double& value) { value = ParseDoubleLenient(text); }
    static bool Write(Value value, ValueText& text) { return PutNumber(value, text); }
};

/// True only for "true".
struct StrictBool : Plain {
    static constexpr ValueKind kKind = ValueKind::Boolean;

    static void Read(std::u16string_view text, bool& value) { value = ParseBoolStrict(text); }
    static bool Write(bool value, ValueText& text) { return Put(FormatBool(value), text); }
};

/// True for "true" and "1".
struct LenientBool : Plain {
    static constexpr ValueKind kKind = ValueKind::BooleanOr1;

    static void Read(std::u16string_view text, bool& value) { value = ParseBoolLenient(text); }
    static bool Write(bool value, ValueText& text) { return Put(FormatBool(value), text); }
};

template <const auto& Table>
struct Worded {
    static constexpr ValueKind kKind = ValueKind::Keyword;
    static constexpr std::span<const std::u16string_view> Words() { return kWordsOf<Table>; }
};

/// Only the exact text or value of the first word gives it; everything else gives the second.
template <const auto& Table>
struct FirstOfTwo : Worded<Table> {
    static_assert(std::size(Table) == 2);

    template <class Value>
    static void Read(std::u16string_view text, Value& value) {
        value = Table[text == Table[0].text ? 0 : 1].value;
    }
    template <class Value>
    static bool Write(Value value, ValueText& text) {
        return Put(Table[value == Table[0].value ? 0 : 1].text, text);
    }
};

/// Any other text leaves the default. A value without a word is not written.
template <const auto& Table>
struct KnownWord : Worded<Table> {
    template <class Value>
    static bool Read(std::u16string_view text, Value& value) {
        const auto found = FindValue(Table, text);
        if (found) {
            value = static_cast<Value>(*found);
        }
        return found.has_value();
    }
    template <class Value>
    static bool Write(Value value, ValueText& text) {
        using Known = std::remove_cvref_t<decltype(Table[0].value)>;
        const auto word = FindKeyword(Table, static_cast<Known>(value), u"");
        return !word.empty() && Put(word, text);
    }
};

/// Any other text leaves the default. A value without a word is written as the word of `Otherwise`.
template <const auto& Table, auto Otherwise>
struct KnownWordOr : KnownWord<Table> {
    template <class Value>
    static bool Write(Value value, ValueText& text) {
        return KnownWord<Table>::Write(value, text) ||
               Put(FindKeyword(Table, Otherwise, u""), text);
    }
};

/// Any other text leaves the default. A value without a word is written as its number, which
/// reading does not accept.
template <const auto& Table>
struct KnownWordElseNumber : KnownWord<Table> {
    template <class Value>
    static bool Write(Value value, ValueText& text) {
        return KnownWord<Table>::Write(value, text) || PutNumber(value, text);
    }
};

/// A word or its number. Numbers without a word are read as they are and written as the last word.
template <const auto& Table>
struct WordOrNumber : Worded<Table> {
    static constexpr ValueKind kKind = ValueKind::KeywordOrNumber;

    template <class Value>
    static void Read(std::u16string_view text, Value& value) {
        if (const auto known = FindValue(Table, text)) {
            value = *known;
        } else {
            ParseNumber(text, value);
        }
    }
    template <class Value>
    static bool Write(Value value, ValueText& text) {
        return Put(FindKeyword(Table, value, std::end(Table)[-1].text), text);
    }
};

/// A word that is kept as it stands, whether the table has it or not.
template <const auto& Table>
struct WordAsText : Text {
    static constexpr ValueKind kKind = ValueKind::Keyword;
    static constexpr std::span<const std::u16string_view> Words() { return Table; }
};

/// Words, each followed by a space, the last one too. Reading skips everything else, including the
/// empty text between two spaces; a value without a word is not written.
template <const auto& Table>
struct WordList : Worded<Table> {
    static constexpr ValueKind kKind = ValueKind::Keywords;

    template <class Value>
    static void Read(std::u16string_view text, std::vector<Value>& values) {
        while (!text.empty()) {
            const std::u16string_view piece = text.substr(0, text.find(u' '));
            if (const auto value = FindValue(Table, piece)) {
                values.push_back(*value);
            }
            text.remove_prefix(std::min(piece.size() + 1, text.size()));
        }
    }
    template <class Value>
    static bool Write(const std::vector<Value>& values, ValueText& text) {
        for (const Value value : values) {
            const auto word = FindKeyword(Table, value, u"");
            if (!word.empty()) {
                text.Append(word);
                text.Append(u' ');
            }
        }
        return true;
    }
};

}  // namespace tses::encoding
