#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tses {

/// An element's attributes, ordered by name (code unit by code unit), each name once. The names are
/// views. A map that is cleared keeps its room, so that one can be filled for every element.
template <class Text>
class BasicAttributeMap {
public:
    struct Attribute {
        std::u16string_view name;
        Text value;
    };

    BasicAttributeMap() = default;
    BasicAttributeMap(std::initializer_list<Attribute> attributes) {
        for (const Attribute& attribute : attributes) {
            Set(attribute.name, attribute.value);
        }
    }

    /// Adds the attribute, or replaces its value.
    void Set(std::u16string_view name, std::u16string_view value) {
        // From the end: the attributes of a saved file come in order, and then this is one
        // comparison.
        std::size_t place = size_;
        while (place > 0 && name < slots_[place - 1].name) {
            --place;
        }
        if (place > 0 && slots_[place - 1].name == name) {
            slots_[place - 1].value = value;
            return;
        }
        if (size_ == slots_.size()) {
            if (slots_.empty()) {
                slots_.reserve(kUsualCount);
            }
            slots_.emplace_back();
        }
        const auto first = slots_.begin() + static_cast<std::ptrdiff_t>(place);
        const auto last = slots_.begin() + static_cast<std::ptrdiff_t>(size_);
        std::move_backward(first, last, last + 1);
        slots_[place].name = name;
        slots_[place].value = value;
        ++size_;
    }

    /// Adds an attribute that is left out, rather than written, when it has no text.
    void SetUnlessEmpty(std::u16string_view name, std::u16string_view value) {
        if (!value.empty()) {
            Set(name, value);
        }
    }

    /// The attribute's value, null when it is absent. Valid until the map changes.
    const Text* Find(std::u16string_view name) const {
        const auto attributes = Attributes();
        const auto found = std::ranges::lower_bound(attributes, name, {}, &Attribute::name);
        return found != attributes.end() && found->name == name ? &found->value : nullptr;
    }

    std::span<const Attribute> Attributes() const { return {slots_.data(), size_}; }
    auto begin() const { return Attributes().begin(); }
    auto end() const { return Attributes().end(); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    void Clear() { size_ = 0; }

private:
    static constexpr std::size_t kUsualCount = 16;

    std::vector<Attribute> slots_;  // the first size_ are the map, the rest is kept room
    std::size_t size_ = 0;
};

/// What a writer sets: the names are constants, the values are the map's own.
using AttributeMap = BasicAttributeMap<std::u16string>;

/// What a start tag has: names and values are the parser's own texts, which live as long as the
/// tag's event. A zero follows each of them.
using TagAttributes = BasicAttributeMap<std::u16string_view>;

}  // namespace tses
