#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <xercesc/dom/DOM.hpp>

namespace tses {

/// Makes elements and their attributes in a document. There are two implementations, which make the
/// same document: one uses the library's public calls, the other works as the library's own parser
/// does. bench/README.md says what that gains.
///
/// Each name must end with a zero. Throws `xercesc::DOMException` for what the library refuses.
class DocumentNodes {
public:
    virtual ~DocumentNodes() = default;

    /// Makes an element that has no parent yet and is to get exactly `attributeCount` attributes.
    /// The document owns it.
    virtual xercesc::DOMElement& CreateElement(std::u16string_view name,
                                               std::size_t attributeCount) = 0;

    /// Adds an attribute to an element from `CreateElement`. The attributes must be added in the
    /// order of their names, code unit by code unit. Values are zero-terminated.
    virtual void AddAttribute(xercesc::DOMElement& element, std::u16string_view name,
                              std::u16string_view value) = 0;

    /// Makes an element from `CreateElement` the last child of another element of the document.
    virtual void Append(xercesc::DOMElement& parent, xercesc::DOMElement& child) = 0;

protected:
    DocumentNodes() = default;
    DocumentNodes(const DocumentNodes&) = default;
    DocumentNodes& operator=(const DocumentNodes&) = default;
};

/// Makes the `DocumentNodes` of a document, which must outlive them.
using NodeMaker = std::unique_ptr<DocumentNodes> (*)(xercesc::DOMDocument& document);

std::unique_ptr<DocumentNodes> MakePublicNodes(xercesc::DOMDocument& document);

#if ORVO_FAST_DOM
std::unique_ptr<DocumentNodes> MakeInternalNodes(xercesc::DOMDocument& document);
inline constexpr NodeMaker kNodeMaker = MakeInternalNodes;  ///< what a build uses
#else
inline constexpr NodeMaker kNodeMaker = MakePublicNodes;
#endif

}  // namespace tses
