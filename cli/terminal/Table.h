#pragma once

#include <string>
#include <vector>

namespace cli {

enum class Align { Left, Right };

/// Formats rows as aligned columns, two spaces apart, without trailing spaces. Rows may differ in
/// length.
/// @param indent  starts every line
std::string FormatTable(const std::vector<std::vector<std::string>>& rows,
                        const std::vector<Align>& alignment, const std::string& indent);

}  // namespace cli
