#pragma once

#include <iterator>
#include <random>

#include "platform/kelcore/Types.h"

namespace toolkit {

/// Numbers that look random and are the same for a seed on every machine. The standard fixes what
/// the engine gives but not what its distributions make of that, so this uses none of them. Draw
/// two numbers in one expression only where the language fixes the order, as in a list in braces.
class Dice {
public:
    explicit Dice(kelcore::uint64 seed) : engine_(seed) {}

    /// From 0 to `count` - 1. `count` must not be 0.
    kelcore::uint32 Below(kelcore::uint32 count) {
        return static_cast<kelcore::uint32>(engine_() % count);
    }

    /// From `low` to `high`, both included.
    kelcore::int32 Between(kelcore::int32 low, kelcore::int32 high) {
        return low +
               static_cast<kelcore::int32>(Below(static_cast<kelcore::uint32>(high - low) + 1));
    }

    /// A number with up to three decimal places, from `low` to `high` thousandths.
    double Thousandths(kelcore::int32 low, kelcore::int32 high) {
        return Between(low, high) / 1000.0;
    }

    bool OneIn(kelcore::uint32 count) { return Below(count) == 0; }

    template <class List>
    const auto& OneOf(const List& list) {
        return list[Below(static_cast<kelcore::uint32>(std::size(list)))];
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace toolkit
