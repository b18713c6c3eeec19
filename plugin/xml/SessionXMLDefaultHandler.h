#pragma once

#include <xercesc/sax2/DefaultHandler.hpp>

#include "plugin/xml/SAXHandlers.h"

namespace tses {

/// Turns the XML library's callbacks into the plug-in's own events. Either receiver may be null;
/// what would go to it is then dropped.
class SessionXMLDefaultHandler final : public xercesc::DefaultHandler {
public:
    SessionXMLDefaultHandler(SAXContentHandler* content, SAXErrorHandler* errors)
        : content_(content), errors_(errors) {}

    /// Whether a fatal error was reported since the document's start. The parser stops after one,
    /// also when the receiver lets it pass, so the document was then not read to its end.
    bool SawFatalError() const noexcept { return sawFatalError_; }

    void startDocument() override;
    void endDocument() override;
    void startElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* uri, const XMLCh* localName, const XMLCh* qualifiedName) override;
    void characters(const XMLCh* text, XMLSize_t length) override;
    void ignorableWhitespace(const XMLCh* text, XMLSize_t length) override;

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;

    void BeforeParse() noexcept { sawFatalError_ = false; }

private:
    SAXContentHandler* content_;
    SAXErrorHandler* errors_;
    AttributeMap attributes_;  // filled anew for every start tag, its room kept
    bool sawFatalError_ = false;
};

}  // namespace tses
