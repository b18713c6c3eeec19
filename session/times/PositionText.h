#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <orvo/Times.h>
#include "session/times/Arithmetic.h"

// What the texts of positions have in common.

namespace orvo::times {

/// Reads a text from its begin.
class TextReader {
public:
    explicit TextReader(std::string_view text) : rest_(text) {}

    /// Reads this character if it is the next one.
    bool Take(char character);

    /// Reads digits. Nothing if there are none or their number has more than 64 bits.
    std::optional<std::uint64_t> TakeNumber();

    bool IsAtEnd() const { return rest_.empty(); }
    std::string_view Rest() const { return rest_; }

private:
    std::string_view rest_;
};

PositionResult Failure(std::string what, std::string advice = {});

/// Of samples that a position may not be able to hold.
PositionResult ResultOf(std::optional<std::int64_t> position);

/// Of texts that need a sample rate.
PositionResult NoSampleRate();

/// How many digits numbers below `count` have.
int DigitsBelow(std::uint32_t count);

}  // namespace orvo::times
