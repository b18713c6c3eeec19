# Whether documents are built by the calls of the XML library's own parser, which are in headers that a
# program should not use but that are installed beside the others. Without them the public calls are used;
# the documents are the same.

include(CheckCXXSourceCompiles)

set(CMAKE_REQUIRED_LIBRARIES XercesC::XercesC)
check_cxx_source_compiles([[
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

void Build(xercesc::DOMDocumentImpl& document, xercesc::DOMNodeVector& attributes) {
    const XMLCh* const text = u"a";
    auto& element = static_cast<xercesc::DOMElementImpl&>(*document.createElementNoCheck(text));
    element.fAttributes->reserve(1);
    auto& attribute = *new (&document, xercesc::DOMMemoryManager::ATTR_OBJECT)
                          xercesc::DOMAttrImpl(&document, text);
    auto& value = *new (&document, xercesc::DOMMemoryManager::TEXT_OBJECT)
                      xercesc::DOMTextImpl(&document, text, 1);
    attribute.fParent.fFirstChild = &value;
    attribute.fNode.fOwnerNode = &element;
    value.fNode.isFirstChild(true);
    value.fChild.previousSibling = &value;
    attributes.addElement(&attribute);
}

int main() {}
]] ORVO_HAS_INTERNAL_DOM)
unset(CMAKE_REQUIRED_LIBRARIES)

option(ORVO_FAST_DOM "Build documents with the internal calls of the XML library" ${ORVO_HAS_INTERNAL_DOM})
