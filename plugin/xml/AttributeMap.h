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

/// The attributes of an element that is written, ordered by name (code unit by code unit), each
/// name once. The names are constants, the values are the map's own. A map that is cleared keeps
/// its room.
class AttributeMap {
public:
    struct Attribute {
        std::u16string_view name;
        std::u16string value;
    };

    AttributeMap() = default;
    AttributeMap(std::initializer_list<Attribute> attributes) {
        for (const Attribute& attribute : attributes) {
            Set(attribute.name, attribute.value);
        }
    }

    /// Adds the attribute, or replaces its value.
    void Set(std::u16string_view name, std::u16string_view value) {
        // The attributes of a saved file come in order.
        if (size_ == 0 || slots_[size_ - 1].name < name) {
            Append(name, value);
        } else {
            SetWithin(name, value);
        }
    }

    /// Adds an attribute that is left out, rather than written, when it has no text.
    void SetUnlessEmpty(std::u16string_view name, std::u16string_view value) {
        if (!value.empty()) {
            Set(name, value);
        }
    }

    /// The attribute's value, null when it is absent. Valid until the map changes.
    const std::u16string* Find(std::u16string_view name) const {
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
    void Append(std::u16string_view name, std::u16string_view value) {
        if (size_ == slots_.size()) {
            slots_.emplace_back();
        }
        slots_[size_].name = name;
        slots_[size_].value = value;
        ++size_;
    }

    /// In a place that is not behind the last one.
    void SetWithin(std::u16string_view name, std::u16string_view value) {
        const auto end = slots_.begin() + static_cast<std::ptrdiff_t>(size_);
        const auto place =
            std::ranges::lower_bound(slots_.begin(), end, name, {}, &Attribute::name);
        if (place->name == name) {
            place->value = value;
            return;
        }
        const auto offset = place - slots_.begin();
        Append(name, value);
        std::rotate(slots_.begin() + offset,
                    slots_.begin() + static_cast<std::ptrdiff_t>(size_ - 1),
                    slots_.begin() + static_cast<std::ptrdiff_t>(size_));
    }

    std::vector<Attribute> slots_;  // the first size_ are the map, the rest is kept room
    std::size_t size_ = 0;
};

}  // namespace tses
