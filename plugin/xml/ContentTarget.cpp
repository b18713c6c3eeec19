#include "plugin/xml/ContentTarget.h"

#include <algorithm>

namespace tses {

void ContentTarget::writeChars(const XMLByte* bytes, XMLSize_t count,
                               xercesc::XMLFormatter* /*formatter*/) {
    if (count == 1 && room_ > 0) {  // four calls of five: signs of the markup, and blanks
        *next_++ = *bytes;
        --room_;
    } else {
        Take(bytes, count);
    }
}

void ContentTarget::Take(const XMLByte* bytes, std::size_t count) {
    while (count > room_) {
        const std::size_t fitting = room_;
        Append(bytes, fitting);
        bytes += fitting;
        count -= fitting;
        AddBlock();
    }
    Append(bytes, count);
}

void ContentTarget::Append(const XMLByte* bytes, std::size_t count) {
    next_ = std::copy_n(bytes, count, next_);
    room_ -= count;
}

void ContentTarget::AddBlock() {
    blocks_.push_back(std::make_unique_for_overwrite<Block>());
    next_ = blocks_.back()->data();
    room_ = kBlockSize;
}

kelcore::uint64 ContentTarget::Size() const {
    return blocks_.size() * kBlockSize - room_;
}

void ContentTarget::Clear() {
    blocks_.clear();
    next_ = nullptr;
    room_ = 0;
}

}  // namespace tses
