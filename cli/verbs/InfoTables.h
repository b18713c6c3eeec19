#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <orvo/Tables.h>
#include "cli/terminal/JsonList.h"

namespace cli {

/// The form of a table.
enum class TableForm { Csv, Tsv, Json, Ndjson };

/// The names of a table's columns and what they mean, below a title.
std::string ColumnsText(std::string_view title, orvo::TableKind kind);

/// Prints one table of many sessions, each as soon as it is known. The first column is "session",
/// the name of the file.
class TablePrinter {
public:
    TablePrinter(orvo::TableKind kind, TableForm form);

    void Add(const std::string& file, const orvo::Session& session);
    void End();

private:
    bool IsJson() const { return form_ == TableForm::Json || form_ == TableForm::Ndjson; }
    std::string Line(const orvo::TableRow& row) const;

    orvo::TableKind kind_;
    TableForm form_;
    JsonList json_;
};

}  // namespace cli
