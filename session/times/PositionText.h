#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <orvo/Times.h>
#include "session/times/Arithmetic.h"

// What formatting and parsing of all kinds of positions share.

namespace orvo::times {

/// Reads a text piece by piece.
class TextReader {
public:
    explicit TextReader(std::string_view text) : rest_(text) {}

    /// Reads this character if it is the next one.
    bool Take(char character);

    /// Reads decimal digits. No value if there are no digits or if the number exceeds 64 bits.
    std::optional<std::uint64_t> TakeNumber();

    bool IsAtEnd() const { return rest_.empty(); }
    std::string_view Rest() const { return rest_; }

private:
    std::string_view rest_;
};

PositionResult Failure(std::string what, std::string advice = {});

/// A failure if there is no position, because it exceeds 64 bits.
PositionResult ResultOf(std::optional<std::int64_t> position);

/// The failure to parse without a sample rate.
PositionResult NoSampleRate();

/// The number of digits of the highest number below `count`, which is above 0.
int DigitsBelow(std::uint32_t count);

}  // namespace orvo::times
