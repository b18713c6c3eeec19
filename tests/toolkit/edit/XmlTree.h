#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// An element as expat reads it.
struct XmlElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;  ///< directly in it

    bool operator==(const XmlElement&) const = default;
};

/// The elements of a document in its order; no value if expat finds it malformed.
std::optional<std::vector<XmlElement>> ReadTree(std::string_view document);

}  // namespace test
