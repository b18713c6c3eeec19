#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <xercesc/util/XercesDefs.hpp>

namespace bench {

/// The parts of a document as a flat list, with every text ready for the DOM.
struct DocumentParts {
    enum class Kind { Start, Text, Section, End };
    struct Attribute {
        const XMLCh* name = nullptr;
        const XMLCh* value = nullptr;
    };
    struct Part {
        Kind kind = Kind::End;
        const XMLCh* text = nullptr;     ///< the name of the element, or the characters
        std::size_t firstAttribute = 0;  ///< of a start tag
        std::size_t attributeCount = 0;
    };

    std::vector<Part> parts;  ///< the document element included
    std::vector<Attribute> attributes;
    bool isXml11 = false;

    /// A copy of the text that lives as long as this object.
    const XMLCh* Keep(std::u16string_view text);

private:
    std::deque<std::u16string> blocks_;  // never grow beyond their capacity, so texts stay put
    std::unordered_map<std::u16string, const XMLCh*> short_;  // names and the like, kept once
};

/// Takes a document apart. Leaves out blanks between elements, which are layout. Both functions
/// need a `XercesLibrary`.
/// @throws std::runtime_error if the file is not well-formed
DocumentParts TakeApart(const std::string& path);

/// The floor of all writing: builds the document with the public calls of the library, serialises
/// it as the plug-in does, and writes the bytes to a file. False if the system refuses the file.
bool WriteWithDom(const DocumentParts& parts, const std::string& path);

}  // namespace bench
