#include "plugin/xml/SessionXMLDefaultHandler.h"

#include <cstdint>
#include <utility>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace tses {
namespace {

std::u16string_view ViewOf(const XMLCh* text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

bool HasPrefix(std::u16string_view qualifiedName) {
    return qualifiedName.find(u':') != std::u16string_view::npos;
}

/// An attribute counts under its local name. If several have the same local name, the one without a
/// prefix counts, or else the last.
void Fill(TagAttributes& tag, const xercesc::Attributes& attributes) {
    tag.Clear();
    for (const bool withPrefix : {true, false}) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            if (HasPrefix(ViewOf(attributes.getQName(i))) == withPrefix) {
                tag.Set(attributes.getLocalName(i), attributes.getValue(i));
            }
        }
    }
}

void Fill(TagAttributes& tag, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
          XMLSize_t count) {
    tag.Clear();
    for (XMLSize_t i = 0; i < count; ++i) {
        const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
        tag.Add(attribute.getName(), attribute.getValue());
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
    openElements_.clear();
    recentNames_.fill(nullptr);
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

bool SessionXMLDefaultHandler::IsRecent(const XMLCh* name) {
    constexpr std::uintptr_t kSpacing = 32;  // about the distance between blocks of memory
    const std::uintptr_t place = reinterpret_cast<std::uintptr_t>(name) / kSpacing;
    return std::exchange(recentNames_[place % recentNames_.size()], name) == name;
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
    watch_.BeginElement(attributes.getLength());
    watch_.SawElementName(ViewOf(qualifiedName));
    if (watch_.MayHoldHalfCharacters()) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            watch_.CheckCharacters(ViewOf(attributes.getValue(i)));
        }
    }
    Fill(attributes_, attributes);
    Start({ViewOf(uri), ViewOf(localName), false}, ViewOf(qualifiedName));
}

void SessionXMLDefaultHandler::StartPlainElement(
    const XMLCh* name, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count) {
    watch_.BeginElement(count);
    const std::u16string_view view = ViewOf(name);
    if (!IsRecent(name)) {
        watch_.SawElementName(view);
    }
    Fill(attributes_, attributes, count);
    if (watch_.MayHoldHalfCharacters()) {
        for (const TagAttributes::Attribute& attribute : attributes_) {
            watch_.CheckCharacters(attribute.value);
        }
    }
    Start({{}, view, true}, view);
}

void SessionXMLDefaultHandler::Start(const OpenElement& element,
                                     std::u16string_view qualifiedName) {
    openElements_.push_back(element);
    if (content_ != nullptr) {
        content_->StartElementEvent(element.uri, element.localName, qualifiedName, attributes_);
    }
}

void SessionXMLDefaultHandler::endElement(const XMLCh* /*uri*/, const XMLCh* localName,
                                          const XMLCh* qualifiedName) {
    End(ViewOf(localName), ViewOf(qualifiedName));
}

void SessionXMLDefaultHandler::EndPlainElement() {
    const std::u16string_view name = openElements_.back().localName;
    End(name, name);
}

void SessionXMLDefaultHandler::End(std::u16string_view localName,
                                   std::u16string_view qualifiedName) {
    watch_.EndElement();
    const std::u16string_view uri = openElements_.back().uri;
    openElements_.pop_back();
    if (content_ != nullptr) {
        content_->EndElementEvent(uri, localName, qualifiedName);
    }
}

void SessionXMLDefaultHandler::characters(const XMLCh* text, XMLSize_t length) {
    watch_.SawEvent();
    if (content_ != nullptr) {
        content_->CharactersEvent({text, length});
    }
}

void SessionXMLDefaultHandler::processingInstruction(const XMLCh* /*target*/, const XMLCh* data) {
    watch_.SawEvent();
    if (watch_.MayHoldHalfCharacters()) {
        watch_.CheckCharacters(ViewOf(data));
    }
}

void SessionXMLDefaultHandler::comment(const XMLCh* /*text*/, XMLSize_t /*length*/) {
    watch_.SawEvent();
}

void SessionXMLDefaultHandler::startPrefixMapping(const XMLCh* prefix, const XMLCh* uri) {
    watch_.BeginPrefix(ViewOf(prefix), ViewOf(uri));
    if (watch_.MayHoldHalfCharacters()) {
        watch_.CheckCharacters(ViewOf(uri));
    }
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
