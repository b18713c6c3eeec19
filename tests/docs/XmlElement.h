#pragma once

#include <map>
#include <string>
#include <vector>

namespace test {

/// An element of a document as a value, in UTF-8. Its text is all of its own character data, which
/// stands before its children when it is written again.
struct XmlElement {
    std::string name;
    std::map<std::string, std::string> attributes{};
    std::vector<XmlElement> children{};
    std::string text{};
};

/// The document element. Fails the test if the document is malformed. The XML library must be
/// started.
XmlElement ParseXml(const std::string& document);

std::string ToXml(const XmlElement& element);

}  // namespace test
