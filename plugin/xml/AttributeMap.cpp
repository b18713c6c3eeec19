#include "plugin/xml/AttributeMap.h"

#include <algorithm>

namespace tses {

AttributeMap::AttributeMap(std::initializer_list<Attribute> attributes) {
    for (const Attribute& attribute : attributes) {
        Set(attribute.name, attribute.value);
    }
}

void AttributeMap::Set(std::u16string_view name, std::u16string_view value) {
    // From the end: the attributes of a saved file come in order, and then this is one comparison.
    std::size_t place = size_;
    while (place > 0 && name < slots_[place - 1].name) {
        --place;
    }
    if (place > 0 && slots_[place - 1].name == name) {
        slots_[place - 1].value.assign(value);
        return;
    }
    if (size_ == slots_.size()) {
        slots_.emplace_back();
    }
    Attribute& added = slots_[size_];
    added.name = name;
    added.value.assign(value);
    const auto first = slots_.begin() + static_cast<std::ptrdiff_t>(place);
    const auto last = slots_.begin() + static_cast<std::ptrdiff_t>(size_);
    std::rotate(first, last, last + 1);
    ++size_;
}

void AttributeMap::SetUnlessEmpty(std::u16string_view name, std::u16string_view value) {
    if (!value.empty()) {
        Set(name, value);
    }
}

const std::u16string* AttributeMap::Find(std::u16string_view name) const {
    const auto attributes = Attributes();
    const auto found = std::lower_bound(attributes.begin(), attributes.end(), name,
                                        [](const Attribute& attribute, std::u16string_view sought) {
                                            return attribute.name < sought;
                                        });
    return found != attributes.end() && found->name == name ? &found->value : nullptr;
}

}  // namespace tses
