#pragma once

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "format/ValueText.h"

namespace tses {

/// The attributes of an element to write, ordered by name (code unit by code unit), each name once.
/// The map owns the values but not the names, which are constants. The attributes of nearly every
/// element fit without an allocation.
class AttributeMap {
public:
    /// The value is zero-terminated, and valid until another one is set.
    struct Attribute {
        std::u16string_view name;
        std::u16string_view value;
    };

    AttributeMap() = default;
    AttributeMap(std::initializer_list<Attribute> attributes) {
        for (const Attribute& attribute : attributes) {
            Set(attribute.name, attribute.value);
        }
    }

    /// Adds the attribute, or replaces its value.
    void Set(std::u16string_view name, std::u16string_view value) {
        Set(name, [value](ValueText& text) {
            text.Append(value);
            return true;
        });
    }

    /// @param write  appends the value and returns whether there is one; if not, nothing changes
    template <class Write>
    requires requires(const Write& write, ValueText& text) { write(text); }
    void Set(std::u16string_view name, const Write& write) {
        const std::size_t begin = values_.Size();
        if (write(values_)) {
            const Entry entry = {name, begin, values_.Size() - begin};
            values_.Append(u'\0');
            Insert(entry);
        }
    }

    class Iterator {
    public:
        Iterator(const AttributeMap& map, std::size_t place) : map_(map), place_(place) {}

        Attribute operator*() const {
            const Entry& entry = map_.entries_[place_];
            return {entry.name, map_.values_.Part(entry.begin, entry.size)};
        }
        Iterator& operator++() {
            ++place_;
            return *this;
        }
        bool operator==(const Iterator& other) const { return place_ == other.place_; }

    private:
        const AttributeMap& map_;
        std::size_t place_;
    };

    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size()}; }
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    /// At least as many units as all values together have.
    std::size_t BoundOfValues() const { return values_.Size(); }

private:
    struct Entry {
        std::u16string_view name;
        std::size_t begin;
        std::size_t size;
    };

    static constexpr std::size_t kUsualCount = 24;  // more than the largest elements have

    void Insert(const Entry& entry) {
        if (entries_.empty() || entries_.back().name < entry.name) {  // as rows are ordered
            entries_.push_back(entry);
            return;
        }
        const auto place = std::ranges::lower_bound(entries_, entry.name, {}, &Entry::name);
        if (place->name == entry.name) {
            *place = entry;
        } else {
            entries_.insert(place, entry);
        }
    }

    ValueText values_;
    boost::container::small_vector<Entry, kUsualCount> entries_;
};

}  // namespace tses
