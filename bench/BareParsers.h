#pragma once

#include <cstdint>
#include <string>

// The parsers by themselves: each reads a file to its end with handlers that do nothing, and says
// whether the file is well-formed. Paths are as the system's calls take them.

namespace bench {

/// Starts the library of the bare parser, and stops it at the end.
class XercesLibrary {
public:
    XercesLibrary();
    ~XercesLibrary();
    XercesLibrary(const XercesLibrary&) = delete;
    XercesLibrary& operator=(const XercesLibrary&) = delete;
};

/// The floor of all reading: the parser that the plug-in uses, a fresh one in its default
/// configuration, with namespaces and without validation, as the plug-in has it. Wants a
/// `XercesLibrary`.
bool ParseWithXerces(const std::string& path);

/// How many elements there are, up to where the file is malformed. Wants a `XercesLibrary`.
std::uint64_t CountElements(const std::string& path);

/// Others, for scale. pugixml alone builds a tree, of the whole file at once.
bool ParseWithExpat(const std::string& path);
bool ParseWithLibXml2(const std::string& path);
bool ParseWithPugixml(const std::string& path);

}  // namespace bench
