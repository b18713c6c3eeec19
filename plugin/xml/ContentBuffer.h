#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

#include "platform/kelcore/Types.h"

namespace tses {

/// Bytes in one piece of memory, to which more are appended. It does not hold everything twice
/// while it grows: the system grows large blocks of memory by remapping their pages.
class ContentBuffer {
public:
    /// Makes room for that many more bytes, and returns where they go. Follow with `SetEnd`.
    kelcore::byte* Room(std::size_t count) {
        if (count > capacity_ - size_) {
            Grow(size_ + count);
        }
        return bytes_.get() + size_;
    }

    /// @param end  behind the last byte that was put into the room
    void SetEnd(const kelcore::byte* end) { size_ = static_cast<std::size_t>(end - bytes_.get()); }

    void Append(const kelcore::byte* bytes, std::size_t count) {
        kelcore::byte* const end = Room(count);
        if (count == 1) {  // four of five calls of the serialiser: characters of markup, and blanks
            *end = *bytes;
        } else if (count > 0) {
            std::memcpy(end, bytes, count);
        }
        size_ += count;
    }

    /// Everything so far; valid until more is appended.
    std::span<const kelcore::byte> Bytes() const { return {bytes_.get(), size_}; }
    std::span<kelcore::byte> Bytes() { return {bytes_.get(), size_}; }

    /// Drops all bytes but the first `size`.
    void Truncate(std::size_t size) { size_ = size; }

private:
    struct Free {
        void operator()(kelcore::byte* bytes) const { std::free(bytes); }
    };

    void Grow(std::size_t least);

    std::unique_ptr<kelcore::byte[], Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace tses
