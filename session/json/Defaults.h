#pragma once

#include <cmath>
#include <tuple>
#include <type_traits>

#include "session/Schema.h"

/// What JSON leaves out.
namespace orvo::json {

/// The default value of a type.
template <class Value>
const Value& DefaultOf() {
    static const Value value{};
    return value;
}

/// Whether a value that is left out comes back as it was. The two zeros are different.
template <class Value>
bool IsDefault(const Value& value, const Value& standard) {
    if constexpr (HasSchema<Value>) {
        return AllOfRows<Value>(
            [&](const auto& row) { return IsDefault(value.*row.member, standard.*row.member); });
    } else if constexpr (std::is_floating_point_v<Value>) {
        return value == standard && std::signbit(value) == std::signbit(standard);
    } else {
        return value == standard;
    }
}

}  // namespace orvo::json
