#pragma once

#include <boost/container/small_vector.hpp>
#include <cstddef>
#include <string>
#include <string_view>

namespace tses {

/// The texts of some values, one behind the other. Those of nearly every element fit without an
/// allocation.
class ValueText {
public:
    void Append(std::u16string_view text) { units_.insert(units_.end(), text.begin(), text.end()); }
    void Append(char16_t unit) { units_.push_back(unit); }

    std::size_t Size() const { return units_.size(); }

    /// Valid until more is appended.
    std::u16string_view Part(std::size_t begin, std::size_t size) const {
        return {units_.data() + begin, size};
    }

    /// All of them as one string.
    std::u16string ToString() const;

private:
    boost::container::small_vector<char16_t, 512> units_;
};

}  // namespace tses
