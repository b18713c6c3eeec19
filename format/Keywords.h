#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/kelcore/Types.h"

/// Attributes that hold one of a few words. A table's rows serve both directions; the encoding of a
/// row says what a text or a value outside the table means.
namespace tses {

template <class Value>
struct Keyword {
    std::u16string_view text;
    Value value;
};

/// The value of the keyword that is exactly `text`; no value if there is no such keyword.
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

/// How many different words a table has: several values may share one, in adjacent rows.
template <class Value, std::size_t Count>
consteval std::size_t CountWords(const Keyword<Value> (&table)[Count]) {
    std::size_t count = 1;
    for (std::size_t i = 1; i < Count; ++i) {
        count += table[i].text != table[i - 1].text;
    }
    return count;
}

/// The words of a table, each once, in the table's order.
template <const auto& Table>
inline constexpr auto kWordsOf = [] {
    std::array<std::u16string_view, CountWords(Table)> words;
    std::size_t count = 0;
    for (const auto& keyword : Table) {
        if (count == 0 || words[count - 1] != keyword.text) {
            words[count++] = keyword.text;
        }
    }
    return words;
}();

/// Channel layouts by their number of channels.
inline constexpr Keyword<kelcore::uint32> kChannelLayouts[] = {
    {u"mono", 1}, {u"stereo", 2}, {u"fivePointOne", 6}};

}  // namespace tses
