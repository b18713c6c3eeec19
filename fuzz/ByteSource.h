#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>

namespace fuzz {

/// Turns the bytes of one input into decisions. Once the bytes are used up, every decision takes
/// the first choice.
class ByteSource {
public:
    ByteSource(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool IsEmpty() const { return rest_.empty(); }

    template <class Number>
    requires std::is_arithmetic_v<Number> Number Take() {
        Number number{};
        if (!rest_.empty()) {
            const std::size_t size = std::min(sizeof number, rest_.size());
            std::memcpy(&number, rest_.data(), size);
            rest_ = rest_.subspan(size);
        }
        return number;
    }

    /// A number from 0 to `count` - 1.
    std::size_t Choose(std::size_t count) { return Take<std::uint8_t>() % count; }

    template <class Items>
    const auto& OneOf(const Items& items) {
        return items[Choose(std::size(items))];
    }

    /// A short text of arbitrary code units.
    std::u16string Text() {
        std::u16string text;
        for (std::size_t length = Choose(12); length > 0; --length) {
            // Mostly letters; the rest looks for trouble.
            const auto unit = Take<std::uint16_t>();
            text += static_cast<char16_t>((unit & 1) != 0 ? u'a' + unit % 26 : unit);
        }
        return text;
    }

private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace fuzz
