#pragma once

#include <cstdint>
#include <string>

// The bare parsers. Each reads a whole file with handlers that do nothing, and returns whether the
// file is well-formed. Paths are in the form of the system calls.

namespace bench {

/// Starts the bare parser's library, and stops it in the destructor.
class XercesLibrary {
public:
    XercesLibrary();
    ~XercesLibrary();
    XercesLibrary(const XercesLibrary&) = delete;
    XercesLibrary& operator=(const XercesLibrary&) = delete;
};

/// The floor of all reading: a fresh parser of the plug-in's kind in its default configuration,
/// with namespaces and without validation, like the plug-in's. Needs a `XercesLibrary`.
bool ParseWithXerces(const std::string& path);

/// How many elements the file has before its end or its first error. Needs a `XercesLibrary`.
std::uint64_t CountElements(const std::string& path);

/// Other parsers, for scale. Only pugixml builds a tree, of the whole file.
bool ParseWithExpat(const std::string& path);
bool ParseWithLibXml2(const std::string& path);
bool ParseWithPugixml(const std::string& path);

}  // namespace bench
