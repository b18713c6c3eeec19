#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <tuple>
#include <utility>

#include "format/Rows.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/TagAttributes.h"

/// Turns the attributes of a tag into the record of its element and back, by the element's rows.
namespace tses {

/// Applies the rows whose attributes are present, in the order of their names. An attribute without
/// a row is ignored; a row without an attribute leaves the record as it is.
template <const auto&... Tables, class Record>
void ReadAttributes(const TagAttributes& attributes, Record& record) {
    const auto readTable = [&](const auto& table) {
        std::size_t next = 0;
        const auto readRow = [&]<class RowType>(const RowType& row) {
            if (row.isRead) {
                if (const auto text = attributes.FindNext(row.name, next)) {
                    RowType::Read(*text, record);
                }
            }
        };
        std::apply([&](const auto&... rows) { (readRow(rows), ...); }, table);
    };
    (readTable(Tables), ...);
}

/// Returns a record with the values of the attributes, and the defaults for the others.
template <class Record, const auto&... Tables>
Record ReadRecord(const TagAttributes& attributes) {
    Record record;
    ReadAttributes<Tables...>(attributes, record);
    return record;
}

template <const auto&... Tables>
inline constexpr auto kRowsOf = std::tuple_cat(Tables...);

/// The rows of several tables in the order of their names, in which a map takes them fastest.
template <const auto& Rows>
inline constexpr auto kInOrder = [] {
    constexpr auto kOrder = [] {
        const auto names =
            std::apply([](const auto&... rows) { return std::array{rows.name...}; }, Rows);
        std::array<std::size_t, names.size()> order{};
        std::iota(order.begin(), order.end(), 0);
        std::ranges::sort(order, {}, [&](std::size_t row) { return std::pair(names[row], row); });
        return order;
    }();
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return std::tuple(std::get<kOrder[I]>(Rows)...);
    }
    (std::make_index_sequence<kOrder.size()>());
}();

/// Adds the attributes of a record.
template <const auto&... Tables, class Record>
void SetAttributes(const Record& record, AttributeMap& attributes) {
    const auto setRow = [&](const auto& row) {
        if (row.written != Written::Never) {
            attributes.Set(row.name, [&](ValueText& text) { return row.Write(record, text); });
        }
    };
    std::apply([&](const auto&... rows) { (setRow(rows), ...); }, kInOrder<kRowsOf<Tables...>>);
}

template <const auto&... Tables, class Record>
AttributeMap ToAttributes(const Record& record) {
    AttributeMap attributes;
    SetAttributes<Tables...>(record, attributes);
    return attributes;
}

}  // namespace tses
