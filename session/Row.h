#pragma once

#include <cstddef>
#include <tuple>
#include <utility>

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

template <class Struct>
inline constexpr std::size_t kRowCount = std::tuple_size_v<decltype(Schema<Struct>::kRows)>;

template <class Struct, std::size_t kNumber>
inline constexpr auto kRow = std::get<kNumber>(Schema<Struct>::kRows);

/// Calls `use` with each row. The functions behind std::apply would have the types of all rows in
/// their names, which takes the compiler a multiple of the time.
template <class Struct, class Use>
constexpr void ForEachRow(const Use& use) {
    [&]<std::size_t... kNumbers>(std::index_sequence<kNumbers...>) {
        (use(kRow<Struct, kNumbers>), ...);
    }
    (std::make_index_sequence<kRowCount<Struct>>());
}

/// Whether `test` is true of each row. Ends at the first one of which it is not.
template <class Struct, class Test>
constexpr bool AllOfRows(const Test& test) {
    return [&]<std::size_t... kNumbers>(std::index_sequence<kNumbers...>) {
        return (test(kRow<Struct, kNumbers>) && ...);
    }
    (std::make_index_sequence<kRowCount<Struct>>());
}

}  // namespace orvo
