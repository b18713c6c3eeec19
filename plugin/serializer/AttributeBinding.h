#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "plugin/serializer/ValueEncoding.h"
#include "plugin/xml/TagAttributes.h"

/// How an element's attributes become its record: one row per attribute, {name, how it is read}.
namespace tses {

template <class Record>
struct Binding {
    std::u16string_view name;
    void (*read)(std::u16string_view text, Record& record);
};

template <class Record, std::size_t Count>
constexpr bool AreInOrder(const Binding<Record> (&bindings)[Count]) {
    return std::ranges::adjacent_find(bindings, std::ranges::greater_equal(),
                                      &Binding<Record>::name) == std::end(bindings);
}

/// Applies the rows of the attributes that are there, in the order of their names: where two fill
/// one field, the later name wins. Attributes without a row mean nothing; rows without an attribute
/// leave the record's default.
template <const auto& Bindings, class Record>
void ReadAttributes(const TagAttributes& attributes, Record& record) {
    static_assert(AreInOrder(Bindings));
    std::size_t next = 0;
    const auto readRow = [&]<std::size_t Row>() {
        if (const auto text = attributes.FindNext(Bindings[Row].name, next)) {
            Bindings[Row].read(*text, record);
        }
    };
    [&]<std::size_t... Rows>(std::index_sequence<Rows...>) {
        (readRow.template operator()<Rows>(), ...);
    }
    (std::make_index_sequence<std::size(Bindings)>());
}

/// The readers that most rows use, by the field that they fill.
namespace read {

template <class Member>
struct OwnerOf;
template <class Record, class Field>
struct OwnerOf<Field Record::*> {
    using type = Record;
};
template <auto Member>
using RecordOf = typename OwnerOf<decltype(Member)>::type;

inline void Parse(std::u16string_view text, kelcore::uint32& target) {
    ParseUnsigned(text, target);
}
inline void Parse(std::u16string_view text, kelcore::int32& target) {
    ParseSigned(text, target);
}
inline void Parse(std::u16string_view text, kelcore::int64& target) {
    ParseInt64(text, target);
}
inline void Parse(std::u16string_view text, float& target) {
    ParseFloat(text, target);
}

template <auto Member>
void Text(std::u16string_view text, RecordOf<Member>& record) {
    record.*Member = text;
}

/// A number that must be the whole text; otherwise the field keeps its default.
template <auto Member>
void Number(std::u16string_view text, RecordOf<Member>& record) {
    Parse(text, record.*Member);
}

template <auto Member>
void StrictBool(std::u16string_view text, RecordOf<Member>& record) {
    record.*Member = ParseBoolStrict(text);
}

template <auto Member>
void LenientBool(std::u16string_view text, RecordOf<Member>& record) {
    record.*Member = ParseBoolLenient(text);
}

template <auto Member>
void LenientFloat(std::u16string_view text, RecordOf<Member>& record) {
    record.*Member = ParseFloatLenient(text);
}

template <auto Member>
void LenientDouble(std::u16string_view text, RecordOf<Member>& record) {
    record.*Member = ParseDoubleLenient(text);
}

}  // namespace read
}  // namespace tses
