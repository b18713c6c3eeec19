#include "plugin/xml/SessionXMLDefaultHandler.h"

#include <cstdint>
#include <utility>
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

/// Whether a name may be that of a declaration of a namespace, or have the prefix that needs none.
bool MayBeReserved(const XMLCh* name) {
    return name[0] == u'x' && name[1] == u'm' && name[2] == u'l';
}

bool DeclaresNamespace(std::u16string_view qualifiedName) {
    return qualifiedName == u"xmlns" || qualifiedName.starts_with(u"xmlns:");
}

/// Where several prefixes give one name, the last stands, but for an attribute without a prefix,
/// which always does.
void FillWithPrefixes(TagAttributes& tag, const xercesc::Attributes& attributes) {
    tag.Clear();
    for (const bool withPrefix : {true, false}) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            const std::u16string_view qualifiedName = ViewOf(attributes.getQName(i));
            if (!DeclaresNamespace(qualifiedName) && HasPrefix(qualifiedName) == withPrefix) {
                tag.Set(attributes.getLocalName(i), attributes.getValue(i));
            }
        }
    }
}

/// An attribute counts under its local name.
void Fill(TagAttributes& tag, const xercesc::Attributes& attributes, bool hasPrefixes) {
    tag.Clear();
    const XMLSize_t count = attributes.getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        const XMLCh* const name = attributes.getQName(i);
        if (hasPrefixes || MayBeReserved(name)) {
            FillWithPrefixes(tag, attributes);
            return;
        }
        tag.Add(name, attributes.getValue(i));
    }
}

/// The same as `text`, whose length is known if it is the text of `known`.
std::u16string_view ViewOf(const XMLCh* text, std::u16string_view known) {
    return text == known.data() ? known : ViewOf(text);
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
    declarations_ = 0;
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
    constexpr std::uintptr_t kSpacing = 32;  // of blocks of memory, about
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
    // The parser has one text for both names of what has no prefix, and keeps the names of an open
    // element.
    const std::u16string_view local = ViewOf(localName);
    const OpenElement& element =
        openElements_.emplace_back(OpenElement{ViewOf(uri), local, ViewOf(qualifiedName, local)});
    watch_.BeginElement(attributes.getLength() - std::exchange(declarations_, 0));
    if (!IsRecent(qualifiedName)) {
        watch_.SawElementName(element.qualifiedName);
    }
    if (watch_.MayHoldHalfCharacters()) {
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            watch_.CheckCharacters(ViewOf(attributes.getValue(i)));
        }
    }
    if (content_ != nullptr) {
        Fill(attributes_, attributes, watch_.HasPrefixes());
        content_->StartElementEvent(element.uri, local, element.qualifiedName, attributes_);
    }
}

void SessionXMLDefaultHandler::endElement(const XMLCh* /*uri*/, const XMLCh* localName,
                                          const XMLCh* qualifiedName) {
    watch_.EndElement();
    const OpenElement element = openElements_.back();
    openElements_.pop_back();
    if (content_ != nullptr) {
        content_->EndElementEvent(element.uri, ViewOf(localName, element.localName),
                                  ViewOf(qualifiedName, element.qualifiedName));
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
    ++declarations_;
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
