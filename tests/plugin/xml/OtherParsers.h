#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The values in a document of `ValueDocument`, as another XML parser reads them; nothing when it
/// finds the document malformed.
using Values = std::vector<std::u16string>;
std::optional<Values> ReadByExpat(std::string_view document);
std::optional<Values> ReadByLibxml2(std::string_view document);

/// Whether another XML parser finds any document well-formed, its namespaces included.
bool IsWellFormedToExpat(std::string_view document);
bool IsWellFormedToLibxml2(std::string_view document);

}  // namespace test
