#pragma once

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <cstddef>
#include <string>
#include <string_view>

namespace tses {

/// The texts of some values, one behind the other. Those of nearly every element fit without an
/// allocation.
class ValueText {
public:
    ValueText() = default;
    ValueText(const ValueText&) = default;  // a move copies too: what is moved from stays a text
    ValueText& operator=(const ValueText&) = default;
    ~ValueText() = default;

    void Append(std::u16string_view text) { std::ranges::copy(text, Extend(text.size())); }
    void Append(char16_t unit) { *Extend(1) = unit; }

    /// Appends that many units, which the caller sets.
    char16_t* Extend(std::size_t count) {
        if (count > units_.size() - size_) {
            Grow(count);
        }
        char16_t* const begin = units_.data() + size_;
        size_ += count;
        return begin;
    }

    /// Removes the last units.
    void Shorten(std::size_t count) { size_ -= count; }

    std::size_t Size() const { return size_; }

    /// Valid until more is appended.
    std::u16string_view Part(std::size_t begin, std::size_t size) const {
        return {units_.data() + begin, size};
    }

    /// All of them as one string.
    std::u16string ToString() const;

private:
    static constexpr std::size_t kUsualSize = 512;

    void Grow(std::size_t count);

    boost::container::small_vector<char16_t, kUsualSize> units_{kUsualSize,
                                                                boost::container::default_init};
    std::size_t size_ = 0;  ///< what is behind is not set
};

}  // namespace tses
