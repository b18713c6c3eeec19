#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "format/Encodings.h"

/// An element's attributes, as one table of rows that serves both directions:
///
///     inline constexpr auto kFadeRows = Rows(
///         FirstOfTwo<&FadeRecord::crossFadeLinkType, kLinkTypes>(names::crossFadeLinkType),
///         Number<&FadeRecord::endPoint>(names::endPoint), ...
///
/// A row is named after its encoding (Encodings.h), which states the attribute's oddities. The
/// member's initialiser is its default. A `std::optional` member tells an absent attribute from
/// every value; an empty one is not written. Rows stand in the order of their names: if two fill
/// one member, the later name wins.
namespace tses {

template <class Member>
struct MemberTraits;
template <class OwnerType, class ValueType>
struct MemberTraits<ValueType OwnerType::*> {
    using Owner = OwnerType;
    using Value = ValueType;
};

template <class Value>
inline constexpr bool kIsOptional = false;
template <class Value>
inline constexpr bool kIsOptional<std::optional<Value>> = true;

template <class Value>
struct WithoutOptionalOf {
    using type = Value;
};
template <class Value>
struct WithoutOptionalOf<std::optional<Value>> {
    using type = Value;
};

/// The type of a member's value, when it has one.
template <auto Member>
using ValueOf = typename WithoutOptionalOf<typename MemberTraits<decltype(Member)>::Value>::type;

template <auto Member, class EncodingType>
struct Row {
    using Encoding = EncodingType;
    using Record = typename MemberTraits<decltype(Member)>::Owner;
    using Value = typename MemberTraits<decltype(Member)>::Value;

    std::u16string_view name;
    Written written = kIsOptional<Value> ? Written::IfKnown : Written::Always;
    bool isRead = true;
    bool isDropped = false;
    bool isAsBefore = false;
    std::u16string_view yieldsTo = {};

    static void Read(std::u16string_view text, Record& record) {
        Value& member = record.*Member;
        if constexpr (!kIsOptional<Value>) {
            Encoding::Read(text, member);
        } else if constexpr (typename Value::value_type value{};
                             std::is_same_v<decltype(Encoding::Read(text, value)), bool>) {
            if (Encoding::Read(text, value)) {
                member = value;
            }
        } else {
            Encoding::Read(text, member.emplace());
        }
    }

    /// Appends the text of the record's value. Returns whether it is written.
    bool Write(const Record& record, ValueText& text) const {
        const std::size_t begin = text.Size();
        return WriteValue(record.*Member, text) &&
               (written != Written::UnlessEmpty || text.Size() != begin);
    }

    static std::optional<std::u16string> DefaultText() { return TextOf(Record{}); }

    static std::optional<std::u16string> MeaningOf(std::u16string_view value) {
        Record record{};
        Read(value, record);
        return TextOf(record);
    }

    constexpr Attribute Describe() const {
        return {.name = name,
                .kind = Encoding::kKind,
                .words = Encoding::Words(),
                .isRead = isRead,
                .written = written,
                .isDropped = isDropped,
                .isAsBefore = isAsBefore,
                .yieldsTo = yieldsTo,
                .defaultText = isRead && !isDropped ? &DefaultText : nullptr,
                .meaningOf = isRead && !isDropped ? &MeaningOf : nullptr};
    }

private:
    static std::optional<std::u16string> TextOf(const Record& record) {
        ValueText text;
        return Row{}.Write(record, text) ? std::optional(text.ToString()) : std::nullopt;
    }

    bool WriteValue(const Value& value, ValueText& text) const {
        if constexpr (kIsOptional<Value>) {
            return value && Encoding::Write(*value, text);
        } else if constexpr (std::is_same_v<Value, bool>) {
            return (value || written != Written::IfTrue) && Encoding::Write(value, text);
        } else {
            return Encoding::Write(value, text);
        }
    }
};

template <auto Member>
consteval auto Text(std::u16string_view name) {
    return Row<Member, encoding::Text>{name};
}
template <auto Member>
consteval auto Number(std::u16string_view name) {
    return Row<Member, encoding::Number<ValueOf<Member>>>{name};
}
template <auto Member, auto InsteadOf0>
consteval auto NumberExcept0(std::u16string_view name) {
    return Row<Member, encoding::NumberExcept0<ValueOf<Member>, InsteadOf0>>{name};
}
template <auto Member>
consteval auto LenientReal(std::u16string_view name) {
    return Row<Member, encoding::LenientReal<ValueOf<Member>>>{name};
}
template <auto Member>
consteval auto StrictBool(std::u16string_view name) {
    return Row<Member, encoding::StrictBool>{name};
}
template <auto Member>
consteval auto LenientBool(std::u16string_view name) {
    return Row<Member, encoding::LenientBool>{name};
}
template <auto Member, const auto& Table>
consteval auto FirstOfTwo(std::u16string_view name) {
    return Row<Member, encoding::FirstOfTwo<Table>>{name};
}
template <auto Member, const auto& Table>
consteval auto KnownWord(std::u16string_view name) {
    return Row<Member, encoding::KnownWord<Table>>{name, Written::IfKnown};
}
template <auto Member, const auto& Table, auto Otherwise>
consteval auto KnownWordOr(std::u16string_view name) {
    return Row<Member, encoding::KnownWordOr<Table, Otherwise>>{name, Written::Always};
}
template <auto Member, const auto& Table>
consteval auto KnownWordElseNumber(std::u16string_view name) {
    return Row<Member, encoding::KnownWordElseNumber<Table>>{name};
}
template <auto Member, const auto& Table>
consteval auto WordOrNumber(std::u16string_view name) {
    return Row<Member, encoding::WordOrNumber<Table>>{name};
}
template <auto Member, const auto& Words>
consteval auto WordAsText(std::u16string_view name) {
    return Row<Member, encoding::WordAsText<Words>>{name};
}
template <auto Member, const auto& Table>
consteval auto WordList(std::u16string_view name) {
    return Row<Member, encoding::WordList<Table>>{name};
}

template <auto Member, class Encoding>
consteval auto UnlessEmpty(Row<Member, Encoding> row) {
    row.written = Written::UnlessEmpty;
    return row;
}
template <auto Member, class Encoding>
consteval auto IfTrue(Row<Member, Encoding> row) {
    row.written = Written::IfTrue;
    return row;
}
template <auto Member, class Encoding>
consteval auto ReadOnly(Row<Member, Encoding> row) {
    row.written = Written::Never;
    return row;
}
template <auto Member, class Encoding>
consteval auto WriteOnly(Row<Member, Encoding> row) {
    row.isRead = false;
    return row;
}
/// Written if the encoding has a text for the value.
template <auto Member, class Encoding>
consteval auto IfKnown(Row<Member, Encoding> row) {
    row.written = Written::IfKnown;
    return row;
}
/// Written when the element's writer says so.
template <auto Member, class Encoding>
consteval auto Sometimes(Row<Member, Encoding> row) {
    row.written = Written::Sometimes;
    return row;
}
/// Accepted in old files: it is read into the record but has no effect.
template <auto Member, class Encoding>
consteval auto Dropped(Row<Member, Encoding> row) {
    row.written = Written::Never;
    row.isDropped = true;
    return row;
}
/// If absent, the value of the previous element of its kind holds.
template <auto Member, class Encoding>
consteval auto OrAsBefore(Row<Member, Encoding> row) {
    row.isAsBefore = true;
    return row;
}
/// Ignored if the attribute `other` is present.
template <auto Member, class Encoding>
consteval auto YieldsTo(std::u16string_view other, Row<Member, Encoding> row) {
    row.yieldsTo = other;
    return row;
}

template <class... RowTypes>
consteval bool AreInOrder(const RowTypes&... rows) {
    const std::array<std::u16string_view, sizeof...(rows)> names = {rows.name...};
    return std::ranges::adjacent_find(names, std::ranges::greater_equal()) == names.end();
}

/// A table of rows; does not compile unless they stand in the order of their names.
template <class... RowTypes>
consteval auto Rows(RowTypes... rows) {
    if (!AreInOrder(rows...)) {
        throw "the rows of a table stand in the order of their names";
    }
    return std::tuple(rows...);
}

/// The attributes of some tables, without their records.
template <const auto&... Tables>
inline constexpr auto kAttributesOf = std::apply(
    [](const auto&... rows) { return std::array{rows.Describe()...}; }, std::tuple_cat(Tables...));

}  // namespace tses
