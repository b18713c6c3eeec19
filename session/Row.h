#pragma once

#include <tuple>

namespace orvo {

/// A member of a struct of the model, under the key that it has in JSON and in every other form of
/// the model that has names. docs/json.md says what the keys mean.
template <class Struct, class Member>
struct Row {
    const char* key;
    Member Struct::*member;
};
template <class Struct, class Member>
Row(const char*, Member Struct::*) -> Row<Struct, Member>;

/// For each struct: its name for people and its rows.
template <class Struct>
struct Schema;

template <class Struct>
concept HasSchema = requires {
    Schema<Struct>::kRows;
};

}  // namespace orvo
