#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <orvo/Api.h>
#include <orvo/Model.h>

/// What is in a session as tables, for spreadsheets and scripts:
///
///     orvo::Table table = orvo::MakeTable(session, orvo::TableKind::Clips);
///     for (const orvo::TableRow& row : table) {
///         std::cout << orvo::CsvLine(row);
///     }
///
/// All functions may run in any number of threads and throw nothing but std::bad_alloc.
namespace orvo {

/// What has a row.
enum class TableKind {
    Tracks,      ///< a track of any kind, in the order in which an editor shows them
    Clips,       ///< a clip of any kind, track by track
    Media,       ///< a media file
    Effects,     ///< an effect in the rack of a track or clip
    Sends,       ///< a send, or side chain
    Automation,  ///< a keyframe
};

/// A column of a table.
struct TableColumn {
    std::string_view name;     ///< such as "startSeconds"; the same in every form of the table
    std::string_view meaning;  ///< for people, with its unit
};

/// A value; nothing where there is none. Texts are UTF-8.
using TableCell = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

/// The cells in the order of the columns.
using TableRow = std::vector<TableCell>;
using Table = std::vector<TableRow>;

ORVO_API std::span<const TableColumn> ColumnsOf(TableKind kind);

/// Times in seconds are nothing if the sample rate is 0. Whether media files exist is looked up for
/// `Media` and `Clips`.
ORVO_API Table MakeTable(const Session& session, TableKind kind);

// As text. Truth is "true" or "false", a real number the shortest text that reads back to the same
// value, and nothing an empty text.

/// A line as RFC 4180 has it, with its end (CR LF). Texts stand as they are, also one that a
/// spreadsheet would take for a formula: import such columns as text.
ORVO_API std::string CsvLine(std::span<const TableCell> row);

/// A line of cells between tabs, with its end (LF). In texts, a tab is "\t", a line feed "\n", a
/// carriage return "\r" and a backslash "\\".
ORVO_API std::string TsvLine(std::span<const TableCell> row);

}  // namespace orvo
