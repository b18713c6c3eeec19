#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

#include "platform/kelcore/Types.h"

namespace tses {

/// Bytes in one piece of memory, to which more are appended. It does not hold everything twice
/// while it grows: the system grows large blocks of memory by remapping their pages. After a move,
/// the old buffer must not be used.
class ContentBuffer {
public:
    /// Makes room for that many more bytes, and returns where they go. Follow with `SetEnd`.
    kelcore::byte* Room(std::size_t count) {
        if (count > static_cast<std::size_t>(limit_ - end_)) {
            Grow(count);
        }
        return end_;
    }

    /// @param end  behind the last byte that was put into the room
    void SetEnd(kelcore::byte* end) { end_ = end; }

    void Append(const kelcore::byte* bytes, std::size_t count) {
        kelcore::byte* const end = Room(count);
        if (count == 1) {  // four of five calls of the serialiser: characters of markup, and blanks
            *end = *bytes;
        } else if (count > 0) {
            std::memcpy(end, bytes, count);
        }
        end_ = end + count;
    }

    /// Everything so far; valid until more is appended.
    std::span<const kelcore::byte> Bytes() const { return {bytes_.get(), Size()}; }
    std::span<kelcore::byte> Bytes() { return {bytes_.get(), Size()}; }

    /// Drops all bytes but the first `size`.
    void Truncate(std::size_t size) { end_ = bytes_.get() + size; }

private:
    struct Free {
        void operator()(kelcore::byte* bytes) const { std::free(bytes); }
    };

    std::size_t Size() const { return static_cast<std::size_t>(end_ - bytes_.get()); }
    void Grow(std::size_t count);

    std::unique_ptr<kelcore::byte[], Free> bytes_;
    kelcore::byte* end_ = nullptr;
    kelcore::byte* limit_ = nullptr;
};

}  // namespace tses
