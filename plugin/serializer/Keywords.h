#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Attributes that hold one of a few words. A table's rows serve both directions; what a text or a
/// value outside the table gives is said at each call.
namespace tses {

template <class Value>
struct Keyword {
    std::u16string_view text;
    Value value;
};

/// The value of the keyword that `text` is, exactly; none if it is no keyword.
template <class Value, std::size_t Count>
constexpr std::optional<Value> FindValue(const Keyword<Value> (&table)[Count],
                                         std::u16string_view text) {
    for (const Keyword<Value>& keyword : table) {
        if (keyword.text == text) {
            return keyword.value;
        }
    }
    return std::nullopt;
}

/// The keyword of `value`, or `fallback` if it has none.
template <class Value, std::size_t Count>
constexpr std::u16string_view FindKeyword(const Keyword<Value> (&table)[Count], Value value,
                                          std::u16string_view fallback) {
    for (const Keyword<Value>& keyword : table) {
        if (keyword.value == value) {
            return keyword.text;
        }
    }
    return fallback;
}

/// Channel layouts by their number of channels.
inline constexpr Keyword<kelcore::uint32> kChannelLayouts[] = {
    {u"mono", 1}, {u"stereo", 2}, {u"fivePointOne", 6}};

}  // namespace tses
