#include "plugin/xml/SessionXMLDefaultHandler.h"

#include <xercesc/sax/Locator.hpp>
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
void Fill(TagAttributes& map, const xercesc::Attributes& attributes) {
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

void SessionXMLDefaultHandler::BeforeParse(std::u16string_view systemId) {
    systemId_ = systemId;
    sawFatalError_ = false;
    locator_ = nullptr;
    openUris_.clear();
    watch_.Begin();
}

void SessionXMLDefaultHandler::Refuse(std::u16string_view reason,
                                      std::optional<DocumentPlace> place) {
    sawFatalError_ = true;
    if (!place && locator_ != nullptr) {
        place = {locator_->getLineNumber(), locator_->getColumnNumber()};
    }
    if (errors_ != nullptr) {
        const DocumentPlace at = place.value_or(DocumentPlace());
        errors_->FatalError(at.line, at.column, {}, systemId_, reason);
    }
    throw DocumentRefused();
}

void SessionXMLDefaultHandler::startDocument() {
    watch_.SawStartOfDocument();
    if (content_ != nullptr) {
        content_->StartDocument();
    }
}

void SessionXMLDefaultHandler::endDocument() {
    watch_.SawEndOfDocument();
    if (content_ != nullptr) {
        content_->EndDocument();
    }
}

void SessionXMLDefaultHandler::startElement(const XMLCh* uri, const XMLCh* localName,
                                            const XMLCh* qualifiedName,
                                            const xercesc::Attributes& attributes) {
    watch_.BeginElement(ViewOf(qualifiedName), attributes.getLength());
    openUris_.push_back(uri);
    if (content_ != nullptr) {
        Fill(attributes_, attributes);
        content_->StartElementEvent(ViewOf(uri), ViewOf(localName), ViewOf(qualifiedName),
                                    attributes_);
    }
}

void SessionXMLDefaultHandler::endElement(const XMLCh* /*uri*/, const XMLCh* localName,
                                          const XMLCh* qualifiedName) {
    watch_.EndElement();
    const XMLCh* const uri = openUris_.back();
    openUris_.pop_back();
    if (content_ != nullptr) {
        content_->EndElementEvent(ViewOf(uri), ViewOf(localName), ViewOf(qualifiedName));
    }
}

void SessionXMLDefaultHandler::characters(const XMLCh* text, XMLSize_t length) {
    watch_.SawEvent();
    if (content_ != nullptr) {
        content_->CharactersEvent({text, length});
    }
}

void SessionXMLDefaultHandler::processingInstruction(const XMLCh* /*target*/,
                                                     const XMLCh* /*data*/) {
    watch_.SawEvent();
}

void SessionXMLDefaultHandler::comment(const XMLCh* /*text*/, XMLSize_t /*length*/) {
    watch_.SawEvent();
}

void SessionXMLDefaultHandler::startPrefixMapping(const XMLCh* prefix, const XMLCh* uri) {
    watch_.BeginPrefix(ViewOf(prefix), ViewOf(uri));
}

void SessionXMLDefaultHandler::endPrefixMapping(const XMLCh* /*prefix*/) {
    watch_.EndPrefix();
}

void SessionXMLDefaultHandler::startDTD(const XMLCh* /*name*/, const XMLCh* /*publicId*/,
                                        const XMLCh* /*systemId*/) {
    watch_.SawDocumentType();
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
