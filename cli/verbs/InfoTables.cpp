#include "cli/verbs/InfoTables.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <variant>

#include "cli/terminal/StandardStreams.h"

namespace cli {
namespace {

using nlohmann::ordered_json;

constexpr const char* kSessionColumn = "session";

ordered_json ToJson(const orvo::TableCell& cell) {
    return std::visit(
        [](const auto& value) -> ordered_json {
            if constexpr (std::is_same_v<decltype(value), const std::monostate&>) {
                return nullptr;
            } else {
                return value;
            }
        },
        cell);
}

constexpr orvo::TableColumn kFirstColumn = {kSessionColumn, "the file as it was named"};

}  // namespace

std::string ColumnsText(std::string_view title, orvo::TableKind kind) {
    std::vector<orvo::TableColumn> columns = {kFirstColumn};
    const auto others = orvo::ColumnsOf(kind);
    columns.insert(columns.end(), others.begin(), others.end());
    std::size_t width = 0;
    for (const orvo::TableColumn& column : columns) {
        width = std::max(width, column.name.size());
    }
    std::string text = fmt::format("{}\n", title);
    for (const orvo::TableColumn& column : columns) {
        text += fmt::format("  {:{}}  {}\n", column.name, width, column.meaning);
    }
    return text;
}

TablePrinter::TablePrinter(orvo::TableKind kind, TableForm form)
    : kind_(kind),
      form_(form),
      json_(form == TableForm::Ndjson ? JsonList::Form::Lines : JsonList::Form::Array) {
    if (!IsJson()) {
        orvo::TableRow header = {std::string(kSessionColumn)};
        for (const orvo::TableColumn& column : orvo::ColumnsOf(kind)) {
            header.emplace_back(std::string(column.name));
        }
        Print(Line(header));
    }
}

void TablePrinter::Add(const std::string& file, const orvo::Session& session) {
    for (const orvo::TableRow& row : orvo::MakeTable(session, kind_)) {
        if (!IsJson()) {
            orvo::TableRow whole = {file};
            whole.insert(whole.end(), row.begin(), row.end());
            Print(Line(whole));
            continue;
        }
        ordered_json object = {{kSessionColumn, file}};
        for (std::size_t i = 0; i < row.size(); ++i) {
            object[std::string(orvo::ColumnsOf(kind_)[i].name)] = ToJson(row[i]);
        }
        json_.Add(object);
    }
    FlushOutput();
}

void TablePrinter::End() {
    if (IsJson()) {
        json_.End();
    }
}

std::string TablePrinter::Line(const orvo::TableRow& row) const {
    return form_ == TableForm::Csv ? orvo::CsvLine(row) : orvo::TsvLine(row);
}

}  // namespace cli
