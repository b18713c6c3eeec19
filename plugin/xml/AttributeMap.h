#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tses {

struct Attribute {
    std::u16string_view name;
    std::u16string value;
};

/// An element's attributes, ordered by name (code unit by code unit), each name once.
///
/// The names are views: a writer passes constants, the reader names that live as long as the start
/// tag's event. A map that is cleared keeps the room of its values, so that a reader fills one map
/// for every start tag without allocating.
class AttributeMap {
public:
    AttributeMap() = default;
    AttributeMap(std::initializer_list<Attribute> attributes);

    /// Adds the attribute, or replaces its value.
    void Set(std::u16string_view name, std::u16string_view value);

    /// Adds an attribute that is left out, rather than written, when it has no text.
    void SetUnlessEmpty(std::u16string_view name, std::u16string_view value);

    /// The attribute's value, null when it is absent. Valid until the map changes.
    const std::u16string* Find(std::u16string_view name) const;

    std::span<const Attribute> Attributes() const { return {slots_.data(), size_}; }
    auto begin() const { return Attributes().begin(); }
    auto end() const { return Attributes().end(); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    void Clear() { size_ = 0; }

private:
    std::vector<Attribute> slots_;  // the first size_ are the map, the rest is kept room
    std::size_t size_ = 0;
};

}  // namespace tses
