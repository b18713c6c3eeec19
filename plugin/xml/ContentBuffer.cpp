#include "plugin/xml/ContentBuffer.h"

#include <algorithm>
#include <new>

namespace tses {
namespace {

constexpr std::size_t kInitialCapacity = 10000;

}  // namespace

void ContentBuffer::Grow(std::size_t least) {
    const std::size_t capacity = std::max({least, 2 * capacity_, kInitialCapacity});
    void* const grown = std::realloc(bytes_.get(), capacity);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<kelcore::byte*>(grown));
    capacity_ = capacity;
}

}  // namespace tses
