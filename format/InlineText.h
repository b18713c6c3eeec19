#pragma once

#include <algorithm>
#include <boost/container/small_vector.hpp>
#include <string_view>

namespace tses {

/// A zero-terminated text. One of usual length needs no allocation. A move copies: what is moved
/// from stays a text.
class InlineText {
public:
    InlineText() : units_(1, u'\0') {}
    InlineText(std::u16string_view text) { *this = text; }
    InlineText(const InlineText&) = default;
    ~InlineText() = default;

    InlineText& operator=(const InlineText&) = default;
    /// @param text  not a part of this text
    InlineText& operator=(std::u16string_view text) {
        units_.resize(text.size() + 1, boost::container::default_init);
        *std::ranges::copy(text, units_.begin()).out = u'\0';
        return *this;
    }

    operator std::u16string_view() const { return {units_.data(), units_.size() - 1}; }
    const char16_t* c_str() const { return units_.data(); }
    bool operator==(std::u16string_view text) const { return std::u16string_view(*this) == text; }
    bool empty() const { return units_.size() == 1; }

private:
    boost::container::small_vector<char16_t, 128> units_;
};

}  // namespace tses
