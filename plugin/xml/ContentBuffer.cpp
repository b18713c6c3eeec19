#include "plugin/xml/ContentBuffer.h"

#include <algorithm>
#include <new>

namespace tses {
namespace {

constexpr std::size_t kInitialCapacity = 10000;

}  // namespace

void ContentBuffer::Grow(std::size_t count) {
    const std::size_t size = Size();
    const auto present = static_cast<std::size_t>(limit_ - bytes_.get());
    const std::size_t capacity = std::max({size + count, 2 * present, kInitialCapacity});
    void* const grown = std::realloc(bytes_.get(), capacity);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<kelcore::byte*>(grown));
    end_ = bytes_.get() + size;
    limit_ = bytes_.get() + capacity;
}

}  // namespace tses
