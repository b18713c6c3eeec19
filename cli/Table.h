#pragma once

#include <string>
#include <vector>

namespace cli {

enum class Align { Left, Right };

/// Rows of texts as lines of aligned columns, two blanks between them, without blanks at line ends.
/// A row may be shorter than others.
/// @param indent  in front of every line
std::string FormatTable(const std::vector<std::vector<std::string>>& rows,
                        const std::vector<Align>& alignment, const std::string& indent);

}  // namespace cli
