#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "format/CarriableText.h"
#include "plugin/xml/AttributeMap.h"
#include "plugin/xml/DocumentNodes.h"

namespace tses {

/// Puts texts into a document so that a reader gets back every character that XML can carry;
/// `CarriableText.h` says what becomes of the others.
///
/// How a character is carried may depend on the version of the document, which any later text can
/// change. `Settle` therefore puts the few texts with such characters in place.
class DocumentTexts {
public:
    /// `document` must outlive the object.
    DocumentTexts(xercesc::DOMDocument& document, NodeMaker makeNodes)
        : document_(document), nodes_(makeNodes(document)) {}

    /// Sets the attributes of an element that may already have some, in the order of the map.
    void SetAttributes(xercesc::DOMElement& element, const AttributeMap& attributes);

    /// Appends an element with these attributes.
    xercesc::DOMElement& AppendElement(xercesc::DOMElement& parent, std::u16string_view name,
                                       const AttributeMap& attributes);

    /// Appends ordinary text.
    void AppendText(xercesc::DOMElement& parent, std::u16string_view text);

    /// Appends at least one CDATA section or reference. A reader joins them.
    void AppendSections(xercesc::DOMElement& parent, std::u16string_view text);

    /// Puts the texts in place that wait for the version of the document. Call it before the
    /// document is serialised, and again if the document has changed since. Every text in which a
    /// character is replaced gives one trace line.
    void Settle();

private:
    struct Waiting {
        TextPlace place;
        xercesc::DOMNode* parent;
        std::vector<xercesc::DOMNode*> nodes;  // its nodes in the parent; never empty
        std::u16string text;
    };

    void SetAttribute(xercesc::DOMElement& element, const AttributeMap::Attribute& attribute);
    void AddAttribute(xercesc::DOMElement& element, const AttributeMap::Attribute& attribute);
    void Forget(const xercesc::DOMNode* parent);
    void Wait(xercesc::DOMNode& parent, std::u16string_view text, TextPlace place);
    void Settle(Waiting& waiting, XmlVersion version);
    std::vector<xercesc::DOMNode*> NodesOf(const CarriedText& carried, TextPlace place);

    xercesc::DOMDocument& document_;
    std::unique_ptr<DocumentNodes> nodes_;
    std::vector<Waiting> waiting_;
};

}  // namespace tses
