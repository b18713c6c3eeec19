#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "plugin/serializer/ValueEncoding.h"
#include "plugin/xml/AttributeMap.h"

/// How an element's attributes become its record: one row per attribute, {name, how it is read}.
namespace tses {

template <class Record>
struct Binding {
    std::u16string_view name;
    void (*read)(std::u16string_view text, Record& record);
};

/// Applies the row of every attribute that has one, in the order of the attributes' names.
/// Attributes without a row mean nothing; rows without an attribute leave the record's default.
template <class Record, std::size_t Count>
void ReadAttributes(const TagAttributes& attributes, const Binding<Record> (&bindings)[Count],
                    Record& record) {
    for (const auto& attribute : attributes) {
        for (const Binding<Record>& binding : bindings) {
            if (binding.name == attribute.name) {
                binding.read(attribute.value, record);
                break;
            }
        }
    }
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
