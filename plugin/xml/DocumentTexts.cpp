#include "plugin/xml/DocumentTexts.h"

#include <string>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMEntityReferenceImpl.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/kelcore/Trace.h"
#include "plugin/xml/Sections.h"

namespace tses {
namespace {

XmlVersion VersionOf(const xercesc::DOMDocument& document) {
    const XMLCh* const version = document.getXmlVersion();
    const bool isXml11 =
        version != nullptr && std::u16string_view(version) == xercesc::XMLUni::fgVersion1_1;
    return isXml11 ? XmlVersion::V1_1 : XmlVersion::V1_0;
}

/// The serialiser writes the name of an entity reference as it is, so one named "#x85" becomes the
/// character reference "&#x85;". The document's own factory accepts only entity names and has no
/// node for character references, so this uses the library's class itself.
xercesc::DOMNode* CreateReference(xercesc::DOMDocument& document, char16_t unit) {
    return new (&document, xercesc::DOMMemoryManager::ENTITY_REFERENCE_OBJECT)
        xercesc::DOMEntityReferenceImpl(&document, ReferenceName(unit).c_str());
}

}  // namespace

void DocumentTexts::SetAttributes(xercesc::DOMElement& element, const AttributeMap& attributes) {
    for (const auto& attribute : attributes) {
        SetAttribute(element, attribute);
    }
}

void DocumentTexts::SetAttribute(xercesc::DOMElement& element,
                                 const AttributeMap::Attribute& attribute) {
    const XMLCh* const name = attribute.name.data();
    if (!waiting_.empty() && element.hasAttribute(name)) {
        Forget(element.getAttributeNode(name));
    }
    if (IsCarriedAsItIs(attribute.value, TextPlace::Attribute)) {
        element.setAttribute(name, attribute.value.data());
    } else {
        element.setAttribute(name, u"");
        Wait(*element.getAttributeNode(name), attribute.value, TextPlace::Attribute);
    }
}

xercesc::DOMElement& DocumentTexts::AppendElement(xercesc::DOMElement& parent,
                                                  std::u16string_view name,
                                                  const AttributeMap& attributes) {
    xercesc::DOMElement& element = nodes_->CreateElement(name, attributes.size());
    for (const auto& attribute : attributes) {
        AddAttribute(element, attribute);
    }
    nodes_->Append(parent, element);
    return element;
}

void DocumentTexts::AddAttribute(xercesc::DOMElement& element,
                                 const AttributeMap::Attribute& attribute) {
    if (IsCarriedAsItIs(attribute.value, TextPlace::Attribute)) {
        nodes_->AddAttribute(element, attribute.name, attribute.value);
    } else {
        nodes_->AddAttribute(element, attribute.name, u"");
        Wait(*element.getAttributeNode(attribute.name.data()), attribute.value,
             TextPlace::Attribute);
    }
}

void DocumentTexts::AppendText(xercesc::DOMElement& parent, std::u16string_view text) {
    if (IsCarriedAsItIs(text, TextPlace::Text)) {
        parent.appendChild(document_.createTextNode(std::u16string(text).c_str()));
    } else {
        Wait(parent, text, TextPlace::Text);
    }
}

void DocumentTexts::AppendSections(xercesc::DOMElement& parent, std::u16string_view text) {
    if (!IsCarriedAsItIs(text, TextPlace::Section)) {
        Wait(parent, text, TextPlace::Section);
        return;
    }
    ForEachSection(text, [&](std::u16string_view section) {
        parent.appendChild(document_.createCDATASection(std::u16string(section).c_str()));
    });
}

void DocumentTexts::Settle() {
    const XmlVersion version = VersionOf(document_);
    for (Waiting& waiting : waiting_) {
        Settle(waiting, version);
    }
}

void DocumentTexts::Forget(const xercesc::DOMNode* parent) {
    std::erase_if(waiting_, [&](const Waiting& waiting) { return waiting.parent == parent; });
}

void DocumentTexts::Wait(xercesc::DOMNode& parent, std::u16string_view text, TextPlace place) {
    xercesc::DOMNode* const placeholder = parent.appendChild(document_.createTextNode(u""));
    waiting_.push_back({place, &parent, {placeholder}, std::u16string(text)});
}

void DocumentTexts::Settle(Waiting& waiting, XmlVersion version) {
    const CarriedText carried = Carry(waiting.text, waiting.place, version);
    if (!carried.isComplete) {
        kelcore::trace::Write(kelcore::trace::kWriterCategory, kReplacementsTrace);
    }
    std::vector<xercesc::DOMNode*> nodes = NodesOf(carried, waiting.place);
    for (xercesc::DOMNode* const node : nodes) {
        waiting.parent->insertBefore(node, waiting.nodes.front());
    }
    waiting.nodes.swap(nodes);
    for (xercesc::DOMNode* const node : nodes) {
        waiting.parent->removeChild(node)->release();
    }
}

std::vector<xercesc::DOMNode*> DocumentTexts::NodesOf(const CarriedText& carried, TextPlace place) {
    std::vector<xercesc::DOMNode*> nodes;
    for (const TextPiece& piece : carried.pieces) {
        if (piece.isReference) {
            nodes.push_back(CreateReference(document_, piece.text.front()));
        } else if (place == TextPlace::Section) {
            ForEachSection(piece.text, [&](std::u16string_view section) {
                nodes.push_back(document_.createCDATASection(std::u16string(section).c_str()));
            });
        } else {
            nodes.push_back(document_.createTextNode(piece.text.c_str()));
        }
    }
    return nodes;
}

}  // namespace tses
