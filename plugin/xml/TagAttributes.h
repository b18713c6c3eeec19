#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace tses {

/// The attributes of a start tag in the document's order, each name once. Names and values are the
/// parser's own texts, which end with a zero and live as long as the tag's event. They are examined
/// only where they are used, and cleared attributes keep their room for the next element.
/// bench/README.md says what that gained.
class TagAttributes {
public:
    struct Attribute {
        const char16_t* name;
        const char16_t* value;
    };

    TagAttributes() = default;
    TagAttributes(std::initializer_list<Attribute> attributes) : attributes_(attributes) {}

    /// Adds an attribute; its name must not be there yet.
    void Add(const char16_t* name, const char16_t* value) { attributes_.push_back({name, value}); }

    /// Adds the attribute, or replaces its value.
    void Set(const char16_t* name, const char16_t* value) {
        for (Attribute& attribute : attributes_) {
            if (IsNamed(attribute, name)) {
                attribute.value = value;
                return;
            }
        }
        Add(name, value);
    }

    /// The value of the attribute of that name, which ends with a zero; `std::nullopt` without such
    /// an attribute.
    std::optional<std::u16string_view> Find(std::u16string_view name) const {
        std::size_t from = 0;
        return FindNext(name, from);
    }

    /// The same for names that are looked up in about the order of the document. Searches from the
    /// attribute `from` on, then the ones before it, and moves `from` behind what it finds.
    std::optional<std::u16string_view> FindNext(std::u16string_view name, std::size_t& from) const {
        for (std::size_t i = from; i < attributes_.size(); ++i) {
            if (IsNamed(attributes_[i], name)) {
                from = i + 1;
                return attributes_[i].value;
            }
        }
        for (std::size_t i = 0; i < from; ++i) {
            if (IsNamed(attributes_[i], name)) {
                from = i + 1;
                return attributes_[i].value;
            }
        }
        return std::nullopt;
    }

    auto begin() const { return attributes_.begin(); }
    auto end() const { return attributes_.end(); }
    std::size_t size() const { return attributes_.size(); }
    bool empty() const { return attributes_.empty(); }

    void Clear() { attributes_.clear(); }

private:
    static bool IsNamed(const Attribute& attribute, std::u16string_view name) {
        const char16_t* unit = attribute.name;
        for (const char16_t wanted : name) {
            if (*unit != wanted) {
                return false;  // also at the zero
            }
            ++unit;
        }
        return *unit == u'\0';
    }

    std::vector<Attribute> attributes_;
};

}  // namespace tses
