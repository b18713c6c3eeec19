#pragma once

#include <string>
#include <vector>

#include "tests/docs/FormatPage.h"
#include "tests/docs/XmlElement.h"

namespace test {

/// An element of a golden document: alone, but for the start tags around it, which have what it
/// takes for the element to matter.
struct GoldenElement {
    const PageSection* section = nullptr;
    std::vector<XmlElement> around;  ///< from the root on, without text and other children
    XmlElement element;              ///< with its first child alone
};

/// One element of the golden documents for each section of the page and set of attributes, but for
/// the root and for what stands where the page has nothing.
std::vector<GoldenElement> GoldenElements(const FormatPage& page);

/// The document of an element, with these attributes in place of its own.
std::string DocumentOf(const GoldenElement& golden,
                       const std::map<std::string, std::string>& attributes);

}  // namespace test
