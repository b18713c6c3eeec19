#pragma once

#include <string_view>
#include <tuple>
#include <type_traits>

#include "session/Schema.h"

namespace orvo {

/// The key of a member in the session's JSON; empty if it has no row.
template <class Struct, class Member>
constexpr std::string_view KeyOf(Member Struct::*member) {
    std::string_view key;
    const auto find = [&](const auto& row) {
        if constexpr (std::is_same_v<std::remove_cvref_t<decltype(row.member)>, Member Struct::*>) {
            key = row.member == member ? row.key : key;
        }
    };
    ForEachRow<Struct>(find);
    return key;
}

}  // namespace orvo
