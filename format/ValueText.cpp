#include "format/ValueText.h"

#include <algorithm>

namespace tses {

std::u16string ValueText::ToString() const {
    return {units_.data(), size_};
}

void ValueText::Grow(std::size_t count) {
    units_.resize(std::max(2 * units_.size(), size_ + count), boost::container::default_init);
}

}  // namespace tses
