#include "session/times/PositionText.h"

#include <charconv>
#include <utility>

namespace orvo::times {

bool TextReader::Take(char character) {
    const bool taken = rest_.starts_with(character);
    rest_.remove_prefix(taken ? 1 : 0);
    return taken;
}

std::optional<std::uint64_t> TextReader::TakeNumber() {
    std::uint64_t number = 0;
    const char* const begin = rest_.data();
    const auto [end, error] = std::from_chars(begin, begin + rest_.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    rest_.remove_prefix(static_cast<std::size_t>(end - begin));
    return number;
}

PositionResult Failure(std::string what, std::string advice) {
    return {.messages = {{.what = std::move(what), .advice = std::move(advice)}}};
}

PositionResult ResultOf(std::optional<std::int64_t> position) {
    return position ? PositionResult{.ok = true, .position = *position}
                    : Failure("this position is beyond 64 bits of samples");
}

PositionResult NoSampleRate() {
    return Failure("a sample rate of 0 has no times", "use positions in samples");
}

int DigitsBelow(std::uint32_t count) {
    return static_cast<int>(std::to_string(count - 1).size());
}

}  // namespace orvo::times
