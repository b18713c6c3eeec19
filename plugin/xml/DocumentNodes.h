#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <xercesc/dom/DOM.hpp>

namespace tses {

/// Makes elements with their attributes in a document. There are two kinds, which make the same
/// document: one by the calls that every program may use, the other as the library's own parser
/// does it, which takes an eighth of the instructions.
///
/// A zero follows each name. What the library refuses is thrown as `xercesc::DOMException`.
class DocumentNodes {
public:
    virtual ~DocumentNodes() = default;

    /// An element that stands nowhere yet, and that is going to get exactly that many attributes.
    /// It is the document's.
    virtual xercesc::DOMElement& CreateElement(std::u16string_view name,
                                               std::size_t attributeCount) = 0;

    /// Adds an attribute to an element of `CreateElement`, whose attributes so far all have names
    /// that come before this one, code unit by code unit.
    virtual void AddAttribute(xercesc::DOMElement& element, std::u16string_view name,
                              const std::u16string& value) = 0;

    /// Makes an element of `CreateElement` the last child of another element of the document.
    virtual void Append(xercesc::DOMElement& parent, xercesc::DOMElement& child) = 0;

protected:
    DocumentNodes() = default;
    DocumentNodes(const DocumentNodes&) = default;
    DocumentNodes& operator=(const DocumentNodes&) = default;
};

/// Makes nodes for a document, which must outlive the object.
using NodeMaker = std::unique_ptr<DocumentNodes> (*)(xercesc::DOMDocument& document);

std::unique_ptr<DocumentNodes> MakePublicNodes(xercesc::DOMDocument& document);

#if ORVO_FAST_DOM
std::unique_ptr<DocumentNodes> MakeInternalNodes(xercesc::DOMDocument& document);
inline constexpr NodeMaker kNodeMaker = MakeInternalNodes;  ///< what a build uses
#else
inline constexpr NodeMaker kNodeMaker = MakePublicNodes;
#endif

}  // namespace tses
