#pragma once

#include <cstddef>
#include <tuple>
#include <utility>

#include "format/Rows.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/TagAttributes.h"

/// The attributes of a tag to the record of its element, and back, by the element's table of rows.
namespace tses {

/// Applies the rows of the attributes that are there, in the order of their names. Attributes
/// without a row mean nothing; rows without an attribute leave the record's default.
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

/// A record with the defaults, and what the attributes say.
template <class Record, const auto&... Tables>
Record ReadRecord(const TagAttributes& attributes) {
    Record record;
    ReadAttributes<Tables...>(attributes, record);
    return record;
}

/// Adds the attributes of a record.
template <const auto&... Tables, class Record>
void SetAttributes(const Record& record, AttributeMap& attributes) {
    const auto setRow = [&](const auto& row) {
        if (row.written != Written::Never) {
            if (auto text = row.Write(record)) {
                attributes.Set(row.name, *std::move(text));
            }
        }
    };
    (std::apply([&](const auto&... rows) { (setRow(rows), ...); }, Tables), ...);
}

template <const auto&... Tables, class Record>
AttributeMap ToAttributes(const Record& record) {
    AttributeMap attributes;
    SetAttributes<Tables...>(record, attributes);
    return attributes;
}

}  // namespace tses
