#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The values in a document of `ValueDocument`, as another XML parser reads them; no value if it
/// finds the document malformed.
using Values = std::vector<std::u16string>;
std::optional<Values> ReadByExpat(std::string_view document);
std::optional<Values> ReadByLibxml2(std::string_view document);

/// The error numbers that another XML parser reports for any document, including errors in
/// namespaces; empty if the document is well-formed. Expat stops at the first error.
std::set<int> ErrorsByExpat(std::string_view document);
std::set<int> ErrorsByLibxml2(std::string_view document);

}  // namespace test
