#include "plugin/xml/SessionXMLDefaultHandler.h"

#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace tses {
namespace {

std::u16string_view ViewOf(const XMLCh* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

bool HasPrefix(const xercesc::Attributes& attributes, XMLSize_t index) {
    return ViewOf(attributes.getQName(index)).find(u':') != std::u16string_view::npos;
}

/// An attribute counts under its local name. Where several prefixes give one name, the last stands,
/// but for an attribute without a prefix, which always does.
void Fill(AttributeMap& map, const xercesc::Attributes& attributes) {
    map.Clear();
    const XMLSize_t count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        map.Set(attributes.getLocalName(i), attributes.getValue(i));
    }
    if (map.size() == count) {
        return;
    }
    for (XMLSize_t i = 0; i < count; ++i) {
        if (!HasPrefix(attributes, i)) {
            map.Set(attributes.getLocalName(i), attributes.getValue(i));
        }
    }
}

using Report = void (SAXErrorHandler::*)(kelcore::uint64, kelcore::uint64, std::u16string_view,
                                         std::u16string_view, std::u16string_view);

void Forward(SAXErrorHandler* errors, Report report, const xercesc::SAXParseException& exception) {
    if (errors != nullptr) {
        (errors->*report)(exception.getLineNumber(), exception.getColumnNumber(),
                          ViewOf(exception.getPublicId()), ViewOf(exception.getSystemId()),
                          ViewOf(exception.getMessage()));
    }
}

}  // namespace

void SessionXMLDefaultHandler::startDocument() {
    if (content_ != nullptr) {
        content_->StartDocument();
    }
}

void SessionXMLDefaultHandler::endDocument() {
    if (content_ != nullptr) {
        content_->EndDocument();
    }
}

void SessionXMLDefaultHandler::startElement(const XMLCh* uri, const XMLCh* localName,
                                            const XMLCh* qualifiedName,
                                            const xercesc::Attributes& attributes) {
    if (content_ != nullptr) {
        Fill(attributes_, attributes);
        content_->StartElementEvent(ViewOf(uri), ViewOf(localName), ViewOf(qualifiedName),
                                    attributes_);
    }
}

void SessionXMLDefaultHandler::endElement(const XMLCh* uri, const XMLCh* localName,
                                          const XMLCh* qualifiedName) {
    if (content_ != nullptr) {
        content_->EndElementEvent(ViewOf(uri), ViewOf(localName), ViewOf(qualifiedName));
    }
}

void SessionXMLDefaultHandler::characters(const XMLCh* text, XMLSize_t length) {
    if (content_ != nullptr) {
        content_->CharactersEvent({text, length});
    }
}

void SessionXMLDefaultHandler::ignorableWhitespace(const XMLCh* text, XMLSize_t length) {
    if (content_ != nullptr) {
        content_->IgnorableWhitespaceEvent({text, length});
    }
}

void SessionXMLDefaultHandler::warning(const xercesc::SAXParseException& exception) {
    Forward(errors_, &SAXErrorHandler::Warning, exception);
}

void SessionXMLDefaultHandler::error(const xercesc::SAXParseException& exception) {
    Forward(errors_, &SAXErrorHandler::Error, exception);
}

void SessionXMLDefaultHandler::fatalError(const xercesc::SAXParseException& exception) {
    sawFatalError_ = true;
    Forward(errors_, &SAXErrorHandler::FatalError, exception);
}

}  // namespace tses
