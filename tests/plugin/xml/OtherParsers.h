#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// The values in a document of `ValueDocument`, as another XML parser reads them; nothing when it
/// finds the document malformed.
using Values = std::vector<std::u16string>;
std::optional<Values> ReadByExpat(std::string_view document);
std::optional<Values> ReadByLibxml2(std::string_view document);

/// The numbers by which another XML parser names what it finds wrong with any document, in
/// namespaces too; none where it is well-formed. Expat ends at the first.
std::set<int> ErrorsByExpat(std::string_view document);
std::set<int> ErrorsByLibxml2(std::string_view document);

}  // namespace test
