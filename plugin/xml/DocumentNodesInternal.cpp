#include <algorithm>
#include <array>
#include <cstdint>
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

#include "plugin/xml/DocumentNodes.h"

// Builds a document as the library's own parser does. The nodes' real types are known here, which
// saves the checked casts by which the public calls, and half of the parser's, find the parts of a
// node. The fields of the nodes get the values that `DOMParentNode::appendChildFast` and
// `DOMAttrMapImpl::setNamedItemFast` give them. bench/README.md says what each step gained.

namespace tses {
namespace {

using xercesc::DOMAttrImpl;
using xercesc::DOMElementImpl;
using xercesc::DOMMemoryManager;
using xercesc::DOMNode;
using xercesc::DOMTextImpl;

/// Gives access to the list of an element's attributes, because `setNamedItemFast` searches the
/// list for the place of each attribute.
class AttributeVector : public xercesc::DOMAttrMapImpl {
public:
    static xercesc::DOMNodeVector& Of(xercesc::DOMAttrMapImpl& map) {
        return *(map.*(&AttributeVector::fNodes));
    }
};

xercesc::DOMChildNode& SiblingsOf(DOMNode& child) {
    if (child.getNodeType() == DOMNode::ELEMENT_NODE) {
        return static_cast<DOMElementImpl&>(child).fChild;
    }
    return *xercesc::castToChildImpl(&child);
}

/// `firstChild` is a part of the parent; `node` and `siblings` are parts of the child.
void AppendChild(DOMNode& parent, DOMNode*& firstChild, DOMNode& child, xercesc::DOMNodeImpl& node,
                 xercesc::DOMChildNode& siblings) {
    node.fOwnerNode = &parent;
    node.isOwned(true);
    if (firstChild == nullptr) {
        firstChild = &child;
        node.isFirstChild(true);
        siblings.previousSibling = &child;
        return;
    }
    DOMNode*& last = SiblingsOf(*firstChild).previousSibling;
    SiblingsOf(*last).nextSibling = &child;
    siblings.previousSibling = last;
    last = &child;
}

/// The document's own copies of the names that it has accepted. It finds them by the names'
/// addresses in memory, because the names in a session file are constants.
class NamePool {
public:
    explicit NamePool(xercesc::DOMDocumentImpl& document) : document_(document) {}

    const XMLCh* Find(std::u16string_view name) {
        std::u16string_view& pooled = names_[SlotOf(name)];
        if (pooled.data() == nullptr || !std::ranges::equal(pooled, name)) {
            pooled = Add(name);
        }
        return pooled.data();
    }

private:
    static constexpr std::size_t kSlots = 1021;  // prime: few of the hundred names share a slot

    static std::size_t SlotOf(std::u16string_view name) {
        return reinterpret_cast<std::uintptr_t>(name.data()) / sizeof(XMLCh) % kSlots;
    }

    std::u16string_view Add(std::u16string_view name) {
        if (!document_.isXMLName(name.data())) {
            throw xercesc::DOMException(xercesc::DOMException::INVALID_CHARACTER_ERR, 0,
                                        document_.getMemoryManager());
        }
        return document_.getPooledString(name.data());
    }

    xercesc::DOMDocumentImpl& document_;
    std::array<std::u16string_view, kSlots> names_;
};

class InternalNodes final : public DocumentNodes {
public:
    explicit InternalNodes(xercesc::DOMDocumentImpl& document)
        : document_(document), names_(document) {}

    xercesc::DOMElement& CreateElement(std::u16string_view name,
                                       std::size_t attributeCount) override {
        const XMLCh* const pooled = names_.Find(name);
        auto& element =
            *new (&document_, DOMMemoryManager::ELEMENT_OBJECT) DOMElementImpl(&document_, nullptr);
        element.fName = pooled;
        if (attributeCount > 0) {
            element.fAttributes->reserve(attributeCount);
        }
        return element;
    }

    void AddAttribute(xercesc::DOMElement& owner, std::u16string_view name,
                      std::u16string_view value) override {
        const XMLCh* const pooled = names_.Find(name);
        auto& attribute =
            *new (&document_, DOMMemoryManager::ATTR_OBJECT) DOMAttrImpl(&document_, nullptr);
        attribute.fName = pooled;
        DOMTextImpl& text = CreateText(value);
        AppendChild(attribute, attribute.fParent.fFirstChild, text, text.fNode, text.fChild);
        attribute.fNode.fOwnerNode = &owner;
        attribute.fNode.isOwned(true);
        AttributeVector::Of(*static_cast<DOMElementImpl&>(owner).fAttributes)
            .addElement(&attribute);
    }

    void Append(xercesc::DOMElement& parent, xercesc::DOMElement& child) override {
        auto& added = static_cast<DOMElementImpl&>(child);
        AppendChild(parent, static_cast<DOMElementImpl&>(parent).fParent.fFirstChild, added,
                    added.fNode, added.fChild);
    }

private:
    /// By itself, a text takes a buffer that the document keeps for reuse, or a new one with room
    /// to grow. This gives it a buffer that fits the value exactly, which saves a byte for each
    /// byte of the file.
    DOMTextImpl& CreateText(std::u16string_view value) {
        document_.releaseBuffer(new (&document_) xercesc::DOMBuffer(&document_, value.size() + 1));
        return *new (&document_, DOMMemoryManager::TEXT_OBJECT)
            DOMTextImpl(&document_, value.data(), value.size());
    }

    xercesc::DOMDocumentImpl& document_;
    NamePool names_;
};

}  // namespace

std::unique_ptr<DocumentNodes> MakeInternalNodes(xercesc::DOMDocument& document) {
    // Another user of the library in this process may have given it other documents.
    if (auto* const known = dynamic_cast<xercesc::DOMDocumentImpl*>(&document)) {
        return std::make_unique<InternalNodes>(*known);
    }
    return MakePublicNodes(document);
}

}  // namespace tses
