#include "plugin/xml/ContentTarget.h"

#include <algorithm>
#include <new>

namespace tses {
namespace {

constexpr std::size_t kInitialCapacity = 10000;

}  // namespace

void ContentTarget::writeChars(const XMLByte* bytes, XMLSize_t count,
                               xercesc::XMLFormatter* /*formatter*/) {
    if (count > capacity_ - size_) {
        Grow(size_ + count);
    }
    XMLByte* const end = bytes_.get() + size_;
    if (count == 1) {  // four of five calls: characters of markup, and blanks
        *end = *bytes;
    } else {
        std::copy_n(bytes, count, end);
    }
    size_ += count;
}

void ContentTarget::Grow(std::size_t least) {
    const std::size_t capacity = std::max({least, 2 * capacity_, kInitialCapacity});
    void* const grown = std::realloc(bytes_.get(), capacity);
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<XMLByte*>(grown));
    capacity_ = capacity;
}

}  // namespace tses
