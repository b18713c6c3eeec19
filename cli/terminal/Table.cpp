#include "cli/terminal/Table.h"

#include <algorithm>

#include "cli/terminal/Columns.h"

namespace cli {
namespace {

std::vector<std::size_t> ColumnWidths(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], ColumnsOf(row[column]));
        }
    }
    return widths;
}

}  // namespace

std::string FormatTable(const std::vector<std::vector<std::string>>& rows,
                        const std::vector<Align>& alignment, const std::string& indent) {
    const std::vector<std::size_t> widths = ColumnWidths(rows);
    std::string table;
    for (const auto& row : rows) {
        std::string line = indent;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string padding(widths[column] - ColumnsOf(row[column]), ' ');
            line += column == 0 ? "" : "  ";
            line += alignment.at(column) == Align::Right ? padding + row[column]
                                                         : row[column] + padding;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + "\n";
    }
    return table;
}

}  // namespace cli
