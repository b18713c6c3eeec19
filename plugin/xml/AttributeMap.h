#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tses {

/// The attributes of an element to write, ordered by name (code unit by code unit), each name once.
/// The map owns the values but not the names, which are constants.
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
    void Set(std::u16string_view name, std::u16string value) {
        if (attributes_.empty()) {
            attributes_.reserve(kUsualCount);
        }
        const auto place = std::ranges::lower_bound(attributes_, name, {}, &Attribute::name);
        if (place != attributes_.end() && place->name == name) {
            place->value = std::move(value);
        } else {
            attributes_.insert(place, {name, std::move(value)});
        }
    }

    auto begin() const { return attributes_.begin(); }
    auto end() const { return attributes_.end(); }
    std::size_t size() const { return attributes_.size(); }
    bool empty() const { return attributes_.empty(); }

private:
    static constexpr std::size_t kUsualCount = 16;  // as many as the largest elements have

    std::vector<Attribute> attributes_;
};

}  // namespace tses
