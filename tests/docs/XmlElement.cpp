#include "tests/docs/XmlElement.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "platform/kelcore/Strings.h"

namespace test {
namespace {

std::string Utf8(const XMLCh* text) {
    return text != nullptr ? kelcore::UTF16to8(text) : std::string();
}

void TakeAttributes(const xercesc::DOMElement& source, XmlElement& element) {
    const xercesc::DOMNamedNodeMap* const attributes = source.getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
        const xercesc::DOMNode* const attribute = attributes->item(i);
        element.attributes[Utf8(attribute->getNodeName())] = Utf8(attribute->getNodeValue());
    }
}

XmlElement Take(const xercesc::DOMElement& source) {
    XmlElement element;
    element.name = Utf8(source.getNodeName());
    TakeAttributes(source, element);
    for (const xercesc::DOMNode* node = source.getFirstChild(); node != nullptr;
         node = node->getNextSibling()) {
        if (node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
            element.children.push_back(Take(static_cast<const xercesc::DOMElement&>(*node)));
        } else if (node->getNodeType() != xercesc::DOMNode::COMMENT_NODE) {
            element.text += Utf8(node->getNodeValue());
        }
    }
    return element;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char character : text) {
        const auto unit = static_cast<unsigned char>(character);
        if (unit < 0x20 || character == '<' || character == '&' || character == '\'' ||
            character == '>') {
            escaped += "&#" + std::to_string(unit) + ";";
        } else {
            escaped += character;
        }
    }
    return escaped;
}

}  // namespace

XmlElement ParseXml(const std::string& document) {
    xercesc::XercesDOMParser parser;
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()),
                                            document.size(), "document");
    parser.parse(source);
    EXPECT_EQ(parser.getErrorCount(), 0u) << document;
    const xercesc::DOMDocument* const parsed = parser.getDocument();
    const xercesc::DOMElement* const root =
        parsed != nullptr ? parsed->getDocumentElement() : nullptr;
    return root != nullptr ? Take(*root) : XmlElement{};
}

std::string ToXml(const XmlElement& element) {
    std::string xml = "<" + element.name;
    for (const auto& [name, value] : element.attributes) {
        xml += " " + name + "='" + Escaped(value) + "'";
    }
    xml += ">" + Escaped(element.text);
    for (const XmlElement& child : element.children) {
        xml += ToXml(child);
    }
    return xml + "</" + element.name + ">";
}

}  // namespace test
