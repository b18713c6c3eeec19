#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>
#include <xercesc/util/XercesDefs.hpp>

namespace bench {

/// What a document is made of, as a flat list with every text ready for the DOM.
struct DocumentParts {
    enum class Kind { Start, Text, Section, End };
    struct Attribute {
        const XMLCh* name = nullptr;
        const XMLCh* value = nullptr;
    };
    struct Part {
        Kind kind = Kind::End;
        const XMLCh* text = nullptr;     ///< the name of an element that starts, or the characters
        std::size_t firstAttribute = 0;  ///< of an element that starts
        std::size_t attributeCount = 0;
    };

    std::vector<Part> parts;  ///< those of the document element among them
    std::vector<Attribute> attributes;
    bool isXml11 = false;

    /// A text that lives as long as this.
    const XMLCh* Keep(std::u16string_view text);

private:
    std::deque<std::u16string> blocks_;  // each with room that is never exceeded, so that it stays
    std::unordered_map<std::u16string, const XMLCh*> short_;  // what is often the same: names
};

/// Takes a document apart. Blanks between elements are layout and left out. Wants a
/// `XercesLibrary`, as the other function does.
/// @throws std::runtime_error if the file is not well-formed
DocumentParts TakeApart(const std::string& path);

/// The floor of all writing: builds the document with the public calls of the library, serialises
/// it as the plug-in does, and writes the bytes to a file. False if the system refuses the file.
bool WriteWithDom(const DocumentParts& document, const std::string& path);

}  // namespace bench
