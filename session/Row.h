#pragma once

#include <tuple>

namespace orvo {

/// A member of a struct of the model, under the key that it has in JSON and in every other form of
/// the model that has names: the session format's own term, unless the member means something else
/// than the format's attribute or element.
template <class Struct, class Member>
struct Row {
    const char* key;
    Member Struct::*member;
    const char* meaning = "";    ///< for people; empty: the key says it
    const char* formerKey = "";  ///< an older key that is still read; empty if there is none

    constexpr Row Was(const char* former) const {
        Row row = *this;
        row.formerKey = former;
        return row;
    }
};
template <class Struct, class Member>
Row(const char*, Member Struct::*) -> Row<Struct, Member>;
template <class Struct, class Member>
Row(const char*, Member Struct::*, const char*) -> Row<Struct, Member>;

/// For each struct: its name for people and its rows.
template <class Struct>
struct Schema;

template <class Struct>
concept HasSchema = requires {
    Schema<Struct>::kRows;
};

}  // namespace orvo
